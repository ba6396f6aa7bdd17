#include "acquire/file_walker.h"

#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

#include "platform/folder_listing.h"

namespace tivox {

namespace {

std::string Join(const std::string& folder, const std::string& name) {
    std::string path = folder;
    AppendBackslash(path);
    return path + name;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

bool EndsWithNoCase(const std::string& text, const std::string& suffix) {
    if (suffix.size() > text.size())
        return false;
    return EqualNoCase(text.substr(text.size() - suffix.size()), suffix);
}

} // namespace

bool EqualNoCase(const std::string& a, const std::string& b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Lower(a[i]) != Lower(b[i]))
            return false;
    return true;
}

int CFileWalker::Walk(const std::string& folder) {
    int count = 0;
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, entries))
        return 0;
    for (const FolderEntry& e : entries) {
        const std::string path = Join(folder, e.name);
        if (e.kind == EntryKind::Folder) {
            count += Walk(path);
            continue;
        }
        if (e.kind != EntryKind::File)
            continue;
        // The filter looks at exactly the last four characters of the path,
        // so ".jpeg" doesn't pass ".jpg".
        if (!m_extension.empty()) {
            if (path.size() < 4 || !EqualNoCase(path.substr(path.size() - 4), m_extension))
                continue;
        }
        ++count;
        OnFile(CFileFind(path, e.name), count);
    }
    return count;
}

void CFileWalker::OnFile(const CFileFind&, int) {}

int DeleteFolderContents(const std::string& folder) {
    int failures = 0;
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, entries))
        return 0;
    for (const FolderEntry& e : entries) {
        const std::string path = Join(folder, e.name);
        if (e.kind == EntryKind::Folder) {
            failures += DeleteFolderContents(path);
            if (rmdir(path.c_str()) != 0)
                ++failures;
        } else if (unlink(path.c_str()) != 0) {
            ++failures;
        }
    }
    return failures;
}

bool SplitFolderPath(const std::string& path, std::string& parent, std::string& name) {
    if (path.empty() || path == "/")
        return false;
    parent = path;
    if (parent.size() > 1 && parent.back() == '/')
        parent.pop_back();
    const auto slash = parent.find_last_of('/');
    if (slash == std::string::npos || slash + 1 == parent.size())
        return false;
    name = parent.substr(slash + 1);
    // The parent of a folder directly below the root is the root itself.
    parent = slash == 0 ? std::string("/") : parent.substr(0, slash);
    return true;
}

void StripExtension(std::string& path) {
    const auto dot = path.find_last_of('.');
    if (dot != std::string::npos)
        path.resize(dot);
}

bool PathExists(const std::string& path) {
    if (path.empty() || path.back() == '/')
        return false;
    struct stat st {};
    return stat(path.c_str(), &st) == 0;
}

bool IsFolder(const std::string& path) {
    if (path.empty() || path.back() == '/')
        return false;
    struct stat st {};
    return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

int CountFiles(const std::string& folder, const std::string& pattern) {
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, entries))
        return 0;
    int count = 0;
    for (const FolderEntry& e : entries)
        if (e.kind == EntryKind::File &&
            fnmatch(pattern.c_str(), e.name.c_str(), FNM_CASEFOLD) == 0)
            ++count;
    return count;
}

void AppendBackslash(std::string& path) {
    if (!path.empty() && path.back() != '/')
        path += '/';
}

bool FolderHasFiles(const std::string& folder, const std::string& suffix) {
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, entries))
        return false;
    for (const FolderEntry& e : entries)
        if (e.kind == EntryKind::File && EndsWithNoCase(e.name, suffix))
            return true;
    return false;
}

FolderContents CountFolderContents(const std::string& folder) {
    FolderContents contents;
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, entries))
        return contents;
    for (const FolderEntry& e : entries) {
        if (e.kind == EntryKind::Folder) {
            ++contents.folders;
            const FolderContents below = CountFolderContents(Join(folder, e.name));
            contents.files += below.files;
            contents.folders += below.folders;
        } else {
            ++contents.files;
        }
    }
    return contents;
}

} // namespace tivox
