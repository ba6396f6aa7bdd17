// tivox-batch transfer, restore and drives, run as a user runs them: without
// a terminal on standard input.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>

#include "acquire_fixture.h"

namespace tivox::test {
namespace {

struct BatchResult {
    int status = -1;
    std::string out, err;
};

std::string Quote(const std::string& s) {
    std::string q = "'";
    for (char c : s)
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

// Runs tivox-batch with the arguments, stdin from /dev/null.
BatchResult Batch(const TempDir& dir, const std::vector<std::string>& args) {
    std::string command = Quote(TIVOX_BATCH_EXE);
    for (const std::string& a : args)
        command += " " + Quote(a);
    command += " </dev/null >" + Quote(dir.File("out")) + " 2>" + Quote(dir.File("err"));
    const int rc = std::system(command.c_str());
    BatchResult run;
    run.status = WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
    Bytes out, err;
    ReadFile(dir.File("out"), out);
    ReadFile(dir.File("err"), err);
    run.out.assign(out.begin(), out.end());
    run.err.assign(err.begin(), err.end());
    return run;
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(BatchTransfer, GetPhotosAndRestoreOnAGeneratedCard) {
    TempDir dir;
    const std::string card = dir.File("card"), photos = dir.File("base/Trip");
    ASSERT_EQ(Batch(dir, {"make-card", card, "--count", "4"}).status, 0);
    const auto cardBefore = TreeChecksums(card);
    MakeFolder(dir.File("base"));

    // Without a terminal, the questions need --yes.
    BatchResult refused = Batch(dir, {"transfer", "--card", card, "--photos", photos});
    EXPECT_EQ(refused.status, 2);
    EXPECT_TRUE(Contains(refused.err, "--yes")) << refused.err;
    EXPECT_FALSE(std::filesystem::exists(photos));

    BatchResult run = Batch(dir, {"transfer", "--card", card, "--photos", photos, "--yes"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(Contains(run.out, "Finished copying.")) << run.out;
    EXPECT_TRUE(Contains(run.out, "photos: 5 found, 5 copied, 0 failed")) << run.out;
    EXPECT_EQ(FileNames(photos),
              (std::vector<std::string>{"20040423_150053.jpg", "20040423_150200.jpg",
                                        "20040423_150200_1.jpg", "BROKEN.JPG", "IMG_0004.JPG"}));
    EXPECT_EQ(FileNames(photos + "_bak").size(), 5u);
    EXPECT_EQ(TreeChecksums(card), cardBefore);

    BatchResult restore = Batch(dir, {"restore", "--photos", photos, "--rule", "", "--yes"});
    EXPECT_EQ(restore.status, 0) << restore.err;
    EXPECT_TRUE(Contains(restore.out, "Finished restoring")) << restore.out;
    EXPECT_EQ(FileNames(photos), FileNames(photos + "_bak"));
}

TEST(BatchTransfer, AbortsWithTheMessageAndAFailureCode) {
    TempDir dir;
    const std::string card = dir.File("card");
    PutFile(card + "/IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
    PutFile(dir.File("base/Photos"), "a file");
    BatchResult run = Batch(dir, {"transfer", "--card", card, "--photos", dir.File("base/Photos"),
                                  "--no-backup", "--yes"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.err, "it is a file, not a folder.\nAborted.")) << run.err;

    run = Batch(
        dir, {"transfer", "--card", dir.File("missing"), "--photos", dir.File("base/P"), "--yes"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.err, "Please select the digital camera drive first.")) << run.err;

    run = Batch(dir, {"restore", "--photos", dir.File("base/P"), "--yes"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.err, "No backup files found!")) << run.err;

    EXPECT_EQ(Batch(dir, {"transfer", "--card", card}).status, 2);
    EXPECT_EQ(Batch(dir, {"transfer", "--card", card, "--photos", "/", "--yes"}).status, 2);
    EXPECT_EQ(Batch(dir, {"restore"}).status, 2);
}

TEST(BatchTransfer, DrivesListsTextsAndDescriptions) {
    TempDir dir;
    MakeFolder(dir.File("m/ram"));
    PutFile(dir.File("mountinfo"), "20 1 0:22 / /proc rw - proc proc rw\n"
                                   "21 1 0:40 / " +
                                       dir.File("m/ram") +
                                       " rw - tmpfs tmpfs rw\n"
                                       "22 1 0:41 / " +
                                       dir.File("m/gone") + " rw - nfs4 srv:/x rw\n");
    BatchResult run = Batch(dir, {"drives", "--mountinfo", dir.File("mountinfo"), "--sysfs",
                                  dir.File("sys"), "--labels", dir.File("labels")});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(Contains(run.out, dir.File("m/ram") + "\n    RAM disk\n\n    Bytes total: "))
        << run.out;
    EXPECT_TRUE(Contains(run.out, dir.File("m/gone") + "\n    Root directory does not exist.\n"))
        << run.out;
    EXPECT_FALSE(Contains(run.out, "/proc")) << run.out;
}

} // namespace
} // namespace tivox::test
