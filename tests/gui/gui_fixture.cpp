#include "gui_fixture.h"

namespace tivox::test {

PromptAnswer ScriptedPrompt::Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                                 PromptAnswer defaultAnswer, const UiText&) {
    shown.push_back({RenderUiText(text), icon, buttons, defaultAnswer});
    if (answers.empty())
        return buttons == PromptButtons::Ok || buttons == PromptButtons::OkCancel
                   ? PromptAnswer::Ok
                   : PromptAnswer::Yes;
    const PromptAnswer answer = answers.front();
    answers.erase(answers.begin());
    return answer;
}

std::vector<std::string> ScriptedPrompt::Texts() const {
    std::vector<std::string> texts;
    for (const Shown& s : shown)
        texts.push_back(s.text);
    return texts;
}

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
