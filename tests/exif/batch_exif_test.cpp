// The batch commands exif, name and make-card, run as the user runs them.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "support/test_jpeg.h"

namespace tivox::test {
namespace {

struct BatchRun {
    int status = -1;
    std::string out;
    std::string err;
};

std::string Quote(const std::string& s) {
    std::string q = "'";
    for (char c : s)
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

BatchRun Batch(const TempDir& dir, const std::vector<std::string>& args) {
    std::string command = Quote(TIVOX_BATCH_EXE);
    for (const std::string& a : args)
        command += " " + Quote(a);
    command += " >" + Quote(dir.File("out")) + " 2>" + Quote(dir.File("err"));
    BatchRun run;
    const int rc = std::system(command.c_str());
    run.status = WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
    Bytes out, err;
    ReadFile(dir.File("out"), out);
    ReadFile(dir.File("err"), err);
    run.out.assign(out.begin(), out.end());
    run.err.assign(err.begin(), err.end());
    return run;
}

std::vector<std::string> CardFiles(const std::string& folder) {
    std::vector<std::string> files;
    for (const auto& e : std::filesystem::directory_iterator(folder))
        files.push_back(e.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

TEST(BatchExif, CardNamesUnderTheDefaultRule) {
    TempDir dir;
    const std::string card = dir.File("card");
    const BatchRun made = Batch(dir, {"make-card", card, "--count", "6"});
    ASSERT_EQ(made.status, 0) << made.err;

    std::vector<std::string> args = {"name", "%Date%_%Time%"};
    for (const std::string& f : CardFiles(card + "/DCIM/100TIVOX"))
        args.push_back(f);
    const BatchRun named = Batch(dir, args);
    EXPECT_EQ(named.status, 0);
    EXPECT_EQ(named.out, "BROKEN.JPG\n"
                         "20040423_150053.jpg\n"
                         "20040423_150200.jpg\n"
                         "20040423_150200.jpg\n"
                         "IMG_0004.JPG\n"
                         "_.jpg\n"
                         "20040423_150628.jpg\n"
                         "20040423_160053.jpg\n"
                         "MVI_0001.AVI\n");

    // A second card into the same place is refused and changes nothing.
    const BatchRun again = Batch(dir, {"make-card", card});
    EXPECT_EQ(again.status, 1);
    EXPECT_NE(again.err.find("exists already"), std::string::npos);
    EXPECT_EQ(CardFiles(card + "/DCIM/100TIVOX").size(), 9u);
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

    const BatchRun run = Batch(dir, {"exif", dir.File("p.jpg"), dir.File("missing.jpg")});
    EXPECT_EQ(run.status, 1); // the missing file
    EXPECT_NE(run.err.find("missing.jpg"), std::string::npos);
    const std::string expected = "File=" + dir.File("p.jpg") +
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
                                 "IsExif=1\nlastError=\n\n";
    EXPECT_EQ(run.out, expected);
}

TEST(BatchExif, UsageErrors) {
    TempDir dir;
    const std::vector<std::vector<std::string>> cases = {
        {"exif"},
        {"name", "%Date%"},
        {"make-card"},
        {"make-card", dir.File("c"), "--count"},
        {"make-card", dir.File("c"), "--count", "zero"},
        {"make-card", dir.File("c"), "--count", "0"},
        {"make-card", dir.File("c"), dir.File("d")},
    };
    for (const auto& args : cases) {
        const BatchRun run = Batch(dir, args);
        EXPECT_EQ(run.status, 2) << args.size();
        EXPECT_NE(run.err.find("usage: tivox-batch " + args[0]), std::string::npos);
    }
    EXPECT_FALSE(std::filesystem::exists(dir.File("c")));
}

} // namespace
} // namespace tivox::test
