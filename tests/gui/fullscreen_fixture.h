#pragma once
// The full-screen window on a generated photo folder, opened as the main
// dialog opens it over a screen area of 1024 x 768, with scripted message
// boxes. Input passes through the window system, as a person's does, so that
// focus and modality apply.

#include <QTest>
#include <QWindow>
#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "app/main_dialog/settings.h"
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

    // Input, in window coordinates. A press holds the button for the moves
    // that follow, until its release.
    QWindow* Handle() const { return m_window->windowHandle(); }
    void Move(int x, int y) { QTest::mouseMove(Handle(), QPoint(x, y)); }
    void Press(int x, int y) { QTest::mousePress(Handle(), Qt::LeftButton, {}, QPoint(x, y)); }
    void Release(int x, int y) { QTest::mouseRelease(Handle(), Qt::LeftButton, {}, QPoint(x, y)); }
    // Clicks come after a move there, as with a real mouse.
    void Click(int x, int y) {
        Move(x, y);
        Press(x, y);
        Release(x, y);
    }
    // The platform makes the second press a double click.
    void DoubleClick(int x, int y) {
        Move(x, y);
        QTest::mouseDClick(Handle(), Qt::LeftButton, {}, QPoint(x, y));
    }
    void Key(int key) { QTest::keyClick(Handle(), Qt::Key(key)); }
    // A right click: the window asks for its context menu.
    void ContextMenu(int x, int y) {
        Move(x, y);
        QTest::mouseClick(Handle(), Qt::RightButton, {}, QPoint(x, y));
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
};

} // namespace tivox::test
