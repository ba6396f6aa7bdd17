// The full-screen window in tile and single-photo mode: keys and clicks,
// hover repaints and what the painted frame shows.

#include <QPaintEvent>
#include <QRegion>

#include "gui/fullscreen_fixture.h"
#include "photos/photo.h"

namespace tivox::test {
namespace {

using FullScreenWindow = FullScreenTest;
constexpr QRgb kBlack = 0xFF000000u, kRed = 0xFFFF0000u;

// Origin of the thumbnail area of a tile with the 4 x 4 layout and status bar.
QPoint ThumbOrigin(int column, int row) {
    return QPoint(256 * column + 4, 184 * row + 1 + 4);
}

int Gray(QRgb pixel) {
    return (qRed(pixel) + qGreen(pixel) + qBlue(pixel)) / 3;
}

TEST_F(FullScreenWindow, PagingWrapsAndNothingSurvivesClosing) {
    WritePhotos(10);
    Open(2, 2, 0); // four per page
    EXPECT_EQ(m_list.screenSize, (Size{1024, 768}));
    // The paging keys wrap both ways; Right steps backward.
    const int keys[] = {Qt::Key_Right, Qt::Key_Left, Qt::Key_PageDown, Qt::Key_Down,
                        Qt::Key_Down,  Qt::Key_Up,   Qt::Key_PageUp};
    const int starts[] = {8, 0, 4, 8, 0, 8, 4};
    for (int i = 0; i < 7; ++i) {
        Key(keys[i]);
        EXPECT_EQ(m_window->PageStart(), starts[i]) << i;
    }
    Key(Qt::Key_G);
    Click(10, 10);
    Key(Qt::Key_Escape);
    EXPECT_EQ(m_list.Count(), 0);
    // Marks, the chosen marker and the page do not survive closing.
    Open(2, 2, 0);
    EXPECT_EQ(m_window->CurrentMarker(), 1);
    EXPECT_EQ(m_window->PageStart(), 0);
    EXPECT_EQ(m_list.PhotoAt(4)->marker, 0);
}

TEST_F(FullScreenWindow, MarkingAndTheViewChange) {
    WritePhotos(20);
    Open(4, 4, 30);
    Click(300, 100); // tile 1
    EXPECT_EQ(m_list.PhotoAt(1)->marker, 1);
    Key(Qt::Key_G);
    Key(Qt::Key_Space); // another colour: it takes the current one
    EXPECT_EQ(m_list.PhotoAt(1)->marker, 2);
    Key(Qt::Key_Space);
    // On the status bar the index lies in the first row of the next page.
    Key(Qt::Key_B);
    Click(300, 750);
    Key(Qt::Key_PageDown); // page 16 to 19
    Click(800, 600);       // past the last photo: marks nothing
    for (int i = 0; i < m_list.Count(); ++i)
        EXPECT_EQ(m_list.PhotoAt(i)->marker, i == 17 ? 3 : 0) << i;

    // A double click changes the view and leaves the mark alone.
    DoubleClick(300, 100);
    EXPECT_TRUE(m_window->IsSinglePhoto());
    EXPECT_EQ(m_window->CurrentIndex(), 17);
    EXPECT_EQ(m_list.PhotoAt(17)->marker, 3);
    // In the single view the same keys step photos; Space marks the one shown.
    Key(Qt::Key_Left);
    Key(Qt::Key_Space);
    EXPECT_EQ(m_list.PhotoAt(18)->marker, 3);
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    EXPECT_EQ(m_window->CurrentIndex(), 0); // wrapped
    Key(Qt::Key_Up);
    EXPECT_EQ(m_window->CurrentIndex(), 19);
    // The picture is decoded on another thread: a paint does not wait for
    // it. Only the photo shown keeps its picture.
    m_window->repaint();
    EXPECT_EQ(m_list.PhotoAt(19)->screenImage, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_list.PhotoAt(19)->screenImage != nullptr; }));
    Key(Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_list.PhotoAt(0)->screenImage != nullptr; }));
    EXPECT_EQ(m_list.PhotoAt(19)->screenImage, nullptr);
    m_list.PhotoAt(0)->DropScreenImage(); // the next paint asks for it again
    m_window->repaint();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_list.PhotoAt(0)->screenImage != nullptr; }));
    Key(Qt::Key_Up);
    // Back to the page that holds the photo.
    DoubleClick(500, 500);
    EXPECT_FALSE(m_window->IsSinglePhoto());
    EXPECT_EQ(m_window->PageStart(), 16);
    EXPECT_EQ(m_list.PhotoAt(19)->marker, 0);
    // A double click on another colour leaves the photo unmarked.
    m_list.PhotoAt(16)->marker = 2;
    DoubleClick(10, 10);
    EXPECT_EQ(m_list.PhotoAt(16)->marker, 0);
}

TEST_F(FullScreenWindow, HoverRepaintsTheTwoCellsAndTheStatusBarAndKeepsItsText) {
    struct PaintSpy : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint)
                region += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
        QRegion region;
    } spy;
    WritePhotos(16);
    Open(4, 4, 30);
    Move(100, 100);
    Settle();
    m_window->installEventFilter(&spy);
    Move(150, 120); // same cell: nothing
    Settle();
    EXPECT_TRUE(spy.region.isEmpty());
    Move(300, 120);
    Settle();
    m_window->removeEventFilter(&spy);
    EXPECT_EQ(spy.region,
              QRegion(0, 0, 256, 184) + QRegion(256, 0, 256, 184) + QRegion(0, 738, 1023, 29));
    const QPoint middle = ThumbOrigin(1, 0) + QPoint(120, 88);
    EXPECT_GT(Gray(Grab().pixel(middle)), 175); // under the white veil
    EXPECT_EQ(m_window->StatusText().toStdString(), PhotoPath(1));
    Move(300, 750); // a pointer on the status bar hovers nothing
    EXPECT_NEAR(Gray(Grab().pixel(middle)), 128, 6);
    EXPECT_TRUE(m_window->StatusText().isEmpty());
}

TEST_F(FullScreenWindow, EmptyFolderStaysBlackAndEscCloses) {
    Open(4, 4, 30);
    Key(Qt::Key_PageUp);
    Key(Qt::Key_PageDown);
    Click(100, 100);
    EXPECT_EQ(Grab().pixel(100, 100), kBlack);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(m_window->HasWindow());
}

TEST_F(FullScreenWindow, UndecodableFilesAndEmptyTilesShowBlack) {
    ASSERT_TRUE(WriteFile(m_folder + "/broken.jpg", Bytes{0xFF, 0xD8, 0xFF, 0xE1, 0x00}));
    Open(4, 4, 30);
    ASSERT_EQ(m_list.Count(), 1);
    Click(100, 100); // still takes its mark
    EXPECT_EQ(m_list.PhotoAt(0)->marker, 1);
    EXPECT_EQ(Grab().pixel(2, 85), kRed);
    DoubleClick(900, 600); // an empty tile: past the end of the list
    EXPECT_EQ(m_window->CurrentIndex(), 15);
    Key(Qt::Key_Left); // wraps to the broken photo: only its marker square
    EXPECT_EQ(m_window->CurrentIndex(), 0);
    const QImage single = Grab();
    EXPECT_EQ(single.pixel(25, 20), kRed);
    EXPECT_EQ(single.pixel(512, 384), kBlack);
}

} // namespace
} // namespace tivox::test
