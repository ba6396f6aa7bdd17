#pragma once
// The walk of the 3 x 3 filters that write a picture in place.

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "platform/bitmap.h"

namespace tivox {

// Calls rowStep(above, row, below, out) for every inner row top down, with
// the original pixels of the row and its two neighbours and the row of the
// picture to write. Rows are written top down, so only the row above and the
// row itself need their originals kept aside; the row below is still
// untouched. The extra memory is two rows. False when that memory is short
// (nothing is written); true at once for pictures under 3 rows or columns.
template <class RowStep> bool ForEachInnerRowInPlace(Bitmap& image, RowStep rowStep) {
    const int w = image.Width(), h = image.Height();
    if (w < 3 || h < 3)
        return true;
    const std::size_t rowBytes = std::size_t(w) * 4;
    std::unique_ptr<std::uint8_t[]> keep(new (std::nothrow) std::uint8_t[rowBytes * 2]);
    if (!keep)
        return false;
    std::uint8_t* above = keep.get();
    std::uint8_t* current = keep.get() + rowBytes;
    std::memcpy(above, image.Row(0), rowBytes);
    std::memcpy(current, image.Row(1), rowBytes);
    for (int y = 1; y < h - 1; ++y) {
        rowStep(static_cast<const std::uint8_t*>(above), static_cast<const std::uint8_t*>(current),
                static_cast<const std::uint8_t*>(image.Row(y + 1)), image.Row(y));
        std::swap(above, current);
        if (y + 1 < h - 1)
            std::memcpy(current, image.Row(y + 1), rowBytes);
    }
    return true;
}

} // namespace tivox
