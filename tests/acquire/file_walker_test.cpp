// The folder walker and the path helpers.

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "acquire/file_walker.h"
#include "acquire_fixture.h"

namespace tivox::test {
namespace {

// Records what the walker hands to OnFile.
class RecordingWalker : public CFileWalker {
public:
    using CFileWalker::CFileWalker;
    std::vector<std::pair<std::string, int>> calls;
    void OnFile(const CFileFind& finder, int number) override {
        calls.emplace_back(finder.GetFileName(), number);
    }
};

TEST(FileWalker, RunningNumbersRestartInEachSubFolder) {
    TempDir dir;
    PutFile(dir.File("a.jpg"), "a");
    PutFile(dir.File("s/b.jpg"), "b");
    PutFile(dir.File("s/c.jpg"), "c");
    PutFile(dir.File("t/u/e.jpg"), "e");
    PutFile(dir.File("z.jpg"), "d");
    RecordingWalker walker(".jpg");
    EXPECT_EQ(walker.Walk(dir.path()), 5);
    const std::vector<std::pair<std::string, int>> expected = {
        {"a.jpg", 1}, {"b.jpg", 1}, {"c.jpg", 2}, {"e.jpg", 1}, {"z.jpg", 5}};
    EXPECT_EQ(walker.calls, expected);
}

TEST(FileWalker, FilterLooksAtTheLastFourCharactersOnly) {
    TempDir dir;
    for (const char* name :
         {"IMG_1.JPG", "IMG_2.jpg", "IMG_3.jpeg", "MVI_4.AVI", ".jpg", "notes.txt", "x.Jpg"})
        PutFile(dir.File(name), "x");
    MakeFolder(dir.File("holiday.jpg"));
    RecordingWalker walker(".jpg");
    EXPECT_EQ(walker.Walk(dir.path()), 4);
    std::vector<std::string> names;
    for (const auto& c : walker.calls)
        names.push_back(c.first);
    EXPECT_EQ(names, (std::vector<std::string>{".jpg", "IMG_1.JPG", "IMG_2.jpg", "x.Jpg"}));

    RecordingWalker all("");
    EXPECT_EQ(all.Walk(dir.path()), 7);
}

TEST(FileWalker, EmptyMissingAndLinkedFoldersGiveNothing) {
    TempDir dir;
    MakeFolder(dir.File("empty"));
    RecordingWalker walker(".jpg");
    EXPECT_EQ(walker.Walk(dir.File("empty")), 0);
    EXPECT_EQ(walker.Walk(dir.File("missing")), 0);
    // A link back up the tree would make the walk endless; it is passed over.
    PutFile(dir.File("loop/a.jpg"), "a");
    ASSERT_EQ(symlink("..", dir.File("loop/up").c_str()), 0);
    EXPECT_EQ(walker.Walk(dir.File("loop")), 1);
}

TEST(FileWalker, FolderThatCannotBeEnteredCountsAsEmpty) {
    TempDir dir;
    PutFile(dir.File("card/open/a.jpg"), "a");
    PutFile(dir.File("card/closed/b.jpg"), "b");
    PutFile(dir.File("card/c.jpg"), "c");
    OpenToAll(dir.path());
    chmod(dir.File("card/closed").c_str(), 0);
    const std::string card = dir.File("card");
    // Root enters every folder; the walk runs as an ordinary user.
    const int count = RunInChild({true, -1}, [&] { return CFileWalker(".jpg").Walk(card); });
    chmod(dir.File("card/closed").c_str(), 0755);
    EXPECT_EQ(count, 2);
}

TEST(FileWalker, DeleteFolderContentsEmptiesTheTreeButKeepsTheFolder) {
    TempDir dir;
    PutFile(dir.File("p/a.jpg"), "a");
    PutFile(dir.File("p/notes.txt"), "n");
    PutFile(dir.File("p/sub/deeper/b.jpg"), "b");
    PutFile(dir.File("outside.jpg"), "o");
    MakeFolder(dir.File("p/empty"));
    // A link is removed, what it points to stays.
    ASSERT_EQ(symlink(dir.path().c_str(), dir.File("p/link").c_str()), 0);
    EXPECT_EQ(DeleteFolderContents(dir.File("p")), 0);
    EXPECT_TRUE(TreeNames(dir.File("p")).empty());
    EXPECT_TRUE(PathExists(dir.File("outside.jpg")));
    EXPECT_EQ(DeleteFolderContents(dir.File("missing")), 0);
}

TEST(FileWalker, DeleteFolderContentsCountsAFileThatStaysAndItsFolder) {
    TempDir dir;
    PutFile(dir.File("p/a.jpg"), "a");
    PutFile(dir.File("p/locked/b.jpg"), "b");
    OpenToAll(dir.path());
    chmod(dir.File("p/locked").c_str(), 0555); // b.jpg can't be unlinked by others
    const std::string p = dir.File("p");
    const int failures = RunInChild({true, -1}, [&] { return DeleteFolderContents(p); });
    chmod(dir.File("p/locked").c_str(), 0755);
    EXPECT_EQ(failures, 2);
    EXPECT_EQ(TreeNames(p), (std::vector<std::string>{"locked/", "locked/b.jpg"}));
}

TEST(PathHelpers, SplitFolderPath) {
    struct Case {
        const char* path;
        bool ok;
        const char* parent;
        const char* name;
    };
    const Case cases[] = {
        {"/home/anna/Photos", true, "/home/anna", "Photos"},
        {"/home/anna/Photos/", true, "/home/anna", "Photos"},
        {"/Photos", true, "/", "Photos"},
        {"/Pics/2004/IMG_1.jpg", true, "/Pics/2004", "IMG_1.jpg"},
        {"/", false, "unchanged", "unchanged"},
        {"", false, "unchanged", "unchanged"},
        {"Photos", false, "Photos", "unchanged"},
    };
    for (const Case& c : cases) {
        std::string parent = "unchanged", name = "unchanged";
        EXPECT_EQ(SplitFolderPath(c.path, parent, name), c.ok) << c.path;
        EXPECT_EQ(parent, c.parent) << c.path;
        EXPECT_EQ(name, c.name) << c.path;
    }
}

TEST(PathHelpers, StripAppendAndExists) {
    std::string p = "/a.b/c";
    StripExtension(p);
    EXPECT_EQ(p, "/a");
    p = "/x/IMG_1.tar.jpg";
    StripExtension(p);
    EXPECT_EQ(p, "/x/IMG_1.tar");

    for (auto [in, out] : {std::pair{"", ""}, {"/", "/"}, {"/a", "/a/"}, {"/a/", "/a/"}}) {
        std::string s = in;
        AppendBackslash(s);
        EXPECT_EQ(s, out);
    }

    TempDir dir;
    PutFile(dir.File("f.jpg"), "x");
    EXPECT_TRUE(PathExists(dir.path()));
    EXPECT_TRUE(PathExists(dir.File("f.jpg")));
    EXPECT_FALSE(PathExists(dir.path() + "/"));
    EXPECT_FALSE(PathExists("/"));
    EXPECT_FALSE(PathExists(dir.File("missing")));
}

TEST(PathHelpers, CountFilesAndFolderHasFilesLookOnlyIntoTheFolder) {
    TempDir dir;
    PutFile(dir.File("p/a.JPG"), "a");
    PutFile(dir.File("p/b.jpg"), "b");
    PutFile(dir.File("p/c.txt"), "c");
    PutFile(dir.File("p/sub/d.jpg"), "d");
    MakeFolder(dir.File("p/e.jpg"));
    EXPECT_EQ(CountFiles(dir.File("p"), "*.jpg"), 2);
    EXPECT_EQ(CountFiles(dir.File("p"), "*"), 3);
    EXPECT_EQ(CountFiles(dir.File("missing"), "*"), 0);

    EXPECT_TRUE(FolderHasFiles(dir.File("p"), ".jpg"));
    EXPECT_TRUE(FolderHasFiles(dir.File("p"), ""));
    EXPECT_FALSE(FolderHasFiles(dir.File("p"), ".png"));
    EXPECT_FALSE(FolderHasFiles(dir.File("p/sub/.."), ".gif"));
    PutFile(dir.File("only/sub/x.jpg"), "x");
    EXPECT_FALSE(FolderHasFiles(dir.File("only"), ".jpg"));
    // A missing folder is false, whatever the current directory holds.
    ASSERT_EQ(chdir(dir.File("p").c_str()), 0);
    EXPECT_FALSE(FolderHasFiles(dir.File("missing"), ".jpg"));
    ASSERT_EQ(chdir("/"), 0);
}

TEST(PathHelpers, CountFolderContentsCountsEveryLevel) {
    TempDir dir;
    PutFile(dir.File("p/a.jpg"), "a");
    PutFile(dir.File("p/x/b.txt"), "b");
    PutFile(dir.File("p/x/y/c"), "c");
    MakeFolder(dir.File("p/z"));
    const FolderContents c = CountFolderContents(dir.File("p"));
    EXPECT_EQ(c.files, 3);
    EXPECT_EQ(c.folders, 3);
    EXPECT_TRUE(CountFolderContents(dir.File("missing")).Empty());
}

} // namespace
} // namespace tivox::test
