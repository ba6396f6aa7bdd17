#include <gtest/gtest.h>

#include <unistd.h>

#include "imageops/lossless_transform.h"
#include "photos/photo.h"
#include "platform/user_seams.h"
#include "support/fake_edit_host.h"
#include "support/test_jpeg.h"

namespace tivox {
namespace {

class RecordingPrompt : public IPrompt {
public:
    PromptAnswer Ask(const UiText& text, PromptIcon icon, PromptButtons, PromptAnswer,
                     const UiText&) override {
        texts.push_back(text.format);
        icons.push_back(icon);
        return PromptAnswer::Ok;
    }
    std::vector<std::string> texts;
    std::vector<PromptIcon> icons;
};

TEST(LosslessTempPath, CutsAtTheLastPointOfTheName) {
    EXPECT_EQ(LosslessTempPath("/p/img_0001.jpg"), "/p/img_0001.tmp");
    EXPECT_EQ(LosslessTempPath("/p/a.b.jpg"), "/p/a.b.tmp");
    EXPECT_EQ(LosslessTempPath("/p.d/noext"), "/p.d/noext.tmp");
}

class LosslessTest : public ::testing::Test {
protected:
    void SetUp() override {
        path = dir.File("img_0001.jpg");
        test::TestJpegOptions o;
        o.width = 64;
        o.height = 32;
        o.pattern = test::Pattern::Noise;
        o.exif = test::CameraExifPayload(test::CameraExif{});
        ASSERT_TRUE(test::WriteFile(path, test::MakeJpeg(o)));
        photo.SetPath(path);
        host.thumb = {40, 40};
        host.screen = {100, 100};
    }
    test::Bytes Contents() {
        test::Bytes b;
        EXPECT_TRUE(test::ReadFile(path, b));
        return b;
    }
    test::TempDir dir;
    std::string path;
    CPhoto photo;
    test::FakeHost host;
    std::string error;
};

TEST_F(LosslessTest, RightTurnSwapsTheSizeAndRebuildsBothImages) {
    photo.MakeThumbnail({40, 40});
    EXPECT_EQ(photo.IsLandscape(), 1);
    ASSERT_EQ(LosslessTransformPhoto(kLosslessRotateRight, photo, host, error), 0) << error;
    EXPECT_EQ(photo.sourceSize, (Size{32, 64}));
    EXPECT_EQ(photo.IsPortrait(), 1);
    ASSERT_NE(photo.screenImage, nullptr);
    EXPECT_EQ(photo.screenImage->Height(), 100);
    EXPECT_EQ(host.invalidated, 1);
    EXPECT_NE(::access(LosslessTempPath(path).c_str(), F_OK), 0); // temp file gone
}

TEST_F(LosslessTest, TurnsAndMirrorsUndoThemselvesByteForByte) {
    // The first turn rewrites the tables; from then on bytes must repeat.
    ASSERT_EQ(LosslessTransformPhoto(kLosslessRotate180, photo, host, error), 0);
    ASSERT_EQ(LosslessTransformPhoto(kLosslessRotate180, photo, host, error), 0);
    const test::Bytes start = Contents();
    const std::vector<std::vector<int>> sequences = {
        {kLosslessRotateRight, kLosslessRotateRight, kLosslessRotateRight, kLosslessRotateRight},
        {kLosslessRotateRight, kLosslessRotateLeft},
        {kLosslessMirrorHorizontal, kLosslessMirrorHorizontal},
        {kLosslessMirrorVertical, kLosslessMirrorVertical},
        {kLosslessRotate180, kLosslessMirrorHorizontal, kLosslessMirrorVertical},
    };
    for (const auto& seq : sequences) {
        for (int code : seq)
            ASSERT_EQ(LosslessTransformPhoto(code, photo, host, error), 0) << error;
        EXPECT_EQ(Contents(), start) << "sequence starting with " << seq.front();
    }
    const auto exif = test::CameraExifPayload(test::CameraExif{});
    const test::Bytes now = Contents();
    EXPECT_NE(std::search(now.begin(), now.end(), exif.begin(), exif.end()), now.end());
}

TEST_F(LosslessTest, FailuresLeaveThePhotoFileAsItWas) {
    RecordingPrompt prompt;
    const test::Bytes before = Contents();
    EXPECT_EQ(LosslessTransformPhoto(9, photo, host, error, &prompt), -1);
    EXPECT_EQ(error, "Error in lossless JPEG transform.");
    ASSERT_EQ(prompt.texts.size(), 1u);
    EXPECT_EQ(prompt.texts[0], "JPEG lossless transformation: unsupported");
    EXPECT_EQ(prompt.icons[0], PromptIcon::Stop);
    EXPECT_EQ(Contents(), before);

    const test::Bytes junk = {'n', 'o', 'p', 'e'};
    ASSERT_TRUE(test::WriteFile(path, junk));
    error.clear();
    EXPECT_EQ(LosslessTransformPhoto(kLosslessRotateLeft, photo, host, error), -1);
    EXPECT_EQ(error, "Error in lossless JPEG transform.");
    EXPECT_EQ(Contents(), junk);
    EXPECT_NE(::access(LosslessTempPath(path).c_str(), F_OK), 0);
    EXPECT_EQ(host.invalidated, 2); // the window repaints in any case
}

TEST_F(LosslessTest, TransformFileWritesTheTarget) {
    EXPECT_TRUE(TransformFile(kLosslessRotate180, path, dir.File("out.jpg")));
    EXPECT_FALSE(TransformFile(kLosslessRotate180, dir.File("missing.jpg"), dir.File("o2.jpg")));
    EXPECT_FALSE(TransformFile(kLosslessRotate180, path, dir.File("no/such/dir.jpg")));
}

} // namespace
} // namespace tivox

namespace tivox {
namespace {

TEST(LosslessTransformText, ErrorsTranslateBeforeTheirArgumentsGoIn) {
    test::TempDir dir;
    const std::string path = dir.File("x.jpg");
    ASSERT_TRUE(test::WriteFile(path, {'x'}));
    UiText error;
    ASSERT_EQ(LosslessTransformPath(kLosslessRotateRight, path, error), -1);
    const Translator german = [](const std::string& english) {
        return english == "Error in lossless JPEG transform."
                   ? "Fehler bei der verlustfreien JPEG-Transformation."
                   : english;
    };
    EXPECT_EQ(RenderUiText(error, german), "Fehler bei der verlustfreien JPEG-Transformation.");
}

} // namespace
} // namespace tivox
