#include "imageops/commit_changes.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "imageops/apply_edits.h"
#include "imageops/operation.h"
#include "photos/headless_host.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/bitmap_recycler.h"
#include "platform/jpeg_codec.h"
#include "platform/user_seams.h"

namespace tivox {

namespace {

// What a worker's replay sees of the window: the sizes, and a recycler of
// its own. It shows nothing, so the replay makes no thumbnail (from the
// screen image, which is the calling thread's).
std::unique_ptr<HeadlessHost> MakeWorkerHost(const ChangeSettings& settings) {
    auto host = std::make_unique<HeadlessHost>();
    host->screen = settings.screenSize;
    host->thumb = settings.thumbSize;
    host->quality = settings.quality;
    host->showsPreviews = false;
    host->keepsBuffers = true;
    return host;
}

// One host per worker; the caller's kept buffer serves the first and comes
// back to the caller at the end.
class WorkerHosts {
public:
    WorkerHosts(const ChangeSettings& settings, int count, BitmapRecycler* caller)
        : m_caller(caller) {
        for (int i = 0; i < count; ++i)
            m_hosts.push_back(MakeWorkerHost(settings));
        if (m_caller && !m_hosts.empty())
            m_hosts[0]->buffers.Give(m_caller->Take());
    }
    ~WorkerHosts() {
        if (m_caller && !m_hosts.empty())
            m_caller->Give(m_hosts[0]->buffers.Take());
    }
    WorkerHosts(const WorkerHosts&) = delete;
    WorkerHosts& operator=(const WorkerHosts&) = delete;
    HeadlessHost& operator[](int worker) { return *m_hosts[std::size_t(worker)]; }

private:
    std::vector<std::unique_ptr<HeadlessHost>> m_hosts;
    BitmapRecycler* m_caller;
};

// What a worker hands back for one photo.
struct Outcome {
    bool readable = false;
    bool saved = false;
    UiText cause;
};

std::vector<CPhoto*> PendingPhotos(const CPhotoList& list) {
    std::vector<CPhoto*> photos;
    for (int i = 0; i < list.Count(); ++i)
        if (CPhoto* photo = list.PhotoAt(i); photo && photo->edits.HasPending())
            photos.push_back(photo);
    return photos;
}

// Runs `work` for every photo on a pool and `finish` for each on this thread
// as it comes back, one progress step each, until the user cancels.
template <class Work, class Finish>
void RunSteps(ChangeReport& report, int count, int threads, IStepProgress& progress,
              const UiText& title, Work&& work, Finish&& finish) {
    report.photos = count;
    StepScope steps(progress, count, title);
    PhotoPool pool(count, std::forward<Work>(work), threads);
    report.done = CollectSteps(pool, steps, count, finish);
    report.cancelled = report.done < count;
}

} // namespace

ChangeSettings ChangeSettingsOf(const IEditHost& host) {
    ChangeSettings settings;
    settings.thumbSize = host.GetThumbSize();
    settings.screenSize = host.GetScreenSize();
    settings.quality = host.GetJpegQuality();
    settings.showsPreviews = host.ShowsPreviews();
    return settings;
}

int CountPending(const CPhotoList& list) {
    return int(PendingPhotos(list).size());
}

ChangeReport CommitPhotos(const std::vector<CPhoto*>& photos, const ChangeSettings& settings,
                          IStepProgress& progress, BitmapRecycler* recycler,
                          const PictureWriter& writer) {
    const int count = int(photos.size());
    // Which photos need a thumbnail from their file: those without a
    // working image to make it from. Read here, before any worker runs.
    std::vector<char> thumbFromFile(photos.size());
    for (std::size_t i = 0; i < photos.size(); ++i)
        thumbFromFile[i] = settings.showsPreviews && !photos[i]->screenImage;
    std::vector<Outcome> outcomes(photos.size());
    WorkerHosts hosts(settings, std::min(count, std::max(1, settings.threads)), recycler);

    auto work = [&](int item, int worker) {
        CPhoto& photo = *photos[std::size_t(item)];
        Outcome& out = outcomes[std::size_t(item)];
        HeadlessHost& host = hosts[worker];
        // Damaged data counts as unreadable: it would be written back grey.
        ApplyEdits(photo, editAll, host, true);
        out.readable = photo.fullImage && !photo.fullImage->IsEmpty();
        if (!out.readable) {
            photo.DropFullImage(&host.buffers);
            return;
        }
        if (writer) {
            out.saved = writer(photo, *photo.fullImage, out.cause);
            photo.DropFullImage(&host.buffers);
        } else {
            out.saved = photo.SaveAsJpeg(settings.quality, &host.buffers, &out.cause);
        }
        // Without a working image the thumbnail comes from the written file.
        // It replaces whatever is there under the photo's lock, also one the
        // list's worker made from the file before it was written.
        if (out.saved && thumbFromFile[std::size_t(item)])
            photo.MakeThumbnail(settings.thumbSize);
    };

    ChangeReport report;
    auto finish = [&](int item) {
        CPhoto& photo = *photos[std::size_t(item)];
        Outcome& out = outcomes[std::size_t(item)];
        report.colorEdits = report.colorEdits || photo.edits.colorPending != 0;
        if (out.saved) {
            ++report.saved;
            // The thumbnail follows the working image, where there is one.
            if (settings.showsPreviews && photo.screenImage)
                photo.ThumbnailFromScreen(settings.thumbSize);
        } else {
            report.failures.push_back(out.readable ? out.cause
                                                   : ReadErrorText(photo.path, photo.readError));
            // Nothing was written: the pictures show the file as it stays.
            if (settings.showsPreviews)
                photo.RebuildImages(settings.thumbSize, settings.screenSize,
                                    photo.screenImage != nullptr);
        }
        photo.edits.Clear();
    };
    RunSteps(report, count, settings.threads, progress,
             {TIVOX_TR("Writing the changes into the photos"), {}}, work, finish);
    return report;
}

ChangeReport CommitPending(CPhotoList& list, const ChangeSettings& settings,
                           IStepProgress& progress, BitmapRecycler* recycler) {
    return CommitPhotos(PendingPhotos(list), settings, progress, recycler);
}

ChangeReport DiscardPending(CPhotoList& list, const ChangeSettings& settings,
                            IStepProgress& progress, BitmapRecycler* recycler) {
    const std::vector<CPhoto*> photos = PendingPhotos(list);
    // The thumbnail comes anew from the file, made on a worker.
    auto work = [&](int item, int) {
        photos[std::size_t(item)]->MakeThumbnail(settings.thumbSize);
    };
    ChangeReport report;
    auto finish = [&](int item) {
        CPhoto& photo = *photos[std::size_t(item)];
        report.colorEdits = report.colorEdits || photo.edits.colorPending != 0;
        photo.edits.Clear();
        photo.DropFullImage(recycler);
        // The next single view loads the working image from the file again.
        photo.DropScreenImage();
    };
    RunSteps(report, int(photos.size()), settings.threads, progress,
             {TIVOX_TR("Discarding the changes"), {}}, work, finish);
    return report;
}

} // namespace tivox
