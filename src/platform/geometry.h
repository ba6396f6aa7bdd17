#pragma once
// Sizes, points and rectangles: signed 32-bit, width or x first. Screen
// geometry is exact integer arithmetic with truncating division.

#include <cstdint>

namespace tivox {

struct Size {
    std::int32_t width = 0;
    std::int32_t height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Point {
    std::int32_t x = 0;
    std::int32_t y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

// A rectangle as left/top and width/height (the form the edits record uses).
struct Rect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace tivox
