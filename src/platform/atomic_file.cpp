#include "platform/atomic_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tivox {

namespace {

// Closes a descriptor when the scope ends.
class Fd {
public:
    explicit Fd(int fd) : m_fd(fd) {}
    ~Fd() {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    int get() const { return m_fd; }
    // Closes now and reports whether the close succeeded.
    bool Close() {
        const int fd = m_fd;
        m_fd = -1;
        return ::close(fd) == 0;
    }

private:
    int m_fd;
};

std::string Describe(const std::string& what, const std::string& path) {
    return what + " " + path + ": " + std::strerror(errno);
}

std::string FolderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

} // namespace

bool ReadWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes, std::string& error) {
    // Non-blocking, so that a FIFO under a photo's name can't stall the
    // open; the check below then refuses it.
    Fd fd(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (fd.get() < 0) {
        error = Describe("cannot open", path);
        return false;
    }
    struct stat st {};
    if (::fstat(fd.get(), &st) != 0 || !S_ISREG(st.st_mode)) {
        error = "not a regular file: " + path;
        return false;
    }
    // Grow as we go: the file may change size while it is read.
    std::size_t used = 0;
    bytes.resize(std::size_t(st.st_size) + 1);
    for (;;) {
        if (used == bytes.size())
            bytes.resize(bytes.size() * 2 + 4096);
        const ssize_t n = ::read(fd.get(), bytes.data() + used, bytes.size() - used);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            error = Describe("cannot read", path);
            bytes.clear();
            return false;
        }
        if (n == 0)
            break;
        used += std::size_t(n);
    }
    bytes.resize(used);
    return true;
}

bool WriteWholeFile(const std::string& path, const std::uint8_t* data, std::size_t size,
                    std::string& error, bool sync) {
    Fd fd(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    if (fd.get() < 0) {
        error = Describe("cannot create", path);
        return false;
    }
    std::size_t done = 0;
    while (done < size) {
        const ssize_t n = ::write(fd.get(), data + done, size - done);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            error = Describe("cannot write", path);
            return false;
        }
        done += std::size_t(n);
    }
    if (sync && ::fsync(fd.get()) != 0) {
        error = Describe("cannot flush", path);
        return false;
    }
    if (!fd.Close()) {
        error = Describe("cannot close", path);
        return false;
    }
    return true;
}

bool ReplaceFileDurably(const std::string& tempPath, const std::string& path, int& errorNumber,
                        std::string& error) {
    errorNumber = 0;
    {
        Fd fd(::open(tempPath.c_str(), O_RDONLY | O_CLOEXEC));
        if (fd.get() < 0 || ::fsync(fd.get()) != 0) {
            errorNumber = errno;
            error = Describe("cannot flush", tempPath);
            return false;
        }
    }
    if (::rename(tempPath.c_str(), path.c_str()) != 0) {
        errorNumber = errno;
        error = Describe("cannot rename over", path);
        return false;
    }
    // The new name must reach the disc too; a folder that cannot be flushed
    // (some file systems refuse) does not undo the replacement.
    Fd dir(::open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (dir.get() >= 0)
        ::fsync(dir.get());
    return true;
}

} // namespace tivox
