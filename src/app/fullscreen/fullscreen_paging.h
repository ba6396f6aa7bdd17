#pragma once
// Paging through tiles and stepping through photos in the full-screen window,
// with their wrap rules. Plain functions of the present position, the number
// of photos and the tiles per page; each gives the new position.

#include <cstdint>

namespace tivox {

// Next page; past the last one back to the first.
std::int32_t NextPageStart(std::int32_t pageStart, std::int32_t perPage, std::int32_t count);
// Previous page; before the first one to the last, which starts one page
// earlier when the last page is exactly full.
std::int32_t PreviousPageStart(std::int32_t pageStart, std::int32_t perPage, std::int32_t count);
std::int32_t NextPhotoIndex(std::int32_t index, std::int32_t count);
std::int32_t PreviousPhotoIndex(std::int32_t index, std::int32_t count);
// Start of the page that holds `index`.
std::int32_t PageStartOf(std::int32_t index, std::int32_t perPage);

// Marking toggles between none and the current colour: a photo with another
// colour takes the current one.
inline std::int32_t ToggledMarker(std::int32_t marker, std::int32_t currentMarker) {
    return marker == currentMarker ? 0 : currentMarker;
}

} // namespace tivox
