#include "gui_fixture.h"

namespace tivox::test {

bool ScriptedPicker::PickFolder(const UiText& title, const std::string& startFolder,
                                std::string& chosen) {
    runs.push_back({RenderUiText(title), startFolder});
    if (folders.empty() || folders.front().empty()) {
        if (!folders.empty())
            folders.erase(folders.begin());
        return false;
    }
    chosen = folders.front();
    folders.erase(folders.begin());
    return true;
}

DialogRig::DialogRig() : DialogRig(std::string()) {}

DialogRig::DialogRig(const std::string& settingsFile)
    : settings(settingsFile.empty() ? dir.File("TivoxSettings.dat") : settingsFile),
      dlg(std::make_unique<CTivoxDlg>(nullptr, settings)) {
    dlg->SetPrompt(&prompt);
    dlg->SetFolderPicker(&picker);
}

void DialogRig::Close() {
    if (dlg)
        dlg->done(QDialog::Accepted);
    dlg.reset();
}

} // namespace tivox::test
