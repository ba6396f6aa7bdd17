#pragma once
// The folder picker behind the three folder buttons of the main dialog: a
// modal choice of an existing folder that starts on a given folder and gives
// back its full path. One object serves all three buttons.

#include <QFileDialog>
#include <QPointer>
#include <QString>

class QWidget;

namespace tivox {

class CFolderBrowser {
public:
    static constexpr unsigned kReturnOnlyFsDirs = 1;
    static constexpr unsigned kStatusText = 4;

    CFolderBrowser(QWidget* parent, const QString& title);
    virtual ~CFolderBrowser() = default;

    // The setters do nothing while the picker is open.
    void SetFlags(unsigned flags);
    // False, and the title stays, for an empty text.
    bool SetTitle(const QString& title);
    void SetStartFolder(const QString& folder);

    unsigned Flags() const { return m_flags; }
    const QString& Title() const { return m_title; }
    const QString& StartFolder() const { return m_startFolder; }
    // The folder of the last run that ended with a choice.
    QString GetPath() const { return m_path; }
    // The picker while it is open, else null.
    QFileDialog* Window() const { return m_window; }

    // Runs the picker modally. True when the user chose a folder.
    bool Run();

protected:
    virtual void OnInitialized();
    virtual void OnSelectionChanged(const QString& path);

private:
    QWidget* m_parent;
    QString m_title;
    unsigned m_flags = 0;
    QString m_path;
    QString m_startFolder;
    QPointer<QFileDialog> m_window;
};

} // namespace tivox
