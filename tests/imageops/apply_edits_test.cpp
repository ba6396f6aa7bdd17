// The replay of pending edits on a photo: fixed pass order, the preview and
// the commit, photos without a working image, and files that cannot be read.

#include <gtest/gtest.h>

#include <unistd.h>

#include "edit_fixture.h"
#include "imageops/color_matrix.h"
#include "imageops/convolution.h"
#include "imageops/crop_image.h"
#include "imageops/denoise_filter.h"
#include "imageops/image_processor.h"
#include "imageops/operation.h"
#include "imageops/red_eye_click.h"
#include "imageops/red_eye_fixer.h"
#include "pixel_test_util.h"
#include "platform/bitmap_recycler.h"
#include "platform/resampler.h"

namespace tivox {
namespace {

class ApplyEditsTest : public ::testing::Test {
protected:
    void Open(int w, int h, std::uint32_t seed = 5) {
        photo.SetPath(test::WritePhoto(dir, "p.jpg", w, h, seed));
    }
    Bitmap Fitted(const Bitmap& b) {
        const Size f = FitInto(Size{b.Width(), b.Height()}, window.screen);
        return std::move(*ScaleImage(&b, f.width, f.height));
    }
    test::TempDir dir;
    test::FakeWindow window;
    CPhoto photo;
};

TEST_F(ApplyEditsTest, CropOfTheWorkedExampleAtCommit) {
    // 2048 x 1536 shown on 1024 x 768 fills the screen: s = 2.
    Open(2048, 1536);
    photo.edits.SetCrop(Rect{100, 100, 200, 150});
    Bitmap* full = photo.ApplyEdits(editAll, window, true);
    ASSERT_TRUE(full);
    ASSERT_EQ(full->Width(), 400);
    ASSERT_EQ(full->Height(), 300);
    const Bitmap source = test::Decoded(photo.path);
    for (int y = 0; y < 300; y += 7)
        for (int x = 0; x < 400; x += 7)
            ASSERT_EQ(full->PixelAt(x, y), source.PixelAt(200 + x, 200 + y));
    // The thumbnail follows the commit.
    ASSERT_TRUE(photo.thumbnail);
    EXPECT_EQ(photo.thumbnail->Width(), 117); // 4:3 fitted into 120 x 88
    EXPECT_EQ(photo.thumbnail->Height(), 88);
}

TEST_F(ApplyEditsTest, CommitRunsThePassesInFixedOrder) {
    Open(640, 480);
    window.screen = Size{320, 240};
    CPendingEdits& e = photo.edits;
    // Recorded in another order than the one they are replayed in.
    e.SetResize(Size{150, 100});
    e.SetBrightness(0.1f);
    e.SetContrast(1.2f);
    e.SetSharpness(0.5f);
    e.SetGamma(0.8f);
    e.SetSaturation(1.3f);
    e.SetGrayscale(0);
    e.SetNegative(1);
    e.SetCrop(Rect{20, 30, 200, 150});
    e.AddRedEyePoint(Point{300, 250});
    e.SetDenoise(1);
    photo.LoadScreenImage(window.screen);
    Bitmap* full = photo.ApplyEdits(editAll, window, true);
    ASSERT_TRUE(full);

    // Denoise, red eye, crop, resize, colour with gamma and sharpening.
    Bitmap expected = test::Decoded(photo.path);
    CDenoiseFilter().FilterInPlace(expected);
    CRedEyeFixer fixer(20);
    fixer.SetImage(&expected);
    fixer.Fix(300, 250);
    auto cut = CropImage(&expected, 40, 60, 400, 300); // s = 2
    auto scaled = ScaleImage(cut.get(), 150, 100);
    ColorMatrix m = ColorMatrix::Identity();
    MultiplyMatrix(m, BrightnessMatrix(0.1f));
    MultiplyMatrix(m, ContrastMatrix(1.2f));
    MultiplyMatrix(m, SaturationMatrix(1.3f));
    MultiplyMatrix(m, NegativeMatrix());
    ApplyColorMatrix(*scaled, m, 0.8f);
    Sharpen(*scaled, SharpenStrength(0.5f));
    EXPECT_TRUE(test::SamePixels(*full, *scaled));
    EXPECT_TRUE(e.HasPending()); // the record is the caller's to clear
}

TEST_F(ApplyEditsTest, SecondCropCutsThePreviewAgainButCommitTakesOnlyTheLast) {
    Open(640, 480);
    window.screen = Size{320, 240};
    photo.LoadScreenImage(window.screen);
    CImageProcessor processor;
    processor.SetWindow(&window);
    ASSERT_EQ(processor.Execute(COperation::Crop(0, 0, 160, 120), &photo, false), 0);
    ASSERT_EQ(processor.Execute(COperation::Crop(160, 120, 160, 120), &photo, false), 0);
    // The preview shows the lower right quarter of the upper left quarter.
    CPhoto fresh;
    fresh.SetPath(photo.path);
    fresh.LoadScreenImage(window.screen);
    auto first = CropImage(fresh.screenImage.get(), 0, 0, 160, 120);
    const Bitmap firstFitted = Fitted(*first);
    auto second = CropImage(&firstFitted, 160, 120, 160, 120);
    EXPECT_TRUE(test::SamePixels(*photo.screenImage, Fitted(*second)));

    // The commit reads the last rectangle against the whole picture.
    Bitmap* full = photo.ApplyEdits(editAll, window, true);
    ASSERT_TRUE(full);
    const Bitmap source = test::Decoded(photo.path);
    auto expected = CropImage(&source, 320, 240, 320, 240);
    EXPECT_TRUE(test::SamePixels(*full, *expected));
}

TEST_F(ApplyEditsTest, PreviewDenoiseIsComputedOnFullSizePixels) {
    Open(640, 480);
    window.screen = Size{320, 240};
    photo.LoadScreenImage(window.screen);
    photo.edits.SetDenoise(1);
    photo.ApplyEdits(editAll, window, false);
    Bitmap full = test::Decoded(photo.path);
    CDenoiseFilter().FilterInPlace(full);
    EXPECT_TRUE(test::SamePixels(*photo.screenImage, Fitted(full)));
}

TEST_F(ApplyEditsTest, PreviewReplaysRedEyeAtTheScaledPoint) {
    Open(640, 480);
    window.screen = Size{320, 240};
    photo.LoadScreenImage(window.screen);
    photo.edits.AddRedEyePoint(Point{401, 203});
    photo.ApplyEdits(editAll, window, false);

    CPhoto fresh;
    fresh.SetPath(photo.path);
    fresh.LoadScreenImage(window.screen);
    CRedEyeFixer fixer(10);
    fixer.SetImage(fresh.screenImage.get());
    fixer.Fix(401 * 320 / 640, 203 * 240 / 480);
    EXPECT_TRUE(test::SamePixels(*photo.screenImage, *fresh.screenImage));
}

TEST_F(ApplyEditsTest, RedEyeClickMapsTheScreenToTheFullImage) {
    test::TestJpegOptions o;
    o.width = 1600;
    o.height = 1200;
    o.pattern = test::Pattern::Solid;
    o.solid = 0xF00000;
    photo.SetPath(dir.File("red.jpg"));
    test::WriteFile(photo.path, test::MakeJpeg(o));
    photo.LoadScreenImage(window.screen);
    ASSERT_EQ(photo.screenSize, (Size{1023, 768})); // one pixel short, so mx = 0
    ASSERT_TRUE(RedEyeClick(photo, window.screen, Point{511, 384}));
    ASSERT_EQ(photo.edits.redEyePoints.size(), 1u);
    EXPECT_EQ(photo.edits.redEyePoints[0], (Point{799, 600}));
    EXPECT_EQ(test::Channel(*photo.screenImage, 511, 384, 2), 0);
    EXPECT_GT(test::Channel(*photo.screenImage, 511 + 15, 384, 2), 200);

    CPhoto unopened;
    EXPECT_FALSE(RedEyeClick(unopened, window.screen, Point{1, 1}));
    EXPECT_FALSE(unopened.edits.HasPending());
}

TEST_F(ApplyEditsTest, PhotoNeverShownGetsItsEditsAtCommit) {
    Open(200, 150);
    photo.edits.SetNegative(1);
    photo.edits.SetContrast(1.0f);
    photo.edits.SetSaturation(1.0f);
    photo.edits.SetGamma(1.0f);
    photo.edits.SetCrop(Rect{0, 0, 512, 384}); // the left upper quarter
    // The preview of a photo without working image leaves it without one.
    photo.ApplyEdits(editCrop, window, false);
    EXPECT_FALSE(photo.screenImage);

    Bitmap* full = photo.ApplyEdits(editAll, window, true);
    ASSERT_TRUE(full);
    EXPECT_EQ(full->Width(), 100);
    EXPECT_EQ(full->Height(), 75);
    const Bitmap source = test::Decoded(photo.path);
    EXPECT_EQ(test::Channel(*full, 10, 10, 1), 255 - test::Channel(source, 10, 10, 1));
    EXPECT_FALSE(photo.screenImage);
    ASSERT_TRUE(photo.thumbnail);
    EXPECT_EQ(photo.thumbnail->Width(), 117); // 4:3 in 120 x 88
}

TEST_F(ApplyEditsTest, CommitsHandTheirFullSizeBufferOn) {
    // A large photo, then a smaller one and an unreadable one, through one
    // kept buffer: each commit must see only its own picture.
    BitmapRecycler recycler;
    window.recycler = &recycler;
    window.screen = Size{320, 240};
    auto edit = [](CPhoto& p) {
        p.edits.SetDenoise(1);
        p.edits.SetBrightness(0.1f);
        p.edits.SetContrast(1.0f);
        p.edits.SetSaturation(1.0f);
        p.edits.SetGamma(0.8f);
        p.edits.SetSharpness(0.5f);
    };
    auto expected = [](const std::string& path) {
        Bitmap b = test::Decoded(path);
        CDenoiseFilter().FilterInPlace(b);
        ApplyColorMatrix(b, BrightnessMatrix(0.1f), 0.8f);
        Sharpen(b, SharpenStrength(0.5f));
        return b;
    };
    CPhoto large, small;
    large.SetPath(test::WritePhoto(dir, "large.jpg", 640, 480, 3));
    small.SetPath(test::WritePhoto(dir, "small.jpg", 300, 200, 4));
    edit(large);
    ASSERT_TRUE(large.ApplyEdits(editAll, window, true));
    const std::uint8_t* buffer = large.fullImage->Data();
    ASSERT_EQ(large.SaveAsJpeg(90, &recycler), 1);
    EXPECT_EQ(recycler.KeptBytes(), std::size_t(640 * 480 * 4));

    edit(small);
    small.ApplyEdits(editDenoise, window, false); // the preview borrows it too
    Bitmap* full = small.ApplyEdits(editAll, window, true);
    ASSERT_TRUE(full);
    EXPECT_EQ(full->Data(), buffer);
    EXPECT_TRUE(test::SamePixels(*full, expected(small.path)));
    small.DropFullImage(&recycler);

    CPhoto broken;
    broken.SetPath(dir.File("broken.jpg"));
    test::WriteFile(broken.path, test::Bytes{'n', 'o'});
    broken.edits.SetNegative(1);
    Bitmap* none = broken.ApplyEdits(editAll, window, true);
    EXPECT_TRUE(!none || none->IsEmpty());
    EXPECT_EQ(broken.SaveAsJpeg(90, &recycler), 0);
}

TEST_F(ApplyEditsTest, UnreadablePhotoIsNeverOverwritten) {
    const test::Bytes garbage = {'n', 'o', 't', ' ', 'a', ' ', 'j', 'p', 'e', 'g'};
    photo.SetPath(dir.File("bad.jpg"));
    test::WriteFile(photo.path, garbage);
    photo.edits.SetBrightness(0.2f);
    photo.edits.SetDenoise(1);
    photo.edits.SetCrop(Rect{1, 1, 10, 10});
    photo.ApplyEdits(editAll, window, false);
    photo.ApplyEdits(editAll, window, true);
    EXPECT_EQ(photo.SaveAsJpeg(90), 0);
    test::Bytes after;
    ASSERT_TRUE(test::ReadFile(photo.path, after));
    EXPECT_EQ(after, garbage);
}

TEST_F(ApplyEditsTest, SaveIntoReadOnlyFolderFailsAndKeepsThePhoto) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "the superuser writes into read-only folders";
    Open(64, 48);
    test::Bytes before;
    ASSERT_TRUE(test::ReadFile(photo.path, before));
    photo.edits.SetNegative(1);
    photo.ApplyEdits(editAll, window, true);
    ASSERT_EQ(::chmod(dir.path().c_str(), 0555), 0);
    EXPECT_EQ(photo.SaveAsJpeg(90), 0);
    ::chmod(dir.path().c_str(), 0755);
    test::Bytes after;
    ASSERT_TRUE(test::ReadFile(photo.path, after));
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace tivox
