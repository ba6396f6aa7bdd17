#pragma once
// Where a gallery goes and whether it may go there. A gallery run empties its
// folder first, so a gallery folder that is, holds or lies inside the photo
// folder or its backup would delete photos: such a folder is refused before
// anything is touched. Any other folder is emptied without a question only
// when a gallery run made it: each run leaves a marker file in its folder.

#include <string>

#include "platform/path_overlap.h"

namespace tivox {

// The gallery folder of a photo folder: the gallery base folder with the
// photo folder's own name below it ("/g" and "/p/2004" give "/g/2004").
// Empty when the photo folder has no name (a root or an empty path).
std::string GalleryFolderFor(const std::string& galleryBase, const std::string& photoFolder);

// True when the gallery folder overlaps the photo folder or its backup
// folder (the photo folder's path followed by "_bak").
bool GalleryFolderEndangersPhotos(const std::string& galleryFolder, const std::string& photoFolder);

// The marker file's name; hidden, and outside "pics", so no page lists it.
inline constexpr char kGalleryMarkerName[] = ".tivoxplus-gallery";

// True when a gallery run may empty `folder` without asking: it holds the
// marker, holds nothing, or is not there.
bool GalleryMayEmpty(const std::string& folder);

// Leaves the marker in `folder`. False with `error` naming the file and cause.
bool MarkGalleryFolder(const std::string& folder, std::string& error);

// Creates `folder` and any missing parent folders. True when it exists as a
// folder afterwards.
bool CreateFolderWithParents(const std::string& folder);

} // namespace tivox
