#pragma once
// Commit and Discard: what becomes of the edits that are recorded and not
// yet written. The full-screen window and tivox-batch both run them here and
// read the same report.
//
// Threads: called on the user-interface thread, which alone reports progress
// and touches the photos' screen images. The photos are decoded, edited,
// encoded and written on a PhotoPool: a worker reaches only its own photo
// (its full image and read error, its thumbnail through the photo's lock,
// as the photo list's thumbnail worker does, which runs on meanwhile), and
// the calling thread leaves that photo alone until the pool gives it back.
// The list must not change while a run lasts (the progress dialog keeps the
// user's input away).

#include <functional>
#include <vector>

#include "imageops/photo_pool.h"
#include "platform/geometry.h"
#include "platform/ui_text.h"

namespace tivox {

class Bitmap;
class BitmapRecycler;
class CPhoto;
class CPhotoList;
class IEditHost;
class IStepProgress;

struct ChangeSettings {
    Size thumbSize{120, 88};    // box of the thumbnails that follow a commit
    Size screenSize{1024, 768}; // box the crop rectangle was drawn in
    int quality = 80;           // of the written JPEG files
    bool showsPreviews = true;  // false: nobody looks, no thumbnail follows
    int threads = PhotoPool::DefaultThreads();
};

// The sizes, quality and previews of `host`, with one thread per core.
ChangeSettings ChangeSettingsOf(const IEditHost& host);

// Writes a committed picture somewhere other than over its photo (the
// batch's --out). True when written; else `error` names the file and cause.
using PictureWriter =
    std::function<bool(const CPhoto& photo, const Bitmap& picture, UiText& error)>;

// What a Commit or Discard did.
struct ChangeReport {
    int photos = 0; // photos with edits: the steps of the run
    int done = 0;   // of them, committed (written or failed) or discarded
    int saved = 0;  // written
    // One per photo not written, naming it and the cause; its file is as
    // it was and so are its pictures.
    std::vector<UiText> failures;
    // A colour edit was among those committed or dropped: the colour
    // controls go back to neutral.
    bool colorEdits = false;
    // The user stopped the run; the photos not reached keep their edits and
    // their files.
    bool cancelled = false;
    bool Complete() const { return !cancelled && failures.empty(); }
};

// Replays the pending edits of `photos` on their full pictures and writes
// each (over its file, or through `writer`). Each photo is one step of
// `progress`; a cancel stops the run between photos. A committed photo
// loses its edits, also when its write failed. The full pictures' buffers
// are left in `recycler` (when given) for the next run.
ChangeReport CommitPhotos(const std::vector<CPhoto*>& photos, const ChangeSettings& settings,
                          IStepProgress& progress, BitmapRecycler* recycler = nullptr,
                          const PictureWriter& writer = {});
// CommitPhotos for the photos of `list` that have edits, in list order.
ChangeReport CommitPending(CPhotoList& list, const ChangeSettings& settings,
                           IStepProgress& progress, BitmapRecycler* recycler = nullptr);
// Drops the pending edits of the photos of `list` and rebuilds their
// thumbnails from the files; the next single view loads its working image
// from the file again.
ChangeReport DiscardPending(CPhotoList& list, const ChangeSettings& settings,
                            IStepProgress& progress, BitmapRecycler* recycler = nullptr);
// How many photos of `list` have edits.
int CountPending(const CPhotoList& list);

} // namespace tivox
