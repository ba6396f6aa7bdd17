#pragma once
// The two size fields of the Photo tab keep the proportions of the picture on
// the screen while "Keep Aspect Ratio" is checked: the other side, rounded to
// the nearest pixel, from the ratio width / height in double precision.

#include <cstdint>

#include "platform/geometry.h"

namespace tivox {

// `picture` must not be empty.
std::int32_t HeightFromWidth(std::int32_t width, Size picture);
std::int32_t WidthFromHeight(std::int32_t height, Size picture);

} // namespace tivox
