#include <gtest/gtest.h>

#include "app/tile_layout.h"

namespace tivox {
namespace {

CTileLayout Layout(Size screen, int status, Size tiles) {
    CTileLayout layout;
    layout.SetScreenSize(screen);
    layout.SetStatusHeight(status);
    layout.SetTileCount(tiles);
    layout.Recalculate();
    return layout;
}

struct WorkedRow {
    Size screen;
    int status;
    Size tiles;
    Size tileSize;
    Point gridOrigin;
    Size thumbSize;
    Rect statusRect;
};

TEST(TileLayout, WorkedValues) {
    const WorkedRow rows[] = {
        {{1024, 768}, 0, {4, 4}, {256, 192}, {0, 0}, {248, 184}, {0, 768, 1024, 0}},
        {{1024, 768}, 30, {4, 4}, {256, 184}, {0, 1}, {248, 176}, {0, 738, 1024, 30}},
        {{1024, 768}, 30, {7, 3}, {146, 246}, {1, 0}, {138, 238}, {0, 738, 1024, 30}},
        {{1280, 1024}, 30, {3, 5}, {426, 198}, {1, 2}, {418, 190}, {0, 994, 1280, 30}},
    };
    for (const WorkedRow& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.screen.width << "x" << row.screen.height << " status " << row.status
                     << " tiles " << row.tiles.width << "x" << row.tiles.height);
        const CTileLayout layout = Layout(row.screen, row.status, row.tiles);
        EXPECT_EQ(layout.GetTileSize(), row.tileSize);
        EXPECT_EQ(layout.GetGridOrigin(), row.gridOrigin);
        EXPECT_EQ(layout.GetThumbSize(), row.thumbSize);
        EXPECT_EQ(layout.GetStatusRect(), row.statusRect);
        EXPECT_EQ(layout.GetStatusBounds(),
                  (RectEdges{0, row.statusRect.y, row.screen.width - 1, row.screen.height - 1}));
        EXPECT_EQ(layout.GetTilesPerPage(), row.tiles.width * row.tiles.height);
    }
}

TEST(TileLayout, DefaultsBeforeConfiguration) {
    CTileLayout layout;
    EXPECT_EQ(layout.GetScreenSize(), (Size{1024, 768}));
    EXPECT_EQ(layout.GetTileCount(), (Size{4, 4}));
    EXPECT_EQ(layout.GetStatusHeight(), 0);
    // Setters alone derive nothing.
    layout.SetTileCount({2, 2});
    EXPECT_EQ(layout.GetTileSize(), (Size{0, 0}));
    layout.Recalculate();
    EXPECT_EQ(layout.GetTileSize(), (Size{512, 384}));
}

TEST(TileLayout, WithoutStatusBarTheBarIsEmptyAndBelowTheScreen) {
    const CTileLayout layout = Layout({1024, 768}, 0, {4, 4});
    const RectEdges bounds = layout.GetStatusBounds();
    EXPECT_EQ(bounds.top, 768);
    EXPECT_EQ(bounds.bottom, 767); // top one row below bottom: intersects nothing
}

TEST(TileLayout, IndexAtIsNotClamped) {
    // 1024 x 768, status 30, 7 x 3: tiles 146 x 246 from (1, 0).
    const CTileLayout layout = Layout({1024, 768}, 30, {7, 3});
    struct Case {
        Point point;
        int index;
    } cases[] = {
        {{1, 0}, 0},      {{0, 0}, 0}, // left leftover strip truncates toward column 0
        {{-1, -1}, 0},                 // before the first mouse move
        {{147, 0}, 1},                 // first pixel of the second column
        {{146, 0}, 0},                 // last pixel of the first column
        {{500, 250}, 10},              // row 1, column 3
        {{500, 745}, 24},              // status bar: same column on the next page
        {{1023, 0}, 7},                // right leftover strip: first tile of the next row
    };
    for (const Case& c : cases) {
        EXPECT_EQ(layout.GetIndexAt(c.point), c.index) << c.point.x << "," << c.point.y;
    }
}

TEST(TileLayout, TileAndThumbOrigins) {
    const CTileLayout layout = Layout({1280, 1024}, 30, {3, 5});
    EXPECT_EQ(layout.GetTileOrigin(0, 0), (Point{1, 2}));
    EXPECT_EQ(layout.GetTileOrigin(2, 4), (Point{853, 794}));
    EXPECT_EQ(layout.GetThumbOrigin(2, 4), (Point{857, 798}));
    EXPECT_EQ(layout.GetTileRect(0), (Rect{1, 2, 426, 198}));
    EXPECT_EQ(layout.GetTileRect(5), (Rect{853, 200, 426, 198}));
    EXPECT_EQ(layout.GetTileRect(14), (Rect{853, 794, 426, 198}));
    // Tile origins and GetTileRect agree for every index of the page.
    for (int i = 0; i < layout.GetTilesPerPage(); ++i) {
        const Point o = layout.GetTileOrigin(i % 3, i / 3);
        EXPECT_EQ(layout.GetTileRect(i), (Rect{o.x, o.y, 426, 198}));
    }
}

TEST(TileLayout, CenterOffsetKeepsTheSparePixelRightAndBelow) {
    const CTileLayout layout = Layout({1024, 768}, 0, {4, 4}); // thumb 248 x 184
    EXPECT_EQ(layout.GetCenterOffset(248, 184), (Point{0, 0}));
    EXPECT_EQ(layout.GetCenterOffset(247, 183), (Point{0, 0}));
    EXPECT_EQ(layout.GetCenterOffset(246, 138), (Point{1, 23}));
}

TEST(TileLayout, CellsIgnoreTheGridOrigin) {
    // Grid origin (0, 1): near a border the cell already names the next row
    // while the index still names the old tile.
    const CTileLayout layout = Layout({1024, 768}, 30, {4, 4}); // tiles 256 x 184
    const Point p{10, 184};
    EXPECT_EQ(layout.GetCellRect(p), (RectEdges{0, 184, 256, 368}));
    EXPECT_EQ(layout.GetIndexAt(p), 0);
    EXPECT_EQ(layout.GetTileRectAt(p), (Rect{0, 185, 256, 184}));
    // Well inside a tile all three agree.
    const Point q{300, 250};
    EXPECT_EQ(layout.GetIndexAt(q), 5);
    EXPECT_EQ(layout.GetTileRectAt(q), layout.GetTileRect(5));
    // Painting finds the tile of a thumbnail origin.
    EXPECT_EQ(layout.GetTileRectAt(layout.GetThumbOrigin(3, 2)), layout.GetTileRect(11));
}

} // namespace
} // namespace tivox
