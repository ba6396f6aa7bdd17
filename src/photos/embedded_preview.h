#pragma once
// The small picture (often 160 x 120) that cameras embed in a photo's EXIF
// data. Reading it takes only the file's head, far below a millisecond, so a
// tile can show it at once while the real thumbnail is still being made.

#include <string>

#include "platform/bitmap.h"

namespace tivox {

// Decodes the embedded JPEG picture of `path` into `out`, upright by the
// photo's Orientation. False, with `out`
// untouched, for a file without one or with one that does not decode.
bool ReadEmbeddedPreview(const std::string& path, Bitmap& out);

} // namespace tivox
