// The pool that runs work over many photos: every item once, each finish
// given out once, and a Cancel that lets the items in hand finish but
// starts no other. Driven by latches, never by timing.

#include "imageops/photo_pool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <latch>
#include <vector>

namespace tivox {
namespace {

TEST(PhotoPool, RunsEveryItemOnceAndGivesEachFinishOnce) {
    for (const int threads : {1, 2, 5}) {
        std::vector<std::atomic<int>> runs(7);
        std::vector<int> workers(7, -1);
        PhotoPool pool(
            7,
            [&](int item, int worker) {
                runs[std::size_t(item)].fetch_add(1);
                workers[std::size_t(item)] = worker;
            },
            threads);
        std::vector<int> given;
        for (int item = pool.WaitNext(); item >= 0; item = pool.WaitNext())
            given.push_back(item);
        std::sort(given.begin(), given.end());
        EXPECT_EQ(given, (std::vector<int>{0, 1, 2, 3, 4, 5, 6})) << threads;
        EXPECT_EQ(pool.WaitNext(), -1);
        for (std::size_t i = 0; i < runs.size(); ++i) {
            EXPECT_EQ(runs[i].load(), 1) << threads;
            EXPECT_TRUE(workers[i] >= 0 && workers[i] < pool.Threads());
        }
    }
    PhotoPool none(
        0, [](int, int) { FAIL(); }, 2);
    EXPECT_EQ(none.Threads(), 1);
    EXPECT_EQ(none.WaitNext(), -1);
}

TEST(PhotoPool, CancelFinishesTheItemsInHandAndStartsNoOther) {
    std::latch started(2), release(1);
    std::vector<std::atomic<int>> runs(6);
    PhotoPool pool(
        6,
        [&](int item, int) {
            runs[std::size_t(item)].fetch_add(1);
            if (item < 2) {
                started.count_down();
                release.wait();
            }
        },
        2);
    started.wait(); // both workers hold an item
    pool.Cancel();
    release.count_down();
    std::vector<int> given;
    for (int item = pool.WaitNext(); item >= 0; item = pool.WaitNext())
        given.push_back(item);
    std::sort(given.begin(), given.end());
    EXPECT_EQ(given, (std::vector<int>{0, 1}));
    for (std::size_t i = 2; i < runs.size(); ++i)
        EXPECT_EQ(runs[i].load(), 0) << i;
}

TEST(PhotoPool, WorkersOfTwoOrMoreKeepTheirPixelPassesWhole) {
    for (const int threads : {1, 2}) {
        std::atomic<int> sharing{0};
        PhotoPool pool(
            2, [&](int, int) { sharing += SharesCoresWithPool() ? 1 : 0; }, threads);
        while (pool.WaitNext() >= 0) {
        }
        EXPECT_EQ(sharing.load(), threads == 1 ? 0 : 2);
    }
    EXPECT_FALSE(SharesCoresWithPool());
}

} // namespace
} // namespace tivox
