#pragma once
// "%XX" escapes, for links in web pages and paths in the Trash's info files.

#include <string>
#include <string_view>

namespace tivox {

// `text` with every byte for which `keeps` is false written as "%XX"
// (upper-case hex).
std::string PercentEncode(std::string_view text, bool (*keeps)(unsigned char));

} // namespace tivox
