// The batch commands thumbs, show and transform, run as a user runs them;
// PPM and PAM give the exact pixels to compare.

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

#include "photo_writer/test_jpeg.h"
#include "photos/photo.h"
#include "platform/pnm_io.h"
#include "support/batch_runner.h"

namespace tivox {
namespace {

int RunBatch(const std::vector<std::string>& args) {
    return test::RunBatch(args).exitCode;
}

class BatchPhotos : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directory(in);
        std::filesystem::create_directory(out);
        ASSERT_TRUE(test::WriteFile(in + "/a.jpg", test::MakeJpeg(test::Picture(96, 64))));
        ASSERT_TRUE(test::WriteFile(in + "/b.JPG", test::MakeJpeg(test::Picture(64, 96))));
    }
    Bitmap ReadPnm(const std::string& path) {
        Bitmap b;
        std::string error;
        EXPECT_TRUE(ReadPnmFile(path, b, error)) << error;
        return b;
    }
    test::TempDir dir;
    const std::string in = dir.File("in"), out = dir.File("out");
};

TEST_F(BatchPhotos, ThumbsWritesTheWorkersPictures) {
    ASSERT_EQ(RunBatch({"thumbs", in, "--box", "48x48", "--out", out, "--ext", "ppm"}), 0);
    const Bitmap a = ReadPnm(out + "/a.ppm"), b = ReadPnm(out + "/b.ppm");
    EXPECT_EQ(a.Width(), 48);
    EXPECT_EQ(a.Height(), 32);
    EXPECT_EQ(b.Width(), 32);
    // The same pixels as the photo object makes.
    CPhoto photo;
    photo.SetPath(in + "/a.jpg");
    Bitmap* thumb = photo.MakeThumbnail({48, 48});
    EXPECT_EQ(0, std::memcmp(thumb->Data(), a.Data(), a.ByteSize()));
    // Each option missing or wrong, or a second folder, is a usage error.
    const std::vector<std::vector<std::string>> wrong = {
        {"thumbs", in, "--out", out},
        {"thumbs", in, "--box", "48x48"},
        {"thumbs", in, in, "--box", "48x48", "--out", out},
        {"thumbs", in, "--box", "48x48", "--out", out, "--quality", "0"},
        {"thumbs", in, "--box", "48x48", "--out", out, "--ext", "png"}};
    for (const auto& args : wrong)
        EXPECT_EQ(RunBatch(args), 2) << args.size() << " " << args.back();
}

TEST_F(BatchPhotos, ShowReadsPpmAndWritesPam) {
    ASSERT_EQ(RunBatch({"show", in + "/a.jpg", "--screen", "192x192", "--out", out + "/s.ppm"}), 0);
    ASSERT_EQ(RunBatch({"show", out + "/s.ppm", "--screen", "96x96", "--out", out + "/t.pam"}), 0);
    const Bitmap t = ReadPnm(out + "/t.pam");
    EXPECT_EQ(t.Width(), 96);
    EXPECT_EQ(t.Height(), 64);
    EXPECT_EQ(RunBatch({"show", in + "/missing.jpg", "--screen", "96x96", "--out", out + "/u.jpg"}),
              1);
}

TEST_F(BatchPhotos, TransformTurnsFilesInPlace) {
    const std::string file = in + "/a.jpg";
    ASSERT_EQ(RunBatch({"transform", "right", file}), 0);
    CPhoto photo;
    photo.SetPath(file);
    photo.LoadScaled({1000, 1000});
    EXPECT_EQ(photo.sourceSize, (Size{64, 96}));
    test::Bytes once, again;
    ASSERT_TRUE(test::ReadFile(file, once));
    ASSERT_EQ(RunBatch({"transform", "left", file}), 0);
    ASSERT_EQ(RunBatch({"transform", "right", file}), 0);
    ASSERT_EQ(RunBatch({"transform", "180", file, file}), 0); // each name in turn
    ASSERT_TRUE(test::ReadFile(file, again));
    EXPECT_EQ(once, again);
    EXPECT_EQ(RunBatch({"transform", "spin", file}), 2);
    EXPECT_EQ(RunBatch({"transform", "180", in + "/missing.jpg"}), 1);
}

} // namespace
} // namespace tivox
