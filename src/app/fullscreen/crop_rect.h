#pragma once
// The crop rectangle of the full-screen window: drawn from an anchor toward
// the mouse, with a fixed height-to-width ratio or free, kept on the picture,
// and dragged about on it. All in screen pixels; the picture lies centred on
// the screen at its own size.

#include "platform/geometry.h"

namespace tivox {

// The rectangle from `anchor` toward `point` before it is kept on the
// picture. With a ratio (`aspect` not 0) the height follows the width.
Rect SpanCropRect(Point anchor, Point point, float aspect);

// Keeps `rect` on a picture of size `picture` centred on `screen`: top, then
// bottom, then left, then right. With a ratio each step derives the other
// side again from the one it cut; without, the other side stays.
Rect ClampCropRect(Rect rect, float aspect, Size screen, Size picture);

// Both steps: what the rectangle becomes when the mouse is at `point`.
inline Rect UpdatedCropRect(Point anchor, Point point, float aspect, Size screen, Size picture) {
    return ClampCropRect(SpanCropRect(anchor, point, aspect), aspect, screen, picture);
}

// Moves `rect` by `delta`, one axis after the other, so that it does not
// leave the picture.
Rect DraggedCropRect(Rect rect, Point delta, Size screen, Size picture);

// Left and top inclusive, right and bottom exclusive: an empty rectangle
// holds no point.
inline bool RectContains(const Rect& rect, Point point) {
    return point.x >= rect.x && point.x < rect.x + rect.width && point.y >= rect.y &&
           point.y < rect.y + rect.height;
}

} // namespace tivox
