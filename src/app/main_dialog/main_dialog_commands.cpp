#include "app/main_dialog/main_dialog_commands.h"

#include <cstdio>
#include <ctime>

#include "acquire/file_walker.h"
#include "acquire/folder_paths.h"

namespace tivox {

CMainDialogCommands::CMainDialogCommands(IDialogControls& controls, IPrompt& prompt,
                                         IFolderPicker& picker)
    : m_controls(controls), m_prompt(prompt), m_picker(picker),
      m_fields(DefaultMainDialogFields()) {}

bool CMainDialogCommands::UpdateData(bool saveAndValidate) {
    if (saveAndValidate)
        return ReadControls(m_fields, m_controls, m_prompt);
    WriteControls(m_fields, m_controls);
    return true;
}

void CMainDialogCommands::OnCurrentDate() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    SetDateFolder(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
}

void CMainDialogCommands::SetDateFolder(int year, int month, int day) {
    char text[32];
    std::snprintf(text, sizeof text, "%04d%02d%02d", year, month, day);
    m_fields.m_photoFolder = text;
    UpdateData(false);
}

void CMainDialogCommands::OnAddRuleTag() {
    UpdateData(true);
    m_fields.m_renamingRule += m_fields.m_exifTag;
    UpdateData(false);
}

void CMainDialogCommands::OnToggleStatusBar() {
    UpdateData(true);
    m_fields.m_statusBarHeight = m_fields.m_showStatusBar ? 30 : 0;
}

void CMainDialogCommands::MakeBrowser() {
    if (!m_browserMade) {
        m_browserMade = true;
        m_browserStart = DefaultBaseFolder();
    }
}

bool CMainDialogCommands::RunFolderBrowser(const UiText& title, std::string& chosen) {
    MakeBrowser();
    return m_picker.PickFolder(title, m_browserStart, chosen);
}

void CMainDialogCommands::PickInto(const UiText& title, std::string& field) {
    UpdateData(true);
    std::string chosen;
    if (!RunFolderBrowser(title, chosen))
        return;
    m_browserStart = chosen;
    field = chosen;
    UpdateData(false);
}

void CMainDialogCommands::OnSelectBaseFolder() {
    PickInto({TIVOX_TR("Select base directory for photo folders"), {}}, m_fields.m_baseFolder);
}

void CMainDialogCommands::OnSelectGalleryFolder() {
    PickInto({TIVOX_TR("Select base directory for HTML galleries"), {}}, m_fields.m_galleryFolder);
}

void CMainDialogCommands::OnSelectPhotoFolder() {
    UpdateData(true);
    MakeBrowser();
    if (!m_fields.m_baseFolder.empty())
        m_browserStart = m_fields.m_baseFolder;
    std::string chosen;
    if (!RunFolderBrowser({TIVOX_TR("Select target directory for photos"), {}}, chosen))
        return;
    m_browserStart = chosen;
    std::string parent, name;
    if (SplitFolderPath(chosen, parent, name)) {
        m_fields.m_baseFolder = parent;
        m_fields.m_photoFolder = name;
    } else {
        m_prompt.Ask({TIVOX_TR("Root directory not allowed.\nPlease select a subfolder."), {}},
                     PromptIcon::Warning, PromptButtons::Ok, PromptAnswer::Ok);
    }
    UpdateData(false);
}

bool CMainDialogCommands::TakeCameraDrive(const std::string& driveName, bool removable) {
    if (!removable) {
        const PromptAnswer answer = m_prompt.Ask(
            {TIVOX_TR("The drive you selected is not a removable drive.\nAre you sure that "
                      "this is your digital camera?"),
             {}},
            PromptIcon::Question, PromptButtons::YesNo, PromptAnswer::No);
        if (answer != PromptAnswer::Yes)
            return false;
    }
    m_fields.m_cameraDrive = driveName;
    UpdateData(false);
    return true;
}

std::string CMainDialogCommands::GetPhotoFolderPath() const {
    return tivox::GetPhotoFolderPath(m_fields.m_baseFolder, m_fields.m_photoFolder);
}

std::string CMainDialogCommands::GetBackupFolderPath() const {
    return tivox::GetBackupFolderPath(m_fields.m_baseFolder, m_fields.m_photoFolder);
}

bool CMainDialogCommands::LoadSettings(const std::string& path) {
    if (!m_settings.LoadFile(path))
        return false;
    FieldsFromSettings(m_settings, m_fields);
    return true;
}

namespace {

// The last read as the window goes: nobody is there to answer a message.
class SilentPrompt final : public IPrompt {
public:
    PromptAnswer Ask(const UiText&, PromptIcon, PromptButtons, PromptAnswer answer,
                     const UiText&) override {
        return answer;
    }
};

} // namespace

bool CMainDialogCommands::StoreSettings(const std::string& path) {
    SilentPrompt silent;
    ReadControls(m_fields, m_controls, silent);
    FieldsToSettings(m_fields, m_settings);
    return m_settings.StoreFile(path);
}

void CMainDialogCommands::FillTransfer(CPhotoTransfer& transfer) const {
    transfer.m_cameraDrive = m_fields.m_cameraDrive;
    transfer.m_baseFolder = m_fields.m_baseFolder;
    transfer.m_photoFolder = m_fields.m_photoFolder;
    transfer.m_renamingRule = m_fields.m_renamingRule;
    transfer.m_createBackup = m_fields.m_createBackup;
    transfer.m_turnUpright = m_fields.m_turnUpright;
    transfer.m_renameCounter = m_renameCounter;
    transfer.m_driveSources = m_driveSources;
    transfer.m_translate = m_translate;
}

TransferOutcome CMainDialogCommands::RunTransfer(IProgressSink& progress, IBusyIndicator& busy,
                                                 bool restore) {
    CPhotoTransfer transfer(m_prompt, progress, busy);
    FillTransfer(transfer);
    // Both commands read the controls first; the fields they work on follow.
    transfer.m_readControls = [&] {
        UpdateData(true);
        FillTransfer(transfer);
    };
    const TransferOutcome outcome = restore ? transfer.OnRestore() : transfer.OnGetPhotos();
    m_renameCounter = transfer.m_renameCounter;
    m_lastReport = transfer.Report();
    return outcome;
}

} // namespace tivox
