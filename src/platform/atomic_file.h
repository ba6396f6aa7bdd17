#pragma once
// Whole-file reads and writes, and the atomic replacement of a photo: the new
// data goes to a temporary file, reaches the disc (fsync), and one rename puts
// it over the photo, so no moment exists where the photo's name holds half a
// picture or nothing. Errors come back as a text (and errno stays set).

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tivox {

// Reads all of `path` into `bytes` (reusing its capacity).
bool ReadWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes, std::string& error);

// Creates or truncates `path` and writes `size` bytes to it. With `sync` the
// data is flushed to the disc before the file is closed.
bool WriteWholeFile(const std::string& path, const std::uint8_t* data, std::size_t size,
                    std::string& error, bool sync = false);

// Flushes `tempPath` to the disc, renames it over `path` and flushes the
// folder, so the replacement survives a crash. On failure both files stay as
// they were; `errorNumber` gets errno.
bool ReplaceFileDurably(const std::string& tempPath, const std::string& path, int& errorNumber,
                        std::string& error);

} // namespace tivox
