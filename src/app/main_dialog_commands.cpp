#include "app/main_dialog_commands.h"

#include <cstdio>
#include <ctime>

namespace tivox {
namespace {

// Parent and last name of a picked folder; false for the root or a path
// without a separator.
bool SplitPickedFolder(std::string path, std::string& parent, std::string& name) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos || slash + 1 >= path.size())
        return false;
    parent = slash == 0 ? std::string("/") : path.substr(0, slash);
    name = path.substr(slash + 1);
    return true;
}

} // namespace

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

bool CMainDialogCommands::RunFolderBrowser(const UiText& title, std::string& chosen) {
    if (!m_browserMade) {
        m_browserMade = true;
        m_browserStart = DefaultPicturesFolder();
    }
    return m_picker.PickFolder(title, m_browserStart, chosen);
}

void CMainDialogCommands::OnSelectBaseFolder() {
    UpdateData(true);
    std::string chosen;
    if (!RunFolderBrowser({TIVOX_TR("Select base directory for photo folders"), {}}, chosen))
        return;
    m_browserStart = chosen;
    m_fields.m_baseFolder = chosen;
    UpdateData(false);
}

void CMainDialogCommands::OnSelectGalleryFolder() {
    UpdateData(true);
    std::string chosen;
    if (!RunFolderBrowser({TIVOX_TR("Select base directory for HTML galleries"), {}}, chosen))
        return;
    m_browserStart = chosen;
    m_fields.m_galleryFolder = chosen;
    UpdateData(false);
}

void CMainDialogCommands::OnSelectPhotoFolder() {
    UpdateData(true);
    if (!m_browserMade) {
        m_browserMade = true;
        m_browserStart = DefaultPicturesFolder();
    }
    if (!m_fields.m_baseFolder.empty())
        m_browserStart = m_fields.m_baseFolder;
    std::string chosen;
    if (!RunFolderBrowser({TIVOX_TR("Select target directory for photos"), {}}, chosen))
        return;
    m_browserStart = chosen;
    std::string parent, name;
    if (SplitPickedFolder(chosen, parent, name)) {
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
    std::string path = m_fields.m_baseFolder;
    if (path.empty() || path.back() != '/')
        path += '/';
    return path + m_fields.m_photoFolder;
}

std::string CMainDialogCommands::GetBackupFolderPath() const {
    return GetPhotoFolderPath() + "_bak";
}

} // namespace tivox
