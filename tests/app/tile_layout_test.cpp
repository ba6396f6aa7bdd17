#include <gtest/gtest.h>

#include "app/fullscreen/tile_layout.h"

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

TEST(TileLayout, WorkedValues) {
    const struct {
        Size screen;
        int status;
        Size tiles, tileSize;
        Point gridOrigin;
        Size thumbSize;
        Rect statusRect;
    } rows[] = {
        // Without a status bar the bar lies below the screen: top > bottom.
        {{1024, 768}, 0, {4, 4}, {256, 192}, {0, 0}, {248, 184}, {0, 768, 1024, 0}},
        {{1024, 768}, 30, {4, 4}, {256, 184}, {0, 1}, {248, 176}, {0, 738, 1024, 30}},
        {{1024, 768}, 30, {7, 3}, {146, 246}, {1, 0}, {138, 238}, {0, 738, 1024, 30}},
        {{1280, 1024}, 30, {3, 5}, {426, 198}, {1, 2}, {418, 190}, {0, 994, 1280, 30}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.screen.width << " status " << row.status << " tiles "
                                        << row.tiles.width << "x" << row.tiles.height);
        const CTileLayout layout = Layout(row.screen, row.status, row.tiles);
        EXPECT_EQ(layout.GetTileSize(), row.tileSize);
        EXPECT_EQ(layout.GetGridOrigin(), row.gridOrigin);
        EXPECT_EQ(layout.GetThumbSize(), row.thumbSize);
        EXPECT_EQ(layout.GetStatusRect(), row.statusRect);
        EXPECT_EQ(layout.GetStatusBounds(),
                  (RectEdges{0, row.statusRect.y, row.screen.width - 1, row.screen.height - 1}));
    }
}

TEST(TileLayout, IndexAtIsNotClamped) {
    // Tiles of 146 x 246 from (1, 0).
    const CTileLayout layout = Layout({1024, 768}, 30, {7, 3});
    const struct {
        Point point;
        int index;
    } cases[] = {
        // The left leftover strip and the point before the first mouse move
        // count as column 0; the right strip is the next row, the status bar
        // the first row of the next page.
        {{1, 0}, 0},   {{0, 0}, 0},      {{-1, -1}, 0},    {{146, 0}, 0},
        {{147, 0}, 1}, {{500, 250}, 10}, {{500, 745}, 24}, {{1023, 0}, 7},
    };
    for (const auto& c : cases)
        EXPECT_EQ(layout.GetIndexAt(c.point), c.index) << c.point.x << "," << c.point.y;
}

TEST(TileLayout, TileThumbAndCentreOrigins) {
    const CTileLayout layout = Layout({1280, 1024}, 30, {3, 5});
    EXPECT_EQ(layout.GetThumbOrigin(2, 4), (Point{857, 798}));
    EXPECT_EQ(layout.GetTileOrigin(1, 2), (Point{427, 398}));
    EXPECT_EQ(layout.GetTileRect(5), (Rect{853, 200, 426, 198}));
    EXPECT_EQ(layout.GetTileRect(14), (Rect{853, 794, 426, 198}));
    // Thumb 248 x 184: the spare pixel goes right and below.
    const CTileLayout plain = Layout({1024, 768}, 0, {4, 4});
    EXPECT_EQ(plain.GetCenterOffset(248, 184), (Point{0, 0}));
    EXPECT_EQ(plain.GetCenterOffset(247, 183), (Point{0, 0}));
    EXPECT_EQ(plain.GetCenterOffset(246, 138), (Point{1, 23}));
}

TEST(TileLayout, CellsIgnoreTheGridOrigin) {
    // Grid origin (0, 1): near a border the cell already names the next row
    // while the index still names the old tile.
    const CTileLayout layout = Layout({1024, 768}, 30, {4, 4});
    const Point p{10, 184};
    EXPECT_EQ(layout.GetCellRect(p), (RectEdges{0, 184, 256, 368}));
    EXPECT_EQ(layout.GetIndexAt(p), 0);
    EXPECT_EQ(layout.GetTileRectAt(p), (Rect{0, 185, 256, 184}));
    EXPECT_EQ(layout.GetTileRectAt({300, 250}), layout.GetTileRect(5));
    EXPECT_EQ(layout.GetTileRectAt(layout.GetThumbOrigin(3, 2)), layout.GetTileRect(11));
}

} // namespace
} // namespace tivox
