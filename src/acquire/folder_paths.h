#pragma once
// The folders the main dialog works with: the photo folder inside the base
// folder, its backup beside it, and the defaults of a fresh installation.

#include <string>

namespace tivox {

// base + "/" + photo, with no doubled "/": "/home/anna/Pictures" and "Photos"
// give "/home/anna/Pictures/Photos". An empty base gives the photo name alone.
std::string GetPhotoFolderPath(const std::string& baseFolder, const std::string& photoFolder);
// The photo folder path followed by "_bak".
std::string GetBackupFolderPath(const std::string& baseFolder, const std::string& photoFolder);

// The user's pictures folder (XDG_PICTURES_DIR of the user-dirs file), or the
// home folder when there is none. Default of the base folder and of the
// folder pickers' start.
std::string DefaultBaseFolder();
// The pictures folder plus "/Galleries": the default gallery base folder.
std::string DefaultGalleryFolder();

} // namespace tivox
