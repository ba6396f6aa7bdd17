#pragma once
// Folder walking and the small path helpers every command uses. Paths use "/"
// as separator. Nothing here talks to the user or throws; a folder that can't
// be entered counts as empty. Entries are visited sorted by name (byte order),
// sub-folders in place, depth first, so that runs are repeatable. What counts
// as a file or a folder is ListFolder's rule (platform/folder_listing.h): a
// FIFO is never opened, and a link to a folder is never entered.

#include <string>

namespace tivox {

// The entry a walker stands on, handed to OnFile.
class CFileFind {
public:
    CFileFind(std::string path, std::string name)
        : m_path(std::move(path)), m_name(std::move(name)) {}
    const std::string& GetFilePath() const { return m_path; } // full path
    const std::string& GetFileName() const { return m_name; } // bare name

private:
    std::string m_path;
    std::string m_name;
};

class CFileWalker {
public:
    // extension: the filter, compared with the last four characters of each
    // full path without regard to case (".jpg"). Empty lets every file pass.
    explicit CFileWalker(std::string extension = {}) : m_extension(std::move(extension)) {}
    virtual ~CFileWalker() = default;

    // Walks the tree below folder and gives back the number of files that
    // passed the filter. OnFile gets each with this level's running count:
    // it restarts at 1 in each sub-folder, and the parent's count jumps by the
    // sub-folder's total on return.
    int Walk(const std::string& folder);

    // Called for each file that passed. The plain walker only counts.
    virtual void OnFile(const CFileFind& finder, int number);

protected:
    std::string m_extension;
};

// Deletes every file and sub-folder inside folder (not the folder itself).
// Symbolic links are removed, never followed. Gives the number of failures.
int DeleteFolderContents(const std::string& folder);

// Divides a path into its parent and last name: "/a/b" gives "/a" and "b",
// "/Photos" gives "/" and "Photos"; one trailing "/" is ignored. False for
// the root and for a path without "/"; then name stays as it was.
bool SplitFolderPath(const std::string& path, std::string& parent, std::string& name);

// Cuts the string before its last ".", wherever that stands.
void StripExtension(std::string& path);

// True when a file or folder of this name exists. A path that ends in "/"
// counts as not existing.
bool PathExists(const std::string& path);

// True when path names an existing folder (and does not end in "/").
bool IsFolder(const std::string& path);

// Number of plain files directly in folder whose names match pattern ("*.jpg",
// case ignored). Sub-folders are not entered.
int CountFiles(const std::string& folder, const std::string& pattern);

// Appends "/" unless the path is empty or ends in one already.
void AppendBackslash(std::string& path);

// True when folder directly holds a plain file whose name ends in suffix,
// case ignored; an empty suffix matches any file.
bool FolderHasFiles(const std::string& folder, const std::string& suffix);

// What lies below a folder, counted through all levels.
struct FolderContents {
    int files = 0;   // everything that isn't a folder
    int folders = 0; // sub-folders at any depth
    bool Empty() const { return files == 0 && folders == 0; }
};
FolderContents CountFolderContents(const std::string& folder);

// ASCII comparison without regard to case.
bool EqualNoCase(const std::string& a, const std::string& b);

} // namespace tivox
