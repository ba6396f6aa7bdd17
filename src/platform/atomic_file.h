#pragma once
// Whole-file reads and writes, and the durable replacement of a photo: the new
// data goes to a hidden temporary file beside it, reaches the disc (fsync), and
// one rename puts it over the photo, so no moment exists where the photo's name
// holds half a picture or nothing.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/file_ops.h"
#include "platform/ui_text.h"

namespace tivox {

// Reads all of `path` into `bytes` (reusing its capacity).
bool ReadWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes, std::string& error);
// Reads at most the first `limit` bytes of `path` (the head of a photo, where
// its metadata is, without the megabytes of picture behind it).
bool ReadFileStart(const std::string& path, std::size_t limit, std::vector<std::uint8_t>& bytes,
                   std::string& error);

// Appends what is left to read of `fd` to `bytes` (`sizeHint` is the size
// expected in all, to allocate once), to the true end even when the file
// grows or shrinks meanwhile. False with errno set on a read error.
bool AppendRest(int fd, std::vector<std::uint8_t>& bytes, std::size_t sizeHint = 0);

// Creates or truncates `path` and writes `size` bytes to it. For new files
// only: a photo is replaced with WriteFileDurably.
bool WriteWholeFile(const std::string& path, const std::uint8_t* data, std::size_t size,
                    std::string& error);

// Writes `size` bytes over the file at `path` (or creates it) so that the name
// holds either the old file or the whole new one, also after a crash. The
// temporary file is created exclusively under a hidden, random name in the
// same folder, so it never takes the place of a user's file. A replaced file
// keeps its mode and, where the system allows, its owner. A file that nobody
// may write is write-protected on purpose: it is refused and left alone.
// On failure `error` names the file and the cause, and nothing new is left
// in the folder (once the rename is done, only a failed flush of the folder
// can still fail the call).
bool WriteFileDurably(const std::string& path, const std::uint8_t* data, std::size_t size,
                      UiText& error, FileOps& ops = SystemFileOps());

// "Could not write PATH: CAUSE" for the errno `errorNumber`, in words a user
// knows for a full disc, a read-only disc or folder.
UiText WriteErrorText(const std::string& path, int errorNumber);

} // namespace tivox
