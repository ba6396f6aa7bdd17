#pragma once
// Whether two folders are one or one lies inside the other: what decides
// that a folder about to be emptied or written must not be the photos' or
// the card's. Any thread.

#include <string>

namespace tivox {

// True when `a` and `b` are the same folder or one lies inside the other,
// after symbolic links are resolved as far as the paths exist. Empty paths
// overlap nothing.
bool FoldersOverlap(const std::string& a, const std::string& b);

} // namespace tivox
