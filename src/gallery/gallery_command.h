#pragma once
// "Create Gallery": empties or creates the gallery folder, has each chosen
// photo copied into "pics" (photo size) and "pics/thumbs" (thumbnail size)
// from one decode, and writes the pages. Which photos are chosen is the
// business of the selection pass the caller hands in, as for every other
// operation ("Current", "All" or marker colours).
//
// User interface thread (or the one thread of the batch front end). Holds no
// state between runs.

#include <functional>
#include <string>
#include <vector>

#include "gallery/gallery_form.h"
#include "imageops/photo_pool.h"
#include "imageops/selection_pass.h"
#include "platform/ui_text.h"

namespace tivox {

class IEditHost;
class IPrompt;
class IBusyIndicator;
class IStepProgress;

enum class GalleryOutcome {
    Declined,    // "Current" was asked about and the answer was No
    Refused,     // the gallery folder overlaps the photo or backup folder
    Kept,        // no gallery run made the folder, and the answer was No
    FolderError, // a folder could not be created
    NoFolder,    // no gallery folder to work in (empty path)
    Written,     // pictures and pages are there (maybe none: nothing chosen)
    PagesFailed, // the page writer stopped; the pages so far stay
    Cancelled,   // the user stopped the pictures; no page was written
};

struct GalleryReport {
    GalleryOutcome outcome = GalleryOutcome::NoFolder;
    std::string folder; // the gallery folder worked in
    int pictures = 0;   // pictures that made it into the pages
    int thumbPages = 0;
    int photoPages = 0;
    std::vector<UiText> failures; // photos that could not be copied, and why
};

class CGalleryCommand {
public:
    CGalleryCommand(IPrompt& prompt, IBusyIndicator& busy, IStepProgress& progress,
                    Translator translate = {});
    CGalleryCommand(const CGalleryCommand&) = delete;
    CGalleryCommand& operator=(const CGalleryCommand&) = delete;

    GalleryForm m_form;
    std::string m_galleryFolder;   // base folder of the galleries
    std::string m_photoFolder;     // path of the photo folder
    bool m_processCurrent = false; // the selection is the current photo only
    // The form's "read the controls" step, run after the question. May be empty.
    std::function<void()> m_readControls;

    // The gallery folder of this photo folder: the base folder with the photo
    // folder's name below it.
    std::string GetGalleryFolder() const;

    // The button's handler: the gallery of the photo folder under the base,
    // of the photos that `scope` chooses of `window` (chosen once the
    // questions are answered), copied on m_threads threads
    // (WriteGalleryPictures) at the window's JPEG quality.
    GalleryReport OnCreateGallery(const ProcessScope& scope, IEditHost& window);
    // The same into a gallery folder named directly (the batch front end).
    GalleryReport CreateGalleryIn(const std::string& galleryFolder, const ProcessScope& scope,
                                  IEditHost& window);

    int m_threads = PhotoPool::DefaultThreads();

private:
    void Tell(const UiText& text, const char* caption);

    IPrompt& m_prompt;
    IBusyIndicator& m_busy;
    IStepProgress& m_progress;
    Translator m_translate;
};

} // namespace tivox
