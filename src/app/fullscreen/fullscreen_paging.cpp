#include "app/fullscreen/fullscreen_paging.h"

namespace tivox {

std::int32_t NextPageStart(std::int32_t pageStart, std::int32_t perPage, std::int32_t count) {
    pageStart += perPage;
    if (pageStart >= count) {
        pageStart = 0;
    }
    return pageStart;
}

std::int32_t PreviousPageStart(std::int32_t pageStart, std::int32_t perPage, std::int32_t count) {
    pageStart -= perPage;
    if (pageStart < 0) {
        pageStart = (count / perPage) * perPage;
        if (pageStart == count) {
            pageStart -= perPage;
        }
    }
    return pageStart;
}

std::int32_t NextPhotoIndex(std::int32_t index, std::int32_t count) {
    ++index;
    if (index >= count) {
        index = 0;
    }
    return index;
}

std::int32_t PreviousPhotoIndex(std::int32_t index, std::int32_t count) {
    --index;
    if (index < 0) {
        index = count - 1;
    }
    return index;
}

std::int32_t PageStartOf(std::int32_t index, std::int32_t perPage) {
    return (index / perPage) * perPage;
}

} // namespace tivox
