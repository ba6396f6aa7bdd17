#include "app/fullscreen/tool_resize.h"

namespace tivox {

std::int32_t HeightFromWidth(std::int32_t width, Size picture) {
    const double ratio = double(picture.width) / double(picture.height);
    return static_cast<std::int32_t>(width / ratio + 0.5);
}

std::int32_t WidthFromHeight(std::int32_t height, Size picture) {
    const double ratio = double(picture.width) / double(picture.height);
    return static_cast<std::int32_t>(height * ratio + 0.5);
}

} // namespace tivox
