#pragma once
// The one way the program looks into a folder, for the card walk, the photo
// folder and the gallery alike. Regular files count, also through a link;
// a folder counts only when it is a real sub-folder, so a link can never lead
// a walk out of the tree or round in a circle; FIFOs, devices, sockets and
// dangling links are passed over and never opened, since opening a FIFO waits
// forever for a writer.

#include <string>
#include <vector>

namespace tivox {

enum class EntryKind {
    File,   // a regular file, or a link to one
    Folder, // a sub-folder itself, not a link to one
    Other,  // a link to a folder, a dangling link, a FIFO, a device, a socket
};

struct FolderEntry {
    std::string name;
    EntryKind kind;
};

// The entries of `folder` without "." and "..", sorted by name (byte order)
// so that runs repeat. Only the folder is opened; links are looked through
// with stat. False, with no entries, when the folder can't be read.
bool ListFolder(const std::string& folder, std::vector<FolderEntry>& entries);

} // namespace tivox
