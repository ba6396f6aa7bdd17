#pragma once
// The floating "Image Operations" window over the full-screen window: the
// four tab pages, which marker the mouse applies, which photos an operation
// works on ("Process:"), and Discard and Commit. It owns the image processor
// with the colour state of the sliders, and every edit of its pages goes
// through ApplyOperation, ApplyCode, ShowColor or SelectTool. Closing it
// only hides it; the full-screen window destroys it when it closes.
// GUI thread only.

#include <QDialog>
#include <QRect>
#include <QTabWidget>
#include <array>
#include <cstdint>
#include <string>

#include "app/fullscreen/tool_scope.h"
#include "imageops/image_processor.h"
#include "imageops/operation.h"

namespace tivox {

class CBasicPage;
class CColorPage;
class CFullScreenWnd;
class CIconButton;
class CPhotoPage;
class CSettings;
class CWebPage;

// The tab control with the four pages; the Basic page is never disabled.
class CImageOpsTab : public QTabWidget {
    Q_OBJECT
public:
    explicit CImageOpsTab(QWidget* parent = nullptr) : QTabWidget(parent) {}
    void CreatePages(CBasicPage* basic, CColorPage* color, CPhotoPage* photo, CWebPage* web);
    // Page 1 Color, 2 Photo, 3 Web; 0 and other numbers do nothing.
    void EnablePage(int page, bool enable);

    CBasicPage* m_basic = nullptr;
    CColorPage* m_color = nullptr;
    CPhotoPage* m_photo = nullptr;
    CWebPage* m_web = nullptr;
};

class CImageOpsDlg : public QDialog {
    Q_OBJECT
public:
    explicit CImageOpsDlg(CFullScreenWnd* window);
    ~CImageOpsDlg() override;

    // The selection pass: the current photo, or a walk over the list choosing
    // by "All" and the marker boxes. Errors are shown and the walk goes on.
    void ApplyOperation(const COperation& operation);
    void ApplyCode(std::int32_t code) { ApplyOperation(COperation::Plain(code)); }
    // The colour tab's values on the chosen photos, each taken back to its
    // file first.
    void ShowColor(const ColorSettings& settings);
    void SelectTool(std::int32_t mode);
    void EnablePage(int page, bool enable) { m_tab->EnablePage(page, enable); }
    // The gallery folder of the open photo folder.
    std::string GetGalleryFolder() const;
    CSettings* GetSettings() const;
    // The "Process:" boxes as they stand.
    ProcessScope Scope();
    // Whether "Current" is checked, read from its box.
    bool IsProcessCurrent();
    void ResetProcessor();
    // The Color tab back to neutral, sending nothing.
    void ResetColorControls();
    // Shows the window with its top left corner at `globalPos`, moved in as
    // far as needed to lie wholly on `screen`.
    void ShowAt(const QPoint& globalPos, const QRect& screen);
    // Hides the window (the tools of the Photo tab, Esc, the close box) and
    // gives the keyboard back to the full-screen window.
    void OnOK();
    void reject() override { OnOK(); }

    CFullScreenWnd* Window() const { return m_window; }
    CImageProcessor& Processor() { return m_processor; }

    // Controls, for tests and screenshots.
    CImageOpsTab* Tab() const { return m_tab; }
    CIconButton* SelectBox(int marker) const { return m_select[std::size_t(marker - 1)]; }
    CIconButton* ProcessCurrent() const { return m_processCurrent; }
    CIconButton* ProcessAll() const { return m_processAll; }
    CIconButton* ProcessColor(int marker) const { return m_process[std::size_t(marker - 1)]; }
    CIconButton* DiscardButton() const { return m_discard; }
    CIconButton* CommitButton() const { return m_commit; }

protected:
    // Sends the keys of the full-screen window there (see KeepsKey).
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void BuildLayout();
    // Check boxes into the scope and back.
    void ReadScope();
    void WriteScope();
    void OnProcessCurrent();
    void OnProcessAll();
    void OnProcessColor(int marker);
    void OnSelectMarker(int marker);

    CFullScreenWnd* m_window;
    QRect m_screen; // where the window must stay, from the last ShowAt
    CImageProcessor m_processor;
    CImageOpsTab* m_tab = nullptr;
    ProcessScope m_scope;
    std::array<CIconButton*, 3> m_select{};
    std::array<CIconButton*, 3> m_process{};
    CIconButton* m_processCurrent = nullptr;
    CIconButton* m_processAll = nullptr;
    CIconButton* m_discard = nullptr;
    CIconButton* m_commit = nullptr;
};

} // namespace tivox
