#include "platform/path_overlap.h"

#include <filesystem>
#include <system_error>

namespace tivox {

namespace fs = std::filesystem;

namespace {

// The absolute path with symbolic links of its existing part resolved and
// without a trailing separator, so that paths compare component by component.
fs::path Resolved(const std::string& path) {
    std::error_code ec;
    fs::path absolute = fs::absolute(path, ec);
    if (ec)
        return {};
    fs::path resolved = fs::weakly_canonical(absolute, ec);
    if (ec)
        resolved = absolute.lexically_normal();
    if (!resolved.has_filename() && resolved.has_parent_path() && resolved != resolved.root_path())
        resolved = resolved.parent_path();
    return resolved;
}

// True when `inner` is `outer` or lies below it.
bool Within(const fs::path& inner, const fs::path& outer) {
    auto i = inner.begin();
    for (const fs::path& part : outer) {
        if (i == inner.end() || *i != part)
            return false;
        ++i;
    }
    return true;
}

} // namespace

bool FoldersOverlap(const std::string& a, const std::string& b) {
    if (a.empty() || b.empty())
        return false;
    const fs::path ra = Resolved(a);
    const fs::path rb = Resolved(b);
    if (ra.empty() || rb.empty())
        return false;
    return Within(ra, rb) || Within(rb, ra);
}

} // namespace tivox
