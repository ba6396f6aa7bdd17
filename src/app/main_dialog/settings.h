#pragma once
// CSettings: the program's settings file, TivoxSettings.dat. A small binary
// record, little-endian, that the main dialog loads once at start and stores
// once at its end. The writer always produces version 170 (150 plus the
// thumbnail memory of Full Screen Editing in 160, plus turning photos upright
// on arrival in 170); the reader also accepts the older layouts, chosen by
// the leading version word (100 to 1000; any other word marks a file that is
// not ours, which loads nothing).
//
// Strings carry a length prefix: one byte up to 254, then 0xFF and two bytes
// up to 65533, then 0xFF 0xFFFF and four bytes. Their bytes are UTF-8.

#include <cstdint>
#include <string>
#include <vector>

namespace tivox {

class CSettings {
public:
    static constexpr std::int32_t kVersion = 170;

    // The file's bytes for the fields below.
    std::vector<std::uint8_t> Store() const;
    // Reads the fields from the bytes of a file. All or nothing: on false
    // (cut short, damaged, an unknown version, a zero byte in a string) the
    // object is unchanged. Bytes behind the last field are ignored.
    bool Load(const std::vector<std::uint8_t>& bytes);

    // The same through a file. Failures are false and nothing else.
    bool LoadFile(const std::string& path);
    // Creates the folder when needed and replaces the file atomically (a
    // temporary file beside it, flushed, renamed over it): after a crash the
    // name holds the old settings or the new ones, never a part.
    bool StoreFile(const std::string& path) const;

    std::string m_cameraDrive;
    std::string m_baseFolder;
    std::string m_photoFolder;
    std::string m_galleryFolder;
    std::string m_renamingRule;
    std::uint32_t m_tilesX = 4;
    std::uint32_t m_tilesY = 4;
    std::uint32_t m_statusBarHeight = 0;
    std::uint32_t m_createBackup = 1;
    std::uint32_t m_jpegQuality = 80;
    std::uint32_t m_metricUnits = 1;       // print sizes in centimetres, else inches
    std::uint32_t m_thumbnailMemory = 512; // MiB that full-screen thumbnails may hold
    std::uint32_t m_turnUpright = 1;       // Get Photos stands photos upright by their tag
};

// Where the settings file lives: beside the program when a writable
// TivoxSettings.dat is already there (a portable installation), otherwise
// in the user's configuration folder, tivoxplus/TivoxSettings.dat.
// programPath is the program file; configHome the value of XDG_CONFIG_HOME
// (used when absolute), home the home folder.
std::string GetSettingsPath(const std::string& programPath, const std::string& configHome,
                            const std::string& home);
// The same for this process (its executable and environment).
std::string GetSettingsPath();

} // namespace tivox
