#include "imageops/crop_image.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace tivox {

bool CropInto(const Bitmap& source, const Rect& rect, Bitmap& out) {
    if (&out == &source || !out.Reset(rect.width, rect.height))
        return false;
    const Rect inside = ClipToImage(rect, Size{source.Width(), source.Height()});
    if (inside.width != rect.width || inside.height != rect.height)
        std::memset(out.Data(), 0, out.ByteSize());
    for (int y = 0; y < inside.height; ++y)
        std::memcpy(out.Row(inside.y - rect.y + y) + std::size_t(inside.x - rect.x) * 4,
                    source.Row(inside.y + y) + std::size_t(inside.x) * 4,
                    std::size_t(inside.width) * 4);
    // Like any new picture it has the default resolution, not the source's.
    out.SetResolution(96.0f, 96.0f);
    return true;
}

std::unique_ptr<Bitmap> CropImage(const Bitmap* source, int x, int y, int width, int height) {
    auto out = std::unique_ptr<Bitmap>(new (std::nothrow) Bitmap);
    if (!out)
        return nullptr;
    const Rect rect{x, y, width, height};
    if (source) {
        if (!CropInto(*source, rect, *out))
            return nullptr;
    } else {
        if (!out->Reset(width, height))
            return nullptr;
        std::memset(out->Data(), 0, out->ByteSize());
    }
    return out;
}

Rect ScreenRectToImage(Size image, Size fitted, Size screen, const Rect& rect) {
    // Margins of the picture on the screen, in whole pixels.
    const int mx = (screen.width - fitted.width) / 2;
    const int my = (screen.height - fitted.height) / 2;
    // A picture without a side margin fills the screen's width.
    const double s = mx == 0 ? double(image.width) / double(screen.width)
                             : double(image.height) / double(screen.height);
    return Rect{int((rect.x - mx) * s + 0.5), int((rect.y - my) * s + 0.5),
                int(rect.width * s + 0.5), int(rect.height * s + 0.5)};
}

Rect ClipToImage(const Rect& rect, Size image) {
    const std::int64_t x0 = std::max<std::int64_t>(rect.x, 0);
    const std::int64_t y0 = std::max<std::int64_t>(rect.y, 0);
    const std::int64_t x1 = std::min<std::int64_t>(std::int64_t(rect.x) + rect.width, image.width);
    const std::int64_t y1 =
        std::min<std::int64_t>(std::int64_t(rect.y) + rect.height, image.height);
    if (x1 <= x0 || y1 <= y0)
        return Rect{int(x0), int(y0), 0, 0};
    return Rect{int(x0), int(y0), int(x1 - x0), int(y1 - y0)};
}

} // namespace tivox
