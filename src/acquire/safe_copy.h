#pragma once
// Copies that never leave a half-written file under a photo's name, and
// renames that never replace. A copy goes to a hidden temporary file in the
// target folder, keeps the source's modification time, is flushed to the
// disc, and only then gets its final name, which must not exist yet.
//
// Flushing file by file costs a journal commit each, so copies are staged in
// batches: each staged file is written completely, one flush of the file
// system makes the whole batch durable, and then the names are linked in
// the order the files were staged. The source is opened read-only and its
// access time is left alone where the system allows.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tivox {

enum class RenameResult {
    Ok,
    AccessDenied, // the new name exists, or the system refused the access
    OtherFailure, // anything else: a missing folder, a name the system refuses
};

// Renames without replacing. Renaming a file to its own name succeeds.
RenameResult RenameNoReplace(const std::string& from, const std::string& to);

class CStagedCopies {
public:
    CStagedCopies() = default;
    ~CStagedCopies(); // removes the temporary files of copies never committed
    CStagedCopies(const CStagedCopies&) = delete;
    CStagedCopies& operator=(const CStagedCopies&) = delete;

    // Copies source into a temporary file in folder, to be named finalName at
    // the next Commit. False (nothing left behind) when the source can't be
    // read or the target can't take the copy.
    bool Stage(const std::string& source, const std::string& folder, const std::string& finalName);

    // Number of staged copies and their bytes, for the caller's batch limit.
    std::size_t Count() const { return m_staged.size(); }
    std::uint64_t Bytes() const { return m_bytes; }

    // Flushes the staged copies to the disc, then gives each its final name
    // without replacing. linked gets the final path of each copy that got its
    // name; the others are removed. Empty afterwards.
    void Commit(const std::function<void(const std::string& finalPath)>& linked);

private:
    struct Staged {
        std::string tempPath;
        std::string finalPath;
    };
    void Discard();

    std::vector<Staged> m_staged;
    std::uint64_t m_bytes = 0;
};

// One copy on its own: staged and committed at once. False when it failed,
// also when target exists.
bool CopyFileNoReplace(const std::string& source, const std::string& target);

} // namespace tivox
