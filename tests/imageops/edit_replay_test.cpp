// The processor and the replay of pending edits on a photo: fixed pass order,
// the preview and the commit, photos without a working image, files that
// cannot be read or written, and tivox-batch edit as the user runs it.

#include <gtest/gtest.h>

#include "edit_fixture.h"
#include "imageops/apply_edits.h"
#include "imageops/color_matrix.h"
#include "imageops/convolution.h"
#include "imageops/crop_image.h"
#include "imageops/denoise_filter.h"
#include "imageops/image_processor.h"
#include "imageops/red_eye_click.h"
#include "imageops/red_eye_fixer.h"
#include "pixel_test_util.h"
#include "platform/bitmap_recycler.h"
#include "platform/pnm_io.h"
#include "platform/resampler.h"
#include "support/batch_runner.h"

namespace tivox {
namespace {

class EditTest : public ::testing::Test {
protected:
    void SetUp() override {
        processor.SetWindow(&window);
        window.current = &photo;
    }
    void Open(int w, int h) { photo.SetPath(test::WritePhoto(dir, "p.jpg", w, h, 5)); }
    // Opened and shown on a 320 x 240 screen.
    void Show(int w, int h) {
        Open(w, h);
        window.screen = Size{320, 240};
        photo.LoadScreenImage(window.screen);
    }
    Bitmap Fitted(const Bitmap& b) {
        const Size f = FitInto(Size{b.Width(), b.Height()}, window.screen);
        return std::move(*ScaleImage(&b, f.width, f.height));
    }
    // The working image of the unedited file.
    Bitmap Fresh() {
        CPhoto fresh;
        fresh.SetPath(photo.path);
        fresh.LoadScreenImage(window.screen);
        return std::move(*fresh.screenImage);
    }
    // What the colour tab does on each change.
    void ColourChange(float brightness, float sharpness) {
        ColorSettings settings;
        settings.brightness = brightness;
        settings.sharpness = sharpness;
        processor.ShowColor(settings,
                            [&](const COperation& op) { processor.Execute(op, &photo, false); });
    }
    test::TempDir dir;
    test::FakeWindow window;
    CPhoto photo;
    CImageProcessor processor;
};

TEST_F(EditTest, CommitRunsThePassesInFixedOrder) {
    Show(640, 480);
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
    Bitmap* full = ApplyEdits(photo, editAll, window, true);
    ASSERT_TRUE(full);

    // Denoise, red eye, crop, resize, colour with gamma and sharpening.
    Bitmap expected = test::Decoded(photo.path);
    CDenoiseFilter().FilterInPlace(expected);
    CRedEyeFixer fixer(20);
    fixer.SetImage(&expected);
    fixer.Fix(300, 250);
    auto cut = CropImage(&expected, 40, 60, 400, 300); // s = 2
    auto scaled = ScaleImage(cut.get(), 150, 100);
    ColorMatrix m = BrightnessMatrix(0.1f);
    MultiplyMatrix(m, ContrastMatrix(1.2f));
    MultiplyMatrix(m, SaturationMatrix(1.3f));
    MultiplyMatrix(m, NegativeMatrix());
    ApplyColorMatrix(*scaled, m, 0.8f);
    Sharpen(*scaled, SharpenStrength(0.5f));
    EXPECT_TRUE(test::SamePixels(*full, *scaled));
    EXPECT_TRUE(e.HasPending()); // the record is the caller's to clear
}

TEST_F(EditTest, SecondCropCutsThePreviewAgainButCommitTakesOnlyTheLast) {
    Show(640, 480);
    // After a colour reset too: the crop is no colour step that starts afresh.
    processor.Execute(COperation::Plain(opResetColor), &photo, false);
    ASSERT_EQ(processor.Execute(COperation::Crop(0, 0, 160, 120), &photo, false), 0);
    ASSERT_EQ(processor.Execute(COperation::Crop(160, 120, 160, 120), &photo, false), 0);
    EXPECT_EQ(photo.edits.colorPending, 1); // a crop records the colour state too
    // The preview shows the lower right quarter of the upper left quarter.
    const Bitmap fresh = Fresh();
    const Bitmap first = Fitted(*CropImage(&fresh, 0, 0, 160, 120));
    EXPECT_TRUE(
        test::SamePixels(*photo.screenImage, Fitted(*CropImage(&first, 160, 120, 160, 120))));

    // The commit reads the last rectangle against the whole picture.
    Bitmap* full = ApplyEdits(photo, editAll, window, true);
    ASSERT_TRUE(full);
    const Bitmap source = test::Decoded(photo.path);
    EXPECT_TRUE(test::SamePixels(*full, *CropImage(&source, 320, 240, 320, 240)));
}

TEST_F(EditTest, RedEyeClickMapsTheScreenToTheFullImage) {
    test::TestJpegOptions o = test::Picture(1600, 1200, test::Pattern::Solid);
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

TEST_F(EditTest, PhotoNeverShownIsOnlyRecordedAndGetsItsEditsAtCommit) {
    Open(200, 150);
    processor.SetOperation(opNegative);
    processor.ApplyColor(&photo, false);
    EXPECT_EQ(photo.edits.colorPending, 1);
    // The left upper quarter of the screen.
    EXPECT_EQ(processor.Execute(COperation::Crop(0, 0, 512, 384), &photo, true), 0);
    EXPECT_EQ(photo.edits.cropPending, 1);
    ApplyEdits(photo, editCrop, window, false);
    EXPECT_FALSE(photo.screenImage);

    Bitmap* full = ApplyEdits(photo, editAll, window, true);
    ASSERT_TRUE(full);
    EXPECT_EQ(full->Width(), 100);
    EXPECT_EQ(full->Height(), 75);
    const Bitmap source = test::Decoded(photo.path);
    EXPECT_EQ(test::Channel(*full, 10, 10, 1), 255 - test::Channel(source, 10, 10, 1));
    EXPECT_FALSE(photo.screenImage);
    ASSERT_TRUE(photo.thumbnail);
    EXPECT_EQ(photo.thumbnail->Width(), 117);
}

TEST_F(EditTest, CommitsHandTheirFullSizeBufferOn) {
    // A large photo, then a smaller one and an unreadable one, through one
    // kept buffer: each commit must see only its own picture.
    window.keepsBuffers = true;
    BitmapRecycler& recycler = window.buffers;
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
    ASSERT_TRUE(ApplyEdits(large, editAll, window, true));
    const std::uint8_t* buffer = large.fullImage->Data();
    ASSERT_TRUE(large.SaveAsJpeg(90, &recycler));
    EXPECT_EQ(recycler.KeptBytes(), std::size_t(640 * 480 * 4));

    edit(small);
    ApplyEdits(small, editDenoise, window, false); // the preview borrows it too
    Bitmap* full = ApplyEdits(small, editAll, window, true);
    ASSERT_TRUE(full);
    EXPECT_EQ(full->Data(), buffer);
    EXPECT_TRUE(test::SamePixels(*full, expected(small.path)));
    small.DropFullImage(&recycler);

    CPhoto broken;
    broken.SetPath(dir.File("broken.jpg"));
    test::WriteFile(broken.path, test::Bytes{'n', 'o'});
    broken.edits.SetNegative(1);
    Bitmap* none = ApplyEdits(broken, editAll, window, true);
    EXPECT_TRUE(!none || none->IsEmpty());
    EXPECT_FALSE(broken.SaveAsJpeg(90, &recycler));
}

TEST(ImageProcessor, CheckBoxesToggleAndResetGoesBackToNeutral) {
    CImageProcessor p;
    p.SetOperation(opSharpness, 0.5f);
    p.SetOperation(opGamma, 1.5f);
    p.SetOperation(opGrayscale); // the check boxes toggle
    p.SetOperation(opGrayscale);
    EXPECT_FALSE(p.m_color.grayscale);
    p.SetOperation(opResetColor);
    EXPECT_TRUE(p.m_colorMatrix.IsIdentity());
    EXPECT_FLOAT_EQ(p.m_color.gamma, 1.0f);
    EXPECT_FLOAT_EQ(p.m_color.sharpness, 0.0f);
}

TEST_F(EditTest, SliderStepsNeverPileUpAndResetColorReloads) {
    Show(320, 240);
    ColourChange(0.2f, 0.3f);
    const Bitmap once = test::Copy(*photo.screenImage);
    ColourChange(0.1f, 0.0f);
    ColourChange(0.2f, 0.3f);
    EXPECT_TRUE(test::SamePixels(*photo.screenImage, once));
    // The fresh working image with colour and sharpening applied once.
    Bitmap expected = Fresh();
    ApplyColorMatrix(expected, BrightnessMatrix(0.2f), 1.0f);
    Sharpen(expected, SharpenStrength(0.3f));
    EXPECT_TRUE(test::SamePixels(*photo.screenImage, expected));
    EXPECT_FLOAT_EQ(photo.edits.brightness, 0.2f);
    EXPECT_FLOAT_EQ(photo.edits.sharpness, 0.3f);

    processor.SetOperation(opResetColor);
    EXPECT_EQ(processor.Execute(COperation::Plain(opResetColor), &photo, false), 0);
    EXPECT_TRUE(test::SamePixels(*photo.screenImage, Fresh()));
    EXPECT_EQ(photo.edits.colorPending, 1);
    EXPECT_FLOAT_EQ(photo.edits.brightness, 0.0f);
    EXPECT_FLOAT_EQ(photo.edits.contrast, 1.0f);
    EXPECT_FLOAT_EQ(photo.edits.gamma, 1.0f);
    EXPECT_FLOAT_EQ(photo.edits.saturation, 1.0f);
    EXPECT_FLOAT_EQ(photo.edits.sharpness, 0.0f);
}

TEST_F(EditTest, BadOperationsFailClearlyOrDoNothingAndRecordNothing) {
    Show(320, 240);
    const struct {
        const char* name;
        COperation op;
    } cases[] = {
        {"empty crop", COperation::Crop(10, 10, 0, 50)},
        {"crop off the picture", COperation::Crop(2000, 2000, 50, 50)},
        {"resize above the memory budget", COperation::Resize(50000, 50000)},
        {"resize to nothing", COperation::Resize(0, 10)},
        {"resize to no height", COperation::Resize(10, 0)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(processor.Execute(c.op, &photo, false), -1) << c.name;
        EXPECT_FALSE(RenderUiText(processor.GetErrorText()).empty()) << c.name;
    }
    for (int code : {0, 6, 19, -1}) // unknown to Execute
        EXPECT_EQ(processor.Execute(COperation::Plain(code), &photo, false), 0);
    EXPECT_FALSE(photo.edits.HasPending());
    EXPECT_EQ(processor.Execute(COperation::Resize(1, 1), &photo, false), 0);
    EXPECT_EQ(photo.edits.resizeSize, (Size{1, 1}));
}

int BatchEdit(std::vector<std::string> args) {
    args.insert(args.begin(), "edit");
    return test::RunBatch(args).exitCode;
}

TEST(BatchEdit, ColourValuesAreSliderValuesAndCropsAreScreenCoordinates) {
    test::TempDir dir;
    const std::string photo = test::WritePhoto(dir, "p.jpg", 2048, 1536);
    const std::string out = dir.File("p.pam");
    ASSERT_EQ(BatchEdit({photo, "--brightness", "0.10", "--contrast", "2", "--out", out}), 0);
    Bitmap written;
    std::string error;
    ASSERT_TRUE(ReadPnmFile(out, written, error)) << error;
    Bitmap expected = test::Decoded(photo);
    ColorMatrix m = BrightnessMatrix(10 * 0.01f);
    MultiplyMatrix(m, ContrastMatrix(200 * 0.01f));
    ApplyColorMatrix(expected, m, 1.0f);
    EXPECT_TRUE(test::SamePixels(written, expected));

    // Without --out the commit replaces the photo.
    ASSERT_EQ(BatchEdit({photo, "--crop", "100,100,200,150", "--denoise", "--quality", "85"}), 0);
    const Bitmap after = test::Decoded(photo);
    EXPECT_EQ(after.Width(), 400);
    EXPECT_EQ(after.Height(), 300);
}

TEST(BatchEdit, BadInputFailsAndLeavesThePhoto) {
    test::TempDir dir;
    const std::string photo = test::WritePhoto(dir, "p.jpg", 64, 48);
    test::Bytes before, after;
    ASSERT_TRUE(test::ReadFile(photo, before));
    const std::vector<std::vector<std::string>> runs = {
        {photo, "--crop", "5000,5000,10,10"},
        {photo, "--crop", "10,10,0,10"},
        {photo, "--resize", "50000x50000"},
        {photo, "--gamma", "3"},
        {photo, "--quality", "0"},
        {photo, "--redeye", "12"},
        {dir.File("missing.jpg"), "--negative"},
    };
    for (const auto& args : runs) {
        EXPECT_NE(BatchEdit(args), 0) << args[1];
        ASSERT_TRUE(test::ReadFile(photo, after));
        EXPECT_EQ(after, before) << args[1];
    }
    // A photo cut off in its scan: refused with the cause, and left as it is.
    const std::string cut = dir.File("cut.jpg");
    const test::Bytes damaged = test::Truncated(before, before.size() * 2 / 3);
    test::WriteFile(cut, damaged);
    const test::CommandRun run = test::RunBatch({"edit", cut, "--negative"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(
        run.output.find("Could not read " + cut + ": the JPEG data is damaged or incomplete."),
        std::string::npos)
        << run.output;
    ASSERT_TRUE(test::ReadFile(cut, after));
    EXPECT_EQ(after, damaged);
}

} // namespace
} // namespace tivox
