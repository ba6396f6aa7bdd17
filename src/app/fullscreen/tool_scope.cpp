#include "app/fullscreen/tool_scope.h"

namespace tivox {

bool ClickProcessCurrent(ProcessScope& scope) {
    if (!scope.current) {
        return false;
    }
    scope.all = scope.red = scope.green = scope.blue = false;
    return true;
}

bool ClickProcessAll(ProcessScope& scope) {
    if (!scope.all) {
        return false;
    }
    scope.current = scope.red = scope.green = scope.blue = false;
    return true;
}

bool ClickProcessColor(ProcessScope& scope, std::int32_t marker) {
    if (!scope.current && !scope.all) {
        return false;
    }
    scope.current = scope.all = false;
    scope.red = scope.red || marker == 1;
    scope.green = scope.green || marker == 2;
    scope.blue = scope.blue || marker == 3;
    return true;
}

} // namespace tivox
