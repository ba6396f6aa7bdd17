#pragma once
// The program's plain rectangles and points as Qt takes them.

#include <QPoint>
#include <QRect>

#include "platform/geometry.h"

namespace tivox {

inline QRect ToQRect(const Rect& r) {
    return QRect(r.x, r.y, r.width, r.height);
}

// A tile from its origin to origin + size - 1, as invalidation takes it.
inline QRect TileArea(const Rect& r) {
    return QRect(r.x, r.y, r.width - 1, r.height - 1);
}

inline Point ToPoint(const QPoint& p) {
    return {p.x(), p.y()};
}

} // namespace tivox
