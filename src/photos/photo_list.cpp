#include "photos/photo_list.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "photos/edit_host.h"
#include "platform/folder_listing.h"

namespace tivox {

namespace {

// The nice values of the two builders. The worker yields to the interface
// when they share a core (the window's first frame at 4K needs its own ~25
// ms, which a thumbnail decode beside it would double), and while the worker
// builds the shown page, the thumbnail the helper still has in hand gets
// little of a shared core.
constexpr int kWorkerNice = 5;
constexpr int kHelperNice = 10;

bool EndsWithJpg(const std::string& name) {
    if (name.size() < 4)
        return false;
    static constexpr char kTail[] = ".jpg";
    for (std::size_t i = 0; i < 4; ++i) {
        char c = name[name.size() - 4 + i];
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
        if (c != kTail[i])
            return false;
    }
    return true;
}

} // namespace

CPhotoList::~CPhotoList() {
    Clear();
}

void CPhotoList::JoinWorker() {
    StopWorker(0);
    if (worker.joinable())
        worker.join();
    if (helper.joinable())
        helper.join();
}

void CPhotoList::Open(const std::string& folder) {
    Clear(); // joins a worker of an earlier opening before its photos go
    ResetCursor();
    std::string root = folder;
    if (root.empty() || root.back() != '/')
        root += '/';
    Scan(root);
    stopRequested.store(0, std::memory_order_release);
    {
        std::lock_guard lock(m_lock);
        m_workerBusy = nullptr;
        m_helperTask = nullptr;
        m_helperBusy = nullptr;
        m_workerDone = false;
        m_workerIdle = false;
    }
    helper = std::jthread([this, size = thumbnailSize] { RunHelper(size); });
    worker = std::jthread([this, size = thumbnailSize] { RunWorker(size); });
}

void CPhotoList::Scan(const std::string& folder) {
    std::vector<FolderEntry> entries;
    ListFolder(folder, entries); // a folder that cannot be entered adds nothing
    photos.reserve(photos.size() + entries.size());
    for (const FolderEntry& e : entries) {
        if (e.kind == EntryKind::Folder) {
            Scan(folder + e.name + "/");
        } else if (e.kind == EntryKind::File && EndsWithJpg(e.name)) {
            auto photo = std::make_unique<CPhoto>();
            photo->path = folder + e.name;
            photos.push_back(std::move(photo));
        }
    }
}

std::size_t CPhotoList::RankOf(std::size_t index) const {
    // Pages counted from the visible one: 0, +1, -1, +2, -2, ...
    const auto offset = std::ptrdiff_t(index) - std::ptrdiff_t(m_first);
    const auto count = std::ptrdiff_t(m_pageCount);
    const std::ptrdiff_t page = offset >= 0 ? offset / count : -((-offset + count - 1) / count);
    const std::size_t order =
        page >= 0 ? std::size_t(2 * page - (page > 0 ? 1 : 0)) : std::size_t(-2 * page);
    return order * m_pageCount + std::size_t(offset - page * count);
}

std::ptrdiff_t CPhotoList::NextToBuild() const {
    const auto n = std::ptrdiff_t(photos.size());
    const auto count = std::ptrdiff_t(m_pageCount);
    const auto first = std::ptrdiff_t(m_first);
    // Pages in the order 0, +1, -1, +2, -2, ... until both ends are passed.
    const std::ptrdiff_t ahead = first < n ? (n - first + count - 1) / count : 0;
    const std::ptrdiff_t behind = (first + count - 1) / count;
    const std::ptrdiff_t steps = 2 * std::max(ahead, behind + 1);
    for (std::ptrdiff_t step = 0; step < steps; ++step) {
        const std::ptrdiff_t page = step % 2 ? (step + 1) / 2 : -(step / 2);
        const std::ptrdiff_t start = first + page * count;
        for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(start, 0); i < std::min(start + count, n);
             ++i) {
            const CPhoto* p = photos[std::size_t(i)].get();
            if (p != m_helperBusy && !p->thumbnailReady.load(std::memory_order_acquire))
                return i;
        }
    }
    return -1;
}

std::ptrdiff_t CPhotoList::PickVictim(std::size_t rank) const {
    std::ptrdiff_t best = -1;
    std::size_t bestRank = 0;
    for (std::size_t i = 0; i < photos.size(); ++i) {
        const CPhoto& p = *photos[i];
        if (p.ThumbnailBytes() == 0)
            continue;
        const std::size_t r = RankOf(i);
        if (r <= rank || r < m_pageCount)
            continue; // nearer than the work in hand, or shown
        const CPhoto* b = best < 0 ? nullptr : photos[std::size_t(best)].get();
        if (!b || p.shownStamp < b->shownStamp || (p.shownStamp == b->shownStamp && r > bestRank)) {
            best = std::ptrdiff_t(i);
            bestRank = r;
        }
    }
    return best;
}

std::size_t CPhotoList::BytesHeld() const {
    std::size_t total = 0;
    for (const auto& p : photos)
        total += p->ThumbnailBytes();
    return total;
}

std::size_t CPhotoList::ThumbnailBytes() const {
    std::lock_guard lock(m_lock);
    return BytesHeld();
}

bool CPhotoList::MakeRoom(std::size_t rank, std::size_t need) {
    std::size_t held = BytesHeld();
    while (held > m_budget || m_budget - held < need) {
        const std::ptrdiff_t victim = PickVictim(rank);
        if (victim < 0)
            return false;
        CPhoto& p = *photos[std::size_t(victim)];
        held -= p.ThumbnailBytes();
        p.DropThumbnail(); // under m_lock: the photo cannot go meanwhile
    }
    return true;
}

void CPhotoList::RunWorker(Size size) {
    (void)::setpriority(PRIO_PROCESS, id_t(::gettid()), kWorkerNice);
    CScaledLoader loader; // its buffers serve every photo of the run
    // Room for one thumbnail before its decode: the box is the most it takes.
    const std::size_t need =
        std::size_t(std::max(size.width, 0)) * std::size_t(std::max(size.height, 0)) * 4;
    std::unique_lock lock(m_lock);
    // Waits until the helper is free, the work changes or a stop comes.
    auto waitForHelper = [&] {
        const std::uint64_t seen = m_generation;
        m_changed.wait(lock, [&] {
            return !m_helperBusy || m_generation != seen ||
                   stopRequested.load(std::memory_order_acquire);
        });
    };
    while (!stopRequested.load(std::memory_order_acquire)) {
        const std::ptrdiff_t next = NextToBuild();
        const std::size_t rank = next < 0 ? SIZE_MAX : RankOf(std::size_t(next));
        bool room = false;
        if (next < 0) {
            MakeRoom(m_pageCount - 1, 0); // over a lowered budget: trim anyway
        } else if (rank < m_pageCount) {
            MakeRoom(rank, 0); // the shown page is built whatever it costs
            room = true;
        } else if (!m_helperBusy) {
            room = MakeRoom(rank, need);
        }
        if (m_helperBusy && (!room || rank >= m_pageCount)) {
            waitForHelper(); // its thumbnail first, in order
            continue;
        }
        if (!room) {
            const std::uint64_t seen = m_generation;
            m_workerIdle = true;
            m_changed.notify_all();
            m_changed.wait(lock, [&] {
                return m_generation != seen || stopRequested.load(std::memory_order_acquire);
            });
            m_workerIdle = false;
            continue;
        }
        CPhoto* photo = photos[std::size_t(next)].get();
        photo->shownStamp = m_clock;
        if (rank >= m_pageCount) {
            // Beyond the shown page: the helper builds it while this thread
            // waits, free to turn to a new page as soon as one is shown.
            m_helperTask = photo;
            m_helperIndex = std::size_t(next);
            m_helperBusy = photo;
            m_changed.notify_all();
            waitForHelper();
            continue;
        }
        m_workerBusy = photo;
        lock.unlock();
        if (photo->MakeThumbnailIfMissing(size, loader)) {
            if (IEditHost* host = window.load(std::memory_order_acquire))
                host->InvalidateTile(int(next));
        }
        lock.lock();
        m_workerBusy = nullptr;
        m_changed.notify_all();
    }
    // Ended only once the helper's thumbnail in hand is done too; one handed
    // over but not yet begun is taken back.
    if (m_helperTask) {
        m_helperTask = nullptr;
        m_helperBusy = nullptr;
    }
    m_changed.wait(lock, [&] { return !m_helperBusy; });
    m_workerDone = true;
    m_changed.notify_all();
}

void CPhotoList::RunHelper(Size size) {
    (void)::setpriority(PRIO_PROCESS, id_t(::gettid()), kHelperNice);
    CScaledLoader loader;
    std::unique_lock lock(m_lock);
    for (;;) {
        m_changed.wait(lock, [&] { return m_helperTask || m_workerDone; });
        if (!m_helperTask)
            return; // the worker has ended
        CPhoto* photo = m_helperTask;
        const std::size_t index = m_helperIndex;
        m_helperTask = nullptr;
        lock.unlock();
        if (photo->MakeThumbnailIfMissing(size, loader)) {
            if (IEditHost* host = window.load(std::memory_order_acquire))
                host->InvalidateTile(int(index));
        }
        lock.lock();
        m_helperBusy = nullptr;
        m_changed.notify_all();
    }
}

void CPhotoList::SetVisibleRange(int first, int count) {
    const std::size_t n = photos.size();
    const std::size_t from = std::size_t(std::max(first, 0));
    const std::size_t tiles = std::size_t(std::max(count, 1));
    {
        std::lock_guard lock(m_lock);
        m_first = from;
        m_pageCount = tiles;
        ++m_clock;
        for (std::size_t i = from; i < std::min(from + tiles, n); ++i)
            photos[i]->shownStamp = m_clock;
        ++m_generation;
        if (!m_workerDone)
            m_workerIdle = false;
    }
    m_changed.notify_all();
    // Previews live only on the shown page: a tile needs one just until its
    // thumbnail comes.
    for (std::size_t i = m_previewFirst; i < std::min(m_previewFirst + m_previewCount, n); ++i) {
        if (i < from || i >= from + tiles)
            photos[i]->DropPreview();
    }
    for (std::size_t i = from; i < std::min(from + tiles, n); ++i) {
        if (!photos[i]->thumbnailReady.load(std::memory_order_acquire))
            photos[i]->LoadPreview();
    }
    m_previewFirst = from;
    m_previewCount = tiles;
}

void CPhotoList::SetThumbnailBudget(std::size_t bytes) {
    {
        std::lock_guard lock(m_lock);
        m_budget = bytes;
        ++m_generation;
        if (!m_workerDone)
            m_workerIdle = false;
    }
    m_changed.notify_all();
}

bool CPhotoList::WaitWorker(int milliseconds) {
    std::unique_lock lock(m_lock);
    return m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                              [this] { return m_workerDone || m_workerIdle; });
}

bool CPhotoList::StopWorker(int milliseconds) {
    {
        // Under the lock, so that an idle worker cannot miss the wake-up.
        std::lock_guard lock(m_lock);
        stopRequested.store(1, std::memory_order_release);
    }
    m_changed.notify_all();
    std::unique_lock lock(m_lock);
    return m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                              [this] { return m_workerDone; });
}

void CPhotoList::Clear() {
    JoinWorker();
    photos.clear();
    m_previewCount = 0;
}

CPhoto* CPhotoList::PhotoAt(int index) const {
    if (index < 0 || std::size_t(index) >= photos.size())
        return nullptr;
    return photos[std::size_t(index)].get();
}

void CPhotoList::ResetCursor() {
    cursorNext = 0;
    cursorCurrent = -1;
}

int CPhotoList::AtEnd() const {
    return cursorNext >= photos.size() ? 1 : 0;
}

CPhoto* CPhotoList::NextPhoto() {
    if (cursorNext >= photos.size())
        return nullptr;
    cursorCurrent = std::ptrdiff_t(cursorNext);
    ++cursorNext;
    return photos[std::size_t(cursorCurrent)].get();
}

void CPhotoList::RemoveCurrent() {
    if (cursorCurrent >= 0 && std::size_t(cursorCurrent) < photos.size())
        RemoveAt(std::size_t(cursorCurrent));
}

void CPhotoList::Remove(CPhoto* photo) {
    for (std::size_t i = 0; i < photos.size(); ++i) {
        if (photos[i].get() == photo) {
            RemoveAt(i);
            return;
        }
    }
}

void CPhotoList::RemoveAt(std::size_t index) {
    std::unique_ptr<CPhoto> victim;
    {
        std::unique_lock lock(m_lock);
        // The worker may be building this very thumbnail: let it finish.
        m_changed.wait(lock, [&] {
            return m_workerBusy != photos[index].get() && m_helperBusy != photos[index].get();
        });
        victim = std::move(photos[index]);
        photos.erase(photos.begin() + std::ptrdiff_t(index));
    }
    // The cursor goes on with the photo behind the removed one.
    if (index < cursorNext)
        --cursorNext;
    if (cursorCurrent == std::ptrdiff_t(index))
        cursorCurrent = -1;
    else if (cursorCurrent > std::ptrdiff_t(index))
        --cursorCurrent;
}

} // namespace tivox
