// What the full-screen window does with the edits that are not committed yet:
// Commit, Discard, and the question before leaving with some.

#include "imageops/selection_pass.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/jpeg_codec.h"
#include "ui/fullscreen_wnd.h"
#include "ui/image_ops_dlg.h"
#include "ui/qt_seams.h"

namespace tivox {

namespace {

int CountPending(const CPhotoList& list) {
    int count = 0;
    for (int i = 0; i < list.Count(); ++i) {
        const CPhoto* photo = list.PhotoAt(i);
        count += photo && photo->edits.HasPending() ? 1 : 0;
    }
    return count;
}

} // namespace

// Commit and Discard let events run between two photos, for the progress.
// Its dialog keeps the user's input from every other window meanwhile; the
// list is still looked up anew for each photo.
bool CFullScreenWnd::CommitChanges() {
    if (!m_photoList) {
        return true;
    }
    BusyScope busy(*m_busy);
    const int total = CountPending(*m_photoList);
    StepScope steps(StepProgress(), total, {TIVOX_TR("Writing the changes into the photos"), {}});
    std::vector<UiText> failures;
    int done = 0;
    for (int i = 0; m_photoList && i < m_photoList->Count(); ++i) {
        CPhoto* photo = m_photoList->PhotoAt(i);
        if (!photo || !photo->edits.HasPending()) {
            continue;
        }
        const bool colorPending = photo->edits.colorPending != 0;
        photo->ApplyEdits(editAll, *this, true);
        if (colorPending && m_imageOpsDlg) {
            m_imageOpsDlg->ResetColorControls();
            m_imageOpsDlg->ResetProcessor();
        }
        if (!photo->fullImage || photo->fullImage->IsEmpty()) {
            // Unreadable or damaged: nothing is written, and the pictures
            // show the file as it stays.
            failures.push_back(ReadErrorText(photo->path, photo->readError));
            photo->DropFullImage(&m_recycler);
            photo->RebuildImages(GetThumbSize(), GetScreenSize(), photo->screenImage != nullptr);
        } else {
            UiText cause;
            if (photo->SaveAsJpeg(GetJpegQuality(), &m_recycler, &cause) == 0) {
                failures.push_back(cause);
            }
        }
        photo->edits.Clear();
        if (!steps.Step(++done) && done < total) {
            break; // the photos after this one keep their edits
        }
    }
    steps.End();
    busy.End();
    ReportFailures(failures, *m_prompt, CoreTranslator());
    return done == total && failures.empty();
}

// Closing used to drop uncommitted edits without a word; a person's work is
// not thrown away unasked, so every way out (Esc, a second opening, the main
// window's Exit or commands) asks first.
bool CFullScreenWnd::ConfirmLeaving() {
    const int pending = m_photoList ? CountPending(*m_photoList) : 0;
    if (pending == 0) {
        return true;
    }
    const UiText question = pending == 1
                                ? UiText{TIVOX_TR("1 photo has changes that are not committed.\n"
                                                  "Commit them before leaving? No discards them."),
                                         {}}
                                : UiText{TIVOX_TR("%s photos have changes that are not committed.\n"
                                                  "Commit them before leaving? No discards them."),
                                         {std::to_string(pending)}};
    switch (m_prompt->Ask(question, PromptIcon::Question, PromptButtons::YesNoCancel,
                          PromptAnswer::Cancel,
                          UiText{TIVOX_TR("Leave Full Screen Editing"), {}})) {
    case PromptAnswer::Yes:
        return CommitChanges();
    case PromptAnswer::No:
        return true;
    default:
        return false;
    }
}

void CFullScreenWnd::DiscardChanges() {
    if (!m_photoList) {
        return;
    }
    // Rebuilding thumbnails from the files takes a moment.
    BusyScope busy(*m_busy);
    const int total = CountPending(*m_photoList);
    StepScope steps(StepProgress(), total, {TIVOX_TR("Discarding the changes"), {}});
    int done = 0;
    for (int i = 0; m_photoList && i < m_photoList->Count(); ++i) {
        CPhoto* photo = m_photoList->PhotoAt(i);
        if (!photo) {
            continue;
        }
        if (photo->edits.colorPending && m_imageOpsDlg) {
            m_imageOpsDlg->ResetColorControls();
        }
        if (!photo->edits.HasPending()) {
            continue;
        }
        if (m_imageOpsDlg) {
            m_imageOpsDlg->ResetProcessor();
        }
        photo->edits.Clear();
        photo->DropFullImage(&m_recycler);
        photo->DropScreenImage();
        photo->DropThumbnail();
        // The next single view loads the working image from the file again.
        photo->RebuildImages(GetThumbSize(), GetScreenSize(), false);
        photo->thumbnailReady.store(1, std::memory_order_release);
        if (!steps.Step(++done) && done < total) {
            break;
        }
    }
    update();
}

} // namespace tivox
