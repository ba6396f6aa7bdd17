#include "photos/photo_list.h"

#include <chrono>

#include "photos/edit_host.h"
#include "platform/folder_listing.h"

namespace tivox {

namespace {

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
    stopRequested.store(1, std::memory_order_release);
    if (worker.joinable())
        worker.join();
}

void CPhotoList::Open(const std::string& folder) {
    JoinWorker(); // a worker of an earlier opening must not see the scan
    std::string root = folder;
    if (root.empty() || root.back() != '/')
        root += '/';
    Scan(root);
    stopRequested.store(0, std::memory_order_release);
    {
        std::lock_guard lock(m_lock);
        m_workerIndex = 0;
        m_workerBusy = nullptr;
        m_workerDone = false;
    }
    worker = std::jthread([this, size = thumbnailSize] { RunWorker(size); });
}

void CPhotoList::Scan(const std::string& folder) {
    std::vector<FolderEntry> entries;
    ListFolder(folder, entries); // a folder that cannot be entered adds nothing
    for (const FolderEntry& e : entries) {
        const std::string full = folder + e.name;
        if (e.kind == EntryKind::Folder) {
            Scan(full + "/");
        } else if (e.kind == EntryKind::File && EndsWithJpg(e.name)) {
            auto photo = std::make_unique<CPhoto>();
            photo->SetPath(full);
            photos.push_back(std::move(photo));
        }
    }
}

void CPhotoList::RunWorker(Size size) {
    CScaledLoader loader; // its buffers serve every photo of the run
    std::unique_lock lock(m_lock);
    while (m_workerIndex < photos.size() && !stopRequested.load(std::memory_order_acquire)) {
        CPhoto* photo = photos[m_workerIndex].get();
        const int index = int(m_workerIndex);
        m_workerBusy = photo;
        lock.unlock();
        if (photo->MakeThumbnailIfMissing(size, loader)) {
            if (IEditHost* host = window.load(std::memory_order_acquire))
                host->InvalidateTile(index);
        }
        lock.lock();
        m_workerBusy = nullptr;
        ++m_workerIndex;
        m_changed.notify_all();
    }
    m_workerDone = true;
    m_changed.notify_all();
}

bool CPhotoList::WaitWorker(int milliseconds) {
    std::unique_lock lock(m_lock);
    return m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                              [this] { return m_workerDone; });
}

bool CPhotoList::StopWorker(int milliseconds) {
    stopRequested.store(1, std::memory_order_release);
    return WaitWorker(milliseconds);
}

void CPhotoList::Clear() {
    JoinWorker();
    photos.clear();
}

CPhoto* CPhotoList::PhotoAt(int index) const {
    if (index < 0 || std::size_t(index) >= photos.size())
        return nullptr;
    return photos[std::size_t(index)].get();
}

void CPhotoList::LoadScreenImageAt(int index) {
    if (CPhoto* photo = PhotoAt(index))
        photo->LoadScreenImage(screenSize, &m_uiLoader);
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
        m_changed.wait(lock, [&] { return m_workerBusy != photos[index].get(); });
        if (index < m_workerIndex)
            --m_workerIndex; // the worker's next photo moved down by one
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
