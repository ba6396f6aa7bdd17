#include "platform/trash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>

#include "platform/percent_encoding.h"

namespace tivox {

namespace {

// Makes `path` with mode 0700 unless it is there; true when it is a folder
// of this user and not a link (a trash elsewhere is not ours to use).
bool OwnFolder(const std::string& path) {
    if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST)
        return false;
    struct stat st {};
    if (::lstat(path.c_str(), &st) != 0)
        return false;
    if (!S_ISDIR(st.st_mode) || st.st_uid != ::getuid()) {
        errno = ENOTDIR;
        return false;
    }
    return true;
}

// The home trash may not exist yet, nor the folders above it.
bool OwnFolders(const std::string& path) {
    for (auto slash = path.find('/', 1); slash != std::string::npos;
         slash = path.find('/', slash + 1))
        if (::mkdir(path.substr(0, slash).c_str(), 0700) != 0 && errno != EEXIST)
            return false;
    return OwnFolder(path);
}

// The device of `path`, or of the nearest folder above it that exists.
bool DeviceOf(std::string path, dev_t& device) {
    struct stat st {};
    while (::stat(path.c_str(), &st) != 0) {
        if (path == "/" || path == ".")
            return false;
        path = FolderOf(path);
    }
    device = st.st_dev;
    return true;
}

// The mount point holding the absolute `folder` on `device`.
std::string TopFolderOf(std::string folder, dev_t device) {
    while (folder != "/") {
        const std::string up = FolderOf(folder);
        struct stat st {};
        if (::stat(up.c_str(), &st) != 0 || st.st_dev != device)
            break;
        folder = up;
    }
    return folder;
}

std::string RealPath(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                           &std::free);
    return real ? std::string(real.get()) : std::string();
}

std::string InfoText(const std::string& originalPath) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    char date[32] = {};
    ::localtime_r(&now, &local);
    std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &local);
    return "[Trash Info]\nPath=" + PercentEncodePath(originalPath) + "\nDeletionDate=" + date +
           "\n";
}

} // namespace

std::string HomeTrashFolder() {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data && data[0] == '/')
        return std::string(data) + "/Trash";
    const char* home = std::getenv("HOME");
    if (home && home[0] == '/')
        return std::string(home) + "/.local/share/Trash";
    return {};
}

std::string VolumeTrashFolder(const std::string& topdir) {
    const std::string base = topdir == "/" ? "" : topdir;
    const std::string uid = std::to_string(::getuid());
    // A shared trash is used only as an administrator sets it up: a folder
    // with the sticky bit, so that users cannot remove each other's files.
    const std::string shared = base + "/.Trash";
    struct stat st {};
    if (::lstat(shared.c_str(), &st) == 0 && S_ISDIR(st.st_mode) && (st.st_mode & S_ISVTX) != 0 &&
        OwnFolder(shared + "/" + uid))
        return shared + "/" + uid;
    const std::string own = base + "/.Trash-" + uid;
    return OwnFolder(own) ? own : std::string();
}

std::string PercentEncodePath(const std::string& path) {
    return PercentEncode(path, [](unsigned char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               (c != 0 && std::strchr("-._~/", c) != nullptr);
    });
}

bool MoveToTrash(const std::string& path, std::string& trashed, UiText& error,
                 const std::string& homeTrash, FileOps& ops) {
    const auto fail = [&](int errorNumber) {
        error = {TIVOX_TR("Could not move %s to the Trash: %s"),
                 {path, std::strerror(errorNumber)}};
        return false;
    };
    struct stat file {};
    if (::lstat(path.c_str(), &file) != 0)
        return fail(errno);
    if (S_ISDIR(file.st_mode))
        return fail(EISDIR);
    const std::string folder = RealPath(FolderOf(path));
    if (folder.empty())
        return fail(errno);
    const std::string name = path.substr(path.rfind('/') + 1);
    const std::string original = (folder == "/" ? "" : folder) + "/" + name;

    // A file never leaves its volume: a rename is all the move does.
    std::string trash = homeTrash, infoPath = original;
    dev_t homeDevice{};
    if (!homeTrash.empty() && DeviceOf(homeTrash, homeDevice) && homeDevice == file.st_dev) {
        if (!OwnFolders(trash))
            return fail(errno);
    } else {
        const std::string top = TopFolderOf(folder, file.st_dev);
        trash = VolumeTrashFolder(top);
        if (trash.empty()) {
            error = {TIVOX_TR("Could not move %s to the Trash: its volume has no Trash folder."),
                     {path}};
            return false;
        }
        // Relative to the volume, so that it restores wherever the volume is mounted.
        infoPath = original.substr(top == "/" ? 1 : top.size() + 1);
    }
    if (!OwnFolder(trash + "/files") || !OwnFolder(trash + "/info"))
        return fail(errno);

    const auto dot = name.rfind('.');
    const bool hasExtension = dot != std::string::npos && dot > 0;
    const std::string stem = hasExtension ? name.substr(0, dot) : name;
    const std::string extension = hasExtension ? name.substr(dot) : "";
    const std::string info = InfoText(infoPath);
    for (int n = 1; n < 10000; ++n) {
        const std::string entry = n == 1 ? name : stem + "." + std::to_string(n) + extension;
        // The info file is created first and exclusively: it claims the name.
        const std::string infoFile = trash + "/info/" + entry + ".trashinfo";
        OpsFd out(ops, ops.Open(infoFile, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (out.get() < 0 && errno == EEXIST)
            continue;
        if (out.get() < 0)
            return fail(errno);
        RemoveUnlessKept claim(infoFile);
        const std::string target = trash + "/files/" + entry;
        struct stat taken {};
        if (::lstat(target.c_str(), &taken) == 0)
            continue; // a file without its info file: leave it
        if (!ops.WriteAll(out.get(), info.data(), info.size()) || ops.Fsync(out.get()) != 0 ||
            !out.Close() || ops.Rename(path, target) != 0)
            return fail(errno);
        claim.Keep();
        trashed = target;
        return true;
    }
    return fail(EEXIST);
}

} // namespace tivox
