// The walk over the photos that the "Process:" boxes choose, with deletion
// in a walk, failures that do not stop it and a Cancel that does.

#include "imageops/selection_pass.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include "edit_fixture.h"
#include "imageops/image_processor.h"

namespace tivox {
namespace {

const ProcessScope kAll{false, true, false, false, false};

class SelectionPassTest : public ::testing::Test {
protected:
    void SetUp() override {
        // Deleted photos go to a Trash of the test's own.
        ::setenv("XDG_DATA_HOME", dir.File("data").c_str(), 1);
        for (int i = 0; i < 4; ++i)
            paths.push_back(test::WritePhoto(dir, "p" + std::to_string(i) + ".jpg", 40, 30, i));
        list.Open(dir.path());
        ASSERT_TRUE(list.WaitWorker(10000));
        ASSERT_EQ(list.Count(), 4);
        const int markers[4] = {1, 2, 0, 3}; // red, green, none, blue
        for (int i = 0; i < 4; ++i)
            list.PhotoAt(i)->marker = markers[i];
        window.list = &list;
        processor.SetWindow(&window);
    }
    int Run(const COperation& op, const ProcessScope& scope) {
        return ApplyOperation(op, scope, processor, window, prompt, progress);
    }
    test::TempDir dir;
    std::vector<std::string> paths;
    CPhotoList list;
    test::FakeWindow window;
    test::ScriptedPrompt prompt;
    test::ScriptedProgress progress;
    CImageProcessor processor;
};

TEST_F(SelectionPassTest, ScopeChoosesThePhotos) {
    const struct {
        const char* name;
        ProcessScope scope;
        int current; // index of the current photo, -1 for none
        std::vector<int> chosen;
    } cases[] = {
        {"current photo", {true, false, false, false, false}, 2, {2}},
        {"current without a photo", {true, false, false, false, false}, -1, {}},
        {"all", kAll, -1, {0, 1, 2, 3}},
        {"red and blue markers", {false, false, true, false, true}, 1, {0, 3}},
        {"green marker", {false, false, false, true, false}, -1, {1}},
        {"no box checked", {false, false, false, false, false}, 0, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        for (int i = 0; i < list.Count(); ++i)
            list.PhotoAt(i)->edits.Clear();
        window.current = c.current >= 0 ? list.PhotoAt(c.current) : nullptr;
        const int before = window.invalidations;
        EXPECT_EQ(Run(COperation::Resize(20, 10), c.scope), 0);
        std::vector<int> resized;
        for (int i = 0; i < list.Count(); ++i)
            if (list.PhotoAt(i)->edits.resizePending)
                resized.push_back(i);
        EXPECT_EQ(resized, c.chosen);
        EXPECT_EQ(window.invalidations, before + 1);
    }
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(SelectionPassTest, DeletingAllEmptiesTheListSilently) {
    EXPECT_EQ(Run(COperation::Plain(opDelete), kAll), 0);
    EXPECT_EQ(list.Count(), 0);
    for (const auto& p : paths)
        EXPECT_NE(::access(p.c_str(), F_OK), 0) << p;
    EXPECT_EQ(::access(dir.File("data/Trash/files/p3.jpg").c_str(), F_OK), 0);
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(SelectionPassTest, FailuresInAWalkAreListedInOneMessageAtTheEnd) {
    for (int i : {1, 3}) // so deleting these photos fails
        ASSERT_EQ(::unlink(paths[i].c_str()), 0);
    EXPECT_EQ(Run(COperation::Plain(opDelete), kAll), 2);
    ASSERT_EQ(prompt.shown.size(), 1u);
    const std::string gone = " to the Trash: No such file or directory";
    EXPECT_EQ(prompt.shown[0].text, "2 photos could not be processed:\nCould not move " + paths[1] +
                                        gone + "\nCould not move " + paths[3] + gone);
    EXPECT_EQ(prompt.shown[0].title, "Error");
    EXPECT_EQ(prompt.shown[0].icon, PromptIcon::Warning);
    EXPECT_EQ(window.raised, 2);
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(list.PhotoAt(0)->path, paths[1]);
    // One failure is told as it is.
    window.current = list.PhotoAt(0);
    EXPECT_EQ(Run(COperation::Plain(opDelete), {}), 1);
    EXPECT_EQ(prompt.shown.back().text, "Could not move " + paths[1] + gone);
}

// Turns run on the pool: a cancel at the second step leaves the photos in
// hand done, one per worker beyond the first, whatever the timing.
TEST_F(SelectionPassTest, CancelStopsBetweenPhotosAndLeavesTheRestUntouched) {
    for (const int threads : {1, 2}) {
        test::Bytes before[4];
        for (int i = 0; i < 4; ++i)
            ASSERT_TRUE(test::ReadFile(paths[i], before[i]));
        progress.cancelAfter = 2;
        const PassResult result =
            RunPass(COperation::Plain(opRotateRight), kAll, processor, window, progress, threads);
        EXPECT_TRUE(result.cancelled);
        EXPECT_EQ(progress.runs.back().total, 4);
        EXPECT_EQ(progress.runs.back().steps, (std::vector<int>{1, 2}));
        EXPECT_TRUE(progress.runs.back().ended);
        for (int i = 0; i < 4; ++i) {
            test::Bytes now;
            ASSERT_TRUE(test::ReadFile(paths[i], now));
            EXPECT_EQ(now != before[i], i < 1 + threads) << threads << " threads, photo " << i;
            // The thumbnail follows the turn.
            const Bitmap file = test::Decoded(paths[i]);
            EXPECT_EQ(list.PhotoAt(i)->IsPortrait(), file.Width() < file.Height()) << i;
        }
    }
    // A cancel at the last step stops nothing; a marker walk counts its photos.
    progress.cancelAfter = 1;
    EXPECT_FALSE(RunPass(COperation::Resize(20, 10), {false, false, false, true, false}, processor,
                         window, progress)
                     .cancelled);
    EXPECT_EQ(progress.runs.back().total, 1);
    EXPECT_TRUE(list.PhotoAt(1)->edits.resizePending);
}

TEST_F(SelectionPassTest, DeletingTheCurrentPhotoLooksItUp) {
    window.current = list.PhotoAt(2);
    EXPECT_EQ(Run(COperation::Plain(opDelete), {}), 0);
    ASSERT_EQ(list.Count(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_NE(list.PhotoAt(i)->path, paths[2]);
    EXPECT_NE(::access(paths[2].c_str(), F_OK), 0);
}

} // namespace
} // namespace tivox
