// The batch commands thumbs, show and transform, run as a user runs them;
// PPM and PAM give the exact pixels to compare.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "photos/photo.h"
#include "platform/pnm_io.h"
#include "support/test_jpeg.h"

namespace tivox {
namespace {

int RunBatch(const std::string& args) {
    const std::string command = std::string(TIVOX_BATCH_EXE) + " " + args + " >/dev/null 2>&1";
    const int rc = std::system(command.c_str());
    return WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
}

class BatchPhotos : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directory(dir.File("in"));
        std::filesystem::create_directory(dir.File("out"));
        test::TestJpegOptions o;
        o.width = 96;
        o.height = 64;
        ASSERT_TRUE(test::WriteFile(dir.File("in/a.jpg"), test::MakeJpeg(o)));
        o.width = 64;
        o.height = 96;
        ASSERT_TRUE(test::WriteFile(dir.File("in/b.JPG"), test::MakeJpeg(o)));
    }
    test::TempDir dir;
};

TEST_F(BatchPhotos, ThumbsWritesTheWorkersPictures) {
    ASSERT_EQ(RunBatch("thumbs " + dir.File("in") + " --box 48x48 --out " + dir.File("out") +
                       " --ext ppm"),
              0);
    Bitmap a, b;
    std::string error;
    ASSERT_TRUE(ReadPnmFile(dir.File("out/a.ppm"), a, error)) << error;
    ASSERT_TRUE(ReadPnmFile(dir.File("out/b.ppm"), b, error)) << error;
    EXPECT_EQ(a.Width(), 48);
    EXPECT_EQ(a.Height(), 32);
    EXPECT_EQ(b.Width(), 32);
    // The same pixels as the photo object makes.
    CPhoto photo;
    photo.SetPath(dir.File("in/a.jpg"));
    Bitmap* thumb = photo.MakeThumbnail({48, 48});
    EXPECT_EQ(0, std::memcmp(thumb->Data(), a.Data(), a.ByteSize()));
    EXPECT_EQ(RunBatch("thumbs " + dir.File("in") + " --out " + dir.File("out")), 2);
}

TEST_F(BatchPhotos, ShowReadsPpmAndWritesPam) {
    ASSERT_EQ(RunBatch("show " + dir.File("in/a.jpg") + " --screen 192x192 --out " +
                       dir.File("out/s.ppm")),
              0);
    ASSERT_EQ(RunBatch("show " + dir.File("out/s.ppm") + " --screen 96x96 --out " +
                       dir.File("out/t.pam")),
              0);
    Bitmap t;
    std::string error;
    ASSERT_TRUE(ReadPnmFile(dir.File("out/t.pam"), t, error)) << error;
    EXPECT_EQ(t.Width(), 96);
    EXPECT_EQ(t.Height(), 64);
    EXPECT_EQ(RunBatch("show " + dir.File("in/missing.jpg") + " --screen 96x96 --out " +
                       dir.File("out/u.jpg")),
              1);
}

TEST_F(BatchPhotos, TransformTurnsFilesInPlace) {
    const std::string file = dir.File("in/a.jpg");
    ASSERT_EQ(RunBatch("transform right " + file), 0);
    CPhoto photo;
    photo.SetPath(file);
    photo.LoadScaled({1000, 1000});
    EXPECT_EQ(photo.sourceSize, (Size{64, 96}));
    test::Bytes once, again;
    ASSERT_TRUE(test::ReadFile(file, once));
    ASSERT_EQ(RunBatch("transform left " + file), 0);
    ASSERT_EQ(RunBatch("transform right " + file), 0);
    ASSERT_EQ(RunBatch("transform 180 " + file + " " + file), 0); // each name in turn
    ASSERT_TRUE(test::ReadFile(file, again));
    EXPECT_EQ(once, again);
    EXPECT_EQ(RunBatch("transform spin " + file), 2);
    EXPECT_EQ(RunBatch("transform 180 " + dir.File("in/missing.jpg")), 1);
}

} // namespace
} // namespace tivox
