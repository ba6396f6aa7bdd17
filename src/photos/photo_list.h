#pragma once
// The ordered photos of the folder shown full screen, with the one worker
// thread that builds their thumbnails in list order.
//
// Threads: every member is for the user-interface thread, except what the
// worker does itself. The worker reaches photos only through the list's lock:
// it takes the next photo under the lock and marks it busy; Remove and
// RemoveCurrent wait until the worker is done with the photo they free, and
// Clear, Open and the destructor stop and join the worker first. So no photo
// is freed while the worker can reach it.

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "photos/photo.h"
#include "photos/scaled_loader.h"
#include "platform/geometry.h"

namespace tivox {

class IEditHost;

class CPhotoList {
public:
    CPhotoList() = default;
    virtual ~CPhotoList();
    CPhotoList(const CPhotoList&) = delete;
    CPhotoList& operator=(const CPhotoList&) = delete;

    void SetThumbnailSize(Size size) { thumbnailSize = size; }
    void SetScreenSize(Size size) { screenSize = size; }
    // Receives InvalidateTile(index) on the worker thread after each
    // thumbnail; null for no notification.
    void SetWindow(IEditHost* host) { window.store(host, std::memory_order_release); }

    // Scans `folder` (sorted by name, sub-folders in place, depth first,
    // files ending in ".jpg" in any case, as ListFolder tells files and
    // folders; no file is opened) and starts the worker. A folder that
    // cannot be entered gives an empty list.
    void Open(const std::string& folder);
    // Stops and joins the worker, deletes every photo. The cursor stays and
    // must be reset before use.
    void Clear();

    // Asks the worker to stop after the thumbnail in hand, and waits for it
    // at most `milliseconds`. True when it has ended.
    bool StopWorker(int milliseconds);
    // Waits at most `milliseconds` for the worker to finish its run. True
    // when it has ended (or none was started).
    bool WaitWorker(int milliseconds);

    int Count() const { return int(photos.size()); }
    CPhoto* PhotoAt(int index) const; // null outside the list
    void LoadScreenImageAt(int index);

    void ResetCursor();
    int AtEnd() const;
    CPhoto* NextPhoto();  // valid only when AtEnd() is 0
    void RemoveCurrent(); // valid only after NextPhoto
    void Remove(CPhoto* photo);

    Size thumbnailSize{120, 88};
    Size screenSize{0, 0};
    std::atomic<IEditHost*> window{nullptr};
    std::atomic<std::int32_t> stopRequested{0};

private:
    void Scan(const std::string& folder);
    void RunWorker(Size size);
    void RemoveAt(std::size_t index);
    void JoinWorker();

    CScaledLoader m_uiLoader; // the UI thread's decoder for screen images

    std::vector<std::unique_ptr<CPhoto>> photos;
    std::size_t cursorNext = 0;        // index of the next photo to deliver
    std::ptrdiff_t cursorCurrent = -1; // index delivered last, -1 for none

    // Shared with the worker, under m_lock.
    mutable std::mutex m_lock;
    std::condition_variable m_changed;
    std::size_t m_workerIndex = 0;        // the photo the worker is at
    const CPhoto* m_workerBusy = nullptr; // the photo it works on, if any
    bool m_workerDone = true;
    std::jthread worker;
};

} // namespace tivox
