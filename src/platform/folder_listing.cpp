#include "platform/folder_listing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace tivox {

namespace {

struct DirCloser {
    void operator()(DIR* d) const { closedir(d); }
};

EntryKind KindOf(int dirFd, const dirent& e) {
    struct stat st {};
    switch (e.d_type) {
    case DT_REG:
        return EntryKind::File;
    case DT_DIR:
        return EntryKind::Folder;
    case DT_LNK: // what the link leads to, but a folder is not entered
        return fstatat(dirFd, e.d_name, &st, 0) == 0 && S_ISREG(st.st_mode) ? EntryKind::File
                                                                            : EntryKind::Other;
    case DT_UNKNOWN: // some file systems don't say: ask, and look through a link
        if (fstatat(dirFd, e.d_name, &st, AT_SYMLINK_NOFOLLOW) != 0)
            return EntryKind::Other;
        if (S_ISDIR(st.st_mode))
            return EntryKind::Folder;
        if (S_ISLNK(st.st_mode) && fstatat(dirFd, e.d_name, &st, 0) != 0)
            return EntryKind::Other;
        return S_ISREG(st.st_mode) ? EntryKind::File : EntryKind::Other;
    default:
        return EntryKind::Other;
    }
}

} // namespace

bool ListFolder(const std::string& folder, std::vector<FolderEntry>& entries) {
    entries.clear();
    std::unique_ptr<DIR, DirCloser> dir(opendir(folder.c_str()));
    if (!dir)
        return false;
    const int fd = dirfd(dir.get());
    for (;;) {
        errno = 0;
        const dirent* e = readdir(dir.get());
        if (!e)
            break;
        const std::string name = e->d_name;
        if (name != "." && name != "..")
            entries.push_back({name, KindOf(fd, *e)});
    }
    if (errno != 0) {
        entries.clear();
        return false;
    }
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    return true;
}

} // namespace tivox
