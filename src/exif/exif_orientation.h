#pragma once
// The EXIF Orientation of JPEG bytes in memory, read from the head only: the
// loaders turn pictures upright by it, and Get Photos turns the files.
// Any thread.

#include <cstddef>
#include <cstdint>

namespace tivox {

// The Orientation (1 to 8) of the first EXIF section of the JPEG data's head;
// 1 when there is none or its value is no orientation. The head is enough:
// the data may end anywhere after the EXIF section.
int JpegOrientation(const std::uint8_t* data, std::size_t size);

} // namespace tivox
