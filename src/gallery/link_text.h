#pragma once
// File names as they go into the href and src attributes of gallery pages.
// Linux file names may hold any byte but "/" and NUL, so a name is first
// percent-encoded where a URL needs it (space, "#", "?", "%", quotes, angle
// brackets, non-ASCII bytes, ...) and then escaped for an HTML attribute.
// Such a name still links to its file and cannot inject markup.

#include <string>
#include <string_view>

namespace tivox {

// Percent-encodes every byte of `name` that may not stand as such in one
// segment of a relative URL path. "/" is encoded too: a name is one segment.
std::string PercentEncodeSegment(std::string_view name);

// Replaces & < > " ' by their character references.
std::string EscapeHtml(std::string_view text);

// EscapeHtml(PercentEncodeSegment(name)).
std::string FileNameForLink(std::string_view name);

} // namespace tivox
