#include "app/fullscreen/fullscreen_status.h"

namespace tivox {
namespace {

bool IsContinuation(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

std::size_t CountChars(const std::string& text) {
    std::size_t count = 0;
    for (unsigned char c : text) {
        count += IsContinuation(c) ? 0 : 1;
    }
    return count;
}

} // namespace

std::string StatusTextOf(const std::string& path, std::size_t maxChars) {
    const std::size_t chars = CountChars(path);
    if (chars <= maxChars) {
        return path;
    }
    const std::string ellipsis = "...";
    if (maxChars <= ellipsis.size()) {
        return ellipsis.substr(0, maxChars);
    }
    // Skip characters from the front until the rest fits behind the ellipsis.
    std::size_t drop = chars - (maxChars - ellipsis.size());
    std::size_t pos = 0;
    while (pos < path.size() && drop > 0) {
        ++pos;
        while (pos < path.size() && IsContinuation(static_cast<unsigned char>(path[pos]))) {
            ++pos;
        }
        --drop;
    }
    return ellipsis + path.substr(pos);
}

} // namespace tivox
