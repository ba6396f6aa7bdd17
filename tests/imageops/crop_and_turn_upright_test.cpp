// Edits of a photo that the camera stored turned (Orientation 6): turns,
// mirrors, the crop and red-eye clicks act on the picture as it is shown,
// and the written file stands upright with Orientation 1. The tag is read
// back by exiftool where it is installed.

#include <gtest/gtest.h>

#include <cstdlib>

#include "edit_fixture.h"
#include "exif/exif_orientation.h"
#include "imageops/apply_edits.h"
#include "imageops/crop_image.h"
#include "imageops/lossless_transform.h"
#include "imageops/operation.h"
#include "imageops/red_eye_click.h"
#include "imageops/red_eye_fixer.h"
#include "photos/embedded_preview.h"
#include "photos/scaled_loader.h"
#include "pixel_test_util.h"
#include "support/batch_runner.h"
#include "photo_writer/photo_pixels.h"

namespace tivox {
namespace {

int OrientationTag(const std::string& path) {
    if (std::system("exiftool -ver >/dev/null 2>&1") == 0)
        return std::atoi(
            test::Capture("exiftool -n -s3 -Orientation " + test::ShellQuote(path)).output.c_str());
    test::Bytes bytes;
    test::ReadFile(path, bytes);
    return JpegOrientation(bytes.data(), bytes.size());
}

class TurnedPhoto : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(test::PhotoBitmap(192, 128, 9, upright));
        ASSERT_TRUE(test::WriteFile(path, test::CameraJpeg(upright, 6)));
        stored = test::Decoded(path);
        photo.SetPath(path);
        window.current = &photo;
    }
    test::TempDir dir;
    const std::string path = dir.File("p.jpg");
    Bitmap upright, stored;
    CPhoto photo;
    test::FakeWindow window;
    std::string error;
};

TEST_F(TurnedPhoto, TurnsAndMirrorsMoveTheStoredPixelsOnceToWhereTheyAreShown) {
    // Each button as the orientation that shows the picture so turned.
    const struct {
        int code, shownAs;
    } cases[] = {{kLosslessRotateLeft, 8},
                 {kLosslessRotateRight, 6},
                 {kLosslessRotate180, 3},
                 {kLosslessMirrorHorizontal, 2},
                 {kLosslessMirrorVertical, 4}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.code);
        ASSERT_TRUE(test::WriteFile(path, test::CameraJpeg(upright, 6)));
        ASSERT_TRUE(LosslessTransformPath(c.code, path, error)) << error;
        EXPECT_EQ(OrientationTag(path), 1);
        const Bitmap expected = test::Shown(upright, c.shownAs);
        EXPECT_GE(test::Psnr(test::Decoded(path), expected), 27.0);
        Bitmap thumb; // the embedded thumbnail follows
        ASSERT_TRUE(ReadEmbeddedPreview(path, thumb));
        EXPECT_GE(test::Psnr(thumb, expected), 27.0);
    }
    // The left turn undoes the camera's: not a pixel moved, only the tag.
    ASSERT_TRUE(test::WriteFile(path, test::CameraJpeg(upright, 6)));
    ASSERT_TRUE(LosslessTransformPath(kLosslessRotateLeft, path, error)) << error;
    EXPECT_TRUE(test::SamePixels(test::Decoded(path), stored));
}

TEST_F(TurnedPhoto, CropAndRedEyeLandWhereTheyWereShownAndTheCommitStandsUpright) {
    window.screen = {384, 256}; // the picture shown at twice its size
    photo.LoadScreenImage(window.screen);
    ASSERT_EQ(photo.screenSize, (Size{384, 256}));
    ASSERT_TRUE(RedEyeClick(photo, window.screen, Point{100, 60}));
    EXPECT_EQ(photo.edits.redEyePoints.at(0), (Point{50, 30}));
    photo.edits.SetCrop(Rect{40, 20, 200, 120});
    ASSERT_TRUE(ApplyEdits(photo, editAll, window, true));
    ASSERT_TRUE(photo.SaveAsJpeg(95));

    EXPECT_EQ(OrientationTag(path), 1);
    Bitmap expected;
    ASSERT_TRUE(upright.CopyTo(expected));
    CRedEyeFixer fixer(kRedEyeRadiusFull);
    fixer.SetImage(&expected);
    fixer.Fix(50, 30);
    EXPECT_GE(test::Psnr(test::Decoded(path), *CropImage(&expected, 20, 10, 100, 60)), 27.0);
}

} // namespace
} // namespace tivox
