#pragma once
// Small pictures for the pixel tests.

#include <algorithm>
#include <cstdint>
#include <random>

#include "platform/bitmap.h"

namespace tivox::test {

inline Bitmap Uniform(int w, int h, std::uint32_t argb) {
    Bitmap b;
    b.Reset(w, h);
    b.Fill(argb);
    return b;
}

// Noise; `gentle` keeps each pixel near its neighbours so that a denoise
// both keeps and replaces pixels.
inline Bitmap RandomPicture(int w, int h, std::uint32_t seed, bool gentle = false) {
    Bitmap b;
    b.Reset(w, h);
    std::mt19937 rng(seed);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w * 4; ++x)
            b.Row(y)[x] =
                std::uint8_t(gentle ? (x * 3 / 4 + y * 2 + x % 4 * 40) % 200 + rng() % 9 : rng());
    return b;
}

inline bool SamePixels(const Bitmap& a, const Bitmap& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height())
        return false;
    for (int y = 0; y < a.Height(); ++y)
        if (!std::equal(a.Row(y), a.Row(y) + a.Width() * 4, b.Row(y)))
            return false;
    return true;
}

inline Bitmap Copy(const Bitmap& b) {
    Bitmap c;
    b.CopyTo(c);
    return c;
}

// Channel bytes of a pixel: 0 blue, 1 green, 2 red, 3 alpha.
inline int Channel(const Bitmap& b, int x, int y, int c) {
    return b.Row(y)[x * 4 + c];
}

} // namespace tivox::test
