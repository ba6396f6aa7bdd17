#include <bit>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "app/fullscreen/crop_rect.h"
#include "app/fullscreen/fullscreen_hover.h"
#include "app/fullscreen/fullscreen_paging.h"
#include "app/fullscreen/fullscreen_status.h"
#include "app/fullscreen/tool_resize.h"
#include "app/fullscreen/tool_scope.h"
#include "app/fullscreen/tool_state.h"

namespace tivox {
namespace {

TEST(FullScreenPaging, PagesPhotosAndMarkersWrap) {
    const struct {
        int count, perPage, from, next, previous;
    } cases[] = {
        // Previous from the first page: the start of the last, also when full.
        {10, 4, 0, 4, 8}, {12, 4, 0, 4, 8},  {10, 4, 8, 0, 4},
        {12, 4, 8, 0, 4}, {16, 16, 0, 0, 0}, {1, 16, 0, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.count << "/" << c.perPage << " from " << c.from);
        EXPECT_EQ(NextPageStart(c.from, c.perPage, c.count), c.next);
        EXPECT_EQ(PreviousPageStart(c.from, c.perPage, c.count), c.previous);
    }
    EXPECT_EQ(NextPageStart(PreviousPageStart(0, 16, 0), 16, 0), 0); // empty folder
    EXPECT_EQ(NextPhotoIndex(4, 5), 0);
    EXPECT_EQ(PreviousPhotoIndex(0, 5), 4);
    EXPECT_EQ(NextPhotoIndex(9, 5), 0); // from an empty tile past the end
    EXPECT_EQ(PageStartOf(13, 4), 12);
    EXPECT_EQ(ToggledMarker(1, 1), 0);
    EXPECT_EQ(ToggledMarker(2, 1), 1); // green under red turns red, not unmarked
    // A double click toggles twice: a photo of another colour ends unmarked.
    EXPECT_EQ(ToggledMarker(ToggledMarker(3, 2), 2), 0);
}

TEST(ToolState, RatiosAndLeavingTheTools) {
    // An upright photo turns the ratio on entering a drawing tool, and only then.
    CToolState tools;
    int asked = 0;
    auto upright = [&asked](bool answer) -> CToolState::PortraitQuery {
        return [&asked, answer] { return ++asked, answer; };
    };
    EXPECT_EQ(tools.SetMode(ModeCrop9x13, upright(false)), ToolCursor::Crop);
    EXPECT_EQ(tools.SetMode(ModeCropPlaced, upright(true)), ToolCursor::Move);
    EXPECT_EQ(tools.CropAspect(), 0.7f);
    EXPECT_EQ(asked, 1);
    tools.SetMode(ModeCrop9x13, upright(true));
    EXPECT_EQ(tools.CropAspect(), 1.0f / 0.7f);
    tools.SetMode(ModeCropFree, upright(true));
    EXPECT_EQ(tools.CropAspect(), 0.0f);

    // Esc and a right click step back alike: placed, drawing (the rectangle
    // dropped), select; they part in select and in red eye.
    const CToolState::PortraitQuery none;
    for (const bool esc : {true, false}) {
        SCOPED_TRACE(esc ? "Esc" : "right click");
        ToolCursor cursor;
        auto leave = [&] {
            return esc ? tools.OnEscape(none, cursor) : tools.OnContextMenu(none, cursor);
        };
        tools.SetMode(ModeCrop10x15, none);
        tools.SetCropRect({10, 10, 90, 60});
        tools.SetMode(ModeCropPlaced, none);
        EXPECT_EQ(leave(), ToolExit::BackToDrawing);
        EXPECT_EQ(tools.Mode(), ModeCrop10x15);
        EXPECT_EQ(cursor, ToolCursor::Crop);
        EXPECT_EQ(tools.CropRect(), (Rect{}));
        EXPECT_EQ(leave(), ToolExit::LeftDrawing);
        EXPECT_EQ(cursor, ToolCursor::Select);
        EXPECT_EQ(leave(), esc ? ToolExit::CloseWindow : ToolExit::ShowToolWindow);
        EXPECT_EQ(cursor, ToolCursor::Unchanged);
        tools.SetMode(ModeRedEye, none);
        EXPECT_EQ(leave(), esc ? ToolExit::LeftRedEye : ToolExit::ShowToolWindow);
        EXPECT_EQ(tools.Mode(), ModeSelect);
    }
}

TEST(CropRect, DrawnRectangles) {
    const Size screen{1024, 768}, full{1024, 768}, square{768, 768}; // square: x 128 to 896
    const struct {
        const char* what;
        Point anchor, mouse;
        float aspect;
        Size picture;
        Rect want;
    } cases[] = {
        {"0.7f < 0.7", {100, 100}, {200, 300}, 0.7f, full, {100, 100, 100, 69}},
        {"upward", {100, 300}, {200, 250}, 0.7f, full, {100, 231, 100, 69}},
        {"level counts as upward", {100, 300}, {200, 300}, 0.7f, full, {100, 231, 100, 69}},
        {"2/3f > 2/3, clamped", {300, 100}, {600, 0}, 2.0f / 3, full, {300, 0, 149, 100}},
        {"free", {100, 100}, {300, 250}, 0.0f, full, {100, 100, 200, 150}},
        {"free back", {300, 250}, {100, 100}, 0.0f, full, {100, 100, 200, 150}},
        {"click only", {300, 250}, {300, 250}, 0.0f, full, {300, 250, 0, 0}},
        {"left edge", {200, 100}, {50, 300}, 0.0f, square, {128, 100, 72, 200}},
        {"right edge", {800, 100}, {1000, 300}, 0.0f, square, {800, 100, 96, 200}},
        {"69 / 0.7f", {200, 699}, {300, 767}, 0.7f, square, {200, 699, 98, 69}}, // bottom, exactly
        {"width cut", {700, 100}, {1000, 300}, 0.5f, square, {700, 100, 196, 98}},
        {"bottom, right", {800, 600}, {1000, 700}, 1.0f, square, {800, 600, 96, 96}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(UpdatedCropRect(c.anchor, c.mouse, c.aspect, screen, c.picture), c.want)
            << c.what;
    // Begun on the black border and drawn away from the picture: negative
    // width, containing nothing.
    const Rect off = UpdatedCropRect({50, 100}, {10, 200}, 0.0f, screen, square);
    EXPECT_LT(off.width, 0);
    EXPECT_FALSE(RectContains(off, {20, 150}));
    EXPECT_TRUE(RectContains({10, 20, 5, 5}, {14, 24}));
    EXPECT_FALSE(RectContains({10, 20, 5, 5}, {15, 24}));
    EXPECT_FALSE(RectContains({10, 20, 5, 5}, {14, 25}));
    EXPECT_FALSE(RectContains({10, 20, 0, 0}, {10, 20}));
}

TEST(CropRect, DragStaysOnThePicture) {
    const Size screen{1024, 768}, picture{768, 768};
    const Rect r{200, 100, 100, 100};
    EXPECT_EQ(DraggedCropRect(r, {10, -5}, screen, picture), (Rect{210, 95, 100, 100}));
    EXPECT_EQ(DraggedCropRect(r, {-500, -500}, screen, picture), (Rect{128, 0, 100, 100}));
    EXPECT_EQ(DraggedCropRect(r, {900, 900}, screen, picture), (Rect{796, 668, 100, 100}));
    EXPECT_EQ(DraggedCropRect(r, {596, 0}, screen, picture), (Rect{796, 100, 100, 100}));
}

TEST(HoverTracker, StatusBarRepaintedOnlyWhenTallEnoughForTheText) {
    // The window test follows the repaints of a bar that is tall enough.
    CTileLayout bare;
    bare.Recalculate();
    CHoverTracker hover;
    const HoverChange first = hover.Move({10, 10}, bare);
    EXPECT_TRUE(first.changed);
    EXPECT_FALSE(first.repaintOld); // no cell entered before
    EXPECT_FALSE(first.repaintStatus);
}

TEST(ProcessBoxes, ExclusionRules) {
    ProcessScope s; // "Current" checked
    s.green = true; // a colour replaces "Current"
    EXPECT_TRUE(ClickProcessColor(s, 2));
    EXPECT_FALSE(s.current);
    s.blue = true; // colours add up: nothing to write back
    EXPECT_FALSE(ClickProcessColor(s, 3));
    EXPECT_TRUE(s.green && s.blue);
    s.green = false; // unchecking a colour touches nothing else
    EXPECT_FALSE(ClickProcessColor(s, 2));
    EXPECT_TRUE(s.blue);
    s.all = true; // "All" clears everything else
    EXPECT_TRUE(ClickProcessAll(s));
    EXPECT_FALSE(s.blue || s.current);
    s.all = false; // unchecked, nothing is chosen at all
    EXPECT_FALSE(ClickProcessAll(s));
    for (int marker = 0; marker <= 3; ++marker)
        EXPECT_FALSE(s.Chooses(marker));
    s.current = true;
    s.red = true; // as read; "Current" wins
    EXPECT_TRUE(ClickProcessCurrent(s));
    EXPECT_FALSE(s.red);
}

TEST(KeepAspect, FromThePictureOnTheScreen) {
    const Size shown{1024, 768};
    EXPECT_EQ(HeightFromWidth(400, shown), 300);
    EXPECT_EQ(HeightFromWidth(5, shown), 4); // 3.75 rounds up
    EXPECT_EQ(WidthFromHeight(3, shown), 4);
    EXPECT_EQ(HeightFromWidth(300, Size{576, 768}), 400);
}

TEST(StatusText, LongPathsLoseTheirFront) {
    EXPECT_EQ(StatusTextOf("/photos/a.jpg"), "/photos/a.jpg");
    const std::string fits(kStatusTextChars, 'x'); // exactly as long as the bar allows
    EXPECT_EQ(StatusTextOf(fits), fits);
    const std::string name = "/IMG_0001.jpg";
    const std::string cut = StatusTextOf(std::string(400, 'x') + name);
    EXPECT_EQ(cut.size(), kStatusTextChars);
    EXPECT_EQ(cut.substr(0, 3), "...");
    EXPECT_EQ(cut.substr(cut.size() - name.size()), name);
    // Two-byte characters count as one and are never split.
    std::string umlauts;
    for (int i = 0; i < 20; ++i)
        umlauts += "\xC3\xA4"; // ä
    EXPECT_EQ(StatusTextOf(umlauts, 10), "..." + umlauts.substr(0, 14));
    EXPECT_EQ(StatusTextOf("abcdef", 2), "..");
}

} // namespace
} // namespace tivox
