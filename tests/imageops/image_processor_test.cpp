#include "imageops/image_processor.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "edit_fixture.h"
#include "imageops/convolution.h"
#include "pixel_test_util.h"
#include "platform/resampler.h"

namespace tivox {
namespace {

using test::FakeWindow;

TEST(ImageProcessor, ColourStateFollowsTheCodes) {
    CImageProcessor p;
    EXPECT_TRUE(p.m_colorMatrix.IsIdentity());
    EXPECT_EQ(p.m_lastOperation, 0);

    p.SetOperation(opBrightness, 0.10f);
    p.SetOperation(opContrast, 2.0f);
    ColorMatrix expected = BrightnessMatrix(0.10f);
    MultiplyMatrix(expected, ContrastMatrix(2.0f));
    EXPECT_EQ(p.m_colorMatrix, expected);
    EXPECT_FLOAT_EQ(p.m_brightness, 0.10f);
    EXPECT_FLOAT_EQ(p.m_contrast, 2.0f);
    EXPECT_EQ(p.m_lastOperation, opContrast);

    // Sharpness and gamma leave the matrix alone.
    p.SetOperation(opSharpness, 0.5f);
    p.SetOperation(opGamma, 1.5f);
    EXPECT_EQ(p.m_colorMatrix, expected);
    EXPECT_FLOAT_EQ(p.m_sharpness, 0.5f);
    EXPECT_FLOAT_EQ(p.m_gamma, 1.5f);

    // The check boxes toggle.
    p.SetOperation(opGrayscale);
    EXPECT_EQ(p.m_grayscale, 1);
    p.SetOperation(opGrayscale);
    EXPECT_EQ(p.m_grayscale, 0);

    // Any code is remembered, also one without effect.
    p.SetOperation(opCrop);
    EXPECT_EQ(p.m_lastOperation, opCrop);

    p.SetOperation(opResetColor);
    EXPECT_TRUE(p.m_colorMatrix.IsIdentity());
    EXPECT_FLOAT_EQ(p.m_contrast, 1.0f);
    EXPECT_FLOAT_EQ(p.m_gamma, 1.0f);
    EXPECT_FLOAT_EQ(p.m_saturation, 1.0f);
    EXPECT_FLOAT_EQ(p.m_sharpness, 0.0f);
    EXPECT_EQ(p.m_lastOperation, opResetColor);
}

class ProcessorOnPhoto : public ::testing::Test {
protected:
    void SetUp() override {
        photo.SetPath(test::WritePhoto(dir, "a.jpg", 320, 240, 3));
        processor.SetWindow(&window);
        window.current = &photo;
        photo.LoadScreenImage(window.screen);
    }
    // What the colour tab does on each change: reset, then all values anew.
    void ColourChange(float brightness, float sharpness) {
        processor.SetOperation(opResetColor);
        processor.Execute(COperation::Plain(opResetColor), &photo, false);
        processor.SetOperation(opBrightness, brightness);
        processor.SetOperation(opContrast, 1.0f);
        processor.SetOperation(opSharpness, sharpness);
        processor.SetOperation(opGamma, 1.0f);
        processor.SetOperation(opSaturation, 1.0f);
        processor.Execute(COperation::Plain(opApplyColor), &photo, false);
    }

    test::TempDir dir;
    FakeWindow window;
    CPhoto photo;
    CImageProcessor processor;
};

TEST_F(ProcessorOnPhoto, SliderStepsNeverPileUp) {
    ColourChange(0.2f, 0.3f);
    const Bitmap once = test::Copy(*photo.screenImage);
    ColourChange(0.1f, 0.0f);
    ColourChange(0.2f, 0.3f);
    EXPECT_TRUE(test::SamePixels(*photo.screenImage, once));

    // The working image equals the freshly loaded one with colour and
    // sharpening applied once.
    CPhoto fresh;
    fresh.SetPath(photo.path);
    fresh.LoadScreenImage(window.screen);
    ApplyColorMatrix(*fresh.screenImage, BrightnessMatrix(0.2f), 1.0f);
    Sharpen(*fresh.screenImage, SharpenStrength(0.3f));
    EXPECT_TRUE(test::SamePixels(*photo.screenImage, *fresh.screenImage));

    EXPECT_EQ(photo.edits.colorPending, 1);
    EXPECT_FLOAT_EQ(photo.edits.brightness, 0.2f);
    EXPECT_FLOAT_EQ(photo.edits.sharpness, 0.3f);
}

TEST_F(ProcessorOnPhoto, ResetColorReloadsAndRecordsNeutralValues) {
    ColourChange(0.4f, 0.0f);
    processor.SetOperation(opResetColor);
    EXPECT_EQ(processor.Execute(COperation::Plain(opResetColor), &photo, false), 0);
    CPhoto fresh;
    fresh.SetPath(photo.path);
    fresh.LoadScreenImage(window.screen);
    EXPECT_TRUE(test::SamePixels(*photo.screenImage, *fresh.screenImage));
    EXPECT_EQ(photo.edits.colorPending, 1);
    EXPECT_FLOAT_EQ(photo.edits.brightness, 0.0f);
    EXPECT_FLOAT_EQ(photo.edits.contrast, 1.0f);
    EXPECT_FLOAT_EQ(photo.edits.gamma, 1.0f);
    EXPECT_FLOAT_EQ(photo.edits.saturation, 1.0f);
}

TEST_F(ProcessorOnPhoto, PhotoWithoutWorkingImageIsOnlyRecorded) {
    photo.DropScreenImage();
    processor.SetOperation(opSaturation, 0.0f);
    processor.ApplyColor(&photo, false);
    EXPECT_FALSE(photo.screenImage);
    EXPECT_EQ(photo.edits.colorPending, 1);
    EXPECT_FLOAT_EQ(photo.edits.saturation, 0.0f);

    EXPECT_EQ(processor.Execute(COperation::Crop(10, 10, 100, 80), &photo, true), 0);
    EXPECT_EQ(photo.edits.cropPending, 1);
    EXPECT_EQ(processor.Execute(COperation::Resize(64, 48), &photo, true), 0);
    EXPECT_EQ(photo.edits.resizeSize, (Size{64, 48}));
    EXPECT_FALSE(photo.screenImage);
}

TEST_F(ProcessorOnPhoto, CropShowsTheCutFittedToTheScreen) {
    // 320 x 240 fills the 1024 x 768 screen.
    ASSERT_EQ(photo.screenImage->Width(), 1024);
    EXPECT_EQ(processor.Execute(COperation::Crop(0, 0, 512, 384), &photo, false), 0);
    EXPECT_EQ(photo.edits.cropRect, (Rect{0, 0, 512, 384}));
    EXPECT_EQ(photo.screenImage->Height(), 768);
    EXPECT_EQ(processor.m_lastOperation, opCrop);
    EXPECT_EQ(photo.edits.colorPending, 1); // the crop records the colour state
}

TEST_F(ProcessorOnPhoto, BadCropAndResizeFailClearlyAndRecordNothing) {
    struct Case {
        const char* name;
        COperation op;
    };
    const Case cases[] = {
        {"empty crop", COperation::Crop(10, 10, 0, 50)},
        {"crop off the picture", COperation::Crop(2000, 2000, 50, 50)},
        {"resize above the memory budget", COperation::Resize(50000, 50000)},
        {"resize to nothing", COperation::Resize(0, 10)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(processor.Execute(c.op, &photo, false), -1) << c.name;
        EXPECT_FALSE(RenderUiText(processor.GetErrorText()).empty()) << c.name;
        EXPECT_FALSE(photo.edits.HasPending()) << c.name;
    }
    // The smallest picture is fine.
    EXPECT_EQ(processor.Execute(COperation::Resize(1, 1), &photo, false), 0);
    EXPECT_EQ(photo.edits.resizeSize, (Size{1, 1}));
}

TEST_F(ProcessorOnPhoto, ScaledCopyForTheGalleryRecordsNothing) {
    test::TempDir gallery;
    EXPECT_EQ(processor.Execute(COperation::Resize(80, 60, gallery.path()), &photo, true), 0);
    const Bitmap copy = test::Decoded(gallery.File("a.jpg"));
    EXPECT_EQ(copy.Width(), 80);
    EXPECT_EQ(copy.Height(), 60);
    EXPECT_FALSE(photo.edits.HasPending());

    CPhoto nameless;
    nameless.SetPath("photo.jpg");
    EXPECT_EQ(processor.Execute(COperation::Resize(80, 60, gallery.path()), &nameless, true), -1);
    EXPECT_EQ(RenderUiText(processor.GetErrorText()), "ResizePhoto: filename error");

    CPhoto missing;
    missing.SetPath(dir.File("gone.jpg"));
    EXPECT_EQ(processor.Execute(COperation::Resize(80, 60, gallery.path()), &missing, true), -1);
}

TEST_F(ProcessorOnPhoto, UnknownCodesDoNothing) {
    for (int code : {0, 6, 19, -1})
        EXPECT_EQ(processor.Execute(COperation::Plain(code), &photo, false), 0);
    EXPECT_FALSE(photo.edits.HasPending());
}

} // namespace
} // namespace tivox
