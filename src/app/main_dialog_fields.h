#pragma once
// The values of the main dialog: every user setting it shows, with the
// defaults that stand when no settings file could be read.

#include <cstdint>
#include <string>

namespace tivox {

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
};

// The user's pictures folder (XDG_PICTURES_DIR of user-dirs.dirs), else the
// home folder, else "/". No trailing slash except for "/".
std::string DefaultPicturesFolder();

// The defaults: base folder the pictures folder, gallery folder below it.
MainDialogFields DefaultMainDialogFields();

} // namespace tivox
