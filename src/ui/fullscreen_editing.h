#pragma once
// Full Screen Editing as the main dialog runs it: the photo list and the
// full-screen window, opened in the dialog's order, and closed before any
// command that changes the photo folder and before the dialog ends, so that
// no window is left behind and no photo goes while the worker can reach it.
// GUI thread only.

#include <string>

#include "photos/photo_list.h"
#include "ui/fullscreen_wnd.h"

namespace tivox {

class CTivoxDlg;

class CFullScreenEditing final : public IFullScreenOwner {
public:
    // Hooks itself into the dialog's "Full Screen Editing" and its closing.
    explicit CFullScreenEditing(CTivoxDlg& dialog);
    ~CFullScreenEditing() override;
    CFullScreenEditing(const CFullScreenEditing&) = delete;
    CFullScreenEditing& operator=(const CFullScreenEditing&) = delete;

    // Opens the photo folder full screen; an open window is left first (which
    // may ask about uncommitted edits, and the user may stay).
    void Open();
    // Whether full-screen editing may end now: true when it is not open or
    // the user settled its uncommitted edits.
    bool MayLeave();
    // Leaves full-screen editing if it is open; pending edits end unsaved.
    void Close();

    CFullScreenWnd& Window() { return m_window; }
    CPhotoList& PhotoList() { return m_photoList; }

    // IFullScreenOwner: the dialog's values.
    int GetJpegQuality() const override;
    std::string GetGalleryFolder() const override;
    std::string GetPhotoFolderPath() const override;
    CSettings& GetSettings() override;

private:
    CTivoxDlg& m_dialog;
    CPhotoList m_photoList;
    CFullScreenWnd m_window;
};

} // namespace tivox
