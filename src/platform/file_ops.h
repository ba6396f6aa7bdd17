#pragma once
// The system calls on which durable writes depend, behind one narrow class so
// that a test can make any of them fail and see the error path taken. The
// base class makes the real calls; a test double overrides the one it breaks.
// Whoever writes a file durably takes a FileOps& (SystemFileOps() in the
// program). Stateless, so one object serves every thread.

#include <cstddef>
#include <string>
#include <sys/types.h>
#include <utility>

namespace tivox {

class FileOps {
public:
    virtual ~FileOps() = default;
    virtual int Open(const std::string& path, int flags, mode_t mode);
    virtual ssize_t Write(int fd, const void* data, std::size_t size);
    virtual int Fsync(int fd);
    virtual int Syncfs(int fd);
    // The descriptor is released even when the close reports an error.
    virtual int Close(int fd);
    virtual int Rename(const std::string& from, const std::string& to);

    // Writes all `size` bytes through Write, again after short writes and
    // interruptions. False with errno set on failure.
    bool WriteAll(int fd, const void* data, std::size_t size);
};

// The real calls.
FileOps& SystemFileOps();

// Owns a descriptor opened through `ops` and closes it through them.
class OpsFd {
public:
    OpsFd(FileOps& ops, int fd) : m_ops(ops), m_fd(fd) {}
    ~OpsFd() {
        if (m_fd >= 0)
            m_ops.Close(m_fd);
    }
    OpsFd(OpsFd&& other) noexcept : m_ops(other.m_ops), m_fd(std::exchange(other.m_fd, -1)) {}
    OpsFd(const OpsFd&) = delete;
    OpsFd& operator=(const OpsFd&) = delete;
    OpsFd& operator=(OpsFd&&) = delete;
    int get() const { return m_fd; }
    explicit operator bool() const { return m_fd >= 0; }
    // Closes now; false (errno set) when the close reported an error, which
    // for a written file may be the first news of a failed write.
    bool Close() {
        const int fd = m_fd;
        m_fd = -1;
        return fd < 0 || m_ops.Close(fd) == 0;
    }

private:
    FileOps& m_ops;
    int m_fd;
};

// Removes a file that is not finished when the scope ends, unless kept.
class RemoveUnlessKept {
public:
    explicit RemoveUnlessKept(std::string path) : m_path(std::move(path)) {}
    ~RemoveUnlessKept();
    RemoveUnlessKept(const RemoveUnlessKept&) = delete;
    RemoveUnlessKept& operator=(const RemoveUnlessKept&) = delete;
    void Keep() { m_path.clear(); }

private:
    std::string m_path;
};

// The folder part of `path`: "/p" for "/p/a.jpg", "/" for "/a.jpg", "." for "a.jpg".
std::string FolderOf(const std::string& path);

} // namespace tivox
