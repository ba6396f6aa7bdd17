#include "gui/fullscreen_fixture.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <cstdio>
#include <filesystem>

namespace tivox::test {

void FullScreenTest::SetUp() {
    m_folder = m_dir.File("Photos");
    std::filesystem::create_directories(m_folder);
    m_owner.photoFolder = m_folder;
    m_owner.galleryFolder = m_dir.File("Galleries");
    m_window = std::make_unique<CFullScreenWnd>();
    m_window->SetPrompt(&m_prompt);
    m_window->SetBusyIndicator(&m_busy);
}

void FullScreenTest::TearDown() {
    if (m_window->HasWindow()) {
        m_window->DestroyWindow();
    }
    m_window.reset();
}

std::string FullScreenTest::PhotoPath(int index) const {
    char name[32];
    std::snprintf(name, sizeof name, "/photo_%02d.jpg", index);
    return m_folder + name;
}

void FullScreenTest::WritePhotos(const std::vector<TestPhoto>& photos) {
    for (std::size_t i = 0; i < photos.size(); ++i) {
        TestJpegOptions options;
        options.width = photos[i].width;
        options.height = photos[i].height;
        options.pattern = Pattern::Solid;
        options.solid = photos[i].color;
        options.quality = 95;
        ASSERT_TRUE(WriteFile(PhotoPath(int(i)), MakeJpeg(options)));
    }
}

void FullScreenTest::WritePhotos(int count, TestPhoto photo) {
    WritePhotos(std::vector<TestPhoto>(std::size_t(count), photo));
}

void FullScreenTest::Open(int tilesX, int tilesY, int statusHeight) {
    m_list.Clear();
    if (!m_window->HasWindow()) {
        m_window->Create(QRect(0, 0, 1024, 768));
    }
    m_window->SetMainDlg(&m_owner);
    m_window->Configure(std::uint32_t(tilesX), std::uint32_t(tilesY), std::uint32_t(statusHeight));
    m_list.SetThumbnailSize(m_window->GetThumbSize());
    m_list.SetWindow(m_window.get());
    m_list.Open(m_folder);
    m_window->SetPhotoList(&m_list);
    ASSERT_TRUE(m_list.WaitWorker(20000));
    Settle();
}

void FullScreenTest::Settle() {
    QApplication::processEvents();
}

void FullScreenTest::Move(int x, int y, Qt::MouseButtons held) {
    QMouseEvent event(QEvent::MouseMove, QPointF(x, y), QPointF(x, y), Qt::NoButton, held,
                      Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &event);
}

void FullScreenTest::Press(int x, int y) {
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(x, y), QPointF(x, y), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &event);
}

void FullScreenTest::Release(int x, int y) {
    QMouseEvent event(QEvent::MouseButtonRelease, QPointF(x, y), QPointF(x, y), Qt::LeftButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &event);
}

void FullScreenTest::Click(int x, int y) {
    Press(x, y);
    Release(x, y);
}

void FullScreenTest::DoubleClick(int x, int y) {
    // As the platform delivers it: press, release, double click, release.
    Click(x, y);
    QMouseEvent event(QEvent::MouseButtonDblClick, QPointF(x, y), QPointF(x, y), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &event);
    Release(x, y);
}

void FullScreenTest::Key(int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &event);
}

void FullScreenTest::ContextMenu(int x, int y) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(x, y), QPoint(x, y));
    QApplication::sendEvent(m_window.get(), &event);
}

QImage FullScreenTest::Grab() {
    Settle();
    return m_window->grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

} // namespace tivox::test
