#pragma once
// Photo-like test pictures: a sky gradient, soft shapes with hard edges,
// fine texture and a little sensor noise, so that JPEG files of them cost
// what camera photos cost to decode and resampling faults show.

#include <cstdint>
#include <string>

#include "platform/bitmap.h"

namespace tivox::test {

// Fills `out` (made width x height) with a deterministic picture for `seed`.
bool PhotoBitmap(int width, int height, std::uint32_t seed, Bitmap& out);

// PhotoBitmap encoded at `quality` (4:2:0) and written to `path`.
bool WritePhotoJpeg(const std::string& path, int width, int height, std::uint32_t seed,
                    int quality = 90);

// Mean squared difference of the colour channels in decibels (PSNR); both
// bitmaps must have the same size. Identical pictures give 99.
double Psnr(const Bitmap& a, const Bitmap& b);

} // namespace tivox::test
