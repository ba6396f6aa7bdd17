#pragma once
// One JPEG file of the open folder: its path, up to three images of different
// sizes, the selection marker and the edits waiting for a commit.
//
// Threads: the thumbnail worker calls only MakeThumbnailIfMissing; everything
// else belongs to the user-interface thread. The worker and the UI never work
// on `thumbnail` at once: every write of `thumbnail` (and the worker's test of
// it) happens under the photo's own lock, and `thumbnailReady` is published
// with release ordering after `thumbnail` is in place. The worker may also
// drop a thumbnail to keep the list's memory budget, so whoever draws one
// holds a ThumbnailView (the photo's lock) while its pixels are in use.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "photos/pending_edits.h"
#include "platform/bitmap.h"
#include "platform/geometry.h"

namespace tivox {

class BitmapRecycler;
class CScaledLoader;
struct UiText;

class CPhoto {
public:
    CPhoto() = default;
    virtual ~CPhoto() = default;
    CPhoto(const CPhoto&) = delete;
    CPhoto& operator=(const CPhoto&) = delete;

    void SetPath(const std::string& filePath) { path = filePath; }

    // Replaces `thumbnail` by LoadScaled(target) and marks it ready. A file
    // that cannot be read gives an empty thumbnail that draws nothing.
    Bitmap* MakeThumbnail(Size target);
    // The worker's step: the same, but only when there is no thumbnail yet,
    // and without touching `sourceSize`, which is the UI thread's. The file
    // is decoded outside the lock; a thumbnail that the UI thread put in
    // meanwhile wins. True when a thumbnail was made.
    bool MakeThumbnailIfMissing(Size target, CScaledLoader& loader);
    void DropThumbnail();
    // Bytes of pixels the thumbnail holds; readable from any thread.
    std::size_t ThumbnailBytes() const { return thumbBytes.load(std::memory_order_acquire); }

    // What a tile draws: the thumbnail once it is made, else the camera's
    // embedded preview (see LoadPreview), else nothing. Holds the photo's
    // lock while it lives, so keep it only while drawing and never call into
    // the photo list meanwhile.
    class ThumbnailView {
    public:
        const Bitmap* image = nullptr; // null: neither is there
        bool isPreview = false;        // the embedded picture, to be scaled up

    private:
        friend class CPhoto;
        std::unique_lock<std::mutex> m_hold;
    };
    ThumbnailView ViewThumbnail() const;

    // Reads the small picture a camera embeds in the EXIF data, once, from
    // the file's head only; a file without one keeps no preview. The
    // preview belongs to the user-interface thread.
    void LoadPreview();
    void DropPreview();
    bool HasPreview() const { return preview != nullptr; }

    // Notes the size in screenSize. A loader kept by the caller saves the
    // decoder's buffers between photos; the old screenImage's pixels are
    // reused.
    void LoadScreenImage(Size target, CScaledLoader* loader = nullptr);
    void DropScreenImage() { screenImage.reset(); }
    // The full-size picture is big enough that its buffer is worth keeping
    // between photos: with a recycler these take their pixels from it and
    // give them back to it. LoadFullImage serves a commit, so damaged data
    // (which would be written back with grey in it) counts as unreadable.
    Bitmap* LoadFullImage(BitmapRecycler* recycler = nullptr);
    void DropFullImage(BitmapRecycler* recycler = nullptr);
    // The file at full resolution, owned by the caller; an empty bitmap when
    // the file cannot be read (or, with `refuseDamaged`, is damaged).
    std::unique_ptr<Bitmap> OpenFullImage(BitmapRecycler* recycler = nullptr,
                                          bool refuseDamaged = false);

    // The file upright by its EXIF Orientation (as every picture of a photo
    // is loaded) and fitted into `target` (FitInto), refreshing sourceSize. The
    // picture is never larger than the box; a small one is enlarged. A file
    // that cannot be read gives an empty bitmap and a sourceSize of 0 x 0.
    std::unique_ptr<Bitmap> LoadScaled(Size target, CScaledLoader* loader = nullptr);

    void RebuildImages(Size thumbSize, Size screenSize, bool loadScreen);
    Bitmap* ThumbnailFromScreen(Size target);
    // A null image changes nothing; else it replaces fullImage (with `full`)
    // or screenImage and is returned.
    Bitmap* ReplaceImage(std::unique_ptr<Bitmap> image, bool full);
    // With `full` gives `image` back untouched. Else stores a copy of it,
    // fitted into `target`, in screenImage and returns that. `image` stays
    // with its owner.
    Bitmap* FitToScreen(Bitmap* image, Size target, bool full);

    // Writes fullImage over the file durably (WriteFileDurably); fullImage is
    // dropped in every case (into `recycler` when there is one). False on
    // failure: the photo file is then untouched and `error` (when given)
    // names it and the cause.
    bool SaveAsJpeg(int quality, BitmapRecycler* recycler = nullptr, UiText* error = nullptr);

    int IsLandscape() const; // 1 without a thumbnail or when width >= height
    int IsPortrait() const { return IsLandscape() ? 0 : 1; }

    std::unique_ptr<Bitmap> thumbnail;
    std::string path;
    std::atomic<std::int32_t> thumbnailReady{0};
    std::int32_t marker = 0; // 0 none, 1 red, 2 green, 3 blue
    std::unique_ptr<Bitmap> screenImage;
    std::unique_ptr<Bitmap> fullImage;
    Size sourceSize; // of the file's picture upright, refreshed by LoadScaled
    Size screenSize; // of screenImage as LoadScreenImage made it
    // Why the last load on the user-interface thread failed, as a cause for
    // ReadErrorText; empty after one that worked.
    std::string readError;
    CPendingEdits edits;
    // When the photo was last shown or its thumbnail built, on the photo
    // list's clock; guarded by the list's lock.
    std::uint64_t shownStamp = 0;

private:
    // Stores a new thumbnail and publishes it; caller holds m_thumbLock.
    void StoreThumbnail(std::unique_ptr<Bitmap> image);

    mutable std::mutex m_thumbLock;
    std::atomic<std::size_t> thumbBytes{0};
    std::unique_ptr<Bitmap> preview; // the user-interface thread's
    bool previewTried = false;
};

} // namespace tivox
