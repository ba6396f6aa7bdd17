// tivox-batch edit, run as the user runs it.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "edit_fixture.h"
#include "imageops/color_matrix.h"
#include "pixel_test_util.h"
#include "platform/pnm_io.h"

namespace tivox {
namespace {

int Edit(const std::vector<std::string>& args) {
    std::string command = std::string("'") + TIVOX_BATCH_EXE + "' edit";
    for (const auto& a : args)
        command += " '" + a + "'";
    command += " >/dev/null 2>&1";
    const int rc = std::system(command.c_str());
    return WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
}

TEST(BatchEdit, ColourValuesAreSliderValues) {
    test::TempDir dir;
    const std::string photo = test::WritePhoto(dir, "p.jpg", 96, 64);
    const std::string out = dir.File("p.pam");
    ASSERT_EQ(Edit({photo, "--brightness", "0.10", "--contrast", "2", "--out", out}), 0);
    Bitmap written;
    std::string error;
    ASSERT_TRUE(ReadPnmFile(out, written, error)) << error;

    Bitmap expected = test::Decoded(photo);
    ColorMatrix m = BrightnessMatrix(10 * 0.01f);
    MultiplyMatrix(m, ContrastMatrix(200 * 0.01f));
    ApplyColorMatrix(expected, m, 1.0f);
    EXPECT_TRUE(test::SamePixels(written, expected));
}

TEST(BatchEdit, CommitReplacesThePhotoAndCropsByScreenCoordinates) {
    test::TempDir dir;
    const std::string photo = test::WritePhoto(dir, "p.jpg", 2048, 1536);
    ASSERT_EQ(Edit({photo, "--crop", "100,100,200,150", "--denoise", "--quality", "85"}), 0);
    const Bitmap after = test::Decoded(photo);
    EXPECT_EQ(after.Width(), 400);
    EXPECT_EQ(after.Height(), 300);
}

TEST(BatchEdit, BadInputFailsAndLeavesThePhoto) {
    test::TempDir dir;
    const std::string photo = test::WritePhoto(dir, "p.jpg", 64, 48);
    test::Bytes before;
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
        EXPECT_NE(Edit(args), 0) << args[1];
        test::Bytes after;
        ASSERT_TRUE(test::ReadFile(photo, after));
        EXPECT_EQ(after, before) << args[1];
    }
    test::WriteFile(dir.File("bad.jpg"), {'x', 'y'});
    EXPECT_EQ(Edit({dir.File("bad.jpg"), "--negative"}), 1);
}

} // namespace
} // namespace tivox
