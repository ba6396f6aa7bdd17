// The folder walker, emptying a folder and splitting a folder path.

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "acquire/file_walker.h"
#include "acquire_fixture.h"

namespace tivox::test {
namespace {

using Names = std::vector<std::string>;

class RecordingWalker : public CFileWalker {
public:
    using CFileWalker::CFileWalker;
    Names calls; // name and running number
    void OnFile(const CFileFind& finder, int number) override {
        calls.push_back(finder.GetFileName() + " " + std::to_string(number));
    }
};

TEST(FileWalker, FilterAndRunningNumbersThatRestartInEachSubFolder) {
    TempDir dir;
    for (const char* name : {".jpg", "a.jpg", "IMG_3.jpeg", "notes.txt", "s/b.jpg", "s/c.jpg",
                             "s/MVI_4.AVI", "t/u/e.JPG", "x.Jpg", "z.jpg"})
        PutFile(dir.File(name), "x");
    MakeFolder(dir.File("holiday.jpg"));
    RecordingWalker walker(".jpg");
    EXPECT_EQ(walker.Walk(dir.path()), 7);
    // The parent's count jumps by the sub-folder's total.
    EXPECT_EQ(walker.calls,
              (Names{".jpg 1", "a.jpg 2", "b.jpg 1", "c.jpg 2", "e.JPG 1", "x.Jpg 6", "z.jpg 7"}));
    EXPECT_EQ(RecordingWalker("").Walk(dir.path()), 10);
}

TEST(FileWalker, EmptyMissingClosedAndLinkedFolders) {
    TempDir dir;
    MakeFolder(dir.File("empty"));
    RecordingWalker walker(".jpg");
    EXPECT_EQ(walker.Walk(dir.File("empty")), 0);
    EXPECT_EQ(walker.Walk(dir.File("missing")), 0);
    // A link to a file counts; a link to a folder is not entered (one back
    // up the tree would make the walk endless); a FIFO, which would stall the
    // copy that opens it, and a dangling link are passed over.
    PutFile(dir.File("loop/a.jpg"), "a");
    ASSERT_EQ(symlink("..", dir.File("loop/up").c_str()), 0);
    ASSERT_EQ(symlink(".", dir.File("loop/self.jpg").c_str()), 0);
    ASSERT_EQ(symlink("a.jpg", dir.File("loop/b.jpg").c_str()), 0);
    ASSERT_EQ(symlink("gone.jpg", dir.File("loop/c.jpg").c_str()), 0);
    ASSERT_EQ(mkfifo(dir.File("loop/d.jpg").c_str(), 0600), 0);
    EXPECT_EQ(walker.Walk(dir.File("loop")), 2);
    EXPECT_EQ(walker.calls, (Names{"a.jpg 1", "b.jpg 2"}));
    EXPECT_EQ(CountFiles(dir.File("loop"), "*.jpg"), 2);

    // A folder that can't be entered counts as empty. Root enters every
    // folder, so the walk runs as an ordinary user.
    PutFile(dir.File("card/open/a.jpg"), "a");
    PutFile(dir.File("card/closed/b.jpg"), "b");
    PutFile(dir.File("card/c.jpg"), "c");
    OpenToAll(dir.path());
    chmod(dir.File("card/closed").c_str(), 0);
    const std::string card = dir.File("card");
    const int count = RunInChild({true, -1}, [&] { return CFileWalker(".jpg").Walk(card); });
    chmod(dir.File("card/closed").c_str(), 0755);
    EXPECT_EQ(count, 2);
}

TEST(FileWalker, DeleteFolderContentsEmptiesTheTreeButKeepsTheFolder) {
    TempDir dir;
    PutFile(dir.File("p/a.jpg"), "a");
    PutFile(dir.File("p/sub/deeper/b.jpg"), "b");
    PutFile(dir.File("outside.jpg"), "o");
    MakeFolder(dir.File("p/empty"));
    // A link is removed, what it points to stays.
    ASSERT_EQ(symlink(dir.path().c_str(), dir.File("p/link").c_str()), 0);
    EXPECT_EQ(DeleteFolderContents(dir.File("p")), 0);
    EXPECT_EQ(TreeNames(dir.path()), (Names{"outside.jpg", "p/"}));
    EXPECT_EQ(DeleteFolderContents(dir.File("missing")), 0);

    // A file that can't go is counted, and so is its folder.
    PutFile(dir.File("p/a.jpg"), "a");
    PutFile(dir.File("p/locked/b.jpg"), "b");
    OpenToAll(dir.path());
    chmod(dir.File("p/locked").c_str(), 0555);
    const std::string p = dir.File("p");
    const int failures = RunInChild({true, -1}, [&] { return DeleteFolderContents(p); });
    chmod(dir.File("p/locked").c_str(), 0755);
    EXPECT_EQ(failures, 2);
    EXPECT_EQ(TreeNames(p), (Names{"locked/", "locked/b.jpg"}));
}

// The parent and name of a chosen photo folder; the root has none.
TEST(PathHelpers, SplitFolderPath) {
    const std::tuple<const char*, bool, const char*, const char*> cases[] = {
        {"/home/anna/Photos/", true, "/home/anna", "Photos"},
        {"/Photos", true, "/", "Photos"},
        {"/", false, "unchanged", "unchanged"},
        {"", false, "unchanged", "unchanged"},
    };
    for (const auto& [path, ok, parentWanted, nameWanted] : cases) {
        SCOPED_TRACE(path);
        std::string parent = "unchanged", name = "unchanged";
        EXPECT_EQ(SplitFolderPath(path, parent, name), ok);
        EXPECT_EQ(parent, parentWanted);
        EXPECT_EQ(name, nameWanted);
    }
}

// Only the folder asked is looked into: not its sub-folders, and not the
// current directory when the folder is missing.
TEST(PathHelpers, CountsLookOnlyIntoTheFolderAsked) {
    TempDir dir;
    PutFile(dir.File("p/a.JPG"), "a");
    PutFile(dir.File("p/b.jpg"), "b");
    PutFile(dir.File("p/sub/c.jpg"), "c");
    MakeFolder(dir.File("p/d.jpg"));
    EXPECT_EQ(CountFiles(dir.File("p"), "*.jpg"), 2);
    EXPECT_EQ(CountFiles(dir.File("missing"), "*"), 0);
    EXPECT_TRUE(FolderHasFiles(dir.File("p"), ".JPG"));
    EXPECT_FALSE(FolderHasFiles(dir.File("p/sub"), ".png"));
    ASSERT_EQ(chdir(dir.File("p").c_str()), 0);
    EXPECT_FALSE(FolderHasFiles(dir.File("missing"), ".jpg"));
    ASSERT_EQ(chdir("/"), 0);

    std::string path = "/a.b/c";
    StripExtension(path);
    EXPECT_EQ(path, "/a");
}

} // namespace
} // namespace tivox::test
