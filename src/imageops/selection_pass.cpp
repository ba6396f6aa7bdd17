#include "imageops/selection_pass.h"

#include <algorithm>
#include <string>

#include "imageops/image_processor.h"
#include "imageops/lossless_transform.h"
#include "imageops/photo_pool.h"
#include "photos/edit_host.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/user_seams.h"

namespace tivox {

namespace {

// A message box holds this many lines of a list before it outgrows the screen.
constexpr std::size_t kListedFailures = 15;

} // namespace

int CountChosen(const ProcessScope& scope, IEditHost& window) {
    if (scope.current)
        return window.GetCurrentPhoto() ? 1 : 0;
    int count = 0;
    if (const CPhotoList* list = window.GetPhotoList())
        for (int i = 0; i < list->Count(); ++i)
            if (const CPhoto* photo = list->PhotoAt(i); photo && scope.Chooses(photo->marker))
                ++count;
    return count;
}

namespace {

bool IsLossless(std::int32_t code) {
    return code >= opRotateLeft && code <= opMirrorVertical;
}

// Turns and mirrors of many photos on the pool: each worker rewrites its
// photo's file and makes its thumbnail anew (the turn swaps width and
// height); this thread reloads the working images that are there.
void TurnOnPool(std::int32_t code, const std::vector<CPhoto*>& photos, IEditHost& window,
                StepScope& steps, int threads, PassResult& result) {
    const Size thumb = window.GetThumbSize();
    const Size screen = window.GetScreenSize();
    std::vector<UiText> errors(photos.size());
    std::vector<char> failed(photos.size());
    PhotoPool pool(
        int(photos.size()),
        [&](int item, int) {
            CPhoto& photo = *photos[std::size_t(item)];
            failed[std::size_t(item)] =
                !LosslessTransformPath(code, photo.path, errors[std::size_t(item)]);
            photo.MakeThumbnail(thumb);
        },
        threads);
    const int done = CollectSteps(pool, steps, int(photos.size()), [&](int item) {
        CPhoto& photo = *photos[std::size_t(item)];
        if (failed[std::size_t(item)])
            result.failures.push_back(errors[std::size_t(item)]);
        if (photo.screenImage)
            photo.LoadScreenImage(screen);
    });
    result.cancelled = done < int(photos.size());
}

} // namespace

PassResult RunPass(const COperation& operation, const ProcessScope& scope,
                   CImageProcessor& processor, IEditHost& window, IStepProgress& progress,
                   int threads) {
    PassResult result;
    auto run = [&](CPhoto* photo, bool batch) {
        if (processor.Execute(operation, photo, batch) != 0)
            result.failures.push_back(processor.GetErrorText());
    };
    if (scope.current) {
        if (CPhoto* photo = window.GetCurrentPhoto())
            run(photo, false);
    } else if (CPhotoList* list = window.GetPhotoList()) {
        const int total = CountChosen(scope, window);
        StepScope steps(progress, total, {TIVOX_TR("Processing the photos"), {}});
        if (IsLossless(operation.code)) {
            std::vector<CPhoto*> chosen;
            for (int i = 0; i < list->Count(); ++i)
                if (CPhoto* photo = list->PhotoAt(i); photo && scope.Chooses(photo->marker))
                    chosen.push_back(photo);
            TurnOnPool(operation.code, chosen, window, steps, threads, result);
        } else {
            int done = 0;
            list->ResetCursor();
            while (!list->AtEnd()) {
                CPhoto* photo = list->NextPhoto();
                if (!photo || !scope.Chooses(photo->marker))
                    continue;
                run(photo, true);
                // Events run in Step; the list's cursor is an index, so a
                // list emptied meanwhile only ends the walk.
                if (!steps.Step(++done) && done < total) {
                    result.cancelled = true;
                    break;
                }
            }
        }
    }
    window.Invalidate();
    return result;
}

void ReportFailures(const std::vector<UiText>& failures, IPrompt& prompt,
                    const Translator& translate) {
    std::vector<std::string> lines;
    for (const UiText& failure : failures) {
        std::string line = RenderUiText(failure, translate);
        if (std::find(lines.begin(), lines.end(), line) == lines.end())
            lines.push_back(std::move(line));
    }
    if (lines.empty())
        return;
    UiText text{"%s", {lines[0]}};
    if (lines.size() > 1) {
        std::string list;
        for (std::size_t i = 0; i < std::min(lines.size(), kListedFailures); ++i)
            list += (i ? "\n" : "") + lines[i];
        if (lines.size() > kListedFailures)
            list += "\n" + RenderUiText({TIVOX_TR("and %s more"),
                                         {std::to_string(lines.size() - kListedFailures)}},
                                        translate);
        text = {TIVOX_TR("%s photos could not be processed:\n%s"),
                {std::to_string(lines.size()), list}};
    }
    prompt.Ask(text, PromptIcon::Warning, PromptButtons::Ok, PromptAnswer::Ok,
               UiText{TIVOX_TR("Error"), {}});
}

int ApplyOperation(const COperation& operation, const ProcessScope& scope,
                   CImageProcessor& processor, IEditHost& window, IPrompt& prompt,
                   IStepProgress& progress, const Translator& translate) {
    const PassResult result = RunPass(operation, scope, processor, window, progress);
    ReportFailures(result.failures, prompt, translate);
    return int(result.failures.size());
}

} // namespace tivox
