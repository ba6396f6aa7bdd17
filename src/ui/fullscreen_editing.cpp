#include "ui/fullscreen_editing.h"

#include "ui/tivox_dlg.h"

namespace tivox {

CFullScreenEditing::CFullScreenEditing(CTivoxDlg& dialog) : m_dialog(dialog) {
    m_dialog.SetFullScreenHooks([this] { Open(); }, [this] { return MayLeave(); },
                                [this] { Close(); });
}

CFullScreenEditing::~CFullScreenEditing() {
    m_dialog.SetFullScreenHooks({}, {}, {});
    Close();
}

void CFullScreenEditing::Open() {
    // A second opening starts afresh: the old window stops its worker and
    // lets go of the list before the list is read again.
    if (!MayLeave()) {
        return;
    }
    Close();
    if (!m_window.HasWindow()) {
        m_window.Create(m_dialog.screen());
    }
    m_window.SetMainDlg(this);
    const MainDialogFields& fields = m_dialog.Fields();
    m_window.Configure(fields.m_tilesX, fields.m_tilesY, fields.m_statusBarHeight);
    m_window.OpenFolder(m_photoList, GetPhotoFolderPath(),
                        std::size_t(fields.m_thumbnailMemory) << 20);
}

bool CFullScreenEditing::MayLeave() {
    return !m_window.HasWindow() || m_window.ConfirmLeaving();
}

void CFullScreenEditing::Close() {
    if (m_window.HasWindow()) {
        m_window.DestroyWindow();
    }
    // Joins the worker before any photo goes.
    m_photoList.Clear();
}

int CFullScreenEditing::GetJpegQuality() const {
    return int(m_dialog.Fields().m_jpegQuality);
}

std::string CFullScreenEditing::GetGalleryFolder() const {
    return m_dialog.Fields().m_galleryFolder;
}

std::string CFullScreenEditing::GetPhotoFolderPath() const {
    return m_dialog.Commands().GetPhotoFolderPath();
}

CSettings& CFullScreenEditing::GetSettings() {
    return m_dialog.Commands().Settings();
}

} // namespace tivox
