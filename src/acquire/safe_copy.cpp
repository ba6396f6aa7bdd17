#include "acquire/safe_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xxhash.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "acquire/file_walker.h"
#include "acquire/upright_photo.h"
#include "exif/exif_orientation.h"
#include "platform/atomic_file.h"

namespace tivox {

namespace {

// The size of the kernel's read-ahead: bigger reads wait for the disc
// instead of finding the data already on its way.
constexpr std::size_t kBufferSize = std::size_t(128) << 10;

struct HashStateFree {
    void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
};

class Hash {
public:
    Hash() : m_state(XXH3_createState()) {
        if (m_state)
            XXH3_64bits_reset(m_state.get());
    }
    explicit operator bool() const { return m_state != nullptr; }
    void Add(const void* data, std::size_t size) { XXH3_64bits_update(m_state.get(), data, size); }
    std::uint64_t Value() const { return XXH3_64bits_digest(m_state.get()); }

private:
    std::unique_ptr<XXH3_state_t, HashStateFree> m_state;
};

// Opens the source read-only, without touching its access time when the
// system lets us (it does for the file's owner).
int OpenSource(const std::string& path) {
    int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOATIME);
    if (fd < 0 && errno == EPERM)
        fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    return fd;
}

// The cause of a failed call: a full disc in plain words, anything else with
// the system's text for error.
UiText SystemCause(const char* format, int error) {
    if (error == ENOSPC || error == EDQUOT)
        return {TIVOX_TR("the disc is full"), {}};
    return {format, {std::strerror(error)}};
}

// A read that goes on after a signal.
ssize_t ReadOn(int fd, void* data, std::size_t size) {
    ssize_t n;
    do {
        n = read(fd, data, size);
    } while (n < 0 && errno == EINTR);
    return n;
}

const char* const kCannotRead = TIVOX_TR("cannot be read: %s");
const char* const kCannotWrite = TIVOX_TR("the copy cannot be written: %s");
const char* const kCannotReadBack = TIVOX_TR("the copy cannot be read back: %s");

} // namespace

RenameResult RenameNoReplace(const std::string& from, const std::string& to) {
    if (from == to)
        return RenameResult::Ok;
    int rc = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    if (rc != 0 && (errno == EINVAL || errno == ENOSYS)) {
        // File systems without the flag: a hard link fails just as well when
        // the name exists.
        rc = link(from.c_str(), to.c_str());
        if (rc == 0)
            unlink(from.c_str());
    }
    if (rc == 0)
        return RenameResult::Ok;
    switch (errno) {
    case EEXIST:
    case ENOTEMPTY:
    case EACCES:
    case EPERM:
        return RenameResult::AccessDenied;
    default:
        return RenameResult::OtherFailure;
    }
}

CStagedCopies::~CStagedCopies() {
    if (m_checking.valid()) {
        const Checked checked = m_checking.get();
        for (const Staged& s : checked.first)
            unlink(s.tempPath.c_str());
    }
    for (const Staged& s : m_staged)
        unlink(s.tempPath.c_str());
}

bool CStagedCopies::CopyAndHash(int in, int out, std::uint64_t& hash, bool& turned, UiText& cause) {
    Hash sum;
    if (!sum) {
        cause = SystemCause(kCannotRead, ENOMEM);
        return false;
    }
    m_buffer.resize(kBufferSize);
    turned = false;
    bool head = m_upright;
    // Read to the true end, also when the source grew or shrank meanwhile.
    for (;;) {
        const ssize_t n = ReadOn(in, m_buffer.data(), m_buffer.size());
        if (n == 0)
            break;
        if (n < 0) {
            cause = SystemCause(kCannotRead, errno);
            return false;
        }
        // The first read holds the EXIF section of any camera's photo. Only
        // a photo that asks for a turn leaves this loop, which streams the
        // rest as before.
        if (head) {
            const int orientation = JpegOrientation(m_buffer.data(), std::size_t(n));
            if (orientation > 1)
                return CopyTurned(in, out, std::size_t(n), orientation, hash, turned, cause);
            head = false;
        }
        sum.Add(m_buffer.data(), std::size_t(n));
        if (!m_ops.WriteAll(out, m_buffer.data(), std::size_t(n))) {
            cause = SystemCause(kCannotWrite, errno);
            return false;
        }
    }
    hash = sum.Value();
    return true;
}

bool CStagedCopies::CopyTurned(int in, int out, std::size_t head, int orientation,
                               std::uint64_t& hash, bool& turned, UiText& cause) {
    std::vector<std::uint8_t> photo(m_buffer.begin(), m_buffer.begin() + long(head));
    struct stat st {};
    const std::size_t size = fstat(in, &st) == 0 && st.st_size > 0 ? std::size_t(st.st_size) : 0;
    if (!AppendRest(in, photo, size)) {
        cause = SystemCause(kCannotRead, errno);
        return false;
    }
    // The turn is made from the bytes just read, and the check compares the
    // copy with the turned bytes. A photo that can't be turned perfectly
    // arrives byte for byte as the camera wrote it.
    std::vector<std::uint8_t> upright;
    turned = TurnUpright(photo, orientation, upright);
    const std::vector<std::uint8_t>& written = turned ? upright : photo;
    hash = XXH3_64bits(written.data(), written.size());
    if (!m_ops.WriteAll(out, written.data(), written.size())) {
        cause = SystemCause(kCannotWrite, errno);
        return false;
    }
    return true;
}

bool CStagedCopies::Stage(const std::string& source, const std::string& folder,
                          const std::string& finalName, UiText& cause) {
    OpsFd in(m_ops, OpenSource(source));
    struct stat st {};
    if (!in || fstat(in.get(), &st) != 0) {
        cause = SystemCause(kCannotRead, errno);
        return false;
    }
    if (!S_ISREG(st.st_mode)) {
        cause = {TIVOX_TR("not a regular file"), {}};
        return false;
    }
    posix_fadvise(in.get(), 0, 0, POSIX_FADV_SEQUENTIAL); // a longer read-ahead
    std::string temp = folder;
    AppendBackslash(temp);
    const std::string finalPath = temp + finalName;
    temp += ".tivox-copy-XXXXXX";
    OpsFd out(m_ops, mkostemp(temp.data(), O_CLOEXEC));
    if (!out) {
        cause = SystemCause(kCannotWrite, errno);
        return false;
    }
    const timespec times[2] = {st.st_atim, st.st_mtim};
    std::uint64_t hash = 0;
    bool turned = false;
    bool ok = CopyAndHash(in.get(), out.get(), hash, turned, cause);
    if (ok && (fchmod(out.get(), (st.st_mode & 0666) | S_IRUSR | S_IWUSR) != 0 ||
               futimens(out.get(), times) != 0)) {
        cause = SystemCause(kCannotWrite, errno);
        ok = false;
    }
    // Start the write-back now, so that the flush of the batch finds little
    // left to do.
    if (ok)
        sync_file_range(out.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
    if (!out.Close() && ok) {
        cause = SystemCause(kCannotWrite, errno);
        ok = false;
    }
    if (!ok) {
        unlink(temp.c_str());
        return false;
    }
    m_staged.push_back({source, temp, finalPath, hash, turned});
    m_bytes += std::uint64_t(st.st_size);
    return true;
}

std::vector<UiText> CStagedCopies::CheckBatch(const std::vector<Staged>& batch) {
    // The copies are on the disc and their pages in memory are clean.
    // Dropping those pages makes the reads below come from the disc, not from
    // the bytes just written, which would always compare equal. They are read
    // one after another with the kernel's usual read-ahead: asking for the
    // whole batch at once made the copies of the next batch wait behind it
    // (Get Photos took a quarter longer).
    std::vector<std::pair<OpsFd, int>> files; // each copy, or the errno of its open
    files.reserve(batch.size());
    for (const auto& s : batch) {
        OpsFd fd(SystemFileOps(), open(s.tempPath.c_str(), O_RDONLY | O_CLOEXEC));
        const int error = errno;
        if (fd)
            posix_fadvise(fd.get(), 0, 0, POSIX_FADV_DONTNEED);
        files.emplace_back(std::move(fd), error);
    }
    std::vector<UiText> causes(batch.size());
    std::vector<unsigned char> buffer(kBufferSize);
    for (std::size_t i = 0; i < batch.size(); ++i) {
        const int fd = files[i].first.get();
        Hash sum;
        if (fd < 0 || !sum) {
            causes[i] = SystemCause(kCannotReadBack, fd < 0 ? files[i].second : ENOMEM);
            continue;
        }
        ssize_t n;
        while ((n = read(fd, buffer.data(), buffer.size())) != 0) {
            if (n > 0)
                sum.Add(buffer.data(), std::size_t(n));
            else if (errno != EINTR)
                break;
        }
        if (n < 0)
            causes[i] = SystemCause(kCannotReadBack, errno);
        else if (sum.Value() != batch[i].hash)
            causes[i] = {TIVOX_TR("the copy read back from the disc differs from the original"),
                         {}};
        // And leave no copy in memory: a card is bigger than the page cache.
        posix_fadvise(fd, 0, 0, POSIX_FADV_DONTNEED);
        files[i].first.Close();
    }
    return causes;
}

void CStagedCopies::Commit(const Linked& linked, const Failed& failed) {
    NameChecked(linked, failed);
    if (m_staged.empty())
        return;
    std::vector<Staged> staged;
    staged.swap(m_staged);
    m_bytes = 0;
    // One flush of the file system covers every staged file; a failure means
    // none of them can be trusted.
    std::string folder, name;
    SplitFolderPath(staged.front().tempPath, folder, name);
    OpsFd dir(m_ops, open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!dir || m_ops.Syncfs(dir.get()) != 0) {
        const UiText cause =
            SystemCause(TIVOX_TR("the copy cannot be flushed to the disc: %s"), errno);
        for (const Staged& s : staged) {
            unlink(s.tempPath.c_str());
            if (failed)
                failed(s.source, cause);
        }
        return;
    }
    m_checking = std::async(std::launch::async, [batch = std::move(staged)]() mutable {
        std::vector<UiText> causes = CheckBatch(batch);
        return Checked{std::move(batch), std::move(causes)};
    });
}

void CStagedCopies::Finish(const Linked& linked, const Failed& failed) {
    Commit(linked, failed);
    NameChecked(linked, failed);
}

void CStagedCopies::NameChecked(const Linked& linked, const Failed& failed) {
    if (!m_checking.valid())
        return;
    const Checked checked = m_checking.get();
    for (std::size_t i = 0; i < checked.first.size(); ++i) {
        const Staged& s = checked.first[i];
        UiText cause = checked.second[i];
        if (cause.format.empty()) {
            const RenameResult result = RenameNoReplace(s.tempPath, s.finalPath);
            const int error = errno;
            if (result == RenameResult::Ok) {
                if (linked)
                    linked(s.finalPath, s.turned);
                continue;
            }
            if (error == EEXIST)
                cause = {TIVOX_TR("%s exists already"), {s.finalPath}};
            else
                cause = {TIVOX_TR("the copy cannot be named %s: %s"),
                         {s.finalPath, std::strerror(error)}};
        }
        unlink(s.tempPath.c_str());
        if (failed)
            failed(s.source, cause);
    }
}

bool CStagedCopies::SyncNames(const std::string& folder, UiText& cause) {
    OpsFd dir(m_ops, open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (dir && m_ops.Syncfs(dir.get()) == 0)
        return true;
    cause =
        SystemCause(TIVOX_TR("the names of the copies cannot be flushed to the disc: %s"), errno);
    return false;
}

} // namespace tivox
