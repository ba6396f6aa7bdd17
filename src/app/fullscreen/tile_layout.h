#pragma once
// The geometry of the full-screen window: from the screen size, the status
// bar height and the number of tiles across and down, the place and size of
// every tile, the box thumbnails are made to and the status bar rectangle.
// Exact 32-bit integer arithmetic, truncating division, no floating point.
// A plain value; it draws nothing and holds no photo. Any thread may read a
// layout that no one changes.

#include <cstdint>

#include "platform/geometry.h"

namespace tivox {

// A rectangle as its four edges, the way invalidation takes it. Cells end on
// the first pixel past them; the status bounds end on its last pixel.
struct RectEdges {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    friend bool operator==(const RectEdges&, const RectEdges&) = default;
};

class CTileLayout {
public:
    // The defaults: a 1024 x 768 screen, no status bar, 4 x 4 tiles. Nothing
    // derived is valid before Recalculate.
    CTileLayout() = default;

    // None of the setters recalculates; call Recalculate after the last one.
    void SetScreenSize(Size size) { m_screenSize = size; }
    void SetStatusHeight(std::int32_t height) { m_statusHeight = height; }
    // Both counts must be at least 1; the callers keep them in 2 to 10.
    void SetTileCount(Size count) { m_tileCount = count; }
    void Recalculate();

    Size GetScreenSize() const { return m_screenSize; }
    std::int32_t GetStatusHeight() const { return m_statusHeight; }
    Point GetGridOrigin() const { return m_gridOrigin; }
    Size GetTileSize() const { return m_tileSize; }
    Size GetTileCount() const { return m_tileCount; }
    Size GetThumbSize() const { return m_thumbSize; }
    Rect GetStatusRect() const { return m_statusRect; }
    RectEdges GetStatusBounds() const { return m_statusBounds; }
    std::int32_t GetTilesPerPage() const { return m_tileCount.width * m_tileCount.height; }

    // Index within the page of the tile under `point`. Not clamped: a point
    // below the grid gives an index on the next page, and truncation toward
    // zero puts the leftover strips left and above into column and row 0.
    std::int32_t GetIndexAt(Point point) const;
    Point GetTileOrigin(std::int32_t column, std::int32_t row) const;
    Point GetThumbOrigin(std::int32_t column, std::int32_t row) const;
    // Offset that centres a picture of this size in the thumbnail area; an odd
    // spare pixel stays right or below.
    Point GetCenterOffset(std::int32_t width, std::int32_t height) const;
    Rect GetTileRect(std::int32_t index) const;

    // The two cell functions of mouse tracking and painting. Both divide the
    // absolute point, without taking the grid origin off first, so near a
    // border they may name the neighbour of what GetIndexAt names.
    RectEdges GetCellRect(Point point) const;
    Rect GetTileRectAt(Point point) const;

private:
    Size m_screenSize{1024, 768};
    std::int32_t m_statusHeight = 0;
    Size m_tileAreaSize;
    Point m_gridOrigin;
    Size m_tileSize;
    Size m_tileCount{4, 4};
    Size m_margin{4, 4};
    Size m_thumbSize;
    Rect m_statusRect;
    RectEdges m_statusBounds;
};

} // namespace tivox
