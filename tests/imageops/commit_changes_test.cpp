// Commit and Discard over a photo list whose thumbnail worker runs
// meanwhile, on two workers: the report, the files, the thumbnails, and a
// cancel that leaves the photos not started as they were.

#include "imageops/commit_changes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "edit_fixture.h"
#include "imageops/color_matrix.h"
#include "pixel_test_util.h"

namespace tivox {
namespace {

constexpr std::uint32_t kColour = 0x306090;
constexpr Size kThumb{40, 30};

class CommitTest : public ::testing::Test {
protected:
    // Uniform photos, each with a negative and a resize pending; `bad` maps
    // a photo's index to the bytes it has instead.
    void Open(int count, const std::map<int, test::Bytes>& bad = {}) {
        for (int i = 0; i < count; ++i) {
            test::TestJpegOptions o = test::Picture(64, 48, test::Pattern::Solid);
            o.solid = kColour;
            const std::string path = dir.File("p" + std::to_string(i) + ".jpg");
            test::WriteFile(path, bad.count(i) ? bad.at(i) : test::MakeJpeg(o));
            before.push_back(Bytes(path));
        }
        list.SetThumbnailSize(kThumb);
        list.Open(dir.path()); // its worker makes thumbnails from here on
        ASSERT_EQ(list.Count(), count);
        for (int i = 0; i < count; ++i) {
            CPendingEdits& e = list.PhotoAt(i)->edits;
            e.SetBrightness(0.0f);
            e.SetContrast(1.0f);
            e.SetSharpness(0.0f);
            e.SetGamma(1.0f);
            e.SetSaturation(1.0f);
            e.SetNegative(1);
            e.SetResize(Size{32, 24});
        }
        settings.thumbSize = kThumb;
        settings.screenSize = Size{320, 240};
        settings.threads = 2;
    }
    static test::Bytes Bytes(const std::string& path) {
        test::Bytes bytes;
        EXPECT_TRUE(test::ReadFile(path, bytes));
        return bytes;
    }
    CPhoto& Photo(int i) { return *list.PhotoAt(i); }
    bool Untouched(int i) { return Bytes(Photo(i).path) == before[std::size_t(i)]; }
    // Red of the committed negative, or of the photo as it was.
    static void ExpectRed(const Bitmap& b, bool negative) {
        const int red = int(kColour >> 16);
        EXPECT_NEAR(test::Channel(b, b.Width() / 2, b.Height() / 2, 2), negative ? 255 - red : red,
                    3);
    }

    test::TempDir dir;
    std::vector<test::Bytes> before;
    CPhotoList list;
    ChangeSettings settings;
    test::ScriptedProgress progress;
};

TEST_F(CommitTest, ReportNamesEachPhotoNotWrittenWithItsCauseAndTheOthersAreSaved) {
    test::Bytes damaged = test::MakeJpeg(test::Picture(64, 48, test::Pattern::Noise));
    damaged = test::Truncated(damaged, damaged.size() * 2 / 3);
    Open(5, {{1, test::Bytes{'n', 'o', 't', ' ', 'j', 'p', 'e', 'g'}}, {3, damaged}});
    const ChangeReport report = CommitPending(list, settings, progress);

    EXPECT_EQ(report.photos, 5);
    EXPECT_EQ(report.done, 5);
    EXPECT_EQ(report.saved, 3);
    EXPECT_TRUE(report.colorEdits);
    EXPECT_FALSE(report.cancelled);
    EXPECT_FALSE(report.Complete());
    std::vector<std::string> failures;
    for (const UiText& failure : report.failures)
        failures.push_back(RenderUiText(failure));
    std::sort(failures.begin(), failures.end());
    EXPECT_EQ(failures,
              (std::vector<std::string>{RenderUiText(ReadErrorText(Photo(1).path, kJpegUnreadable)),
                                        RenderUiText(ReadErrorText(Photo(3).path, kJpegDamaged))}));
    ASSERT_EQ(progress.runs.size(), 1u);
    EXPECT_EQ(progress.runs[0].steps, (std::vector<int>{1, 2, 3, 4, 5}));
    for (int i = 0; i < 5; ++i) {
        CPhoto& photo = Photo(i);
        EXPECT_FALSE(photo.edits.HasPending()) << i;
        EXPECT_FALSE(photo.fullImage) << i;
        if (i == 1 || i == 3) {
            EXPECT_TRUE(Untouched(i)) << i;
            continue;
        }
        const Bitmap written = test::Decoded(photo.path);
        EXPECT_EQ(written.Width(), 32);
        ExpectRed(written, true);
        // The thumbnail shows the written photo, whatever the list's worker
        // made from the file before.
        const CPhoto::ThumbnailView view = photo.ViewThumbnail();
        ASSERT_TRUE(view.image && !view.isPreview) << i;
        ExpectRed(*view.image, true);
    }
}

// The user cancels at the first step: the workers hold one photo each then,
// which are written; the others keep their edits and their files.
TEST_F(CommitTest, CancelLeavesThePhotosNotStartedPendingAndUntouched) {
    Open(5);
    progress.cancelAfter = 1;
    const ChangeReport report = CommitPending(list, settings, progress);
    EXPECT_TRUE(report.cancelled);
    EXPECT_EQ(report.done, 2);
    EXPECT_EQ(report.saved, 2);
    EXPECT_EQ(progress.runs[0].steps, (std::vector<int>{1}));
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(Photo(i).edits.HasPending(), i >= 2) << i;
        EXPECT_EQ(Untouched(i), i >= 2) << i;
    }
    settings.threads = 1;
    progress.cancelAfter = -1;
    EXPECT_TRUE(CommitPending(list, settings, progress).Complete());
    EXPECT_FALSE(Untouched(4));
    EXPECT_EQ(CountPending(list), 0);
}

TEST_F(CommitTest, DiscardDropsTheEditsAndRebuildsThumbnailsFromTheFiles) {
    Open(3);
    Photo(0).LoadScreenImage(settings.screenSize);
    Photo(1).edits.Clear();
    for (int i : {0, 2})
        ApplyColorMatrix(*Photo(i).MakeThumbnail(kThumb), NegativeMatrix(), 1.0f); // previews
    const ChangeReport report = DiscardPending(list, settings, progress);
    EXPECT_EQ(report.photos, 2);
    EXPECT_TRUE(report.Complete());
    EXPECT_TRUE(report.colorEdits);
    EXPECT_FALSE(Photo(0).screenImage);
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(Photo(i).edits.HasPending());
        EXPECT_TRUE(Untouched(i));
        const CPhoto::ThumbnailView view = Photo(i).ViewThumbnail();
        if (i != 1) {
            ASSERT_TRUE(view.image && !view.isPreview) << i;
            ExpectRed(*view.image, false);
        }
    }
}

} // namespace
} // namespace tivox
