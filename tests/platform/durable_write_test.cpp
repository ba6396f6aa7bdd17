// Writing over a photo so that it survives a crash and every failure, and
// moving photos to the desktop Trash so that a file manager restores them.

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "platform/atomic_file.h"
#include "platform/trash.h"
#include "support/batch_runner.h"
#include "support/file_faults.h"
#include "photo_writer/test_jpeg.h"

namespace tivox {
namespace {

using test::Bytes;
using test::FaultyFileOps;
namespace fs = std::filesystem;

std::set<std::string> Names(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

mode_t Mode(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 ? st.st_mode & 07777 : 0;
}

std::string Text(const std::string& path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

class DurableWrite : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(test::WriteFile(photo, old)); }
    bool Write(FileOps& ops = SystemFileOps()) {
        return WriteFileDurably(photo, fresh.data(), fresh.size(), error, ops);
    }
    Bytes Contents() {
        Bytes bytes;
        EXPECT_TRUE(test::ReadFile(photo, bytes));
        return bytes;
    }
    test::TempDir dir;
    const std::string photo = dir.File("IMG_0001.jpg");
    const Bytes old = {1, 2, 3}, fresh = {9, 8, 7, 6};
    UiText error;
};

TEST_F(DurableWrite, ReplacesKeepingTheModeAndLeavesOtherFilesAndProtectedPhotosAlone) {
    // Names an earlier program would have used for its temporary file.
    for (const char* name : {"IMG_0001.tmp", "IMG_0001.jpg.tmp"})
        ASSERT_TRUE(test::WriteFile(dir.File(name), {'u'}));
    ASSERT_EQ(::chmod(photo.c_str(), 0640), 0); // private to its group
    ASSERT_TRUE(Write()) << RenderUiText(error);
    EXPECT_EQ(Contents(), fresh);
    EXPECT_EQ(Mode(photo), 0640u);
    EXPECT_EQ(Names(dir.path()),
              (std::set<std::string>{"IMG_0001.jpg", "IMG_0001.tmp", "IMG_0001.jpg.tmp"}));
    Bytes user;
    ASSERT_TRUE(test::ReadFile(dir.File("IMG_0001.tmp"), user));
    EXPECT_EQ(user, Bytes{'u'});

    // Write-protected by its owner: refused, also for the superuser.
    ASSERT_EQ(::chmod(photo.c_str(), 0444), 0);
    EXPECT_FALSE(Write());
    EXPECT_EQ(RenderUiText(error), "Could not write " + photo + ": the file is write-protected.");
    EXPECT_EQ(Mode(photo), 0444u);
    EXPECT_EQ(Contents(), fresh);
}

TEST_F(DurableWrite, EveryFailingCallLeavesThePhotoWholeAndNamesTheCause) {
    const struct {
        FaultyFileOps::Kind kind;
        int error, nth;
        const char* cause;
    } cases[] = {
        {FaultyFileOps::kOpen, EACCES, 1, "the folder is read-only."},
        {FaultyFileOps::kOpen, EROFS, 1, "the disc is read-only."},
        {FaultyFileOps::kWrite, ENOSPC, 1, "the disc is full."},
        {FaultyFileOps::kFsync, EIO, 1, "Input/output error"},
        {FaultyFileOps::kClose, EDQUOT, 1, "the disc is full."},
        {FaultyFileOps::kRename, EXDEV, 1, "Invalid cross-device link"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.cause);
        FaultyFileOps ops(c.kind, c.error, c.nth);
        EXPECT_FALSE(Write(ops));
        EXPECT_EQ(RenderUiText(error), "Could not write " + photo + ": " + c.cause);
        EXPECT_EQ(Contents(), old);
        EXPECT_EQ(Names(dir.path()), std::set<std::string>{"IMG_0001.jpg"});
    }
    // The folder's flush comes after the rename: the photo is new, the
    // failure is still told, unless the file system cannot flush folders.
    FaultyFileOps folder(FaultyFileOps::kFsync, EIO, 2);
    EXPECT_FALSE(Write(folder));
    EXPECT_EQ(Contents(), fresh);
    FaultyFileOps unsupported(FaultyFileOps::kFsync, EINVAL, 2);
    EXPECT_TRUE(Write(unsupported));
    EXPECT_EQ(unsupported.calls[FaultyFileOps::kFsync], 2);
}

class Trash : public ::testing::Test {
protected:
    void SetUp() override { fs::create_directories(dir.File("photos")); }
    std::string Photo(const std::string& name) {
        const std::string path = dir.File("photos/" + name);
        EXPECT_TRUE(test::WriteFile(path, {1}));
        return path;
    }
    bool Move(const std::string& path, FileOps& ops = SystemFileOps()) {
        return MoveToTrash(path, trashed, error, home, ops);
    }
    test::TempDir dir;
    const std::string home = dir.File("data/Trash"); // not there yet
    std::string trashed;
    UiText error;
};

TEST_F(Trash, PhotosGoToTheHomeTrashUnderFreeNamesWithInfoFiles) {
    const std::string photo = Photo("a b%.jpg");
    ASSERT_TRUE(Move(photo)) << RenderUiText(error);
    EXPECT_EQ(trashed, home + "/files/a b%.jpg");
    EXPECT_FALSE(fs::exists(photo));
    EXPECT_TRUE(fs::exists(trashed));
    EXPECT_EQ(Mode(home), 0700u);
    const std::string real = fs::canonical(dir.path()).string();
    EXPECT_TRUE(std::regex_match(Text(home + "/info/a b%.jpg.trashinfo"),
                                 std::regex("\\[Trash Info\\]\nPath=" + real +
                                            "/photos/a%20b%25.jpg\nDeletionDate=[0-9]{4}-[0-9]{2}-"
                                            "[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\n")));

    // The same name again, and a name whose info file some other program
    // has claimed: free names, the photos' own untouched.
    ASSERT_TRUE(test::WriteFile(home + "/info/a b%.2.jpg.trashinfo", {'x'}));
    ASSERT_TRUE(Move(Photo("a b%.jpg"))) << RenderUiText(error);
    EXPECT_EQ(trashed, home + "/files/a b%.3.jpg");
    EXPECT_TRUE(fs::exists(home + "/files/a b%.jpg"));
    EXPECT_EQ(Names(home + "/info"),
              (std::set<std::string>{"a b%.jpg.trashinfo", "a b%.2.jpg.trashinfo",
                                     "a b%.3.jpg.trashinfo"}));
}

TEST_F(Trash, AFailedMoveLeavesThePhotoAndNoInfoFile) {
    const std::string photo = Photo("p.jpg");
    for (auto kind : {FaultyFileOps::kWrite, FaultyFileOps::kRename}) {
        FaultyFileOps ops(kind, ENOSPC);
        EXPECT_FALSE(Move(photo, ops));
        EXPECT_EQ(RenderUiText(error),
                  "Could not move " + photo + " to the Trash: No space left on device");
        EXPECT_TRUE(fs::exists(photo));
        EXPECT_TRUE(Names(home + "/info").empty());
    }
    EXPECT_FALSE(Move(dir.File("photos/gone.jpg")));
    EXPECT_EQ(RenderUiText(error), "Could not move " + dir.File("photos/gone.jpg") +
                                       " to the Trash: No such file or directory");
}

TEST_F(Trash, OtherVolumesUseTheirOwnTrashAtTheTop) {
    const std::string top = dir.File("volume"), uid = std::to_string(::getuid());
    fs::create_directories(top);
    EXPECT_EQ(VolumeTrashFolder(top), top + "/.Trash-" + uid);
    EXPECT_EQ(Mode(top + "/.Trash-" + uid), 0700u);
    // An administrator's shared trash counts only with the sticky bit and
    // when it is no link.
    fs::create_directories(dir.File("elsewhere"));
    ASSERT_EQ(::chmod(dir.File("elsewhere").c_str(), 01777), 0);
    fs::create_directory_symlink(dir.File("elsewhere"), top + "/.Trash");
    EXPECT_EQ(VolumeTrashFolder(top), top + "/.Trash-" + uid);
    fs::remove(top + "/.Trash");
    fs::create_directories(top + "/.Trash");
    EXPECT_EQ(VolumeTrashFolder(top), top + "/.Trash-" + uid);
    ASSERT_EQ(::chmod((top + "/.Trash").c_str(), 01777), 0);
    EXPECT_EQ(VolumeTrashFolder(top), top + "/.Trash/" + uid);
}

TEST(TrashCommand, AsksFirstAndMovesIntoTheUsersTrash) {
    test::TempDir dir;
    const std::string photo = dir.File("p 1.jpg");
    ASSERT_TRUE(test::WriteFile(photo, {1}));
    const std::string run = "XDG_DATA_HOME=" + test::ShellQuote(dir.File("data")) + " " +
                            test::ShellQuote(TIVOX_BATCH_EXE) + " delete ";
    test::CommandRun said = test::Capture(run + test::ShellQuote(photo) + " </dev/null 2>&1");
    EXPECT_EQ(said.exitCode, 1);
    EXPECT_NE(said.output.find("Move 1 photo to the Trash? [y/N] Nothing was moved."),
              std::string::npos)
        << said.output;
    EXPECT_TRUE(fs::exists(photo));
    said = test::Capture(run + "--yes " + test::ShellQuote(photo) + " " +
                         test::ShellQuote(dir.File("none.jpg")) + " </dev/null 2>&1");
    EXPECT_EQ(said.exitCode, 1) << said.output; // one of the two is not there
    EXPECT_NE(said.output.find("Move 2 photos to the Trash?"), std::string::npos);
    EXPECT_FALSE(fs::exists(photo));
    EXPECT_TRUE(fs::exists(dir.File("data/Trash/files/p 1.jpg")));
    EXPECT_TRUE(fs::exists(dir.File("data/Trash/info/p 1.jpg.trashinfo")));
}

} // namespace
} // namespace tivox
