#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cmath>

#include "photos/photo.h"
#include "platform/atomic_file.h"
#include "platform/jpeg_codec.h"
#include "support/photo_pixels.h"
#include "support/test_jpeg.h"

namespace tivox {
namespace {

class PhotoTest : public ::testing::Test {
protected:
    void SetUp() override {
        path = dir.File("img_0001.jpg");
        test::TestJpegOptions o;
        o.width = 160;
        o.height = 120;
        o.exif = test::CameraExifPayload(test::CameraExif{});
        ASSERT_TRUE(test::WriteFile(path, test::MakeJpeg(o)));
        photo.SetPath(path);
    }
    test::TempDir dir;
    std::string path;
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

TEST_F(PhotoTest, OnePixelPhotosAreEnlargedToTheBox) {
    test::TestJpegOptions o;
    o.width = 1;
    o.height = 1;
    o.pattern = test::Pattern::Solid;
    o.solid = 0xC08040;
    ASSERT_TRUE(test::WriteFile(path, test::MakeJpeg(o)));
    const Bitmap* thumb = photo.MakeThumbnail({120, 88});
    EXPECT_EQ(thumb->Width(), 88);
    EXPECT_EQ(thumb->Height(), 88);
    EXPECT_NEAR(int(thumb->PixelAt(87, 87) >> 16 & 0xFF), 0xC0, 4);
}

TEST_F(PhotoTest, LandscapeFollowsTheThumbnail) {
    EXPECT_EQ(photo.IsLandscape(), 1); // no thumbnail
    photo.MakeThumbnail({120, 88});
    EXPECT_EQ(photo.IsLandscape(), 1);
    photo.thumbnail->Reset(10, 10); // square
    EXPECT_EQ(photo.IsLandscape(), 1);
    photo.thumbnail->Reset(10, 11);
    EXPECT_EQ(photo.IsPortrait(), 1);
    photo.DropThumbnail();
    EXPECT_EQ(photo.thumbnail, nullptr);
    EXPECT_EQ(photo.thumbnailReady.load(), 0);
}

TEST_F(PhotoTest, RebuildWithoutTheFlagLeavesTheScreenImageToTheNextView) {
    photo.LoadScreenImage({100, 100});
    EXPECT_EQ(photo.screenSize, (Size{100, 75}));
    photo.RebuildImages({40, 30}, {100, 100}, false);
    EXPECT_EQ(photo.screenImage, nullptr);
    EXPECT_EQ(photo.thumbnail->Width(), 40);
    photo.RebuildImages({40, 30}, {100, 100}, true);
    ASSERT_NE(photo.screenImage, nullptr);
    EXPECT_EQ(photo.screenImage->Width(), 100);
}

TEST_F(PhotoTest, ThumbnailFromScreenShowsTheWorkingImage) {
    photo.LoadScreenImage({160, 120});
    photo.screenImage->Fill(0xFF00FF00u); // an "edit"
    Bitmap* thumb = photo.ThumbnailFromScreen({40, 40});
    EXPECT_EQ(thumb->Width(), 40);
    EXPECT_EQ(thumb->Height(), 30);
    EXPECT_EQ(thumb->PixelAt(20, 15), 0xFF00FF00u);
    // Without a working image the thumbnail comes from the file.
    photo.DropScreenImage();
    thumb = photo.ThumbnailFromScreen({40, 40});
    EXPECT_NE(thumb->PixelAt(20, 15), 0xFF00FF00u);
}

TEST_F(PhotoTest, ReplaceAndFitToScreen) {
    EXPECT_EQ(photo.ReplaceImage(nullptr, false), nullptr);
    auto big = std::make_unique<Bitmap>();
    big->Reset(400, 100);
    big->Fill(0xFF112233u);
    Bitmap* raw = big.get();
    EXPECT_EQ(photo.FitToScreen(raw, {200, 200}, true), raw);
    Bitmap* fitted = photo.FitToScreen(raw, {200, 200}, false);
    ASSERT_EQ(fitted, photo.screenImage.get());
    EXPECT_EQ(fitted->Width(), 200);
    EXPECT_EQ(fitted->Height(), 50);
    EXPECT_EQ(photo.ReplaceImage(std::move(big), true), raw);
    EXPECT_EQ(photo.fullImage.get(), raw);
}

TEST_F(PhotoTest, SaveReplacesTheFileKeepingItsMetadata) {
    ASSERT_TRUE(test::WriteFile(path + ".tmp", {1, 2, 3})); // left by an earlier failure
    photo.LoadFullImage();
    ASSERT_EQ(photo.fullImage->Width(), 160);
    photo.fullImage->Fill(0xFFFF0000u);
    EXPECT_EQ(photo.SaveAsJpeg(90), 1);
    EXPECT_EQ(photo.fullImage, nullptr);
    EXPECT_NE(::access((path + ".tmp").c_str(), F_OK), 0);
    Bitmap back;
    std::string error;
    ASSERT_TRUE(DecodeJpegFile(path, {}, back, error));
    EXPECT_GT(back.PixelAt(80, 60) >> 16 & 0xFF, 240u);
    test::Bytes bytes;
    ASSERT_TRUE(test::ReadFile(path, bytes));
    const auto exif = test::CameraExifPayload(test::CameraExif{});
    EXPECT_NE(std::search(bytes.begin(), bytes.end(), exif.begin(), exif.end()), bytes.end());
}

TEST_F(PhotoTest, AFailedSaveLeavesThePhotoAndDropsTheFullImage) {
    test::Bytes before;
    ASSERT_TRUE(test::ReadFile(path, before));
    EXPECT_EQ(photo.SaveAsJpeg(90), 0);           // nothing to save
    photo.fullImage = std::make_unique<Bitmap>(); // empty picture
    EXPECT_EQ(photo.SaveAsJpeg(90), 0);
    EXPECT_EQ(photo.fullImage, nullptr);
    test::Bytes after;
    ASSERT_TRUE(test::ReadFile(path, after));
    EXPECT_EQ(before, after);
}

} // namespace
} // namespace tivox

namespace tivox {
namespace {

// The exact area average: each output pixel is the mean of the source area
// it covers, fractional edge pixels weighted by their share.
void AreaAverage(const Bitmap& in, int w, int h, Bitmap& out) {
    ASSERT_TRUE(out.Reset(w, h));
    const double sx = double(in.Width()) / w, sy = double(in.Height()) / h;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            double sum[3] = {0, 0, 0}, area = 0;
            const double x0 = x * sx, x1 = (x + 1) * sx, y0 = y * sy, y1 = (y + 1) * sy;
            for (int j = int(y0); j < std::min(in.Height(), int(std::ceil(y1))); ++j) {
                const double wy = std::min(y1, j + 1.0) - std::max(y0, double(j));
                for (int i = int(x0); i < std::min(in.Width(), int(std::ceil(x1))); ++i) {
                    const double wgt = wy * (std::min(x1, i + 1.0) - std::max(x0, double(i)));
                    const std::uint8_t* p = in.Row(j) + 4 * i;
                    for (int c = 0; c < 3; ++c)
                        sum[c] += wgt * p[c];
                    area += wgt;
                }
            }
            std::uint8_t* d = out.Row(y) + 4 * x;
            for (int c = 0; c < 3; ++c)
                d[c] = std::uint8_t(sum[c] / area + 0.5);
            d[3] = 255;
        }
}

TEST(ThumbnailQuality, ScaledDecodePlusResamplerMatchesTheAreaAverage) {
    test::TempDir dir;
    const struct {
        int w, h;
        Size box;
    } cases[] = {{1000, 750, {120, 90}},
                 {960, 720, {120, 90}},
                 {900, 1200, {200, 150}},
                 {640, 480, {472, 262}}};
    for (const auto& c : cases) {
        const std::string path = dir.File("q.jpg");
        ASSERT_TRUE(test::WritePhotoJpeg(path, c.w, c.h, 11, 95));
        Bitmap full, reference;
        std::string error;
        ASSERT_TRUE(DecodeJpegFile(path, {}, full, error));
        CPhoto photo;
        photo.SetPath(path);
        const Bitmap* thumb = photo.MakeThumbnail(c.box);
        AreaAverage(full, thumb->Width(), thumb->Height(), reference);
        EXPECT_GE(test::Psnr(*thumb, reference), 35.0) << c.w << "x" << c.h;
    }
}

} // namespace
} // namespace tivox
