#include "app/fullscreen/fullscreen_hover.h"

namespace tivox {
namespace {

// The status bar is tall enough for the path from 30 pixels on.
constexpr std::int32_t kStatusTextHeight = 29;

bool Contains(const RectEdges& r, Point p) {
    return p.x >= r.left && p.x < r.right && p.y >= r.top && p.y < r.bottom;
}

} // namespace

HoverChange CHoverTracker::Move(Point point, const CTileLayout& layout) {
    HoverChange change;
    const RectEdges cell = layout.GetCellRect(point);
    if (Contains(cell, m_hoverCell)) {
        return change;
    }
    change.changed = true;
    if (m_hoverCell.x != -1) {
        change.repaintOld = true;
        change.oldCell = layout.GetCellRect(m_hoverCell);
    }
    m_hoverCell = {cell.left, cell.top};
    change.newCell = cell;
    change.repaintStatus = layout.GetStatusHeight() > kStatusTextHeight;
    return change;
}

} // namespace tivox
