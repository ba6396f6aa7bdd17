#include "app/main_dialog_fields.h"

#include <cstdlib>
#include <fstream>
#include <sys/stat.h>

namespace tivox {
namespace {

std::string Env(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

bool IsFolder(const std::string& path) {
    struct stat st {};
    return !path.empty() && ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

// XDG_PICTURES_DIR="$HOME/Pictures" in user-dirs.dirs; empty when absent.
std::string PicturesFromUserDirs(const std::string& home) {
    std::string config = Env("XDG_CONFIG_HOME");
    if (config.empty())
        config = home + "/.config";
    std::ifstream in(config + "/user-dirs.dirs");
    std::string line;
    const std::string key = "XDG_PICTURES_DIR=";
    while (std::getline(in, line)) {
        if (line.rfind(key, 0) != 0)
            continue;
        std::string value = line.substr(key.size());
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
            value = value.substr(1, value.size() - 2);
        if (value.rfind("$HOME", 0) == 0)
            value = home + value.substr(5);
        return value;
    }
    return {};
}

} // namespace

std::string DefaultPicturesFolder() {
    const std::string home = Env("HOME");
    std::string pictures = home.empty() ? std::string() : PicturesFromUserDirs(home);
    while (pictures.size() > 1 && pictures.back() == '/')
        pictures.pop_back();
    if (IsFolder(pictures))
        return pictures;
    if (IsFolder(home))
        return home.size() > 1 && home.back() == '/' ? home.substr(0, home.size() - 1) : home;
    return "/";
}

MainDialogFields DefaultMainDialogFields() {
    MainDialogFields fields;
    fields.m_baseFolder = DefaultPicturesFolder();
    fields.m_galleryFolder =
        fields.m_baseFolder == "/" ? "/Galleries" : fields.m_baseFolder + "/Galleries";
    return fields;
}

} // namespace tivox
