#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "photos/embedded_preview.h"
#include "photos/photo.h"
#include "photos/scaled_loader.h"
#include "platform/jpeg_codec.h"
#include "platform/resampler.h"
#include "photo_writer/photo_pixels.h"
#include "photo_writer/test_jpeg.h"

namespace tivox {
namespace {

class PhotoTest : public ::testing::Test {
protected:
    void SetUp() override {
        test::TestJpegOptions o = test::Picture(160, 120);
        o.exif = test::CameraExifPayload(test::CameraExif{});
        ASSERT_TRUE(test::WriteFile(path, test::MakeJpeg(o)));
        photo.SetPath(path);
    }
    test::TempDir dir;
    std::string path = dir.File("img_0001.jpg");
    CPhoto photo;
};

TEST_F(PhotoTest, LoadScaledFitsIntoTheBoxAndNotesTheSourceSize) {
    auto img = photo.LoadScaled({120, 88});
    ASSERT_TRUE(img);
    EXPECT_EQ(img->Width(), 117);
    EXPECT_EQ(img->Height(), 88);
    EXPECT_EQ(photo.sourceSize, (Size{160, 120}));
    img = photo.LoadScaled({640, 640}); // enlarged up to the box
    EXPECT_EQ(img->Width(), 640);
    EXPECT_EQ(img->Height(), 480);

    // Even from a single pixel.
    test::TestJpegOptions o = test::Picture(1, 1, test::Pattern::Solid);
    o.solid = 0xC08040;
    ASSERT_TRUE(test::WriteFile(path, test::MakeJpeg(o)));
    const Bitmap* thumb = photo.MakeThumbnail({120, 88});
    EXPECT_EQ(thumb->Width(), 88);
    EXPECT_EQ(thumb->Height(), 88);
    EXPECT_NEAR(int(thumb->PixelAt(87, 87) >> 16 & 0xFF), 0xC0, 4);
}

TEST_F(PhotoTest, UnreadableFilesGetAThumbnailThatDrawsNothing) {
    const test::Bytes junk = {'n', 'o', 't', ' ', 'j', 'p', 'e', 'g'};
    for (const test::Bytes& content : {junk, test::Bytes{}}) {
        ASSERT_TRUE(test::WriteFile(path, content));
        Bitmap* thumb = photo.MakeThumbnail({120, 88});
        ASSERT_NE(thumb, nullptr);
        EXPECT_TRUE(thumb->IsEmpty());
        EXPECT_EQ(photo.thumbnailReady.load(), 1);
        EXPECT_EQ(photo.sourceSize, (Size{0, 0}));
    }
    photo.SetPath(dir.File("gone.jpg"));
    EXPECT_TRUE(photo.MakeThumbnail({120, 88})->IsEmpty());
    EXPECT_TRUE(photo.OpenFullImage()->IsEmpty());
}

TEST_F(PhotoTest, ThumbnailsFollowTheScreenImage) {
    EXPECT_EQ(photo.IsLandscape(), 1); // no thumbnail yet, and a square one
    photo.MakeThumbnail({120, 88});
    photo.thumbnail->Reset(10, 10);
    EXPECT_EQ(photo.IsLandscape(), 1);

    // Without the flag the screen image is left to the next view.
    photo.LoadScreenImage({100, 100});
    EXPECT_EQ(photo.screenSize, (Size{100, 75}));
    photo.RebuildImages({40, 30}, {100, 100}, false);
    EXPECT_EQ(photo.screenImage, nullptr);
    EXPECT_EQ(photo.thumbnail->Width(), 40);

    // The thumbnail shows the working image, else the file.
    photo.LoadScreenImage({160, 120});
    photo.screenImage->Fill(0xFF00FF00u); // an "edit"
    Bitmap* thumb = photo.ThumbnailFromScreen({40, 40});
    EXPECT_EQ(thumb->Width(), 40);
    EXPECT_EQ(thumb->Height(), 30);
    EXPECT_EQ(thumb->PixelAt(20, 15), 0xFF00FF00u);
    photo.DropScreenImage();
    thumb = photo.ThumbnailFromScreen({40, 40});
    EXPECT_NE(thumb->PixelAt(20, 15), 0xFF00FF00u);
}

TEST_F(PhotoTest, SaveReplacesTheFileKeepingItsMetadataOrLeavesIt) {
    test::Bytes before, after;
    ASSERT_TRUE(test::ReadFile(path, before));
    EXPECT_FALSE(photo.SaveAsJpeg(90));           // nothing to save
    photo.fullImage = std::make_unique<Bitmap>(); // an empty picture
    EXPECT_FALSE(photo.SaveAsJpeg(90));
    EXPECT_EQ(photo.fullImage, nullptr);
    ASSERT_TRUE(test::ReadFile(path, after));
    EXPECT_EQ(before, after);

    // A write-protected photo is refused, saying why.
    photo.LoadFullImage();
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    UiText why;
    EXPECT_FALSE(photo.SaveAsJpeg(90, nullptr, &why));
    EXPECT_EQ(RenderUiText(why), "Could not write " + path + ": the file is write-protected.");
    ASSERT_TRUE(test::ReadFile(path, after));
    EXPECT_EQ(before, after);

    ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
    photo.LoadFullImage();
    ASSERT_EQ(photo.fullImage->Width(), 160);
    photo.fullImage->Fill(0xFFFF0000u);
    EXPECT_TRUE(photo.SaveAsJpeg(90));
    EXPECT_EQ(photo.fullImage, nullptr);
    Bitmap back;
    std::string error;
    ASSERT_TRUE(DecodeJpegFile(path, {}, back, error));
    EXPECT_GT(back.PixelAt(80, 60) >> 16 & 0xFF, 240u);
    ASSERT_TRUE(test::ReadFile(path, after));
    const auto exif = test::CameraExifPayload(test::CameraExif{});
    EXPECT_NE(std::search(after.begin(), after.end(), exif.begin(), exif.end()), after.end());
}

// The thumbnail comes from a scaled decode; it must look like the full
// picture resampled, also at ratios the decoder's scales don't meet.
TEST(ThumbnailQuality, ScaledDecodeLooksLikeTheFullPictureResampled) {
    test::TempDir dir;
    const struct {
        int w, h;
        Size box;
    } cases[] = {{1000, 750, {120, 90}}, {900, 1200, {200, 150}}, {640, 480, {472, 262}}};
    for (const auto& c : cases) {
        const std::string path = dir.File("q.jpg");
        ASSERT_TRUE(test::WritePhotoJpeg(path, c.w, c.h, 11, 95));
        Bitmap full, reference;
        std::string error;
        ASSERT_TRUE(DecodeJpegFile(path, {}, full, error));
        CPhoto photo;
        photo.SetPath(path);
        const Bitmap* thumb = photo.MakeThumbnail(c.box);
        ASSERT_TRUE(Resampler().Scale(full, thumb->Width(), thumb->Height(), reference));
        EXPECT_GE(test::Psnr(*thumb, reference), 35.0) << c.w << "x" << c.h;
    }
}

// A camera that knew it was held upright stores the pixels turned and says
// so in the Orientation tag; every picture made of the photo stands upright.
TEST(Upright, PhotosOfAllEightOrientationsLoadUpright) {
    test::TempDir dir;
    Bitmap upright, small;
    ASSERT_TRUE(test::PhotoBitmap(96, 64, 3, upright));
    ASSERT_TRUE(Resampler().Scale(upright, 48, 32, small));
    for (int o = 1; o <= 8; ++o) {
        SCOPED_TRACE(o);
        const std::string path = dir.File(std::to_string(o) + ".jpg");
        ASSERT_TRUE(test::WriteFile(path, test::CameraJpeg(upright, o)));
        CPhoto photo;
        photo.SetPath(path);
        const Bitmap* thumb = photo.MakeThumbnail({48, 48});
        EXPECT_EQ(photo.sourceSize, (Size{96, 64}));
        ASSERT_EQ(thumb->Width(), 48);
        EXPECT_GE(test::Psnr(*thumb, small), 27.0);
        EXPECT_EQ(photo.IsLandscape(), 1); // crops are offered in landscape
        const auto full = photo.OpenFullImage();
        ASSERT_EQ(full->Width(), 96);
        EXPECT_GE(test::Psnr(*full, upright), 27.0);
        Bitmap preview;
        ASSERT_TRUE(ReadEmbeddedPreview(path, preview));
        ASSERT_EQ(preview.Width(), 96);
        EXPECT_GE(test::Psnr(preview, upright), 27.0);
    }
}

// The corpus holds one landscape and one portrait picture stored in each of
// the eight ways: all show the same as the one stored upright.
TEST(Upright, CorpusPhotosOfAllEightOrientationsLookAlike) {
    const std::string folder = std::string(TIVOX_CORPUS_DIR) + "/orientation/";
    if (!std::filesystem::exists(folder + "portrait_1.jpg"))
        GTEST_SKIP() << "no corpus";
    CScaledLoader loader;
    std::string error;
    for (const std::string kind : {"landscape_", "portrait_"}) {
        Bitmap reference, shown;
        ASSERT_TRUE(loader.LoadFull(folder + kind + "1.jpg", reference, error)) << error;
        for (int o = 2; o <= 8; ++o) {
            ASSERT_TRUE(loader.LoadFull(folder + kind + std::to_string(o) + ".jpg", shown, error));
            ASSERT_EQ(shown.Width(), reference.Width()) << kind << o;
            EXPECT_GE(test::Psnr(shown, reference), 18.0) << kind << o; // wrong ways: 11
        }
    }
}

} // namespace
} // namespace tivox
