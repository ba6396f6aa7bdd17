#include "app/fullscreen/crop_rect.h"

#include <cstdint>

namespace tivox {
namespace {

// The ratio is a 32-bit float, but the product and quotient are taken in
// double and truncated only then: 100 x 0.7f gives 69, 100 / (2/3)f gives 149.
std::int32_t TimesAspect(std::int32_t value, float aspect) {
    return static_cast<std::int32_t>(double(value) * double(aspect));
}

std::int32_t ByAspect(std::int32_t value, float aspect) {
    return static_cast<std::int32_t>(double(value) / double(aspect));
}

} // namespace

Rect SpanCropRect(Point anchor, Point point, float aspect) {
    Rect r;
    if (point.x > anchor.x) {
        r.x = anchor.x;
        r.width = point.x - anchor.x;
    } else {
        r.x = point.x;
        r.width = anchor.x - point.x;
    }
    if (point.y > anchor.y) {
        r.y = anchor.y;
        r.height = aspect == 0.0f ? point.y - anchor.y : TimesAspect(r.width, aspect);
    } else if (aspect == 0.0f) {
        r.y = point.y;
        r.height = anchor.y - point.y;
    } else {
        r.height = TimesAspect(r.width, aspect);
        r.y = anchor.y - r.height;
    }
    return r;
}

Rect ClampCropRect(Rect r, float aspect, Size screen, Size picture) {
    const std::int32_t left = (screen.width - picture.width) / 2;
    const std::int32_t top = (screen.height - picture.height) / 2;
    const bool ratio = aspect != 0.0f;
    if (r.y < top) {
        r.height += r.y - top;
        r.y = top;
        if (ratio) {
            r.width = ByAspect(r.height, aspect);
        }
    }
    // Equality counts here, so a rectangle that just reaches the edge gets
    // its other side derived once more.
    if (r.y + r.height >= top + picture.height) {
        r.height = picture.height - r.y + top;
        if (ratio) {
            r.width = ByAspect(r.height, aspect);
        }
    }
    if (r.x < left) {
        r.width += r.x - left;
        r.x = left;
        if (ratio) {
            r.height = TimesAspect(r.width, aspect);
        }
    }
    if (r.x + r.width >= left + picture.width) {
        r.width = picture.width - r.x + left;
        if (ratio) {
            r.height = TimesAspect(r.width, aspect);
        }
    }
    return r;
}

Rect DraggedCropRect(Rect r, Point delta, Size screen, Size picture) {
    const std::int32_t left = (screen.width - picture.width) / 2;
    const std::int32_t top = (screen.height - picture.height) / 2;
    r.x += delta.x;
    if (r.x < left) {
        r.x = left;
    }
    if (r.x + r.width > picture.width + left) {
        r.x = picture.width - r.width + left;
    }
    r.y += delta.y;
    if (r.y < top) {
        r.y = top;
    }
    if (r.y + r.height > picture.height + top) {
        r.y = picture.height - r.height + top;
    }
    return r;
}

} // namespace tivox
