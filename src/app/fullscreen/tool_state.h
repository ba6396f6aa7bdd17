#pragma once
// The tools of the full-screen window and the state machine between them:
// select (marking and browsing), drawing a crop rectangle at a print size or
// free, the placed rectangle, and red-eye clicks. It keeps the tool, the one
// before it, the crop ratio and the crop rectangle; the window turns its
// answers into cursors and repaints. UI thread only.

#include <cstdint>
#include <functional>

#include "platform/geometry.h"

namespace tivox {

enum ToolMode : std::int32_t {
    ModeSelect = 0,
    ModeCrop = 1, // the group of the drawing tools; nothing selects it
    ModeCrop7x10 = 2,
    ModeCrop9x13 = 3,
    ModeCrop10x15 = 4,
    ModeCrop13x18 = 5,
    ModeCrop18x24 = 6,
    ModeCropFree = 7,
    ModeCropPlaced = 8,
    ModeRedEye = 9,
};

// The drawing tools 2 to 7 fold into 1; every other value stays itself.
std::int32_t GetModeGroup(std::int32_t mode);
// Height over width of a landscape print for the drawing tools 2 to 6, 0 for
// the free rectangle and every other value.
float CropAspectOf(std::int32_t mode);

enum class ToolCursor { Unchanged, Select, Crop, Move, RedEye };

// What Esc or a right click asks of the window after the tool changed.
enum class ToolExit {
    LeftDrawing,   // back to select: full repaint with erase
    BackToDrawing, // placed rectangle dropped: no repaint until the next press
    LeftRedEye,    // back to select, nothing to repaint
    CloseWindow,   // Esc in select: leave full-screen editing
    ShowToolWindow // right click in select (or after red eye): show the tool window
};

class CToolState {
public:
    // Asked only while entering a drawing tool: whether the photo in question
    // is upright, so that its print ratio is turned. Give false when there is
    // no photo.
    using PortraitQuery = std::function<bool()>;

    // Changes the tool and says which cursor to show. Entering a drawing tool
    // clears the rectangle and sets the ratio, turned for an upright photo.
    ToolCursor SetMode(std::int32_t mode, const PortraitQuery& isPortrait);

    // Esc and the context menu, by the tool in use; the caller sets the cursor
    // from `cursor`.
    ToolExit OnEscape(const PortraitQuery& isPortrait, ToolCursor& cursor) {
        return LeaveTool(isPortrait, cursor, ToolExit::CloseWindow);
    }
    ToolExit OnContextMenu(const PortraitQuery& isPortrait, ToolCursor& cursor) {
        return LeaveTool(isPortrait, cursor, ToolExit::ShowToolWindow);
    }

    // Left button down in a drawing tool: the anchor, and an empty rectangle.
    void BeginCrop(Point point) {
        m_cropAnchor = point;
        m_cropRect = {point.x, point.y, 0, 0};
    }
    void SetCropRect(const Rect& rect) { m_cropRect = rect; }

    // Back to select with nothing drawn: the state of each opening.
    void Reset();

    std::int32_t Mode() const { return m_mode; }
    std::int32_t Group() const { return GetModeGroup(m_mode); }
    std::int32_t PreviousMode() const { return m_previousMode; }
    float CropAspect() const { return m_cropAspect; }
    Point CropAnchor() const { return m_cropAnchor; }
    const Rect& CropRect() const { return m_cropRect; }

private:
    // Steps out of the tool in use; `inSelect` is the answer in select.
    ToolExit LeaveTool(const PortraitQuery& isPortrait, ToolCursor& cursor, ToolExit inSelect);

    std::int32_t m_mode = ModeSelect;
    std::int32_t m_previousMode = ModeSelect;
    float m_cropAspect = 0.0f;
    Point m_cropAnchor;
    Rect m_cropRect;
};

} // namespace tivox
