#include "gui/fullscreen_fixture.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <cstdio>
#include <filesystem>

#include "support/test_jpeg.h"

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
    if (m_window->HasWindow())
        m_window->DestroyWindow();
    m_window.reset();
}

std::string FullScreenTest::PhotoPath(int index) const {
    char name[32];
    std::snprintf(name, sizeof name, "/photo_%02d.jpg", index);
    return m_folder + name;
}

void FullScreenTest::WritePhotos(int count, int width, int height, std::uint32_t color) {
    TestJpegOptions options;
    options.width = width;
    options.height = height;
    options.pattern = Pattern::Solid;
    options.solid = color;
    options.quality = 95;
    for (int i = 0; i < count; ++i)
        ASSERT_TRUE(WriteFile(PhotoPath(i), MakeJpeg(options)));
}

void FullScreenTest::Open(int tilesX, int tilesY, int statusHeight) {
    m_list.Clear();
    if (!m_window->HasWindow())
        m_window->Create(QRect(0, 0, 1024, 768));
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

void FullScreenTest::Mouse(QEvent::Type type, int x, int y, Qt::MouseButton button,
                           Qt::MouseButtons held) {
    QMouseEvent event(type, QPointF(x, y), QPointF(x, y), button, held, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &event);
}

void FullScreenTest::Move(int x, int y, Qt::MouseButtons held) {
    Mouse(QEvent::MouseMove, x, y, Qt::NoButton, held);
}
void FullScreenTest::Press(int x, int y) {
    Mouse(QEvent::MouseButtonPress, x, y, Qt::LeftButton, Qt::LeftButton);
}
void FullScreenTest::Release(int x, int y) {
    Mouse(QEvent::MouseButtonRelease, x, y, Qt::LeftButton, Qt::NoButton);
}
void FullScreenTest::Click(int x, int y) {
    Press(x, y);
    Release(x, y);
}

void FullScreenTest::DoubleClick(int x, int y) {
    // As the platform delivers it: press, release, double click, release.
    Click(x, y);
    Mouse(QEvent::MouseButtonDblClick, x, y, Qt::LeftButton, Qt::LeftButton);
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
