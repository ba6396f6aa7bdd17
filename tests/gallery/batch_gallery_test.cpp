// tivox-batch gallery, run as the user runs it, over generated photos: the
// real decode, scaling and encoding of the gallery pictures.

#include <gtest/gtest.h>

#include <filesystem>

#include "gallery_test_support.h"
#include "platform/jpeg_codec.h"

namespace tivox {
namespace {

namespace fs = std::filesystem;
using test::Exists;
using test::HtmlPages;
using test::RunBatch;
using Pages = std::vector<std::string>;

Size PictureSize(const std::string& path) {
    JpegInfo info;
    std::string error;
    return ReadJpegInfo(path, info, error) ? Size{info.width, info.height} : Size{};
}

void WritePhoto(const std::string& path, int width, int height) {
    fs::create_directories(fs::path(path).parent_path());
    ASSERT_TRUE(test::WriteFile(path, test::MakeJpeg(test::Picture(width, height)))) << path;
}

class BatchGallery : public testing::Test {
protected:
    test::TempDir dir;
    const std::string photos = dir.File("p");
    const std::string out = dir.File("web/g");
};

TEST_F(BatchGallery, DefaultsGiveFourByThreePicturesAndUprightPhotosKeepTheirShape) {
    WritePhoto(photos + "/a wide.jpg", 1600, 1200);
    WritePhoto(photos + "/sub/b upright.JPG", 1200, 1600);
    WritePhoto(photos + "/c small.jpg", 160, 120);
    const auto run = RunBatch({"gallery", "--photos", photos, "--out", out, "--title", "Ski"});
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("3 of 3 photos"), std::string::npos) << run.output;
    EXPECT_EQ(PictureSize(out + "/pics/a wide.jpg"), (Size{800, 600}));
    EXPECT_EQ(PictureSize(out + "/pics/thumbs/a wide.jpg"), (Size{200, 150}));
    EXPECT_EQ(PictureSize(out + "/pics/b upright.JPG"), (Size{450, 600}));
    EXPECT_EQ(PictureSize(out + "/pics/thumbs/b upright.JPG"), (Size{112, 150}));
    EXPECT_EQ(PictureSize(out + "/pics/c small.jpg"), (Size{800, 600})); // brought up
    EXPECT_EQ(HtmlPages(out), (Pages{"photo1.html", "photo2.html", "photo3.html", "thumbs1.html"}));
    test::ExpectPagesValid(out);
}

TEST_F(BatchGallery, FormValuesReachThePicturesAndPagesAndTheLaterSameNameWins) {
    for (int i = 1; i <= 5; ++i)
        WritePhoto(photos + "/" + std::to_string(i) + ".jpg", 200, 152);
    WritePhoto(photos + "/sub/1.jpg", 300, 400);
    const auto run =
        RunBatch({"gallery", "--photos", photos, "--out", out, "--photo", "700x500", "--thumb",
                  "300x200", "--photo-tiles", "3x1", "--thumb-tiles", "2x2", "--quality", "50"});
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(PictureSize(out + "/pics/1.jpg"), (Size{375, 500}));
    // Fitted from the photo, as its own decode would be: fitting the 657 x
    // 500 picture again gives 262 x 200.
    EXPECT_EQ(PictureSize(out + "/pics/thumbs/2.jpg"), (Size{263, 200}));
    EXPECT_EQ(HtmlPages(out),
              (Pages{"photo1.html", "photo2.html", "thumbs1.html", "thumbs2.html"}));
    EXPECT_EQ(test::CountOf(test::ReadText(out + "/photo1.html"), "<img "), 3);
}

TEST_F(BatchGallery, UndecodablePhotoIsLeftOutAndTheRestGoesOn) {
    WritePhoto(photos + "/1.jpg", 400, 300);
    test::WriteFile(photos + "/2.jpg", {'n', 'o', 't', ' ', 'a', ' ', 'j', 'p', 'e', 'g'});
    WritePhoto(photos + "/3.jpg", 400, 300);
    const auto run = RunBatch({"gallery", "--photos", photos, "--out", out});
    EXPECT_EQ(run.exitCode, 1) << run.output;
    EXPECT_NE(run.output.find("2.jpg"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("2 of 3 photos"), std::string::npos) << run.output;
    EXPECT_TRUE(Exists(out + "/pics/3.jpg"));
    EXPECT_FALSE(Exists(out + "/pics/thumbs/2.jpg"));
    EXPECT_EQ(HtmlPages(out), (Pages{"photo1.html", "photo2.html", "thumbs1.html"}));
}

TEST_F(BatchGallery, WrongArgumentsAndFoldersFailAndDeleteNothing) {
    WritePhoto(photos + "/1.jpg", 40, 30);
    const std::vector<std::vector<std::string>> usage = {
        {},
        {"--photos", photos},
        {"--photos", photos, "--out", out, "--photo", "1x600"},
        {"--photos", photos, "--out", out, "--thumb", "501x150"},
        {"--photos", photos, "--out", out, "--photo-tiles", "11x1"},
        {"--photos", photos, "--out", out, "--thumb-tiles", "0x4"},
        {"--photos", photos, "--out", out, "--thumb-tiles"},
        {"--photos", photos, "--out", out, "--quality", "0"},
        {"--photos", photos, "--out", out, "extra"},
    };
    for (auto args : usage) {
        args.insert(args.begin(), "gallery");
        const auto run = RunBatch(args);
        EXPECT_EQ(run.exitCode, 2) << args.size() << ": " << run.output;
        EXPECT_NE(run.output.find("usage: tivox-batch gallery"), std::string::npos) << run.output;
    }
    EXPECT_FALSE(Exists(out));
    auto run = RunBatch({"gallery", "--photos", dir.File("none"), "--out", out});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("is not a folder"), std::string::npos) << run.output;
    // A gallery folder inside the photos or their backup would empty them.
    for (const std::string& inside : {photos + "/web", photos + "_bak"}) {
        run = RunBatch({"gallery", "--photos", photos, "--out", inside});
        EXPECT_EQ(run.exitCode, 1) << inside;
        EXPECT_NE(run.output.find("Nothing was deleted"), std::string::npos) << run.output;
        EXPECT_TRUE(Exists(photos + "/1.jpg"));
        EXPECT_FALSE(Exists(inside + "/pics"));
    }
    // A folder that no gallery run made (here another photo folder) is kept
    // unless --force says to empty it.
    const std::string other = dir.File("other");
    WritePhoto(other + "/2.jpg", 40, 30);
    run = RunBatch({"gallery", "--photos", photos, "--out", other});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find(other + " holds files"), std::string::npos) << run.output;
    EXPECT_TRUE(Exists(other + "/2.jpg"));
    run = RunBatch({"gallery", "--photos", photos, "--out", other, "--force"});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_FALSE(Exists(other + "/2.jpg"));
}

} // namespace
} // namespace tivox
