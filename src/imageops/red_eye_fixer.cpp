#include "imageops/red_eye_fixer.h"

namespace tivox {

void CSpiralWalker::SetCenter(std::int32_t ca, std::int32_t cb) {
    centerA = a = ca;
    centerB = b = cb;
}

std::int32_t CSpiralWalker::Next(std::int32_t& outA, std::int32_t& outB) {
    outA = a;
    outB = b;
    switch (direction) {
    case 0:
        --a;
        if (centerA - a >= ring)
            direction = 3;
        break;
    case 3:
        ++b;
        if (b - centerB >= ring)
            direction = 1;
        break;
    case 1:
        ++a;
        if (a - centerA >= ring)
            direction = 2;
        break;
    case 2:
        --b;
        if (centerB - b >= ring) {
            ++ring;
            direction = 0;
        }
        break;
    default:
        break;
    }
    return ring;
}

void CRedEyeFixer::Fix(int x, int y) {
    if (!m_image || m_image->IsEmpty() || m_radius <= 0)
        return;
    const int r = m_radius;
    // The walk runs in the coordinates of the square of side 2r + 1 around
    // the click, whose centre is (r, r); a is the row, b the column.
    const int left = x - r, top = y - r;
    const int w = m_image->Width(), h = m_image->Height();

    int hits = 0, previousRing = 0;
    CSpiralWalker walker;
    walker.SetCenter(r, r);
    std::int32_t a = 0, b = 0;
    std::int32_t ring = walker.Next(a, b);
    while (ring < r) {
        const int da = a - r, db = b - r;
        const int px = left + b, py = top + a;
        if (da * da + db * db < r * r && px >= 0 && py >= 0 && px < w && py < h) {
            std::uint8_t* p = m_image->Row(py) + std::size_t(px) * 4;
            // Bytes are blue, green, red, alpha.
            if (int(p[2]) + 10 > int(p[1]) + int(p[0])) {
                p[2] = 0;
                ++hits;
            }
        }
        if (ring != previousRing) {
            if (previousRing > 4 && hits < 6)
                break;
            previousRing = ring;
            hits = 0;
        }
        ring = walker.Next(a, b);
    }
}

} // namespace tivox
