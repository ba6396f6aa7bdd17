#pragma once
// Small pictures for the pixel tests.

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

inline Bitmap RandomPicture(int w, int h, std::uint32_t seed) {
    Bitmap b;
    b.Reset(w, h);
    std::mt19937 rng(seed);
    for (std::size_t i = 0; i < b.ByteSize(); ++i)
        b.Data()[i] = std::uint8_t(rng());
    return b;
}

// A noisy picture whose pixels lie near their neighbours, so that a denoise
// both keeps and replaces pixels.
inline Bitmap GentlePicture(int w, int h, std::uint32_t seed) {
    Bitmap b;
    b.Reset(w, h);
    std::mt19937 rng(seed);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            std::uint8_t* p = b.Row(y) + x * 4;
            for (int c = 0; c < 4; ++c)
                p[c] = std::uint8_t((x * 3 + y * 2 + c * 40) % 200 + int(rng() % 9));
        }
    return b;
}

inline bool SamePixels(const Bitmap& a, const Bitmap& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height())
        return false;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width() * 4; ++x)
            if (a.Row(y)[x] != b.Row(y)[x])
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
