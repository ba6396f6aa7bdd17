#include "app/tool_scope.h"

namespace tivox {

bool ProcessScope::ClickedCurrent() {
    if (!current) {
        return false;
    }
    all = red = green = blue = false;
    return true;
}

bool ProcessScope::ClickedAll() {
    if (!all) {
        return false;
    }
    current = red = green = blue = false;
    return true;
}

bool ProcessScope::ClickedColor(std::int32_t marker) {
    if (!current && !all) {
        return false;
    }
    current = all = false;
    red = red || marker == 1;
    green = green || marker == 2;
    blue = blue || marker == 3;
    return true;
}

} // namespace tivox
