#include "acquire/safe_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "acquire/file_walker.h"

namespace tivox {

namespace {

class Fd {
public:
    explicit Fd(int fd = -1) : m_fd(fd) {}
    ~Fd() {
        if (m_fd >= 0)
            close(m_fd);
    }
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    int get() const { return m_fd; }
    explicit operator bool() const { return m_fd >= 0; }
    // Closes now and tells whether the close reported an error.
    bool Close() {
        const int fd = m_fd;
        m_fd = -1;
        return fd < 0 || close(fd) == 0;
    }

private:
    int m_fd;
};

// Opens the source read-only, without touching its access time when the
// system lets us (it does for the file's owner).
int OpenSource(const std::string& path) {
    int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOATIME);
    if (fd < 0 && errno == EPERM)
        fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    return fd;
}

bool CopyWithBuffer(int in, int out) {
    std::vector<char> buffer(1 << 18);
    for (;;) {
        const ssize_t n = read(in, buffer.data(), buffer.size());
        if (n == 0)
            return true;
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        for (ssize_t done = 0; done < n;) {
            const ssize_t w = write(out, buffer.data() + done, std::size_t(n - done));
            if (w < 0) {
                if (errno == EINTR)
                    continue;
                return false;
            }
            done += w;
        }
    }
}

// The whole content of in into out. The kernel copies by itself where it can;
// file systems that refuse get an ordinary read and write loop.
bool CopyContent(int in, int out, std::uint64_t size) {
    std::uint64_t left = size;
    bool first = true;
    while (left > 0) {
        const ssize_t n = copy_file_range(in, nullptr, out, nullptr, std::size_t(left), 0);
        if (n > 0) {
            left -= std::uint64_t(n);
            first = false;
            continue;
        }
        if (n == 0)
            break; // the source got shorter; read on to its true end
        if (errno == EINTR)
            continue;
        if (first && (errno == EXDEV || errno == ENOSYS || errno == EINVAL || errno == EOPNOTSUPP ||
                      errno == EBADF))
            return CopyWithBuffer(in, out);
        return false;
    }
    // A source that grew or shrank while copying is read to its end.
    return CopyWithBuffer(in, out);
}

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
    Discard();
}

bool CStagedCopies::Stage(const std::string& source, const std::string& folder,
                          const std::string& finalName) {
    Fd in(OpenSource(source));
    struct stat st {};
    if (!in || fstat(in.get(), &st) != 0 || !S_ISREG(st.st_mode))
        return false;
    std::string temp = folder;
    AppendBackslash(temp);
    const std::string finalPath = temp + finalName;
    temp += ".tivox-copy-XXXXXX";
    Fd out(mkostemp(temp.data(), O_CLOEXEC));
    if (!out)
        return false;
    const timespec times[2] = {st.st_atim, st.st_mtim};
    bool ok = CopyContent(in.get(), out.get(), std::uint64_t(st.st_size)) &&
              fchmod(out.get(), (st.st_mode & 0666) | S_IRUSR | S_IWUSR) == 0 &&
              futimens(out.get(), times) == 0;
    // Start the write-back now, so that the flush of the batch finds little
    // left to do.
    if (ok)
        sync_file_range(out.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
    ok = out.Close() && ok;
    if (!ok) {
        unlink(temp.c_str());
        return false;
    }
    m_staged.push_back({temp, finalPath});
    m_bytes += std::uint64_t(st.st_size);
    return true;
}

void CStagedCopies::Commit(const std::function<void(const std::string& finalPath)>& linked) {
    if (m_staged.empty())
        return;
    // One flush of the file system covers every staged file; a failure means
    // none of them can be trusted.
    std::string folder, name;
    SplitFolderPath(m_staged.front().tempPath, folder, name);
    Fd dir(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!dir || syncfs(dir.get()) != 0) {
        Discard();
        return;
    }
    std::vector<Staged> staged;
    staged.swap(m_staged);
    m_bytes = 0;
    for (const Staged& s : staged) {
        if (RenameNoReplace(s.tempPath, s.finalPath) == RenameResult::Ok) {
            if (linked)
                linked(s.finalPath);
        } else {
            unlink(s.tempPath.c_str());
        }
    }
}

void CStagedCopies::Discard() {
    for (const Staged& s : m_staged)
        unlink(s.tempPath.c_str());
    m_staged.clear();
    m_bytes = 0;
}

bool CopyFileNoReplace(const std::string& source, const std::string& target) {
    std::string folder, name;
    if (!SplitFolderPath(target, folder, name))
        return false;
    CStagedCopies copies;
    if (!copies.Stage(source, folder, name))
        return false;
    bool done = false;
    copies.Commit([&](const std::string&) { done = true; });
    return done;
}

} // namespace tivox
