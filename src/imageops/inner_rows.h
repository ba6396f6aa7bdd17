#pragma once
// The walk of the 3 x 3 filters that write a picture in place.

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "imageops/split_work.h"
#include "platform/bitmap.h"

namespace tivox {

namespace detail {

// A row preparation that changes nothing.
struct KeepRows {
    void operator()(std::uint8_t*) const {}
};

// The walk over inner rows first..last of a picture written in place.
// aboveOriginal holds the original of row first - 1; lastBelow that of row
// last + 1, or is null when nobody writes that row during the walk. keep has
// room for two rows. Rows prepareFrom..prepareTo are prepared just before the
// walk first reads them; the others it reads were prepared before the walk.
template <class RowStep, class Prepare>
void WalkInnerRows(Bitmap& image, int first, int last, const std::uint8_t* aboveOriginal,
                   const std::uint8_t* lastBelow, std::uint8_t* keep, RowStep& rowStep,
                   Prepare& prepare, int prepareFrom, int prepareTo) {
    const std::size_t rowBytes = std::size_t(image.Width()) * 4;
    std::uint8_t* above = keep;
    std::uint8_t* current = keep + rowBytes;
    std::memcpy(above, aboveOriginal, rowBytes);
    std::memcpy(current, image.Row(first), rowBytes);
    for (int y = first; y <= last; ++y) {
        const std::uint8_t* below = y == last && lastBelow ? lastBelow : image.Row(y + 1);
        if (y + 1 >= prepareFrom && y + 1 <= prepareTo)
            prepare(image.Row(y + 1));
        rowStep(static_cast<const std::uint8_t*>(above), static_cast<const std::uint8_t*>(current),
                below, image.Row(y));
        std::swap(above, current);
        if (y < last)
            std::memcpy(current, image.Row(y + 1), rowBytes);
    }
}

} // namespace detail

// Calls rowStep(above, row, below, out) for every inner row, with the
// original pixels of the row and its two neighbours and the row of the
// picture to write. Rows are written top down, so only the row above and the
// row itself need their originals kept aside; the row below is still
// untouched. On big pictures and the fast path the rows are walked in two
// bands at once (rowStep must then allow calls from two threads); the two
// rows where the bands meet are kept aside first. The extra memory is six
// rows at most. False when that memory is short (nothing is written); true at
// once for pictures under 3 rows or columns.
// With `prepare`, every row of the picture goes through prepare(row) once,
// just before anything reads it: a per-pixel pass done this way costs no walk
// of its own over the picture. It too may be called from two threads.
template <class RowStep, class Prepare = detail::KeepRows>
bool ForEachInnerRowInPlace(Bitmap& image, RowStep rowStep, PixelPath path = PixelPath::Scalar,
                            Prepare prepare = {}) {
    const int w = image.Width(), h = image.Height();
    if (w < 3 || h < 3) {
        for (int y = 0; y < h; ++y)
            prepare(image.Row(y));
        return true;
    }
    const std::size_t rowBytes = std::size_t(w) * 4;
    const bool split = h >= 8 && SplitInTwo(std::size_t(w) * std::size_t(h), path);
    std::unique_ptr<std::uint8_t[]> keep(new (std::nothrow)
                                             std::uint8_t[rowBytes * (split ? 6 : 2)]);
    if (!keep)
        return false;
    prepare(image.Row(0));
    prepare(image.Row(1));
    if (!split) {
        detail::WalkInnerRows(image, 1, h - 2, image.Row(0), nullptr, keep.get(), rowStep, prepare,
                              2, h - 1);
        return true;
    }
    // The upper band ends at row middle - 1, which the lower band reads as
    // its first row above; the upper band's last row below is row middle.
    const int middle = h / 2;
    prepare(image.Row(middle - 1));
    prepare(image.Row(middle));
    std::uint8_t* meeting = keep.get() + rowBytes * 4;
    std::memcpy(meeting, image.Row(middle - 1), rowBytes);
    std::memcpy(meeting + rowBytes, image.Row(middle), rowBytes);
    // The upper band prepares rows 2 .. middle - 2, the lower one the rows
    // below the middle.
    RunBoth(
        [&] {
            detail::WalkInnerRows(image, middle, h - 2, meeting, nullptr, keep.get() + rowBytes * 2,
                                  rowStep, prepare, middle + 1, h - 1);
        },
        [&] {
            detail::WalkInnerRows(image, 1, middle - 1, image.Row(0), meeting + rowBytes,
                                  keep.get(), rowStep, prepare, 2, middle - 2);
        });
    return true;
}

} // namespace tivox
