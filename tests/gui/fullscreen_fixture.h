#pragma once
// The full-screen window on a generated photo folder, opened as the main
// dialog opens it over a screen area of 1024 x 768, with scripted message
// boxes and input sent straight to the window.

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <filesystem>
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
    void SetUp() override {
        m_folder = m_dir.File("Photos");
        std::filesystem::create_directories(m_folder);
        m_owner.photoFolder = m_folder;
        m_owner.galleryFolder = m_dir.File("Galleries");
        m_window->SetPrompt(&m_prompt);
        m_window->SetBusyIndicator(&m_busy);
    }
    void TearDown() override {
        if (m_window->HasWindow())
            m_window->DestroyWindow();
    }

    std::string PhotoPath(int index) const {
        return m_folder + (index < 10 ? "/photo_0" : "/photo_") + std::to_string(index) + ".jpg";
    }
    // Writes `count` solid photos (colour 0xRRGGBB) as photo_00.jpg ...
    void WritePhotos(int count, int width = 320, int height = 240, std::uint32_t color = 0x808080) {
        TestJpegOptions options = Picture(width, height, Pattern::Solid);
        options.solid = color;
        options.quality = 95;
        for (int i = 0; i < count; ++i)
            ASSERT_TRUE(WriteFile(PhotoPath(i), MakeJpeg(options)));
    }
    // The opening order of the main dialog; waits for every thumbnail.
    void Open(int tilesX = 4, int tilesY = 4, int statusHeight = 30) {
        m_list.Clear();
        if (!m_window->HasWindow())
            m_window->Create(QRect(0, 0, 1024, 768));
        m_window->SetMainDlg(&m_owner);
        m_window->Configure(std::uint32_t(tilesX), std::uint32_t(tilesY),
                            std::uint32_t(statusHeight));
        m_list.SetThumbnailSize(m_window->GetThumbSize());
        m_list.SetWindow(m_window.get());
        m_list.Open(m_folder);
        m_window->SetPhotoList(&m_list);
        ASSERT_TRUE(m_list.WaitWorker(20000));
        Settle();
    }

    // Input, in window coordinates.
    void Move(int x, int y, Qt::MouseButtons held = Qt::NoButton) {
        Mouse(QEvent::MouseMove, x, y, Qt::NoButton, held);
    }
    void Press(int x, int y) {
        Mouse(QEvent::MouseButtonPress, x, y, Qt::LeftButton, Qt::LeftButton);
    }
    void Release(int x, int y) { Mouse(QEvent::MouseButtonRelease, x, y, Qt::LeftButton, {}); }
    // Clicks come after a move there, as with a real mouse.
    void Click(int x, int y) {
        Move(x, y);
        Press(x, y);
        Release(x, y);
    }
    // As the platform delivers it: press, release, double click, release.
    void DoubleClick(int x, int y) {
        Click(x, y);
        Mouse(QEvent::MouseButtonDblClick, x, y, Qt::LeftButton, Qt::LeftButton);
        Release(x, y);
    }
    void Key(int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(m_window.get(), &event);
    }
    void ContextMenu(int x, int y) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(x, y), QPoint(x, y));
        QApplication::sendEvent(m_window.get(), &event);
    }
    // The window as painted now.
    QImage Grab() {
        Settle();
        return m_window->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    }
    // Lets posted events (tile repaints) run.
    void Settle() { QApplication::processEvents(); }

    TempDir m_dir;
    std::string m_folder;
    TestOwner m_owner;
    ScriptedPrompt m_prompt;
    CountingBusy m_busy;
    CPhotoList m_list;
    std::unique_ptr<CFullScreenWnd> m_window = std::make_unique<CFullScreenWnd>();

private:
    void Mouse(QEvent::Type type, int x, int y, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, QPointF(x, y), QPointF(x, y), button, held, Qt::NoModifier);
        QApplication::sendEvent(m_window.get(), &event);
    }
};

} // namespace tivox::test
