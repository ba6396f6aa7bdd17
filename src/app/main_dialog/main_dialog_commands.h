#pragma once
// The commands that live in the main dialog itself, as plain logic over its
// fields. The window forwards its buttons here; tests call the same methods
// with scripted controls, prompts and folder pickers.

#include <string>

#include "acquire/mount_table.h"
#include "acquire/photo_transfer.h"
#include "app/main_dialog/main_dialog_exchange.h"
#include "app/main_dialog/main_dialog_fields.h"
#include "app/main_dialog/settings.h"
#include "platform/user_seams.h"

namespace tivox {

class CMainDialogCommands {
public:
    CMainDialogCommands(IDialogControls& controls, IPrompt& prompt, IFolderPicker& picker);

    // Reads the settings file into the fields; a file that is missing or
    // damaged leaves the defaults, silently.
    bool LoadSettings(const std::string& path);
    // Reads the controls once more (without messages) and writes the file.
    bool StoreSettings(const std::string& path);
    // The settings record, with what the full-screen window keeps there.
    CSettings& Settings() { return m_settings; }

    MainDialogFields& Fields() { return m_fields; }
    const MainDialogFields& Fields() const { return m_fields; }

    // With true: reads the controls (may refuse with a message). With false:
    // writes the fields into the controls. Gives back whether a read succeeded.
    bool UpdateData(bool saveAndValidate);

    // Photo folder := local date as YYYYMMDD; then the controls are written.
    void OnCurrentDate();
    void SetDateFolder(int year, int month, int day);
    void OnAddRuleTag();
    void OnToggleStatusBar();
    void OnSelectBaseFolder();
    void OnSelectPhotoFolder();
    void OnSelectGalleryFolder();
    // Exit, Enter and the window's close: true when the dialog may end.
    bool OnOK() { return UpdateData(true); }
    // Full-screen editing opens only after a successful read.
    bool OnFullScreen() { return UpdateData(true); }
    // Takes the drive chosen in the drive dialog. A drive that is not
    // removable is taken only after the user confirms. True when taken.
    bool TakeCameraDrive(const std::string& driveName, bool removable);

    // Get Photos and Restore from Backup Folder, with the dialog's progress
    // bar and wait cursor. Both read the controls first and run to their end
    // on the calling thread.
    TransferOutcome OnGetPhotos(IProgressSink& progress, IBusyIndicator& busy) {
        return RunTransfer(progress, busy, false);
    }
    TransferOutcome OnRestore(IProgressSink& progress, IBusyIndicator& busy) {
        return RunTransfer(progress, busy, true);
    }
    // What the last Get Photos or restore did.
    const TransferReport& LastReport() const { return m_lastReport; }
    int RenameCounter() const { return m_renameCounter; }

    // Where drives are looked up (tests fake the mount table).
    DriveSources m_driveSources;
    // Puts the lists of the transfer's closing report into the user's language.
    Translator m_translate;

    // Base folder, a separator, photo folder; and the same with "_bak".
    std::string GetPhotoFolderPath() const;
    std::string GetBackupFolderPath() const;

    // The folder the shared folder picker starts on; it carries over from
    // one picker to the next.
    const std::string& BrowserStartFolder() const { return m_browserStart; }

private:
    // The shared picker starts in the pictures folder the first time.
    void MakeBrowser();
    // Runs the one shared picker with `title`; false on cancel.
    bool RunFolderBrowser(const UiText& title, std::string& chosen);
    // Reads the controls, runs the picker, and on a choice puts the folder
    // into `field` and writes the controls.
    void PickInto(const UiText& title, std::string& field);
    // A transfer object over the current fields.
    void FillTransfer(CPhotoTransfer& transfer) const;
    TransferOutcome RunTransfer(IProgressSink& progress, IBusyIndicator& busy, bool restore);

    IDialogControls& m_controls;
    IPrompt& m_prompt;
    IFolderPicker& m_picker;
    MainDialogFields m_fields;
    CSettings m_settings;
    int m_renameCounter = 1;
    TransferReport m_lastReport;
    bool m_browserMade = false;
    std::string m_browserStart;
};

} // namespace tivox
