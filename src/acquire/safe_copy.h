#pragma once
// Copies that never leave a half-written file under a photo's name, and
// renames that never replace. A copy goes to a hidden temporary file in the
// target folder, keeps the source's modification time, is flushed to the
// disc, read back and compared with the source, and only then gets its final
// name, which must not exist yet.
//
// Flushing file by file costs a journal commit each, so copies are staged in
// batches: each staged file is written completely, and one flush of the file
// system makes the whole batch durable. The source is read once and hashed
// (XXH3) on the way; the check reads each copy back from the disc and hashes
// it again. It runs on a helper thread while the caller stages the next
// batch, so that the disc reads the one batch back while it writes the
// other. The copies are named on the caller's thread, in the order they were
// staged. The source is opened read-only and its access time is left alone
// where the system allows.
//
// With SetTurnUpright a photo whose EXIF Orientation asks for a turn is read
// whole, turned losslessly in memory and written upright with Orientation 1;
// the check then compares the copy with those turned bytes. A photo that
// cannot be turned without trimming its edge is copied as it is.
//
// One thread uses an object; the helper thread sees only the batch it checks.

#include <cstdint>
#include <functional>
#include <future>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_ops.h"
#include "platform/ui_text.h"

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
    // turned: the copy was stood upright on the way.
    using Linked = std::function<void(const std::string& finalPath, bool turned)>;
    using Failed = std::function<void(const std::string& source, const UiText& cause)>;

    // ops: the writes and flushes, which tests make fail.
    explicit CStagedCopies(FileOps& ops = SystemFileOps()) : m_ops(ops) {}
    ~CStagedCopies(); // removes the temporary files of copies never named
    CStagedCopies(const CStagedCopies&) = delete;
    CStagedCopies& operator=(const CStagedCopies&) = delete;

    // Copies source into a temporary file in folder, to be named finalName
    // once checked. False, with the cause and nothing left behind, when the
    // source can't be read or the target can't take the copy.
    bool Stage(const std::string& source, const std::string& folder, const std::string& finalName,
               UiText& cause);

    // Number of staged copies and their bytes, for the caller's batch limit.
    std::size_t Count() const { return m_staged.size(); }
    std::uint64_t Bytes() const { return m_bytes; }

    // Whether the copies staged from now on are stood upright by their
    // Orientation tag (off at first).
    void SetTurnUpright(bool upright) { m_upright = upright; }

    // Names the batch whose check is under way, once it is done; then
    // flushes the staged copies to the disc and starts their check. Each
    // copy that reads back equal to its source gets its final name without
    // replacing, and linked its final path; each other one is removed, and
    // failed gets its source and the cause.
    void Commit(const Linked& linked, const Failed& failed);
    // Commit, then waits for the check and names the copies: none is left.
    void Finish(const Linked& linked, const Failed& failed);

    // Flushes the file system that holds folder, so that the names given
    // since the last Finish last. False with the cause when it can't.
    bool SyncNames(const std::string& folder, UiText& cause);

private:
    struct Staged {
        std::string source;
        std::string tempPath;
        std::string finalPath;
        std::uint64_t hash;
        bool turned;
    };
    // Per copy of a batch: the cause of a failed check; an empty format when
    // the copy read back equal.
    using Checked = std::pair<std::vector<Staged>, std::vector<UiText>>;

    bool CopyAndHash(int in, int out, std::uint64_t& hash, bool& turned, UiText& cause);
    // The rest of a copy whose first `head` bytes, in m_buffer, give an
    // orientation that asks for a turn: reads the whole photo and writes it
    // upright, or as it is when the turn would not be perfect.
    bool CopyTurned(int in, int out, std::size_t head, int orientation, std::uint64_t& hash,
                    bool& turned, UiText& cause);
    // Reads each copy back from the disc and compares its hash with the
    // source's. Runs on the helper thread and touches nothing but the batch.
    static std::vector<UiText> CheckBatch(const std::vector<Staged>& batch);
    void NameChecked(const Linked& linked, const Failed& failed);

    FileOps& m_ops;
    std::vector<unsigned char> m_buffer;
    std::vector<Staged> m_staged;
    std::uint64_t m_bytes = 0;
    bool m_upright = false;
    std::future<Checked> m_checking;
};

} // namespace tivox
