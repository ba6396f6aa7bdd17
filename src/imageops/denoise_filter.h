#pragma once
// Removes single deviating pixels: each inner pixel is compared with the
// mean of its eight neighbours, and where any colour channel lies more than
// its threshold away, the pixel becomes that mean, opaque. Neighbours always
// come from the original picture, so a replaced pixel never feeds the next.
// The border ring keeps its pixels. Short-lived: one per operation.

#include <cstdint>
#include <memory>

#include "imageops/pixel_path.h"
#include "platform/bitmap.h"

namespace tivox {

class CDenoiseFilter {
public:
    // A new bitmap with the filtered picture, owned by the caller; the source
    // stays as it is. Null when memory is short.
    std::unique_ptr<Bitmap> Filter(const Bitmap& source, PixelPath path = PixelPath::Best) const;

    // The same into `out`, whose buffer is reused when large enough. False
    // when memory is short or `out` is `source`.
    bool Filter(const Bitmap& source, Bitmap& out, PixelPath path = PixelPath::Best) const;

    // The same result written over the picture itself; keeps only two rows
    // of original pixels aside. False when memory is short (nothing changed).
    bool FilterInPlace(Bitmap& image, PixelPath path = PixelPath::Best) const;

    // Largest allowed distance from the mean, per channel. A distance equal
    // to the threshold still counts as good.
    std::int32_t thresholdRed = 3;
    std::int32_t thresholdGreen = 3;
    std::int32_t thresholdBlue = 3;

private:
    void FilterRow(const std::uint8_t* above, const std::uint8_t* row, const std::uint8_t* below,
                   std::uint8_t* out, int width, PixelPath path) const;
};

} // namespace tivox
