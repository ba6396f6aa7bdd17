#include "acquire/folder_paths.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "acquire/file_walker.h"

namespace tivox {

namespace {

std::string HomeFolder() {
    if (const char* home = std::getenv("HOME"); home && *home)
        return home;
    if (const passwd* pw = getpwuid(getuid()); pw && pw->pw_dir)
        return pw->pw_dir;
    return "/";
}

// XDG_PICTURES_DIR from the user-dirs file: a line such as
// XDG_PICTURES_DIR="$HOME/Pictures".
std::string PicturesFromUserDirs(const std::string& home) {
    std::string config;
    if (const char* c = std::getenv("XDG_CONFIG_HOME"); c && *c == '/')
        config = c;
    else
        config = home + "/.config";
    std::ifstream in(config + "/user-dirs.dirs");
    std::string line;
    const std::string key = "XDG_PICTURES_DIR=\"";
    while (std::getline(in, line)) {
        if (line.compare(0, key.size(), key) != 0 || line.back() != '"')
            continue;
        std::string value = line.substr(key.size(), line.size() - key.size() - 1);
        if (value.compare(0, 5, "$HOME") == 0)
            value = home + value.substr(5);
        if (!value.empty() && value[0] == '/')
            return value;
    }
    return {};
}

} // namespace

std::string GetPhotoFolderPath(const std::string& baseFolder, const std::string& photoFolder) {
    std::string path = baseFolder;
    AppendBackslash(path);
    return path + photoFolder;
}

std::string GetBackupFolderPath(const std::string& baseFolder, const std::string& photoFolder) {
    return GetPhotoFolderPath(baseFolder, photoFolder) + "_bak";
}

std::string DefaultBaseFolder() {
    const std::string home = HomeFolder();
    std::string pictures = PicturesFromUserDirs(home);
    if (!pictures.empty() && IsFolder(pictures))
        return pictures;
    if (IsFolder(home + "/Pictures"))
        return home + "/Pictures";
    return home;
}

std::string DefaultGalleryFolder() {
    std::string path = DefaultBaseFolder();
    AppendBackslash(path);
    return path + "Galleries";
}

} // namespace tivox
