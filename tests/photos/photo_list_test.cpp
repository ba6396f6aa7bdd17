#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <latch>
#include <thread>

#include "photo_writer/test_jpeg.h"
#include "photos/photo_list.h"
#include "support/fake_edit_host.h"

namespace tivox {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

// Opens and closes the writing end of a FIFO until `done`: a reader stuck in
// opening it (the fault under test) goes on, so a failing test still ends.
void ReleaseFifoUntil(const std::string& fifo, const std::function<bool()>& done) {
    while (!done()) {
        const int fd = open(fifo.c_str(), O_WRONLY | O_NONBLOCK);
        if (fd >= 0)
            close(fd);
    }
}

// A link to a folder is not entered (one back to the folder listed each
// photo again and again); a FIFO is no photo and is never opened.
TEST(PhotoList, ScanIsSortedDepthFirstAndTakesOnlyJpgFilesInAnyCase) {
    test::TempDir dir;
    for (const char* sub : {"m", "q.jpg", "m/deep", "empty"})
        fs::create_directory(dir.File(sub));
    for (const char* f : {"n.Jpg", "b.JPG", "a.jpg", ".jpg", "x.jpeg", "x.jpg.bak", "m/z.jpg",
                          "m/y.jpg", "m/deep/k.jpg", "q.jpg/p.jpg", "readme.txt", "jpg"})
        ASSERT_TRUE(test::WriteFile(dir.File(f), {}));
    fs::create_directory_symlink(".", dir.File("self"));
    fs::create_directory_symlink("m", dir.File("m2.jpg"));
    fs::create_symlink("a.jpg", dir.File("c.jpg"));
    const std::string fifo = dir.File("x.jpg");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& folder : {dir.path(), dir.path() + "/"}) {
        CPhotoList list;
        list.Open(folder);
        Names names;
        for (int i = 0; i < list.Count(); ++i)
            names.push_back(list.PhotoAt(i)->path.substr(dir.path().size() + 1));
        EXPECT_EQ(names, (Names{".jpg", "a.jpg", "b.JPG", "c.jpg", "m/deep/k.jpg", "m/y.jpg",
                                "m/z.jpg", "n.Jpg", "q.jpg/p.jpg"}));
    }
    for (const std::string& folder : {dir.File("empty"), dir.File("missing")}) {
        CPhotoList list;
        list.Open(folder);
        EXPECT_EQ(list.Count(), 0);
        list.ResetCursor();
        EXPECT_EQ(list.AtEnd(), 1);
        EXPECT_EQ(list.PhotoAt(0), nullptr);
        EXPECT_TRUE(list.WaitWorker(5000));
    }

    // Named directly, a FIFO is refused at once, with its name.
    auto load = std::async(std::launch::async, [&] {
        Bitmap picture;
        std::string error;
        return CScaledLoader().LoadFull(fifo, picture, error) ? std::string() : error;
    });
    const bool quick = load.wait_for(std::chrono::seconds(5)) == std::future_status::ready;
    ReleaseFifoUntil(fifo, [&] {
        return load.wait_for(std::chrono::milliseconds(100)) == std::future_status::ready;
    });
    EXPECT_TRUE(quick);
    EXPECT_NE(load.get().find(fifo), std::string::npos);
}

// The thumbnail worker against the list and the files changing under it.
class WorkerTest : public ::testing::Test {
protected:
    void MakePhotos(int count) {
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(
                test::WriteFile(Name(i), test::MakeJpeg(test::Picture(64 + 8 * (i % 3), 48))));
        }
    }
    std::string Name(int i) const {
        char name[32];
        std::snprintf(name, sizeof name, "p%03d.jpg", i);
        return dir.File(name);
    }
    bool Ready(int i) const {
        return list.PhotoAt(i)->thumbnailReady.load(std::memory_order_acquire) == 1;
    }
    test::TempDir dir;
    test::FakeWindow host;
    CPhotoList list;
};

TEST_F(WorkerTest, ThumbnailsArriveInListOrderWithANotificationEach) {
    MakePhotos(6);
    ASSERT_TRUE(test::WriteFile(Name(2), {'x'})); // a broken one
    list.SetThumbnailSize({32, 24});
    list.SetWindow(&host);
    list.Open(dir.path());
    ASSERT_TRUE(list.WaitWorker(20000));
    EXPECT_EQ(host.Tiles(), (std::vector<int>{0, 1, 2, 3, 4, 5}));
    for (int i = 0; i < list.Count(); ++i) {
        ASSERT_TRUE(Ready(i));
        // All are wider than 4:3; the broken one draws nothing.
        EXPECT_EQ(list.PhotoAt(i)->thumbnail->Width(), i == 2 ? 0 : 32) << i;
    }
    // A second opening builds everything anew, also without a window.
    list.Clear();
    list.SetWindow(nullptr);
    list.Open(dir.path());
    ASSERT_TRUE(list.WaitWorker(20000));
    EXPECT_TRUE(Ready(5));
    EXPECT_EQ(host.Tiles().size(), 6u);
}

// Stops the worker from inside its first notification.
class StoppingHost : public test::FakeWindow {
public:
    void InvalidateTile(int index) override {
        FakeWindow::InvalidateTile(index);
        list->stopRequested.store(1);
    }
};

TEST_F(WorkerTest, StopIsHonouredBetweenPhotos) {
    MakePhotos(4);
    StoppingHost stopping;
    stopping.list = &list;
    list.SetWindow(&stopping);
    list.Open(dir.path());
    ASSERT_TRUE(list.WaitWorker(20000));
    EXPECT_TRUE(Ready(0));
    for (int i = 1; i < 4; ++i)
        EXPECT_EQ(list.PhotoAt(i)->thumbnail, nullptr);
    EXPECT_TRUE(list.StopWorker(0));
}

TEST_F(WorkerTest, ClearingOrRemovingWhileTheWorkerRunsIsSafe) {
    MakePhotos(24);
    list.SetWindow(&host);
    // Each opening drops the photos of the one before, joining its worker
    // first: no photo freed under it, none listed twice.
    for (int round = 0; round < 5; ++round)
        list.Open(dir.path());
    ASSERT_EQ(list.Count(), 24);
    // Remove from the front and the middle while thumbnails are being built.
    for (int i = 0; i < 6; ++i) {
        list.Remove(list.PhotoAt(0));
        list.Remove(list.PhotoAt(list.Count() / 2));
    }
    ASSERT_TRUE(list.WaitWorker(20000));
    ASSERT_EQ(list.Count(), 12);
    // The worker did not skip photos whose index shifted under it.
    for (int i = 0; i < list.Count(); ++i)
        EXPECT_TRUE(Ready(i)) << i;
}

// Blocks the thread that sends the first notification (of `hold`, when set)
// until the test lets it go.
class GateHost : public test::FakeWindow {
public:
    void InvalidateTile(int index) override {
        FakeWindow::InvalidateTile(index);
        if ((hold < 0 || index == hold) && !m_first.exchange(true)) {
            arrived.count_down();
            go.wait();
        }
    }
    std::latch arrived{1}, go{1};
    int hold = -1;

private:
    std::atomic<bool> m_first{false};
};

// Photos of 64 x 48 in a box of 32 x 24: every thumbnail takes kThumb bytes.
constexpr std::size_t kThumb = 32 * 24 * 4;

TEST_F(WorkerTest, TurningThePageReordersTheWorkAtOnceWithoutWaitingForTheOneInHand) {
    MakePhotos(12);
    GateHost gate;
    gate.hold = 1; // the first photo beyond the shown one
    list.SetThumbnailSize({32, 24});
    list.SetVisibleRange(0, 1);
    list.SetWindow(&gate);
    list.Open(dir.path());
    gate.arrived.wait(); // photo 1 is in hand, beyond the shown page
    list.SetVisibleRange(6, 2);
    // The new page is built while photo 1 is still in hand.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!(Ready(6) && Ready(7)) && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_TRUE(Ready(6) && Ready(7));
    gate.go.count_down();
    ASSERT_TRUE(list.WaitWorker(20000));
    // The shown page, then the next, the previous and outward.
    EXPECT_EQ(gate.Tiles(), (std::vector<int>{0, 1, 6, 7, 8, 9, 4, 5, 10, 11, 2, 3}));
}

TEST_F(WorkerTest, TheBudgetKeepsTheNearestPagesAndDroppedOnesComeBack) {
    MakePhotos(12);
    list.SetThumbnailSize({32, 24});
    list.SetWindow(&host);
    list.SetThumbnailBudget(4 * kThumb);
    list.Open(dir.path());
    auto built = [&] {
        std::vector<int> ready;
        for (int i = 0; i < list.Count(); ++i)
            if (Ready(i))
                ready.push_back(i);
        return ready;
    };
    for (int first : {0, 8, 4, 0}) {
        list.SetVisibleRange(first, 2);
        ASSERT_TRUE(list.WaitWorker(20000));
        EXPECT_LE(list.ThumbnailBytes(), 4 * kThumb) << first;
        const std::vector<int> expected = first == 4   ? std::vector<int>{4, 5, 6, 7}
                                          : first == 8 ? std::vector<int>{8, 9, 10, 11}
                                                       : std::vector<int>{0, 1, 2, 3};
        EXPECT_EQ(built(), expected) << first;
    }
    // Back on page 0 its thumbnails were made a second time.
    const std::vector<int> tiles = host.Tiles();
    EXPECT_EQ(std::count(tiles.begin(), tiles.end(), 0), 2);
    // The shown page is built even when it alone exceeds the budget.
    list.SetThumbnailBudget(kThumb);
    list.SetVisibleRange(10, 2);
    ASSERT_TRUE(list.WaitWorker(20000));
    EXPECT_EQ(built(), (std::vector<int>{10, 11}));
}

// A tile being drawn keeps its thumbnail even when the worker wants it gone:
// the view holds the photo's lock, and the worker's drop waits for it. (A
// drop that did not wait frees the pixels read below: ThreadSanitizer and
// AddressSanitizer builds report it.)
TEST_F(WorkerTest, EvictionWaitsForAThumbnailBeingDrawn) {
    MakePhotos(8);
    list.SetThumbnailSize({32, 24});
    list.SetThumbnailBudget(2 * kThumb);
    list.SetVisibleRange(0, 1);
    list.Open(dir.path());
    ASSERT_TRUE(list.WaitWorker(20000)); // photos 0 and 1
    GateHost gate;
    list.SetWindow(&gate);
    list.SetVisibleRange(5, 1);
    gate.arrived.wait(); // photo 5 is built; next the worker makes room
    {
        const CPhoto::ThumbnailView view = list.PhotoAt(0)->ViewThumbnail();
        ASSERT_NE(view.image, nullptr);
        ASSERT_FALSE(view.isPreview);
        gate.go.count_down();
        std::uint32_t sum = 0;
        for (int y = 0; y < view.image->Height(); ++y)
            for (int x = 0; x < view.image->Width(); ++x)
                sum += view.image->PixelAt(x, y);
        EXPECT_NE(sum, 0u);
    }
    ASSERT_TRUE(list.WaitWorker(20000));
    EXPECT_EQ(list.PhotoAt(0)->ThumbnailBytes(), 0u);
    EXPECT_TRUE(Ready(5));
    EXPECT_TRUE(Ready(6));
    EXPECT_LE(list.ThumbnailBytes(), 2 * kThumb + kThumb);
}

// Until a thumbnail is made, a shown tile draws the camera's embedded
// picture; a photo without one draws nothing (the crossed box).
TEST_F(WorkerTest, ShownPhotosWithoutThumbnailsViewTheirEmbeddedPreview) {
    test::CameraExif exif;
    exif.thumbnail = test::SmallJpeg(40, 30);
    test::TestJpegOptions with = test::Picture(64, 48);
    with.exif = test::CameraExifPayload(exif);
    test::TestJpegOptions broken = with;
    exif.thumbnail = {0xFF, 0xD8, 0xFF}; // counts as none
    broken.exif = test::CameraExifPayload(exif);
    for (int i : {0, 3})
        ASSERT_TRUE(test::WriteFile(Name(i), test::MakeJpeg(test::Picture(64, 48))));
    ASSERT_TRUE(test::WriteFile(Name(1), test::MakeJpeg(with)));
    ASSERT_TRUE(test::WriteFile(Name(2), test::MakeJpeg(broken)));
    GateHost gate;
    list.SetWindow(&gate);
    list.Open(dir.path());
    gate.arrived.wait(); // photo 0 has its thumbnail, the others wait
    list.SetVisibleRange(0, 4);
    auto seen = [&](int i) {
        const CPhoto::ThumbnailView view = list.PhotoAt(i)->ViewThumbnail();
        return view.image ? std::to_string(view.image->Width()) + (view.isPreview ? "p" : "")
                          : std::string("none");
    };
    EXPECT_EQ(seen(0), "117");
    EXPECT_EQ(seen(1), "40p");
    EXPECT_EQ(seen(2), "none");
    EXPECT_EQ(seen(3), "none");
    gate.go.count_down();
    ASSERT_TRUE(list.WaitWorker(20000));
    EXPECT_EQ(seen(1), "117");  // the real one wins once it is there
    list.SetVisibleRange(2, 2); // previews live only on the shown page
    EXPECT_FALSE(list.PhotoAt(1)->HasPreview());
}

TEST_F(WorkerTest, CursorLoopsSurviveRemoval) {
    MakePhotos(5);
    list.Open(dir.path());
    list.ResetCursor();
    int seen = 0;
    while (!list.AtEnd()) {
        CPhoto* p = list.NextPhoto();
        ++seen;
        if (p->path == Name(1) || p->path == Name(4))
            list.RemoveCurrent();
    }
    EXPECT_EQ(seen, 5);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(list.AtEnd(), 1); // the last one went through RemoveCurrent
    CPhoto stranger;
    list.Remove(&stranger); // not in the list: nothing happens
    EXPECT_EQ(list.Count(), 3);
}

} // namespace
} // namespace tivox
