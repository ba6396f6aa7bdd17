// The batch commands exif and name, run as the user runs them.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/batch_runner.h"
#include "photo_writer/test_jpeg.h"

namespace tivox::test {
namespace {

TEST(BatchExif, CardNamesUnderTheDefaultRule) {
    TempDir dir;
    const std::string card = dir.File("card");
    std::string out;
    ASSERT_EQ(MakeCard(card, 6, out), 0) << out;

    std::vector<std::string> args = {"name", "%Date%_%Time%"};
    for (const auto& e : std::filesystem::directory_iterator(card + "/DCIM/100TIVOX"))
        args.push_back(e.path().string());
    std::sort(args.begin() + 2, args.end());
    EXPECT_EQ(RunBatch(args, out), 0);
    EXPECT_EQ(out, "BROKEN.JPG\n20040423_150053.jpg\n20040423_150200.jpg\n20040423_150200.jpg\n"
                   "IMG_0004.JPG\n_.jpg\n20040423_150628.jpg\n20040423_160053.jpg\n"
                   "MVI_0001.AVI\n");

    // A second card into the same place is refused and changes nothing.
    EXPECT_EQ(MakeCard(card, 6, out), 1);
    EXPECT_NE(out.find("exists already"), std::string::npos) << out;
    using std::filesystem::directory_iterator;
    EXPECT_EQ(std::distance(directory_iterator(card + "/DCIM/100TIVOX"), directory_iterator()), 9);
}

TEST(BatchExif, RecordDumpEscapesTexts) {
    TempDir dir;
    TestJpegOptions o;
    o.width = 40;
    o.height = 30;
    CameraExif camera;
    camera.make = "A\x01"
                  "B\\";
    camera.order = ByteOrder::Big;
    o.exif = CameraExifPayload(camera);
    o.comments = {"line\r\none\ttab"};
    ASSERT_TRUE(WriteFile(dir.File("p.jpg"), MakeJpeg(o)));

    std::string out;
    EXPECT_EQ(RunBatch({"exif", dir.File("p.jpg")}, out), 0);
    EXPECT_EQ(out, "File=" + dir.File("p.jpg") +
                       "\nVersion=0210\nCameraMake=A\\x01B\\\\\nCameraModel=Z 100\n"
                       "DateTime=2004:04:23 15:00:53\nHeight=30\nWidth=40\n"
                       "Orientation=1\nIsColor=1\nProcess=192\nFlashUsed=0\n"
                       "FocalLength=7.80000019\nExposureTime=0.0166666675\n"
                       "ApertureFNumber=2.79999995\nDistance=0\nCCDWidth=0\n"
                       "ExposureBias=-0.333333343\nWhitebalance=0\nMeteringMode=5\n"
                       "ExposureProgram=2\nISOequivalent=100\nCompressionLevel=4\n"
                       "FocalplaneXRes=0\nFocalplaneYRes=0\nFocalplaneUnits=0\n"
                       "Xresolution=72\nYresolution=72\nResolutionUnit=1\n"
                       "Brightness=0\nComments=line\\none\\ttab\nThumbnailSize=0\n"
                       "IsExif=1\nlastError=\n\n");
    EXPECT_EQ(RunBatch({"exif", dir.File("p.jpg"), dir.File("missing.jpg")}, out), 1);
    EXPECT_NE(out.find("missing.jpg"), std::string::npos) << out;
}

TEST(BatchExif, UsageErrors) {
    const std::vector<std::vector<std::string>> cases = {
        {"exif"},
        {"name", "%Date%"},
    };
    for (const auto& args : cases) {
        std::string out;
        EXPECT_EQ(RunBatch(args, out), 2) << args.size();
        EXPECT_NE(out.find("usage: tivox-batch " + args[0]), std::string::npos) << out;
    }
}

} // namespace
} // namespace tivox::test
