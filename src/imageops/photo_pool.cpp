#include "imageops/photo_pool.h"

#include <algorithm>
#include <utility>

namespace tivox {

namespace {

// Set by each worker of a pool of two or more for its own lifetime; no
// other code writes it.
thread_local bool t_sharesCores = false;

} // namespace

bool SharesCoresWithPool() {
    return t_sharesCores;
}

int PhotoPool::DefaultThreads() {
    return std::max(1, int(std::thread::hardware_concurrency()));
}

PhotoPool::PhotoPool(int count, Work work, int threads)
    : m_work(std::move(work)), m_count(std::max(0, count)),
      m_size(std::clamp(threads, 1, std::max(1, m_count))) {
    m_threads.reserve(std::size_t(m_size));
    for (int i = 0; i < m_size; ++i)
        m_threads.emplace_back([this, i] { Run(i); });
}

PhotoPool::~PhotoPool() {
    Cancel();
    for (std::jthread& thread : m_threads)
        thread.join();
}

void PhotoPool::Run(int worker) {
    t_sharesCores = m_size > 1;
    std::unique_lock lock(m_lock);
    while (true) {
        // Never more items ahead of the calling thread than there are
        // workers, so that a cancel leaves at most that many started.
        m_room.wait(lock, [this] {
            return m_cancelled || m_next >= m_count ||
                   m_running + int(m_done.size()) + m_held < m_size;
        });
        if (m_cancelled || m_next >= m_count)
            return;
        const int item = m_next++;
        ++m_running;
        m_finished.notify_all(); // a WaitNext may wait for this start
        lock.unlock();
        m_work(item, worker);
        lock.lock();
        --m_running;
        m_done.push_back(item);
        m_finished.notify_all();
    }
}

int PhotoPool::WaitNext() {
    std::unique_lock lock(m_lock);
    // The item given last is dealt with: its place goes to the next start,
    // which happens before the next item is given, so that a cancel meets
    // the same number of items started whatever the timing.
    m_held = 0;
    m_room.notify_one();
    m_finished.wait(lock, [this] {
        const bool startsOver = m_cancelled || m_next >= m_count;
        if (m_done.empty())
            return m_running == 0 && startsOver;
        return startsOver || m_running + int(m_done.size()) >= m_size;
    });
    if (m_done.empty())
        return -1;
    const int item = m_done.front();
    m_done.pop_front();
    m_held = 1;
    return item;
}

void PhotoPool::Cancel() {
    std::lock_guard lock(m_lock);
    m_cancelled = true;
    m_finished.notify_all();
    m_room.notify_all();
}

} // namespace tivox
