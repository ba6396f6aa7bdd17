#pragma once
// The text of the full-screen status bar: the hovered photo's path, cut to
// at most `maxChars` characters. A long path loses its front, behind "...",
// so that the file name stays readable; a UTF-8 sequence is never split.

#include <cstddef>
#include <string>

namespace tivox {

inline constexpr std::size_t kStatusTextChars = 255;

std::string StatusTextOf(const std::string& path, std::size_t maxChars = kStatusTextChars);

} // namespace tivox
