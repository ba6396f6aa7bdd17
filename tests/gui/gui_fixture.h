#pragma once
// Helpers of the widget tests: scripted folder pickers (message boxes are
// answered by the ScriptedPrompt of the acquisition tests), a dialog over a
// settings file of its own, and modal windows answered from their event loop.

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "acquire/acquire_fixture.h"
#include "platform/user_seams.h"
#include "photo_writer/test_jpeg.h"
#include "ui/tivox_dlg.h"

namespace tivox::test {

// Gives the scripted folders in order; an empty entry cancels. Records the
// title and start folder of every run.
class ScriptedPicker final : public IFolderPicker {
public:
    std::vector<std::string> folders;
    std::vector<std::pair<std::string, std::string>> runs;

    bool PickFolder(const UiText& title, const std::string& startFolder,
                    std::string& chosen) override {
        runs.emplace_back(RenderUiText(title), startFolder);
        if (folders.empty())
            return false;
        const std::string next = folders.front();
        folders.erase(folders.begin());
        if (!next.empty())
            chosen = next;
        return !next.empty();
    }
};

// A main dialog with a settings file in a folder of its own, seams scripted.
struct DialogRig {
    explicit DialogRig(const std::string& settingsFile = {})
        : dlg(std::make_unique<CTivoxDlg>(
              nullptr, settingsFile.empty() ? dir.File("TivoxSettings.dat") : settingsFile)) {
        dlg->SetPrompt(&prompt);
        dlg->SetFolderPicker(&picker);
    }
    // `count` photos in the rig's folder "Photos", shown full screen as
    // tilesX x tilesY tiles; returns the photo folder.
    std::string PhotosToEdit(int count, std::uint32_t tilesX, std::uint32_t tilesY) {
        MainDialogFields& fields = dlg->Commands().Fields();
        fields.m_baseFolder = dir.path();
        fields.m_tilesX = tilesX;
        fields.m_tilesY = tilesY;
        dlg->Commands().UpdateData(false);
        const std::string folder = dir.path() + "/Photos";
        for (int i = 0; i < count; ++i)
            PutFile(folder + "/p" + std::to_string(i) + ".jpg", MakeJpeg({}));
        return folder;
    }
    // Ends and destroys the dialog, which stores the settings.
    void Close() {
        dlg->done(QDialog::Accepted);
        dlg.reset();
    }

    TempDir dir;
    ScriptedPrompt prompt;
    ScriptedPicker picker;
    std::unique_ptr<CTivoxDlg> dlg;
};

// A left click on a control through the window system, as a person clicks:
// at its middle, delivered to the window that holds it.
inline void ClickOn(QWidget* control) {
    QWidget* top = control->window();
    QTest::mouseClick(top->windowHandle(), Qt::LeftButton, {},
                      control->mapTo(top, control->rect().center()));
}

// Runs `answer` on the modal window that `open` brings up, from inside its
// event loop, then returns what open returned.
template <typename Open> auto WithModal(std::function<void(QWidget*)> answer, Open open) {
    QTimer::singleShot(0, [answer] { answer(QApplication::activeModalWidget()); });
    return open();
}

} // namespace tivox::test
