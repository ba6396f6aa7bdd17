// tivox-batch transfer, restore and drives, run as a user runs them: without
// a terminal on standard input.

#include <gtest/gtest.h>

#include <filesystem>

#include "acquire_fixture.h"
#include "support/batch_runner.h"

namespace tivox::test {
namespace {

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(BatchTransfer, GetPhotosAndRestoreOnAGeneratedCard) {
    TempDir dir;
    const std::string card = dir.File("card"), photos = dir.File("base/Trip");
    std::string out;
    ASSERT_EQ(MakeCard(card, 4, out), 0) << out;
    const auto cardBefore = TreeChecksums(card);
    MakeFolder(dir.File("base"));

    EXPECT_EQ(RunBatch({"transfer", "--card", card, "--photos", photos, "--yes"}, out), 0) << out;
    EXPECT_TRUE(Contains(out, "Finished copying.")) << out;
    EXPECT_TRUE(Contains(out, "photos: 5 found, 5 copied and verified, 0 failed")) << out;
    EXPECT_EQ(FileNames(photos),
              (std::vector<std::string>{"20040423_150053.jpg", "20040423_150200.jpg",
                                        "20040423_150200_1.jpg", "BROKEN.JPG", "IMG_0004.JPG"}));
    EXPECT_EQ(FileNames(photos + "_bak").size(), 5u);
    EXPECT_EQ(TreeChecksums(card), cardBefore);

    EXPECT_EQ(RunBatch({"restore", "--photos", photos, "--rule", "", "--yes"}, out), 0) << out;
    EXPECT_TRUE(Contains(out, "Finished restoring")) << out;
    EXPECT_TRUE(Contains(out, "restored: 5 found, 5 copied and verified, 0 failed")) << out;
    EXPECT_EQ(FileNames(photos), FileNames(photos + "_bak"));
}

// --upright stands a photo upright as the window's box does; without it, as
// scripts written before expect, the photo arrives as the camera wrote it.
TEST(BatchTransfer, TurnsPhotosUprightOnlyWhenAsked) {
    TempDir dir;
    CameraExif exif;
    exif.orientation = 6;
    TestJpegOptions options = Picture(64, 48);
    options.exif = CameraExifPayload(exif);
    const Bytes photo = MakeJpeg(options);
    PutFile(dir.File("card/IMG_0001.JPG"), photo);
    MakeFolder(dir.File("base"));
    for (const bool upright : {false, true}) {
        std::vector<std::string> args = {"transfer", "--card",           dir.File("card"),
                                         "--photos", dir.File("base/P"), "--no-backup",
                                         "--yes"};
        if (upright)
            args.push_back("--upright");
        std::string out;
        EXPECT_EQ(RunBatch(args, out), 0) << out;
        EXPECT_EQ(Contains(out, "\nPhotos turned upright: 1.\n"), upright) << out;
        EXPECT_EQ(Contains(out, "kept their name, 1 turned upright\n"), upright) << out;
        Bytes copy;
        ASSERT_TRUE(ReadFile(dir.File("base/P/20040423_150053.jpg"), copy));
        EXPECT_EQ(copy == photo, !upright);
    }
}

TEST(BatchTransfer, AbortsWithTheMessageAndAFailureCode) {
    TempDir dir;
    const std::string card = dir.File("card"), photos = dir.File("base/P");
    PutFile(card + "/IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
    PutFile(dir.File("base/file"), "a file");
    // Two photos of one name: the second is not copied.
    PutFile(dir.File("twins/A/IMG_0001.JPG"), MakeJpeg({}));
    PutFile(dir.File("twins/B/IMG_0001.JPG"), MakeJpeg({}));
    MakeFolder(dir.File("other"));
    const std::tuple<std::vector<std::string>, int, std::string> cases[] = {
        // Without a terminal, the questions need --yes.
        {{"transfer", "--card", card, "--photos", photos}, 2, "--yes"},
        {{"transfer", "--card", card, "--photos", dir.File("base/file"), "--no-backup", "--yes"},
         1,
         "it is a file, not a folder.\nAborted."},
        {{"restore", "--photos", photos, "--yes"}, 1, "No backup files found in"},
        {{"transfer", "--card", dir.File("twins"), "--photos", dir.File("other/P"), "--yes"},
         1,
         "B/IMG_0001.JPG: " + dir.File("other/P/IMG_0001.JPG") +
             " exists already\n\nThe camera card still holds these photos"},
        {{"transfer", "--card", card, "--photos", "/", "--yes"}, 2, "is no photo folder"},
        {{"transfer", "--card", card}, 2, "usage"},
        {{"restore"}, 2, "usage"},
    };
    for (const auto& [args, status, text] : cases) {
        std::string out;
        EXPECT_EQ(RunBatch(args, out), status) << out;
        EXPECT_TRUE(Contains(out, text)) << out;
    }
    EXPECT_EQ(TreeNames(dir.File("base")), std::vector<std::string>{"file"});
}

TEST(BatchTransfer, DrivesListsTextsAndDescriptions) {
    TempDir dir;
    MakeFolder(dir.File("m/ram"));
    PutFile(dir.File("mountinfo"), "20 1 0:22 / /proc rw - proc proc rw\n21 1 0:40 / " +
                                       dir.File("m/ram") + " rw - tmpfs tmpfs rw\n22 1 0:41 / " +
                                       dir.File("m/gone") + " rw - nfs4 srv:/x rw\n");
    std::string out;
    EXPECT_EQ(RunBatch({"drives", "--mountinfo", dir.File("mountinfo"), "--sysfs", dir.File("sys"),
                        "--labels", dir.File("labels")},
                       out),
              0);
    EXPECT_TRUE(Contains(out, dir.File("m/ram") + "\n    RAM disk\n\n    Bytes total: ")) << out;
    EXPECT_TRUE(Contains(out, dir.File("m/gone") + "\n    Root directory does not exist.\n"))
        << out;
    EXPECT_FALSE(Contains(out, "/proc")) << out;
}

} // namespace
} // namespace tivox::test
