#pragma once
// Which cells a mouse move in tile mode repaints: the cell left and the cell
// entered, plus the status bar when there is one tall enough for the path.
// Cells come from CTileLayout::GetCellRect, so a move inside one cell repaints
// nothing. UI thread only.

#include "app/fullscreen/tile_layout.h"
#include "platform/geometry.h"

namespace tivox {

struct HoverChange {
    bool changed = false;    // the mouse entered another cell
    bool repaintOld = false; // oldCell is a cell that was entered before
    RectEdges oldCell;
    RectEdges newCell;
    bool repaintStatus = false; // the status bar shows the new path
};

class CHoverTracker {
public:
    // The mouse is at `point`; says what to repaint.
    HoverChange Move(Point point, const CTileLayout& layout);
    // No cell entered yet: the state of each opening.
    void Reset() { m_hoverCell = {-1, -1}; }
    Point HoverCell() const { return m_hoverCell; }

private:
    Point m_hoverCell{-1, -1};
};

} // namespace tivox
