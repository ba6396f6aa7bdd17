#pragma once
// The ordered photos of the folder shown full screen, with the worker thread
// that builds their thumbnails: the visible page first, then the next and
// the previous page, then outward, within a byte budget. Thumbnails beyond
// the visible page are built by a helper thread of lower priority, one at a
// time while the worker waits for it; a page turn does not wait for the one
// in hand there, so the new page's first thumbnail starts at once. Beyond the
// budget it drops the thumbnails least recently shown (or built), the
// farthest from the visible page first among equals, but never one nearer
// than the one it is about to build: the pages around the shown one stay.
//
// Threads: every member is for the user-interface thread, except what the
// worker and its helper do themselves. They reach photos only through the
// list's lock: the worker takes the next photo under the lock and marks it
// busy (for itself or the helper); Remove and RemoveCurrent wait until
// neither works on the photo they free, and Clear, Open and the destructor
// stop and join both first. So no photo is freed while either can reach it.
// The worker drops thumbnails only under the list's lock and then the
// photo's; painting reads them through CPhoto::ViewThumbnail.

#include <atomic>
#include <condition_variable>
#include <cstddef>
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
    // Receives InvalidateTile(index) on the worker's or the helper's thread
    // after each thumbnail; null for no notification.
    void SetWindow(IEditHost* host) { window.store(host, std::memory_order_release); }

    // The page the window shows: `count` photos from `first`. Re-orders the
    // worker's work at once and reads the embedded previews of the shown
    // photos that have no thumbnail yet (previews of photos no longer shown
    // are dropped). Until the first call the worker goes in list order.
    void SetVisibleRange(int first, int count);
    // Bytes the thumbnails may hold together; no limit until it is set. The
    // visible page is always built, even beyond it.
    void SetThumbnailBudget(std::size_t bytes);
    // The bytes all thumbnails hold now.
    std::size_t ThumbnailBytes() const;

    // Drops the photos of an earlier opening, scans `folder` (sorted by
    // name, sub-folders in place, depth first, files ending in ".jpg" in any
    // case, as ListFolder tells files and folders; no file is opened) and
    // starts the worker. A folder that cannot be entered gives an empty list.
    void Open(const std::string& folder);
    // Stops and joins the worker, deletes every photo. The cursor stays and
    // must be reset before use.
    void Clear();

    // Asks the worker to stop after the thumbnail in hand (its helper's
    // included), and waits for it at most `milliseconds`. True when it has
    // ended.
    bool StopWorker(int milliseconds);
    // Waits at most `milliseconds` until the worker has nothing left to do
    // (every thumbnail within reach of the budget built) or has ended. True
    // then.
    bool WaitWorker(int milliseconds);

    int Count() const { return int(photos.size()); }
    CPhoto* PhotoAt(int index) const; // null outside the list

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
    void RunHelper(Size size);
    // Under m_lock: the worker's order around the visible page (0 for its
    // first photo), the next photo to build (-1 for none), and the photo
    // whose thumbnail goes first, among those ranked after `rank`.
    std::size_t RankOf(std::size_t index) const;
    std::ptrdiff_t NextToBuild() const;
    std::ptrdiff_t PickVictim(std::size_t rank) const;
    std::size_t BytesHeld() const;
    // Drops victims until `need` more bytes fit the budget; false when only
    // thumbnails ranked at or before `rank` are left.
    bool MakeRoom(std::size_t rank, std::size_t need);
    void RemoveAt(std::size_t index);
    void JoinWorker();

    std::vector<std::unique_ptr<CPhoto>> photos;
    std::size_t cursorNext = 0;        // index of the next photo to deliver
    std::ptrdiff_t cursorCurrent = -1; // index delivered last, -1 for none

    // Shared with the worker, under m_lock.
    mutable std::mutex m_lock;
    std::condition_variable m_changed;
    const CPhoto* m_workerBusy = nullptr; // the photo it works on, if any
    CPhoto* m_helperTask = nullptr;       // handed to the helper, not yet taken
    std::size_t m_helperIndex = 0;        // its index, for the notification
    const CPhoto* m_helperBusy = nullptr; // handed and not yet finished
    bool m_workerDone = true;
    bool m_workerIdle = false;      // waiting for a new page or budget
    std::uint64_t m_generation = 0; // raised by every change that wakes it
    std::uint64_t m_clock = 0;      // for CPhoto::shownStamp
    std::size_t m_first = 0;        // the visible page
    std::size_t m_pageCount = 1;
    std::size_t m_budget = SIZE_MAX;
    // The UI thread's record of the photos whose previews it read.
    std::size_t m_previewFirst = 0;
    std::size_t m_previewCount = 0;
    std::jthread worker;
    std::jthread helper;
};

} // namespace tivox
