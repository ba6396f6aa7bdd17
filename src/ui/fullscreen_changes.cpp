// What the full-screen window does with the edits that are not committed yet:
// Commit, Discard, and the question before leaving with some.

#include "imageops/commit_changes.h"
#include "imageops/selection_pass.h"
#include "photos/photo_list.h"
#include "ui/fullscreen_wnd.h"
#include "ui/image_ops_dlg.h"
#include "ui/qt_seams.h"

namespace tivox {

// Commit and Discard let events run between two photos, for the progress.
// Its dialog keeps the user's input from every other window meanwhile, so
// the list stays as it is until the run ends.
bool CFullScreenWnd::CommitChanges() {
    if (!m_photoList) {
        return true;
    }
    BusyScope busy(*m_busy);
    const ChangeReport report =
        CommitPending(*m_photoList, ChangeSettingsOf(*this), StepProgress(), &m_recycler);
    if (report.colorEdits && m_imageOpsDlg) {
        m_imageOpsDlg->ResetColorControls();
        m_imageOpsDlg->ResetProcessor();
    }
    update();
    busy.End();
    ReportFailures(report.failures, *m_prompt, CoreTranslator());
    return report.Complete();
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
    const ChangeReport report =
        DiscardPending(*m_photoList, ChangeSettingsOf(*this), StepProgress(), &m_recycler);
    if (m_imageOpsDlg && report.colorEdits) {
        m_imageOpsDlg->ResetColorControls();
    }
    if (m_imageOpsDlg && report.done > 0) {
        m_imageOpsDlg->ResetProcessor();
    }
    update();
}

} // namespace tivox
