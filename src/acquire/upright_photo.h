#pragma once
// Standing a photo upright on its way from the card: the one lossless turn
// that makes the pixels stand as the tag says, with the tag then set to 1.
// Any thread.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tivox {

// `jpeg`, stored as `orientation` says, turned upright into `out` without
// loss, its EXIF data made true (Orientation 1, the pixel sizes, the
// embedded thumbnail turned along). False when there is nothing to turn, or
// when the photo is better left as it is: a turn that would trim an edge
// (a size that is no multiple of the JPEG blocks), damaged data, or EXIF
// data that cannot be written; `out` is then undefined.
bool TurnUpright(const std::vector<std::uint8_t>& jpeg, int orientation,
                 std::vector<std::uint8_t>& out);

} // namespace tivox
