#pragma once
// The full-screen window on a generated photo folder, opened as the main
// dialog opens it over a screen area of 1024 x 768, with scripted message
// boxes and input sent straight to the window.

#include <QImage>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "app/settings.h"
#include "gui/gui_fixture.h"
#include "photos/photo_list.h"
#include "ui/fullscreen_wnd.h"

namespace tivox::test {

class TestOwner final : public IFullScreenOwner {
public:
    int GetJpegQuality() const override { return 90; }
    std::string GetGalleryFolder() const override { return galleryFolder; }
    std::string GetPhotoFolderPath() const override { return photoFolder; }
    CSettings& GetSettings() override { return settings; }
    std::string galleryFolder;
    std::string photoFolder;
    CSettings settings;
};

class FullScreenTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Writes `count` solid photos (colour 0xRRGGBB) as photo_00.jpg ...
    void WritePhotos(int count, int width = 320, int height = 240, std::uint32_t color = 0x808080);
    // The opening order of the main dialog; waits for every thumbnail.
    void Open(int tilesX = 4, int tilesY = 4, int statusHeight = 30);
    std::string PhotoPath(int index) const;

    // Input, in window coordinates.
    void Move(int x, int y, Qt::MouseButtons held = Qt::NoButton);
    void Press(int x, int y);
    void Release(int x, int y);
    void Click(int x, int y);
    void DoubleClick(int x, int y);
    void Key(int key);
    void ContextMenu(int x, int y);
    // The window as painted now.
    QImage Grab();
    // Lets posted events (tile repaints) run.
    void Settle();

    TempDir m_dir;
    std::string m_folder;
    TestOwner m_owner;
    ScriptedPrompt m_prompt;
    CountingBusy m_busy;
    CPhotoList m_list;
    std::unique_ptr<CFullScreenWnd> m_window;

private:
    void Mouse(QEvent::Type type, int x, int y, Qt::MouseButton button, Qt::MouseButtons held);
};

} // namespace tivox::test
