#pragma once
// A 3 x 3 convolution of the colour channels of a bitmap, and the sharpening
// that the "Sharpness" slider asks for. The outermost ring of pixels and the
// alpha of every pixel stay as they are.

#include <cstdint>
#include <functional>

#include "imageops/pixel_path.h"
#include "platform/bitmap.h"

namespace tivox {

// The kernel record: nine weights row by row (top left to bottom right), the
// divisor of the weighted sum and a value added after the division.
struct CConvolution {
    std::int32_t weights[9] = {0, 0, 0, 0, 1, 0, 0, 0, 0};
    std::int32_t factor = 1;
    std::int32_t offset = 0;

    // Writes `value` to all nine weights; factor and offset stay.
    void SetAll(std::int32_t value);
};

// Each colour byte of each inner pixel becomes the weighted sum of its 3 x 3
// neighbourhood in the original picture, divided by `factor` (truncating
// toward zero), plus `offset`, limited to 0..255. False, with the bitmap
// untouched, when `factor` is 0 or memory is short.
// `before`, when given, is a per-pixel pass that every row of the picture
// undergoes first, as if it had run over the whole picture before the
// convolution: it runs on each row just before the convolution reads it,
// which spares the pass a walk of its own through memory.
using RowPass = std::function<void(std::uint8_t* row)>;
bool Convolve(Bitmap& image, const CConvolution& kernel, PixelPath path = PixelPath::Best,
              const RowPass& before = {});

// Sharpens with strength k: centre k, the four edge neighbours -2, the
// corners 0, factor k - 8. The smaller k, the stronger the effect.
bool Sharpen(Bitmap& image, int k, PixelPath path = PixelPath::Best, const RowPass& before = {});

// The strength for a "Sharpness" slider value (position times 0.01):
// 13 - 4 * value in float32, truncated.
int SharpenStrength(float sharpness);

} // namespace tivox
