#include "imageops/lossless_transform.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "edit_fixture.h"
#include "support/fake_edit_host.h"

namespace tivox {
namespace {

class LosslessTest : public ::testing::Test {
protected:
    void SetUp() override {
        test::TestJpegOptions o = test::Picture(64, 32, test::Pattern::Noise);
        o.exif = exif;
        ASSERT_TRUE(test::WriteFile(path, test::MakeJpeg(o)));
        photo.SetPath(path);
        host.screen = {100, 100};
    }
    test::Bytes Contents() {
        test::Bytes b;
        EXPECT_TRUE(test::ReadFile(path, b));
        return b;
    }
    // Anything beside the photo in its folder, such as a temporary file.
    bool TempFileLeft() {
        return std::distance(std::filesystem::directory_iterator(dir.path()),
                             std::filesystem::directory_iterator()) != 1;
    }
    const test::Bytes exif = test::CameraExifPayload(test::CameraExif{});
    test::TempDir dir;
    const std::string path = dir.File("img_0001.jpg");
    CPhoto photo;
    test::FakeWindow host;
    std::string error;
};

TEST_F(LosslessTest, TurnsSwapTheSizeAndUndoThemselvesByteForByteKeepingExif) {
    photo.MakeThumbnail({40, 40});
    EXPECT_EQ(photo.IsLandscape(), 1);
    ASSERT_TRUE(LosslessTransformPhoto(kLosslessRotateRight, photo, host, error)) << error;
    EXPECT_EQ(photo.sourceSize, (Size{32, 64}));
    EXPECT_EQ(photo.IsPortrait(), 1);
    ASSERT_NE(photo.screenImage, nullptr);
    EXPECT_EQ(photo.screenImage->Height(), 100);
    EXPECT_EQ(host.invalidations, 1);
    EXPECT_FALSE(TempFileLeft());

    // The first turn rewrote the tables; from then on bytes must repeat.
    const test::Bytes start = Contents();
    const std::vector<std::vector<int>> sequences = {
        {kLosslessRotateRight, kLosslessRotateRight, kLosslessRotateRight, kLosslessRotateRight},
        {kLosslessRotateRight, kLosslessRotateLeft},
        {kLosslessRotate180, kLosslessMirrorHorizontal, kLosslessMirrorVertical},
    };
    for (const auto& seq : sequences) {
        for (int code : seq)
            ASSERT_TRUE(LosslessTransformPhoto(code, photo, host, error)) << error;
        EXPECT_EQ(Contents(), start) << "sequence starting with " << seq.front();
    }
    EXPECT_NE(std::search(start.begin(), start.end(), exif.begin(), exif.end()), start.end());
}

TEST_F(LosslessTest, FailuresLeaveThePhotoFileAsItWas) {
    test::ScriptedPrompt prompt;
    const test::Bytes before = Contents();
    EXPECT_FALSE(LosslessTransformPhoto(9, photo, host, error, &prompt));
    EXPECT_EQ(error, "Error in lossless JPEG transform.");
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].text, "JPEG lossless transformation: unsupported");
    EXPECT_EQ(prompt.shown[0].icon, PromptIcon::Stop);
    EXPECT_EQ(Contents(), before);
    EXPECT_FALSE(TransformFile(kLosslessRotate180, path, dir.File("no/such/dir.jpg")));
    EXPECT_FALSE(TransformFile(kLosslessRotate180, dir.File("missing.jpg"), dir.File("o.jpg")));

    const test::Bytes junk = {'n', 'o', 'p', 'e'};
    ASSERT_TRUE(test::WriteFile(path, junk));
    error.clear();
    EXPECT_FALSE(LosslessTransformPhoto(kLosslessRotateLeft, photo, host, error));
    EXPECT_EQ(error, "Could not read " + path + ": it is not a readable JPEG picture.");
    EXPECT_EQ(Contents(), junk);
    EXPECT_FALSE(TempFileLeft());
    EXPECT_EQ(host.invalidations, 2); // the window repaints in any case

    // The message is translated before its arguments go in.
    UiText text;
    ASSERT_FALSE(LosslessTransformPath(kLosslessRotateRight, path, text));
    const Translator german = [](const std::string& english) {
        return english == "Could not read %s: it is not a readable JPEG picture." ? "%s: kein JPEG."
                                                                                  : english;
    };
    EXPECT_EQ(RenderUiText(text, german), path + ": kein JPEG.");
}

// Turns write through the durable write (its mode and name rules are tested
// with it): a write-protected photo is refused and stays.
TEST_F(LosslessTest, TurnsRefuseWriteProtectedPhotos) {
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    const test::Bytes before = Contents();
    EXPECT_FALSE(LosslessTransformPath(kLosslessRotateLeft, path, error));
    EXPECT_EQ(error, "Could not write " + path + ": the file is write-protected.");
    EXPECT_EQ(Contents(), before);
}

} // namespace
} // namespace tivox
