#include "platform/file_ops.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace tivox {

int FileOps::Open(const std::string& path, int flags, mode_t mode) {
    return ::open(path.c_str(), flags, mode);
}

ssize_t FileOps::Write(int fd, const void* data, std::size_t size) {
    return ::write(fd, data, size);
}

int FileOps::Fsync(int fd) {
    return ::fsync(fd);
}

int FileOps::Syncfs(int fd) {
    return ::syncfs(fd);
}

int FileOps::Close(int fd) {
    return ::close(fd);
}

int FileOps::Rename(const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str());
}

bool FileOps::WriteAll(int fd, const void* data, std::size_t size) {
    const auto* bytes = static_cast<const char*>(data);
    for (std::size_t done = 0; done < size;) {
        const ssize_t n = Write(fd, bytes + done, size - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            if (n == 0)
                errno = EIO; // no progress and no reason: do not spin
            return false;
        }
        done += std::size_t(n);
    }
    return true;
}

FileOps& SystemFileOps() {
    static FileOps system; // no state of its own: the real calls only
    return system;
}

RemoveUnlessKept::~RemoveUnlessKept() {
    if (!m_path.empty())
        ::unlink(m_path.c_str());
}

std::string FolderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

} // namespace tivox
