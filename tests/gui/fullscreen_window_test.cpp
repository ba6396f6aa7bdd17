// The full-screen window in tile and single-photo mode: layout, paging,
// marking, the view change, hover repaints, the key table and what the
// painted frame shows.

#include <QApplication>
#include <QPaintEvent>
#include <QRegion>

#include "app/tool_state.h"
#include "gui/fullscreen_fixture.h"
#include "photos/photo.h"

namespace tivox::test {
namespace {

using FullScreenWindow = FullScreenTest;

// Origin of the thumbnail area of a tile with the 4 x 4 layout and status bar.
QPoint ThumbOrigin(int column, int row) {
    return QPoint(256 * column + 4, 184 * row + 1 + 4);
}

int Gray(QRgb pixel) {
    return (qRed(pixel) + qGreen(pixel) + qBlue(pixel)) / 3;
}

// Whether a line of `colour` passes within a pixel of (x, y): a pen of width
// 2 may fall on either side of its coordinate.
bool ColourNear(const QImage& frame, int x, int y, QRgb colour) {
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            if (frame.pixel(x + dx, y + dy) == colour) {
                return true;
            }
        }
    }
    return false;
}

TEST_F(FullScreenWindow, OpensOnTheLayoutOfTheDialog) {
    WritePhotos(3);
    Open(4, 4, 30);
    const CTileLayout& layout = m_window->Layout();
    EXPECT_EQ(layout.GetTileSize(), (Size{256, 184}));
    EXPECT_EQ(layout.GetGridOrigin(), (Point{0, 1}));
    EXPECT_EQ(m_window->GetThumbSize(), (Size{248, 176}));
    EXPECT_EQ(m_window->GetScreenSize(), (Size{1024, 768}));
    EXPECT_EQ(m_list.screenSize, (Size{1024, 768}));
    ASSERT_EQ(m_list.Count(), 3);
    // Thumbnails just fit a tile: 320 x 240 into 248 x 176.
    const Bitmap* thumb = m_list.PhotoAt(0)->thumbnail.get();
    ASSERT_NE(thumb, nullptr);
    EXPECT_EQ(thumb->Height(), 176);
    EXPECT_LE(thumb->Width(), 248);
    EXPECT_FALSE(m_window->IsSinglePhoto());
    EXPECT_EQ(m_window->Tools().Mode(), ModeSelect);
    EXPECT_EQ(m_window->CurrentMarker(), 1);
}

TEST_F(FullScreenWindow, PagingKeysWrapBothWays) {
    WritePhotos(10);
    Open(2, 2, 0); // four per page
    // Right steps backward: from the first page to the last (10 / 4 * 4).
    Key(Qt::Key_Right);
    EXPECT_EQ(m_window->PageStart(), 8);
    Key(Qt::Key_Left);
    EXPECT_EQ(m_window->PageStart(), 0);
    Key(Qt::Key_PageDown);
    Key(Qt::Key_Down);
    EXPECT_EQ(m_window->PageStart(), 8);
    Key(Qt::Key_Down); // past the last page back to the first
    EXPECT_EQ(m_window->PageStart(), 0);
    Key(Qt::Key_Up);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(m_window->PageStart(), 4);
}

TEST_F(FullScreenWindow, PreviousPageOfAnExactlyFullLastPage) {
    WritePhotos(12);
    Open(2, 2, 0);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(m_window->PageStart(), 8);
}

TEST_F(FullScreenWindow, MarkingOnTiles) {
    WritePhotos(20);
    Open(4, 4, 30);
    Move(300, 100); // tile 1
    Click(300, 100);
    EXPECT_EQ(m_list.PhotoAt(1)->marker, 1);
    Key(Qt::Key_G);
    Key(Qt::Key_Space); // another colour: it takes the current one
    EXPECT_EQ(m_list.PhotoAt(1)->marker, 2);
    Key(Qt::Key_Space);
    EXPECT_EQ(m_list.PhotoAt(1)->marker, 0);
    // On the status bar the index lies in the first row of the next page.
    Key(Qt::Key_B);
    Move(300, 750);
    Click(300, 750);
    EXPECT_EQ(m_list.PhotoAt(17)->marker, 3);
    // A click past the last photo marks nothing.
    Key(Qt::Key_PageDown);
    Move(800, 600);
    Click(800, 600);
    for (int i = 0; i < m_list.Count(); ++i) {
        EXPECT_EQ(m_list.PhotoAt(i)->marker, i == 17 ? 3 : 0) << i;
    }
}

TEST_F(FullScreenWindow, DoubleClickChangesTheViewAndLeavesTheMarkAlone) {
    WritePhotos(20);
    Open(4, 4, 30);
    Key(Qt::Key_PageDown); // page 16 to 19
    Move(300, 100);
    DoubleClick(300, 100);
    EXPECT_TRUE(m_window->IsSinglePhoto());
    EXPECT_EQ(m_window->CurrentIndex(), 17);
    EXPECT_EQ(m_list.PhotoAt(17)->marker, 0);
    // In the single view the same keys step photos; Space marks the one shown.
    Key(Qt::Key_Left);
    EXPECT_EQ(m_window->CurrentIndex(), 18);
    Key(Qt::Key_Space);
    EXPECT_EQ(m_list.PhotoAt(18)->marker, 1);
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    EXPECT_EQ(m_window->CurrentIndex(), 0); // wrapped
    Key(Qt::Key_Up);
    EXPECT_EQ(m_window->CurrentIndex(), 19);
    // Back to the page that holds the photo.
    Move(500, 500);
    DoubleClick(500, 500);
    EXPECT_FALSE(m_window->IsSinglePhoto());
    EXPECT_EQ(m_window->PageStart(), 16);
    EXPECT_EQ(m_list.PhotoAt(19)->marker, 0);
    // A double click on another colour leaves the photo unmarked.
    m_list.PhotoAt(16)->marker = 2;
    Move(10, 10);
    DoubleClick(10, 10);
    EXPECT_EQ(m_list.PhotoAt(16)->marker, 0);
}

TEST_F(FullScreenWindow, DoubleClickOnAnEmptyTileShowsBlackUntilTheNextStep) {
    WritePhotos(3);
    Open(4, 4, 30);
    Move(900, 600);
    DoubleClick(900, 600);
    EXPECT_TRUE(m_window->IsSinglePhoto());
    EXPECT_EQ(m_window->CurrentIndex(), 15);
    const QImage frame = Grab();
    EXPECT_EQ(frame.pixel(25, 25), 0xFF000000u); // no marker square either
    EXPECT_EQ(frame.pixel(512, 384), 0xFF000000u);
    Key(Qt::Key_Left);
    EXPECT_EQ(m_window->CurrentIndex(), 0);
}

class PaintSpy : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            region += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
    QRegion region;
};

TEST_F(FullScreenWindow, HoverRepaintsTheTwoCellsAndTheStatusBar) {
    WritePhotos(16);
    Open(4, 4, 30);
    Move(100, 100);
    Settle();
    PaintSpy spy;
    m_window->installEventFilter(&spy);
    Move(150, 120); // same cell: nothing
    Settle();
    EXPECT_TRUE(spy.region.isEmpty());
    Move(300, 120);
    Settle();
    m_window->removeEventFilter(&spy);
    const QRegion expected =
        QRegion(0, 0, 256, 184) + QRegion(256, 0, 256, 184) + QRegion(0, 738, 1023, 29);
    EXPECT_EQ(spy.region, expected);
}

TEST_F(FullScreenWindow, PaintsVeilFramesPlaceholderAndStatusText) {
    WritePhotos(4, {320, 240, 0x808080});
    Open(4, 4, 30);
    m_list.PhotoAt(1)->marker = 1;
    m_list.PhotoAt(2)->marker = 2;
    m_list.PhotoAt(3)->marker = 3;
    // Photo 3 has no thumbnail yet: the crossed box, no frame.
    m_list.PhotoAt(3)->thumbnailReady.store(0);
    Move(100, 100); // hover tile 0
    const QImage frame = Grab();
    m_list.PhotoAt(3)->thumbnailReady.store(1);

    // The hovered tile lies under the white veil, the others not.
    const QPoint t0 = ThumbOrigin(0, 0) + QPoint(120, 88);
    const QPoint t1 = ThumbOrigin(1, 0) + QPoint(120, 88);
    EXPECT_GT(Gray(frame.pixel(t0)), 175);
    EXPECT_NEAR(Gray(frame.pixel(t1)), 128, 6);

    // Marker frames run two pixels outside the thumbnail area.
    auto frameColour = [&](int column) {
        const QPoint o = ThumbOrigin(column, 0);
        for (int dx = 1; dx <= 3; ++dx) {
            const QRgb p = frame.pixel(o.x() - dx, o.y() + 80);
            if (p != 0xFF000000u) {
                return p;
            }
        }
        return QRgb(0xFF000000u);
    };
    EXPECT_EQ(frameColour(1), 0xFFFF0000u);
    EXPECT_EQ(frameColour(2), 0xFF00FF00u);
    EXPECT_EQ(frameColour(0), 0xFF000000u);
    EXPECT_EQ(frameColour(3), 0xFF000000u); // placeholder: no frame

    // The placeholder: gray box and diagonals on black.
    const QPoint p = ThumbOrigin(3, 0);
    EXPECT_EQ(frame.pixel(p.x(), p.y() + 50), 0xFF808080u);
    EXPECT_EQ(frame.pixel(p.x() + 124, p.y() + 88), 0xFF808080u); // the crossing
    EXPECT_EQ(frame.pixel(p.x() + 60, p.y() + 88), 0xFF000000u);

    // The status bar shows the hovered photo's path in blue.
    EXPECT_EQ(m_window->StatusText().toStdString(), PhotoPath(0));
    int blue = 0;
    for (int y = 738; y < 768; ++y) {
        for (int x = 0; x < 400; ++x) {
            const QRgb px = frame.pixel(x, y);
            blue += qBlue(px) > 128 && qRed(px) < 100 && qGreen(px) < 100 ? 1 : 0;
        }
    }
    EXPECT_GT(blue, 50);
    // Past the last photo the tiles stay black.
    EXPECT_EQ(frame.pixel(ThumbOrigin(0, 2) + QPoint(100, 80)), 0xFF000000u);
}

TEST_F(FullScreenWindow, PointerOnTheStatusBarHoversNothing) {
    WritePhotos(4);
    Open(4, 4, 30);
    Move(100, 750);
    const QImage frame = Grab();
    EXPECT_TRUE(m_window->StatusText().isEmpty());
    EXPECT_NEAR(Gray(frame.pixel(ThumbOrigin(0, 0) + QPoint(120, 88))), 128, 6);
}

TEST_F(FullScreenWindow, SinglePhotoMarkerSquareAndBlackBorders) {
    WritePhotos(2, {400, 600, 0x2060A0}); // upright: black borders left and right
    Open(4, 4, 30);
    Move(100, 100);
    DoubleClick(100, 100);
    Key(Qt::Key_Space);
    const QImage frame = Grab();
    const Bitmap* shown = m_list.PhotoAt(0)->screenImage.get();
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->Height(), 768);
    EXPECT_NEAR(shown->Width(), 512, 1);
    EXPECT_TRUE(ColourNear(frame, 20, 25, 0xFFFF0000u)); // the square over the black border
    EXPECT_EQ(frame.pixel(100, 400), 0xFF000000u);
    EXPECT_NEAR(qBlue(frame.pixel(512, 384)), 0xA0, 8);
}

TEST_F(FullScreenWindow, EmptyFolderStaysBlackAndEscCloses) {
    Open(4, 4, 30);
    EXPECT_EQ(m_list.Count(), 0);
    Key(Qt::Key_PageUp);
    Key(Qt::Key_PageDown);
    Move(100, 100);
    Click(100, 100);
    const QImage frame = Grab();
    EXPECT_EQ(frame.pixel(100, 100), 0xFF000000u);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(m_window->HasWindow());
    EXPECT_FALSE(m_window->isVisible());
}

TEST_F(FullScreenWindow, MarksAndMarkerDoNotSurviveClosing) {
    WritePhotos(3);
    Open(4, 4, 30);
    Key(Qt::Key_G);
    Move(10, 10);
    Click(10, 10);
    Key(Qt::Key_PageDown);
    Key(Qt::Key_Escape);
    EXPECT_EQ(m_list.Count(), 0);
    Open(4, 4, 30);
    EXPECT_EQ(m_window->CurrentMarker(), 1);
    EXPECT_EQ(m_window->PageStart(), 0);
    EXPECT_EQ(m_list.PhotoAt(0)->marker, 0);
}

TEST_F(FullScreenWindow, UndecodableFilesShowBlackTilesThatStillTakeMarks) {
    ASSERT_TRUE(WriteFile(m_folder + "/broken.jpg", Bytes{0xFF, 0xD8, 0xFF, 0xE1, 0x00}));
    Open(4, 4, 30);
    ASSERT_EQ(m_list.Count(), 1);
    Move(100, 100);
    Click(100, 100);
    EXPECT_EQ(m_list.PhotoAt(0)->marker, 1);
    const QImage frame = Grab();
    EXPECT_TRUE(ColourNear(frame, 2, 85, 0xFFFF0000u));
    // Single view of it: only the marker square.
    DoubleClick(100, 100);
    const QImage single = Grab();
    EXPECT_TRUE(ColourNear(single, 25, 20, 0xFFFF0000u));
    EXPECT_EQ(single.pixel(512, 384), 0xFF000000u);
}

} // namespace
} // namespace tivox::test
