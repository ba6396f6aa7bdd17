// tivox-batch gallery --photos DIR --out DIR [--title T] [--photo WxH] [--thumb WxH]
//                     [--photo-tiles XxY] [--thumb-tiles XxY] [--quality Q] [--force]
//
// The HTML gallery of every photo of a folder, as "All" chooses them, into
// the gallery folder OUT (emptied first; refused when it holds or lies in the
// photo folder or its backup, and, unless --force, when it holds files and
// no gallery run made it). Messages go to standard error.

#include <cstdio>
#include <string>

#include "acquire/file_walker.h"
#include "batch/batch_command.h"
#include "gallery/gallery_command.h"
#include "photos/headless_host.h"
#include "photos/photo_list.h"
#include "platform/user_seams.h"

namespace tivox::batch {

namespace {

// The one question of a walk over all photos is whether to empty a folder
// that no gallery run made: --force answers Yes, else the run stops there
// and says why. What else the gallery has to say (a photo that could not be
// copied, a page that could not be written) is printed.
class ReportingPrompt final : public IPrompt {
public:
    explicit ReportingPrompt(bool force) : m_force(force) {}
    PromptAnswer Ask(const UiText& text, PromptIcon, PromptButtons buttons, PromptAnswer,
                     const UiText&) override {
        if (buttons != PromptButtons::Ok)
            return m_force ? PromptAnswer::Yes : PromptAnswer::No;
        std::fprintf(stderr, "tivox-batch gallery: %s\n", RenderUiText(text).c_str());
        return PromptAnswer::Ok;
    }

private:
    bool m_force;
};

bool TakeSize(Args& args, const char* name, std::uint32_t& width, std::uint32_t& height,
              GalleryLimit limit) {
    std::string text;
    if (!TakeOption(args, name, text))
        return !TakeFlag(args, name); // absent is fine, a bare flag is not
    int w = 0, h = 0;
    if (!ParseSize(text, w, h) || !limit.Holds(std::uint32_t(w)) ||
        !limit.Holds(std::uint32_t(h))) {
        std::fprintf(stderr, "tivox-batch gallery: %s takes WxH, each from %u to %u\n", name,
                     limit.lower, limit.upper);
        return false;
    }
    width = std::uint32_t(w);
    height = std::uint32_t(h);
    return true;
}

} // namespace

int RunGallery(const Args& arguments) {
    Args args = arguments;
    std::string photos, out, qualityText;
    GalleryForm form;
    int quality = 80;
    if (!TakeOption(args, "--photos", photos) || !TakeOption(args, "--out", out))
        return UsageError("gallery");
    TakeOption(args, "--title", form.m_title);
    const bool force = TakeFlag(args, "--force");
    if (TakeOption(args, "--quality", qualityText) &&
        (!ParseInt(qualityText, quality) || quality < 1 || quality > 100))
        return UsageError("gallery");
    if (!TakeSize(args, "--photo", form.m_photoWidth, form.m_photoHeight, kGalleryPhotoSizeLimit) ||
        !TakeSize(args, "--thumb", form.m_thumbWidth, form.m_thumbHeight, kGalleryThumbSizeLimit) ||
        !TakeSize(args, "--photo-tiles", form.m_photoTilesX, form.m_photoTilesY,
                  kGalleryPhotoTilesLimit) ||
        !TakeSize(args, "--thumb-tiles", form.m_thumbTilesX, form.m_thumbTilesY,
                  kGalleryThumbTilesLimit) ||
        !args.empty())
        return UsageError("gallery");
    if (!IsFolder(photos)) {
        std::fprintf(stderr, "tivox-batch gallery: %s is not a folder\n", photos.c_str());
        return kExitFailure;
    }

    CPhotoList list;
    list.Open(photos);
    list.StopWorker(1000); // no thumbnails wanted here
    HeadlessHost host;
    host.screen = {1920, 1080};
    host.thumb = list.thumbnailSize;
    host.quality = quality;
    host.list = &list;
    ReportingPrompt prompt(force);
    NullBusyIndicator busy;
    NullStepProgress progress;
    ProcessScope scope;
    scope.current = false;
    scope.all = true;

    CGalleryCommand command(prompt, busy, progress);
    command.m_form = form;
    command.m_photoFolder = photos;
    const GalleryReport report = command.CreateGalleryIn(out, scope, host);

    switch (report.outcome) {
    case GalleryOutcome::Written:
        std::printf("%d of %d photos, %d thumbnail pages, %d photo pages in %s\n", report.pictures,
                    list.Count(), report.thumbPages, report.photoPages, report.folder.c_str());
        if (report.pictures > 0)
            std::printf("open %s/thumbs1.html\n", report.folder.c_str());
        return report.failures.empty() ? kExitOk : kExitFailure;
    case GalleryOutcome::Kept:
        std::fprintf(stderr,
                     "tivox-batch gallery: %s holds files that no gallery run wrote, and a "
                     "gallery empties its folder first; nothing was deleted (--force empties it)\n",
                     report.folder.c_str());
        break;
    case GalleryOutcome::PagesFailed:
    case GalleryOutcome::Cancelled:
    case GalleryOutcome::Refused:
    case GalleryOutcome::FolderError:
    case GalleryOutcome::Declined:
    case GalleryOutcome::NoFolder:
        break;
    }
    return kExitFailure;
}

} // namespace tivox::batch
