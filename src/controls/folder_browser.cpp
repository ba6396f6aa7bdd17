#include "controls/folder_browser.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace tivox {

CFolderBrowser::CFolderBrowser(QWidget* parent, const QString& title)
    : m_parent(parent), m_title(title) {}

void CFolderBrowser::SetFlags(unsigned flags) {
    if (!m_window)
        m_flags = flags;
}

bool CFolderBrowser::SetTitle(const QString& title) {
    if (m_window || title.isEmpty())
        return false;
    m_title = title;
    return true;
}

void CFolderBrowser::SetStartFolder(const QString& folder) {
    if (!m_window)
        m_startFolder = folder;
}

bool CFolderBrowser::Run() {
    QFileDialog dialog(m_parent, m_title);
    // Qt's own dialog looks the same everywhere and can be driven by tests.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, (m_flags & kReturnOnlyFsDirs) != 0);
    m_window = &dialog;
    QObject::connect(&dialog, &QFileDialog::currentChanged, &dialog,
                     [this](const QString& path) { OnSelectionChanged(path); });
    OnInitialized();
    const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    m_window = nullptr;
    if (!chosen)
        return false;
    m_path = QDir::cleanPath(dialog.selectedFiles().constFirst());
    return true;
}

void CFolderBrowser::OnInitialized() {
    // A start folder that is not there leaves the picker where it was; the
    // path still shows in the name line, so the user sees what was asked for.
    if (QFileInfo(m_startFolder).isDir())
        m_window->setDirectory(m_startFolder);
    if (m_flags & kStatusText)
        m_window->setLabelText(QFileDialog::LookIn, m_startFolder);
}

void CFolderBrowser::OnSelectionChanged(const QString& path) {
    if (m_window && (m_flags & kStatusText))
        m_window->setLabelText(QFileDialog::LookIn, path);
}

} // namespace tivox
