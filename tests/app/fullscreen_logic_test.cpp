#include <bit>
#include <cstdint>

#include <gtest/gtest.h>

#include "app/crop_rect.h"
#include "app/fullscreen_hover.h"
#include "app/fullscreen_paging.h"
#include "app/tool_state.h"

namespace tivox {
namespace {

TEST(FullScreenPaging, PageWraps) {
    struct Case {
        int count;
        int perPage;
        int from;
        int next;
        int previous;
    } cases[] = {
        {10, 4, 0, 4, 8},  // previous from the first page: start of the last
        {12, 4, 0, 4, 8},  // exactly full last page: 12 / 4 * 4 = 12 = count, less 4
        {10, 4, 8, 0, 4},  // next from a half page wraps to 0
        {12, 4, 8, 0, 4},  // next from a full last page wraps to 0
        {16, 16, 0, 0, 0}, // one full page stays
        {1, 16, 0, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.count << " photos, " << c.perPage << " per page, from " << c.from);
        EXPECT_EQ(NextPageStart(c.from, c.perPage, c.count), c.next);
        EXPECT_EQ(PreviousPageStart(c.from, c.perPage, c.count), c.previous);
    }
    // An empty folder: stepping forward and back always comes back to 0
    // with nothing on any page.
    EXPECT_EQ(NextPageStart(PreviousPageStart(0, 16, 0), 16, 0), 0);
}

TEST(FullScreenPaging, PhotoWraps) {
    EXPECT_EQ(NextPhotoIndex(4, 5), 0);
    EXPECT_EQ(NextPhotoIndex(3, 5), 4);
    EXPECT_EQ(PreviousPhotoIndex(0, 5), 4);
    EXPECT_EQ(PreviousPhotoIndex(4, 5), 3);
    // Past the end (a double click on an empty tile): the next step wraps to 0.
    EXPECT_EQ(NextPhotoIndex(9, 5), 0);
    EXPECT_EQ(PageStartOf(13, 4), 12);
    EXPECT_EQ(PageStartOf(3, 4), 0);
}

TEST(FullScreenPaging, MarkerToggle) {
    EXPECT_EQ(ToggledMarker(0, 1), 1);
    EXPECT_EQ(ToggledMarker(1, 1), 0);
    EXPECT_EQ(ToggledMarker(2, 1), 1); // green under red turns red, not unmarked
    // The double click toggles twice: a photo of another colour ends unmarked.
    EXPECT_EQ(ToggledMarker(ToggledMarker(3, 2), 2), 0);
}

TEST(ToolState, ModeGroupsAndRatios) {
    const struct {
        int mode;
        int group;
        std::uint32_t aspectBits;
    } rows[] = {
        {ModeSelect, 0, 0},
        {ModeCrop, 1, 0},
        {ModeCrop7x10, 1, 0x3F400000},
        {ModeCrop9x13, 1, 0x3F333333},
        {ModeCrop10x15, 1, 0x3F2AAAAB},
        {ModeCrop13x18, 1, 0x3F36DB6E},
        {ModeCrop18x24, 1, 0x3F3CA1AF},
        {ModeCropFree, 1, 0},
        {ModeCropPlaced, 8, 0},
        {ModeRedEye, 9, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(GetModeGroup(row.mode), row.group) << row.mode;
        EXPECT_EQ(std::bit_cast<std::uint32_t>(CropAspectOf(row.mode)), row.aspectBits) << row.mode;
    }
}

TEST(ToolState, SetModeCursorsAndPortraitTurn) {
    CToolState tools;
    int asked = 0;
    auto landscape = [&] {
        ++asked;
        return false;
    };
    auto portrait = [&] {
        ++asked;
        return true;
    };
    EXPECT_EQ(tools.SetMode(ModeCrop9x13, landscape), ToolCursor::Crop);
    EXPECT_EQ(tools.CropAspect(), 0.7f);
    EXPECT_EQ(asked, 1);
    tools.SetCropRect({1, 2, 3, 4});
    EXPECT_EQ(tools.SetMode(ModeCropPlaced, portrait), ToolCursor::Move);
    EXPECT_EQ(asked, 1); // only entering a drawing tool asks
    EXPECT_EQ(tools.PreviousMode(), ModeCrop9x13);
    EXPECT_EQ(tools.CropRect(), (Rect{1, 2, 3, 4}));

    // Upright photo: the ratio is turned; a free rectangle stays free.
    EXPECT_EQ(tools.SetMode(ModeCrop9x13, portrait), ToolCursor::Crop);
    EXPECT_EQ(tools.CropAspect(), 1.0f / 0.7f);
    EXPECT_EQ(tools.CropRect(), (Rect{}));
    EXPECT_EQ(tools.SetMode(ModeCropFree, portrait), ToolCursor::Crop);
    EXPECT_EQ(tools.CropAspect(), 0.0f);
    EXPECT_EQ(tools.SetMode(ModeRedEye, portrait), ToolCursor::RedEye);
    EXPECT_EQ(tools.SetMode(ModeSelect, portrait), ToolCursor::Select);
    // Red eye and select leave the ratio alone.
    EXPECT_EQ(tools.CropAspect(), 0.0f);
}

TEST(ToolState, EscapeAndRightClickByTool) {
    CToolState tools;
    ToolCursor cursor;
    auto none = CToolState::PortraitQuery{};

    EXPECT_EQ(tools.OnEscape(none, cursor), ToolExit::CloseWindow);
    EXPECT_EQ(tools.OnContextMenu(none, cursor), ToolExit::ShowToolWindow);
    EXPECT_EQ(cursor, ToolCursor::Unchanged);

    // Drawing -> Placed -> Esc: back to the drawing tool, ratio set anew.
    tools.SetMode(ModeCrop10x15, none);
    tools.BeginCrop({10, 10});
    tools.SetCropRect({10, 10, 90, 60});
    tools.SetMode(ModeCropPlaced, none);
    EXPECT_EQ(tools.OnEscape(none, cursor), ToolExit::BackToDrawing);
    EXPECT_EQ(tools.Mode(), ModeCrop10x15);
    EXPECT_EQ(cursor, ToolCursor::Crop);
    EXPECT_EQ(tools.CropRect(), (Rect{}));
    // A second Esc leaves the tool.
    EXPECT_EQ(tools.OnEscape(none, cursor), ToolExit::LeftDrawing);
    EXPECT_EQ(tools.Mode(), ModeSelect);
    EXPECT_EQ(cursor, ToolCursor::Select);

    // Right click: the same from the crop tools; from red eye it shows the window.
    tools.SetMode(ModeCropFree, none);
    tools.SetMode(ModeCropPlaced, none);
    EXPECT_EQ(tools.OnContextMenu(none, cursor), ToolExit::BackToDrawing);
    EXPECT_EQ(tools.OnContextMenu(none, cursor), ToolExit::LeftDrawing);
    tools.SetMode(ModeRedEye, none);
    EXPECT_EQ(tools.OnContextMenu(none, cursor), ToolExit::ShowToolWindow);
    EXPECT_EQ(tools.Mode(), ModeSelect);
    EXPECT_EQ(cursor, ToolCursor::Select);
    tools.SetMode(ModeRedEye, none);
    EXPECT_EQ(tools.OnEscape(none, cursor), ToolExit::LeftRedEye);
    EXPECT_EQ(tools.Mode(), ModeSelect);
}

const Size kScreen{1024, 768};

TEST(CropRect, RatioRoundingOfTheFloat) {
    // 0.7f lies just under 0.7: a width of 100 gives 69.
    EXPECT_EQ(UpdatedCropRect({100, 100}, {200, 300}, 0.7f, kScreen, kScreen),
              (Rect{100, 100, 100, 69}));
    // Upward from the anchor the height still follows the width.
    EXPECT_EQ(UpdatedCropRect({100, 300}, {200, 250}, 0.7f, kScreen, kScreen),
              (Rect{100, 231, 100, 69}));
    // (2/3)f lies just over 2/3: a height clamped to 100 gives a width of 149.
    EXPECT_EQ(UpdatedCropRect({300, 100}, {600, 0}, 2.0f / 3.0f, kScreen, kScreen),
              (Rect{300, 0, 149, 100}));
}

TEST(CropRect, FreeRectangleFollowsTheMouseInEveryDirection) {
    EXPECT_EQ(UpdatedCropRect({100, 100}, {300, 250}, 0.0f, kScreen, kScreen),
              (Rect{100, 100, 200, 150}));
    EXPECT_EQ(UpdatedCropRect({300, 250}, {100, 100}, 0.0f, kScreen, kScreen),
              (Rect{100, 100, 200, 150}));
    // A click without a drag gives an empty rectangle.
    EXPECT_EQ(UpdatedCropRect({300, 250}, {300, 250}, 0.0f, kScreen, kScreen),
              (Rect{300, 250, 0, 0}));
}

TEST(CropRect, ClampsToThePictureInOrder) {
    // A 768 x 768 picture in the middle of the screen: left border 128.
    const Size picture{768, 768};
    // Free: only the side that crosses is cut.
    EXPECT_EQ(UpdatedCropRect({200, 100}, {50, 300}, 0.0f, kScreen, picture),
              (Rect{128, 100, 72, 200}));
    EXPECT_EQ(UpdatedCropRect({800, 100}, {1000, 300}, 0.0f, kScreen, picture),
              (Rect{800, 100, 96, 200}));
    // Reaching the bottom edge exactly still derives the width again: 69 / 0.7f.
    EXPECT_EQ(UpdatedCropRect({200, 699}, {300, 767}, 0.7f, kScreen, picture),
              (Rect{200, 699, 98, 69}));
    // With a ratio: the width cut at the right edge gives a new height.
    EXPECT_EQ(UpdatedCropRect({700, 100}, {1000, 300}, 0.5f, kScreen, picture),
              (Rect{700, 100, 196, 98}));
    // Bottom first, then the width that follows is cut on the right.
    EXPECT_EQ(UpdatedCropRect({800, 600}, {1000, 700}, 1.0f, kScreen, picture),
              (Rect{800, 600, 96, 96}));
    // A rectangle begun on the black border and drawn away from the picture
    // comes out with a negative width.
    const Rect off = UpdatedCropRect({50, 100}, {10, 200}, 0.0f, kScreen, picture);
    EXPECT_LT(off.width, 0);
    EXPECT_FALSE(RectContains(off, {20, 150}));
}

TEST(CropRect, DragStaysOnThePicture) {
    const Size picture{768, 768}; // x from 128 to 896
    const Rect r{200, 100, 100, 100};
    EXPECT_EQ(DraggedCropRect(r, {10, -5}, kScreen, picture), (Rect{210, 95, 100, 100}));
    EXPECT_EQ(DraggedCropRect(r, {-500, -500}, kScreen, picture), (Rect{128, 0, 100, 100}));
    EXPECT_EQ(DraggedCropRect(r, {900, 900}, kScreen, picture), (Rect{796, 668, 100, 100}));
    // Touching the edge exactly is allowed.
    EXPECT_EQ(DraggedCropRect(r, {596, 0}, kScreen, picture), (Rect{796, 100, 100, 100}));
}

TEST(CropRect, Containment) {
    const Rect r{10, 20, 5, 5};
    EXPECT_TRUE(RectContains(r, {10, 20}));
    EXPECT_TRUE(RectContains(r, {14, 24}));
    EXPECT_FALSE(RectContains(r, {15, 24}));
    EXPECT_FALSE(RectContains(r, {14, 25}));
    EXPECT_FALSE(RectContains(Rect{10, 20, 0, 0}, {10, 20}));
}

TEST(HoverTracker, RepaintsOnlyWhenTheCellChanges) {
    CTileLayout layout;
    layout.SetStatusHeight(30);
    layout.Recalculate(); // 4 x 4 tiles of 256 x 184
    CHoverTracker hover;
    HoverChange first = hover.Move({10, 10}, layout);
    EXPECT_TRUE(first.changed);
    EXPECT_FALSE(first.repaintOld); // no cell entered before
    EXPECT_EQ(first.newCell, (RectEdges{0, 0, 256, 184}));
    EXPECT_TRUE(first.repaintStatus);

    EXPECT_FALSE(hover.Move({255, 183}, layout).changed);

    HoverChange second = hover.Move({256, 183}, layout);
    EXPECT_TRUE(second.changed);
    EXPECT_TRUE(second.repaintOld);
    EXPECT_EQ(second.oldCell, (RectEdges{0, 0, 256, 184}));
    EXPECT_EQ(second.newCell, (RectEdges{256, 0, 512, 184}));
    EXPECT_EQ(hover.HoverCell(), (Point{256, 0}));

    // Without a status bar tall enough for the text, it is not repainted.
    CTileLayout bare;
    bare.Recalculate();
    CHoverTracker other;
    EXPECT_FALSE(other.Move({10, 10}, bare).repaintStatus);
}

} // namespace
} // namespace tivox
