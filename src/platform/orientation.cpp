#include "platform/orientation.h"

#include <array>
#include <cstring>
#include <utility>

namespace tivox {

namespace {

// Each orientation as: first mirror along the main diagonal (x and y
// trade places), then mirror left-right, then top-bottom.
struct Steps {
    bool transpose;
    bool flipX;
    bool flipY;
};

constexpr std::array<Steps, 9> kSteps{{
    {false, false, false}, // not an orientation; reads as 1
    {false, false, false}, // 1
    {false, true, false},  // 2
    {false, true, true},   // 3
    {false, false, true},  // 4
    {true, false, false},  // 5
    {true, true, false},   // 6: the stored top row becomes the right column
    {true, true, true},    // 7
    {true, false, true},   // 8
}};

} // namespace

int ValidOrientation(int orientation) {
    return orientation >= 1 && orientation <= 8 ? orientation : 1;
}

bool SwapsSides(int orientation) {
    return kSteps[std::size_t(ValidOrientation(orientation))].transpose;
}

Size UprightSize(Size stored, int orientation) {
    return SwapsSides(orientation) ? Size{stored.height, stored.width} : stored;
}

Point UprightPoint(Point p, Size stored, int orientation) {
    const Steps s = kSteps[std::size_t(ValidOrientation(orientation))];
    const Size size = UprightSize(stored, orientation);
    if (s.transpose)
        std::swap(p.x, p.y);
    if (s.flipX)
        p.x = size.width - 1 - p.x;
    if (s.flipY)
        p.y = size.height - 1 - p.y;
    return p;
}

Point StoredPoint(Point shown, Size stored, int orientation) {
    const Steps s = kSteps[std::size_t(ValidOrientation(orientation))];
    const Size size = UprightSize(stored, orientation);
    if (s.flipY)
        shown.y = size.height - 1 - shown.y;
    if (s.flipX)
        shown.x = size.width - 1 - shown.x;
    if (s.transpose)
        std::swap(shown.x, shown.y);
    return shown;
}

int ComposeOrientations(int first, int then) {
    // Follow three corners of a picture with unequal sides through both
    // steps; exactly one orientation moves them alike.
    const Size stored{3, 2};
    const Size middle = UprightSize(stored, first);
    const Point probes[] = {{0, 0}, {2, 0}, {0, 1}};
    for (int candidate = 1; candidate <= 8; ++candidate) {
        bool same = true;
        for (const Point& p : probes)
            same = same && UprightPoint(UprightPoint(p, stored, first), middle, then) ==
                               UprightPoint(p, stored, candidate);
        if (same)
            return candidate;
    }
    return 1;
}

std::optional<JpegTransform> UprightTransform(int orientation) {
    switch (ValidOrientation(orientation)) {
    case 2:
        return JpegTransform::FlipHorizontal;
    case 3:
        return JpegTransform::Rotate180;
    case 4:
        return JpegTransform::FlipVertical;
    case 5:
        return JpegTransform::Transpose;
    case 6:
        return JpegTransform::Rotate90;
    case 7:
        return JpegTransform::Transverse;
    case 8:
        return JpegTransform::Rotate270;
    default:
        return std::nullopt;
    }
}

int OrientationOf(JpegTransform op) {
    for (int o = 2; o <= 8; ++o)
        if (UprightTransform(o) == op)
            return o;
    return 1;
}

bool OrientBitmap(const Bitmap& in, int orientation, Bitmap& out) {
    const Size stored{in.Width(), in.Height()};
    const Size size = UprightSize(stored, orientation);
    if (in.IsEmpty() || !out.Reset(size.width, size.height)) {
        out.Release();
        return false;
    }
    out.SetResolution(SwapsSides(orientation) ? in.DpiY() : in.DpiX(),
                      SwapsSides(orientation) ? in.DpiX() : in.DpiY());
    if (ValidOrientation(orientation) == 1) {
        std::memcpy(out.Data(), in.Data(), in.ByteSize());
        return true;
    }
    // Walk the output in small squares, so that a turn reads the source
    // column-wise from lines that are still in the cache.
    constexpr int kBlock = 64;
    for (int by = 0; by < size.height; by += kBlock) {
        for (int bx = 0; bx < size.width; bx += kBlock) {
            for (int y = by; y < std::min(by + kBlock, size.height); ++y) {
                auto* row = reinterpret_cast<std::uint32_t*>(out.Row(y));
                for (int x = bx; x < std::min(bx + kBlock, size.width); ++x) {
                    const Point s = StoredPoint({x, y}, stored, orientation);
                    std::memcpy(&row[x], in.Row(s.y) + 4 * std::size_t(s.x), 4);
                }
            }
        }
    }
    return true;
}

} // namespace tivox
