#include "gallery/gallery_command.h"

#include <optional>

#include "acquire/file_walker.h"
#include "gallery/gallery_folder.h"
#include "gallery/gallery_pictures.h"
#include "gallery/gallery_writer.h"
#include "imageops/operation.h"
#include "photos/edit_host.h"
#include "platform/user_seams.h"

namespace tivox {

CGalleryCommand::CGalleryCommand(IPrompt& prompt, IBusyIndicator& busy, IStepProgress& progress,
                                 Translator translate)
    : m_prompt(prompt), m_busy(busy), m_progress(progress), m_translate(std::move(translate)) {}

std::string CGalleryCommand::GetGalleryFolder() const {
    return GalleryFolderFor(m_galleryFolder, m_photoFolder);
}

void CGalleryCommand::Tell(const UiText& text, const char* caption) {
    m_prompt.Ask(text, PromptIcon::Stop, PromptButtons::Ok, PromptAnswer::Ok, {caption, {}});
}

GalleryReport CGalleryCommand::OnCreateGallery(const ProcessScope& scope, IEditHost& window) {
    return CreateGalleryIn({}, scope, window);
}

GalleryReport CGalleryCommand::CreateGalleryIn(const std::string& galleryFolder,
                                               const ProcessScope& scope, IEditHost& window) {
    GalleryReport report;
    if (m_processCurrent &&
        m_prompt.Ask({TIVOX_TR("Create an HTML gallery from the current photo only?"), {}},
                     PromptIcon::Question, PromptButtons::YesNo, PromptAnswer::No,
                     {TIVOX_TR("Confirm"), {}}) != PromptAnswer::Yes) {
        report.outcome = GalleryOutcome::Declined;
        return report;
    }

    std::optional<BusyScope> busy(std::in_place, m_busy);
    if (m_readControls)
        m_readControls();
    std::string folder = galleryFolder.empty() ? GetGalleryFolder() : galleryFolder;
    while (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    report.folder = folder;
    if (folder.empty())
        return report;

    // A gallery run empties its folder: it must not hold or be held by the
    // photos or their backup. Checked before anything is deleted.
    if (GalleryFolderEndangersPhotos(folder, m_photoFolder)) {
        busy.reset();
        Tell({TIVOX_TR("The gallery folder %s is, holds or lies inside the photo folder or its "
                       "backup folder, and a gallery empties its folder first. Nothing was "
                       "deleted. Please choose another base folder for HTML galleries."),
              {folder}},
             TIVOX_TR("Error"));
        report.outcome = GalleryOutcome::Refused;
        return report;
    }

    // Any other folder may hold what the user keeps there (another photo
    // folder, say): it is emptied only when the user says so.
    if (!GalleryMayEmpty(folder)) {
        busy.reset();
        if (m_prompt.Ask({TIVOX_TR("The folder %s holds files that no gallery run wrote, and a "
                                   "gallery empties its folder first. Delete everything in it and "
                                   "write the gallery there?"),
                          {folder}},
                         PromptIcon::Warning, PromptButtons::YesNo, PromptAnswer::No,
                         {TIVOX_TR("Confirm"), {}}) != PromptAnswer::Yes) {
            report.outcome = GalleryOutcome::Kept;
            return report;
        }
        busy.emplace(m_busy);
    }

    // An earlier gallery goes with all its subfolders; the folder stays.
    // Missing parents of the gallery folder are made along with it. The
    // marker goes in before any picture, so that an interrupted run is still
    // known as a gallery's next time.
    if (PathExists(folder))
        DeleteFolderContents(folder);
    const std::string gallery = folder;
    AppendBackslash(folder);
    const std::string pics = folder + "pics";
    const std::string thumbs = pics + "/thumbs";
    std::string markError;
    if (!CreateFolderWithParents(thumbs) || !IsFolder(gallery) || !IsFolder(pics) ||
        !MarkGalleryFolder(gallery, markError)) {
        busy.reset();
        Tell({TIVOX_TR("Error creating gallery directories"), {}}, TIVOX_TR("Error"));
        report.outcome = GalleryOutcome::FolderError;
        return report;
    }

    // Each photo is decoded once for both its picture and its thumbnail. A
    // photo that cannot be read is told with the others at the end.
    COperation copies =
        COperation::Resize(int(m_form.m_photoWidth), int(m_form.m_photoHeight), pics);
    copies.x = int(m_form.m_thumbWidth);
    copies.y = int(m_form.m_thumbHeight);
    const PassResult walk = WriteGalleryPictures(ChosenPhotoFiles(scope, window), copies,
                                                 window.GetJpegQuality(), m_progress, m_threads);
    report.failures = walk.failures;
    if (walk.cancelled) {
        report.outcome = GalleryOutcome::Cancelled; // and no pages
    } else {
        CGalleryWriter writer(
            folder, m_form.m_title, {int(m_form.m_thumbTilesX), int(m_form.m_thumbTilesY)},
            {int(m_form.m_photoTilesX), int(m_form.m_photoTilesY)}, m_prompt, m_translate);
        report.outcome = writer.Write() ? GalleryOutcome::Written : GalleryOutcome::PagesFailed;
        report.pictures = writer.PictureCount();
        report.thumbPages = report.pictures ? writer.ThumbPageCount() : 0;
        report.photoPages = report.pictures ? writer.PhotoPageCount() : 0;
    }
    busy.reset();
    ReportFailures(report.failures, m_prompt, m_translate);
    return report;
}

} // namespace tivox
