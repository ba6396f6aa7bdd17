#include "gallery/gallery_folder.h"

#include <sys/stat.h>

#include <filesystem>
#include <system_error>

#include "acquire/file_walker.h"
#include "platform/atomic_file.h"
#include "platform/path_overlap.h"

namespace tivox {

namespace fs = std::filesystem;

std::string GalleryFolderFor(const std::string& galleryBase, const std::string& photoFolder) {
    std::string photo = photoFolder;
    while (photo.size() > 1 && photo.back() == '/')
        photo.pop_back();
    const fs::path name = fs::path(photo).lexically_normal().filename();
    const std::string text = name.string();
    if (text.empty() || text == "." || text == "..")
        return {};
    std::string folder = galleryBase;
    if (!folder.empty() && folder.back() != '/')
        folder += '/';
    return folder + text;
}

bool GalleryFolderEndangersPhotos(const std::string& galleryFolder,
                                  const std::string& photoFolder) {
    std::string photo = photoFolder;
    while (photo.size() > 1 && photo.back() == '/')
        photo.pop_back();
    if (photo.empty())
        return false;
    return FoldersOverlap(galleryFolder, photo) || FoldersOverlap(galleryFolder, photo + "_bak");
}

bool GalleryMayEmpty(const std::string& folder) {
    struct stat st {};
    if (stat(folder.c_str(), &st) != 0 || !S_ISDIR(st.st_mode))
        return true; // nothing there to lose
    const std::string marker = folder + "/" + kGalleryMarkerName;
    return (lstat(marker.c_str(), &st) == 0 && S_ISREG(st.st_mode)) ||
           CountFolderContents(folder).Empty();
}

bool MarkGalleryFolder(const std::string& folder, std::string& error) {
    static constexpr char kText[] = "A TivoxPlus gallery. The next gallery run into this folder "
                                    "deletes everything in it.\n";
    return WriteWholeFile(folder + "/" + kGalleryMarkerName,
                          reinterpret_cast<const std::uint8_t*>(kText), sizeof kText - 1, error);
}

bool CreateFolderWithParents(const std::string& folder) {
    std::error_code ec;
    fs::create_directories(folder, ec);
    return fs::is_directory(folder, ec);
}

} // namespace tivox
