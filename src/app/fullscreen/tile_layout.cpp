#include "app/fullscreen/tile_layout.h"

namespace tivox {

void CTileLayout::Recalculate() {
    m_tileAreaSize = {m_screenSize.width, m_screenSize.height - m_statusHeight};
    m_tileSize = {m_tileAreaSize.width / m_tileCount.width,
                  m_tileAreaSize.height / m_tileCount.height};
    // The leftover pixels are shared by both sides, the odd one going right or down.
    m_gridOrigin = {(m_tileAreaSize.width - m_tileSize.width * m_tileCount.width) >> 1,
                    (m_tileAreaSize.height - m_tileSize.height * m_tileCount.height) >> 1};
    m_thumbSize = {m_tileSize.width - 2 * m_margin.width, m_tileSize.height - 2 * m_margin.height};
    const std::int32_t statusTop = m_screenSize.height - m_statusHeight;
    m_statusRect = {0, statusTop, m_screenSize.width, m_statusHeight};
    m_statusBounds = {0, statusTop, m_screenSize.width - 1, m_screenSize.height - 1};
}

std::int32_t CTileLayout::GetIndexAt(Point point) const {
    return ((point.y - m_gridOrigin.y) / m_tileSize.height) * m_tileCount.width +
           (point.x - m_gridOrigin.x) / m_tileSize.width;
}

Point CTileLayout::GetTileOrigin(std::int32_t column, std::int32_t row) const {
    return {m_tileSize.width * column + m_gridOrigin.x, m_tileSize.height * row + m_gridOrigin.y};
}

Point CTileLayout::GetThumbOrigin(std::int32_t column, std::int32_t row) const {
    const Point origin = GetTileOrigin(column, row);
    return {origin.x + m_margin.width, origin.y + m_margin.height};
}

Point CTileLayout::GetCenterOffset(std::int32_t width, std::int32_t height) const {
    return {(m_thumbSize.width - width) >> 1, (m_thumbSize.height - height) >> 1};
}

Rect CTileLayout::GetTileRect(std::int32_t index) const {
    return {(index % m_tileCount.width) * m_tileSize.width + m_gridOrigin.x,
            (index / m_tileCount.width) * m_tileSize.height + m_gridOrigin.y, m_tileSize.width,
            m_tileSize.height};
}

RectEdges CTileLayout::GetCellRect(Point point) const {
    const std::int32_t left = (point.x / m_tileSize.width) * m_tileSize.width;
    const std::int32_t top = (point.y / m_tileSize.height) * m_tileSize.height;
    return {left, top, left + m_tileSize.width, top + m_tileSize.height};
}

Rect CTileLayout::GetTileRectAt(Point point) const {
    return {(point.x / m_tileSize.width) * m_tileSize.width + m_gridOrigin.x,
            (point.y / m_tileSize.height) * m_tileSize.height + m_gridOrigin.y, m_tileSize.width,
            m_tileSize.height};
}

} // namespace tivox
