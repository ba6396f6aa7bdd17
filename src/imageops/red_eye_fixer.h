#pragma once
// Red-eye reduction around a clicked point: reddish pixels lose their red in
// a square spiral walk outward from the point, which ends when a ring turns
// up too few of them. Short-lived: one per click or per replay.

#include <cstdint>

#include "platform/bitmap.h"

namespace tivox {

// Walks a square spiral around a centre with legs of 1, 1, 2, 2, 3, 3 ...
class CSpiralWalker {
public:
    // Sets the centre and puts the walk on it.
    void SetCenter(std::int32_t a, std::int32_t b);
    // Hands out the present position, takes one step and gives the ring the
    // walk is on after the step.
    std::int32_t Next(std::int32_t& outA, std::int32_t& outB);

    std::int32_t centerA = 0;
    std::int32_t centerB = 0;
    std::int32_t a = 0;
    std::int32_t b = 0;
    std::int32_t direction = 0;
    std::int32_t ring = 1;
};

// Radii of the corrected area, by use.
inline constexpr int kRedEyeRadiusClick = 15;   // a click on the working image
inline constexpr int kRedEyeRadiusPreview = 10; // replay on the working image
inline constexpr int kRedEyeRadiusFull = 20;    // replay on the full image at commit

class CRedEyeFixer {
public:
    CRedEyeFixer() = default;
    explicit CRedEyeFixer(int radius) : m_radius(radius) {}

    void SetRadius(int radius) { m_radius = radius; }
    void SetImage(Bitmap* image) { m_image = image; }

    // Takes the red out of the reddish pixels of the disc of the radius
    // around (x, y). Pixels outside the bitmap are neither read nor written;
    // nothing happens without a bitmap.
    void Fix(int x, int y);

private:
    Bitmap* m_image = nullptr; // not owned
    int m_radius = kRedEyeRadiusFull;
};

} // namespace tivox
