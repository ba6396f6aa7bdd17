// tivox-batch gallery, run as the user runs it, over generated photos: the
// real decode, scaling and encoding of the gallery pictures.

#include <gtest/gtest.h>

#include <filesystem>

#include "gallery_test_support.h"
#include "platform/jpeg_codec.h"
#include "support/test_jpeg.h"

namespace tivox {
namespace {

namespace fs = std::filesystem;
using test::Exists;
using test::HtmlPages;
using test::RunBatch;
using test::TempDir;

Size PictureSize(const std::string& path) {
    JpegInfo info;
    std::string error;
    if (!ReadJpegInfo(path, info, error))
        return {};
    return {info.width, info.height};
}

void WritePhoto(const std::string& path, int width, int height) {
    test::TestJpegOptions options;
    options.width = width;
    options.height = height;
    ASSERT_TRUE(test::WriteFile(path, test::MakeJpeg(options))) << path;
}

TEST(BatchGallery, DefaultsGiveFourByThreePicturesAndUprightPhotosKeepTheirShape) {
    TempDir dir;
    const std::string photos = dir.File("2004");
    fs::create_directories(photos + "/sub");
    WritePhoto(photos + "/a wide.jpg", 1600, 1200);
    WritePhoto(photos + "/sub/b upright.JPG", 1200, 1600);
    WritePhoto(photos + "/c small.jpg", 160, 120);
    const std::string out = dir.File("web/galleries/2004");

    const auto run = RunBatch({"gallery", "--photos", photos, "--out", out, "--title", "Ski"});
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("3 of 3 photos"), std::string::npos) << run.output;

    EXPECT_EQ(PictureSize(out + "/pics/a wide.jpg"), (Size{800, 600}));
    EXPECT_EQ(PictureSize(out + "/pics/thumbs/a wide.jpg"), (Size{200, 150}));
    EXPECT_EQ(PictureSize(out + "/pics/b upright.JPG"), (Size{450, 600}));
    EXPECT_EQ(PictureSize(out + "/pics/thumbs/b upright.JPG"), (Size{112, 150}));
    // A small photo is brought up to the size of the form.
    EXPECT_EQ(PictureSize(out + "/pics/c small.jpg"), (Size{800, 600}));
    EXPECT_EQ(HtmlPages(out), (std::vector<std::string>{"photo1.html", "photo2.html", "photo3.html",
                                                        "thumbs1.html"}));
    const auto check = test::CheckPages(out);
    if (check.ran) {
        EXPECT_EQ(check.exitCode, 0) << check.output;
    }
}

TEST(BatchGallery, FormValuesReachThePicturesAndPages) {
    TempDir dir;
    const std::string photos = dir.File("p");
    fs::create_directories(photos);
    for (int i = 1; i <= 5; ++i)
        WritePhoto(photos + "/" + std::to_string(i) + ".jpg", 400, 300);
    const std::string out = dir.File("g");
    const auto run =
        RunBatch({"gallery", "--photos", photos, "--out", out, "--photo", "100x100", "--thumb",
                  "20x20", "--photo-tiles", "3x1", "--thumb-tiles", "2x2", "--quality", "50"});
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(PictureSize(out + "/pics/1.jpg"), (Size{100, 75}));
    EXPECT_EQ(PictureSize(out + "/pics/thumbs/1.jpg"), (Size{20, 15}));
    EXPECT_EQ(HtmlPages(out), (std::vector<std::string>{"photo1.html", "photo2.html",
                                                        "thumbs1.html", "thumbs2.html"}));
    EXPECT_EQ(test::CountOf(test::ReadText(out + "/photo1.html"), "<img "), 3);
}

TEST(BatchGallery, SameNameInASubfolderEndsAsOnePictureTheLaterCopyWins) {
    TempDir dir;
    const std::string photos = dir.File("p");
    fs::create_directories(photos + "/sub");
    WritePhoto(photos + "/a.jpg", 400, 300);
    WritePhoto(photos + "/sub/a.jpg", 300, 400);
    const std::string out = dir.File("g");
    const auto run = RunBatch({"gallery", "--photos", photos, "--out", out});
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(PictureSize(out + "/pics/a.jpg"), (Size{450, 600}));
    EXPECT_EQ(HtmlPages(out), (std::vector<std::string>{"photo1.html", "thumbs1.html"}));
}

TEST(BatchGallery, UndecodablePhotoIsLeftOutAndTheRestGoesOn) {
    TempDir dir;
    const std::string photos = dir.File("p");
    fs::create_directories(photos);
    WritePhoto(photos + "/1.jpg", 400, 300);
    test::WriteFile(photos + "/2.jpg", {'n', 'o', 't', ' ', 'a', ' ', 'j', 'p', 'e', 'g'});
    WritePhoto(photos + "/3.jpg", 400, 300);
    const std::string out = dir.File("g");
    const auto run = RunBatch({"gallery", "--photos", photos, "--out", out});
    EXPECT_EQ(run.exitCode, 1) << run.output;
    EXPECT_NE(run.output.find("2.jpg"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("2 of 3 photos"), std::string::npos) << run.output;
    EXPECT_TRUE(Exists(out + "/pics/3.jpg"));
    EXPECT_FALSE(Exists(out + "/pics/thumbs/2.jpg"));
    EXPECT_EQ(HtmlPages(out),
              (std::vector<std::string>{"photo1.html", "photo2.html", "thumbs1.html"}));
}

TEST(BatchGallery, GalleryInsideThePhotosIsRefusedAndNothingIsDeleted) {
    TempDir dir;
    const std::string photos = dir.File("p");
    fs::create_directories(photos);
    WritePhoto(photos + "/1.jpg", 40, 30);
    for (const std::string& out : {photos, photos + "/web", dir.path(), photos + "_bak"}) {
        const auto run = RunBatch({"gallery", "--photos", photos, "--out", out});
        EXPECT_EQ(run.exitCode, 1) << out;
        EXPECT_NE(run.output.find("Nothing was deleted"), std::string::npos) << run.output;
        EXPECT_TRUE(Exists(photos + "/1.jpg"));
        EXPECT_FALSE(Exists(out + "/pics"));
    }
}

TEST(BatchGallery, WrongArgumentsGiveTheUsage) {
    TempDir dir;
    const std::vector<std::vector<std::string>> cases = {
        {"gallery"},
        {"gallery", "--photos", dir.path()},
        {"gallery", "--photos", dir.path(), "--out", dir.File("g"), "--photo", "1x600"},
        {"gallery", "--photos", dir.path(), "--out", dir.File("g"), "--thumb", "501x150"},
        {"gallery", "--photos", dir.path(), "--out", dir.File("g"), "--photo-tiles", "11x1"},
        {"gallery", "--photos", dir.path(), "--out", dir.File("g"), "--thumb-tiles", "0x4"},
        {"gallery", "--photos", dir.path(), "--out", dir.File("g"), "--thumb-tiles"},
        {"gallery", "--photos", dir.path(), "--out", dir.File("g"), "--quality", "0"},
        {"gallery", "--photos", dir.path(), "--out", dir.File("g"), "extra"},
    };
    for (const auto& args : cases) {
        const auto run = RunBatch(args);
        EXPECT_EQ(run.exitCode, 2) << args.size() << ": " << run.output;
        EXPECT_NE(run.output.find("usage: tivox-batch gallery"), std::string::npos) << run.output;
    }
    EXPECT_FALSE(Exists(dir.File("g")));
    const auto missing =
        RunBatch({"gallery", "--photos", dir.File("none"), "--out", dir.File("g")});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_NE(missing.output.find("is not a folder"), std::string::npos);
}

} // namespace
} // namespace tivox
