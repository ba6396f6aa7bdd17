#pragma once
// Where a gallery goes and whether it may go there. A gallery run empties its
// folder first, so a gallery folder that is, holds or lies inside the photo
// folder or its backup would delete photos: such a folder is refused before
// anything is touched.

#include <string>

namespace tivox {

// The gallery folder of a photo folder: the gallery base folder with the
// photo folder's own name below it ("/g" and "/p/2004" give "/g/2004").
// Empty when the photo folder has no name (a root or an empty path).
std::string GalleryFolderFor(const std::string& galleryBase, const std::string& photoFolder);

// True when `a` and `b` are the same folder or one lies inside the other,
// judged on absolute paths with ".", ".." and symbolic links resolved as far
// as the paths exist. Empty paths overlap nothing.
bool FoldersOverlap(const std::string& a, const std::string& b);

// True when the gallery folder overlaps the photo folder or its backup
// folder (the photo folder's path followed by "_bak").
bool GalleryFolderEndangersPhotos(const std::string& galleryFolder, const std::string& photoFolder);

// Creates `folder` and any missing parent folders. True when it exists as a
// folder afterwards.
bool CreateFolderWithParents(const std::string& folder);

} // namespace tivox
