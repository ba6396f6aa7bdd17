// The pool that runs work over many photos: every item once, each finish
// given out once, and a Cancel that lets the items in hand finish but
// starts no other.

#include "imageops/photo_pool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
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

// Workers run as many items ahead of the calling thread as they are, so a
// cancel while the k-th finished item is dealt with leaves exactly the first
// k + threads - 1 items done, whatever the timing.
TEST(PhotoPool, CancelLeavesTheSameItemsDoneWhateverTheTiming) {
    for (const int threads : {1, 2, 3})
        for (const int k : {1, 2}) {
            std::vector<std::atomic<int>> runs(8);
            PhotoPool pool(
                8, [&](int item, int) { runs[std::size_t(item)].fetch_add(1); }, threads);
            std::vector<int> given;
            for (int i = 0; i < k; ++i)
                given.push_back(pool.WaitNext());
            pool.Cancel();
            for (int item = pool.WaitNext(); item >= 0; item = pool.WaitNext())
                given.push_back(item);
            std::sort(given.begin(), given.end());
            std::vector<int> expected;
            for (int i = 0; i < k + threads - 1; ++i)
                expected.push_back(i);
            EXPECT_EQ(given, expected) << threads << " threads, cancel at " << k;
            for (std::size_t i = expected.size(); i < runs.size(); ++i)
                EXPECT_EQ(runs[i].load(), 0) << threads << " threads, item " << i;
        }
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
