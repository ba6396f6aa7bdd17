#include "gallery/gallery_folder.h"

#include <sys/stat.h>

#include <filesystem>
#include <system_error>

#include "acquire/file_walker.h"
#include "platform/atomic_file.h"

namespace tivox {

namespace fs = std::filesystem;

namespace {

// The absolute path with symbolic links of its existing part resolved and
// without a trailing separator, so that paths compare component by component.
fs::path Resolved(const std::string& path) {
    std::error_code ec;
    fs::path absolute = fs::absolute(path, ec);
    if (ec)
        return {};
    fs::path resolved = fs::weakly_canonical(absolute, ec);
    if (ec)
        resolved = absolute.lexically_normal();
    if (!resolved.has_filename() && resolved.has_parent_path() && resolved != resolved.root_path())
        resolved = resolved.parent_path();
    return resolved;
}

// True when `inner` is `outer` or lies below it.
bool Within(const fs::path& inner, const fs::path& outer) {
    auto i = inner.begin();
    for (const fs::path& part : outer) {
        if (i == inner.end() || *i != part)
            return false;
        ++i;
    }
    return true;
}

} // namespace

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

bool FoldersOverlap(const std::string& a, const std::string& b) {
    if (a.empty() || b.empty())
        return false;
    const fs::path ra = Resolved(a);
    const fs::path rb = Resolved(b);
    if (ra.empty() || rb.empty())
        return false;
    return Within(ra, rb) || Within(rb, ra);
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
