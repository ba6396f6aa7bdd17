#pragma once
// Work over many photos on a few threads, one per core: items 0 to n-1 are
// handed out in rising order, each to the next free worker. The thread that
// made the pool collects the finished items one at a time, so that it alone
// reports progress and touches the window, and may stop the run between
// items: an item not started by then never is. Workers run exactly as many
// items ahead of it as there are workers (while items are left): a cancel
// while the k-th finished item is dealt with leaves exactly the first
// k + Threads() - 1 items done, whatever the timing.
//
// The work function runs on the workers; it must reach only what its own
// item owns (or what is locked). Whatever it leaves for the calling thread
// is safe to read once WaitNext has named its item.

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/user_seams.h"

namespace tivox {

class PhotoPool {
public:
    // `item` is 0 to count-1; `worker` is 0 to Threads()-1, for state kept
    // per thread (a decoder, a recycler).
    using Work = std::function<void(int item, int worker)>;

    // One per core, at least one.
    static int DefaultThreads();

    // Starts at once; never more threads than items, at least one.
    PhotoPool(int count, Work work, int threads = DefaultThreads());
    // Cancels and waits for the items in hand.
    ~PhotoPool();
    PhotoPool(const PhotoPool&) = delete;
    PhotoPool& operator=(const PhotoPool&) = delete;

    int Threads() const { return m_size; }

    // Waits for the next item to finish and gives its index, in the order
    // they finish; -1 once every started item has been given and no more
    // will start. Calling it again says the item given last is dealt with.
    int WaitNext();
    // No item starts from now on; those in hand still finish.
    void Cancel();

private:
    void Run(int worker);

    Work m_work;
    const int m_count;
    const int m_size; // threads
    std::mutex m_lock;
    std::condition_variable m_finished; // the calling thread waits here
    std::condition_variable m_room;     // the workers wait here
    int m_next = 0;                     // the next item to start
    int m_running = 0;                  // items in hand
    int m_held = 0;                     // 1 while the calling thread deals with a finished item
    bool m_cancelled = false;
    std::deque<int> m_done;              // finished, not yet given out
    std::vector<std::jthread> m_threads; // last: joined before the rest goes
};

// Gives each item of `pool` to `finish` on this thread as it finishes and
// counts it as one step of `steps`, out of `total`. When a step is refused
// (the user cancelled) the pool starts no other item; those in hand still
// finish and are given. Gives the number of items finished.
template <class Finish>
int CollectSteps(PhotoPool& pool, StepScope& steps, int total, Finish&& finish) {
    int done = 0;
    bool stepping = true;
    for (int item = pool.WaitNext(); item >= 0; item = pool.WaitNext()) {
        finish(item);
        ++done;
        if (stepping && !steps.Step(done) && done < total) {
            pool.Cancel();
            stepping = false;
        }
    }
    return done;
}

// True on a worker of a pool of more than one thread. Such a worker already
// shares the cores with its siblings, so its pixel passes stay whole.
bool SharesCoresWithPool();

} // namespace tivox
