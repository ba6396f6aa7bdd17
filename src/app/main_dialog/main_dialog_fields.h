#pragma once
// The values of the main dialog: every user setting it shows, with the
// defaults that stand when no settings file could be read, and their way to
// and from the settings file.

#include <cstdint>
#include <string>

namespace tivox {

class CSettings;

struct MainDialogFields {
    std::string m_cameraDrive; // mount point of the camera card, empty until chosen
    std::string m_baseFolder;  // folder that holds the photo folders
    std::string m_photoFolder = "Photos";
    std::string m_renamingRule = "%Date%_%Time%";
    std::uint32_t m_statusBarHeight = 0; // 30 with the full-screen status bar, else 0
    std::uint32_t m_tilesX = 4;
    std::uint32_t m_tilesY = 4;
    int m_showStatusBar = 0;
    std::string m_exifTag;
    std::string m_galleryFolder;
    int m_createBackup = 1;
    std::uint32_t m_jpegQuality = 80;
    std::uint32_t m_thumbnailMemory = 512; // MiB for the thumbnails of Full Screen Editing
    int m_turnUpright = 1; // Get Photos stands photos upright by their Orientation tag
};

// The defaults: base folder the user's pictures folder, galleries below it.
MainDialogFields DefaultMainDialogFields();

// The stored values into the fields, as they are (ranges are checked only
// when the controls are read); the status bar box follows the height.
void FieldsFromSettings(const CSettings& settings, MainDialogFields& fields);
// The fields into the settings record; what the dialog does not show (the
// unit of print sizes) stays as it was.
void FieldsToSettings(const MainDialogFields& fields, CSettings& settings);

} // namespace tivox
