#pragma once
// The main window: every setting of the user and every command. The command
// logic lives in CMainDialogCommands; this class lays out the controls, binds
// them, and forwards its buttons.

#include <QDialog>
#include <functional>
#include <memory>

#include "app/main_dialog/main_dialog_commands.h"
#include "controls/path_label.h"
#include "ui/drives_dlg.h"
#include "ui/qt_seams.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QSlider;

namespace tivox {

class CColorStatic;
class CHyperLinkStatic;
class CIconButton;

class CTivoxDlg : public QDialog {
    Q_OBJECT
public:
    // Starts with the defaults, then the settings stored at settingsPath
    // (by default the program's settings file); they go back there at the end.
    explicit CTivoxDlg(QWidget* parent = nullptr, std::string settingsPath = GetSettingsPath());
    ~CTivoxDlg() override;

    CMainDialogCommands& Commands() { return m_commands; }
    const MainDialogFields& Fields() const { return m_commands.Fields(); }

    // Seams, for tests and other front ends. Null restores the Qt default.
    void SetPrompt(IPrompt* prompt);
    void SetFolderPicker(IFolderPicker* picker);
    void SetDriveLister(DriveLister lister) { m_driveLister = std::move(lister); }
    // What "Full Screen Editing" does after its read succeeded; whether
    // full-screen editing may end (the user may keep it for its uncommitted
    // edits), asked before Exit and before a command that changes the photo
    // folder; and what ends it then and when the dialog goes.
    void SetFullScreenHooks(std::function<void()> open, std::function<bool()> mayLeave,
                            std::function<void()> close);

    // The commands.
    void OnSelectCameraDrive();
    void OnSelectBaseFolder() { m_commands.OnSelectBaseFolder(); }
    void OnSelectPhotoFolder() { m_commands.OnSelectPhotoFolder(); }
    void OnSelectGalleryFolder() { m_commands.OnSelectGalleryFolder(); }
    void OnCurrentDate() { m_commands.OnCurrentDate(); }
    void OnAddRuleTag() { m_commands.OnAddRuleTag(); }
    void OnToggleStatusBar() { m_commands.OnToggleStatusBar(); }
    void OnHScroll(int position);
    void OnFullScreen();
    void OnGetPhotos();
    void OnRestore();
    void OnAbout();

    // Exit and Enter: ends the dialog after a successful read.
    void accept() override;
    // Esc does nothing.
    void reject() override {}
    void done(int result) override;

    // True while a long command runs; input is refused meanwhile.
    bool IsBusy() const { return m_busy; }

    // Controls by role, for tests and screenshots.
    QLineEdit* Edit(DlgItem item) const;
    QComboBox* ExifTagBox() const { return m_exifTag; }
    QSlider* QualitySlider() const { return m_slider; }
    QProgressBar* Progress() const { return m_progress; }
    CIconButton* Button(const char* name) const;
    CColorStatic* Line(int index) const { return m_lines[index]; }
    CHyperLinkStatic* Link() const { return m_link; }
    CPathLabel* DriveLabel() const { return m_driveLabel; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    class Controls;
    class PromptRelay;
    class PickerRelay;

    void BuildLayout();
    void OnInitDialog();
    bool MayLeaveFullScreen();
    // Reads the controls once more and stores the settings; once.
    void StoreSettings();
    // Runs a long command: input is refused and the window keeps painting.
    template <typename Command> void RunBusy(Command command);
    CIconButton* MakeButton(const QString& caption, const char* name);
    // Shows the camera drive's path, widening the window for it if it can.
    void ShowCameraDrive(const QString& drive);

    std::unique_ptr<Controls> m_controls;
    std::unique_ptr<PromptRelay> m_promptRelay;
    std::unique_ptr<PickerRelay> m_pickerRelay;
    CMainDialogCommands m_commands;
    QtPrompt m_qtPrompt;
    QtFolderPicker m_qtPicker;
    std::string m_settingsPath;
    DriveLister m_driveLister;
    std::function<void()> m_openFullScreen;
    std::function<bool()> m_mayLeaveFullScreen;
    std::function<void()> m_closeFullScreen;
    bool m_busy = false;
    bool m_stored = false;

    CPathLabel* m_driveLabel = nullptr;
    QLineEdit* m_baseFolder = nullptr;
    QLineEdit* m_photoFolder = nullptr;
    QLineEdit* m_galleryFolder = nullptr;
    QLineEdit* m_renamingRule = nullptr;
    QComboBox* m_exifTag = nullptr;
    QLineEdit* m_tilesX = nullptr;
    QLineEdit* m_tilesY = nullptr;
    QLineEdit* m_thumbMemory = nullptr;
    QSlider* m_slider = nullptr;
    QLineEdit* m_quality = nullptr;
    QProgressBar* m_progress = nullptr;
    CIconButton* m_createBackup = nullptr;
    CIconButton* m_turnUpright = nullptr;
    CIconButton* m_showStatusBar = nullptr;
    CColorStatic* m_lines[3] = {};
    CHyperLinkStatic* m_link = nullptr;
};

} // namespace tivox
