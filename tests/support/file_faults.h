#pragma once
// A FileOps whose n-th call of one kind fails with a chosen errno, for the
// error and durability paths of whatever writes files through FileOps.
// Header only.

#include <cerrno>

#include "platform/file_ops.h"

namespace tivox::test {

class FaultyFileOps : public FileOps {
public:
    enum Kind { kOpen, kWrite, kFsync, kSyncfs, kClose, kRename, kKinds };

    FaultyFileOps(Kind kind, int error, int nth = 1) : m_kind(kind), m_error(error), m_nth(nth) {}

    int Open(const std::string& path, int flags, mode_t mode) override {
        return Fails(kOpen) ? -1 : FileOps::Open(path, flags, mode);
    }
    ssize_t Write(int fd, const void* data, std::size_t size) override {
        return Fails(kWrite) ? -1 : FileOps::Write(fd, data, size);
    }
    int Fsync(int fd) override { return Fails(kFsync) ? -1 : FileOps::Fsync(fd); }
    int Syncfs(int fd) override { return Fails(kSyncfs) ? -1 : FileOps::Syncfs(fd); }
    // The descriptor is gone all the same, as on Linux.
    int Close(int fd) override {
        const bool fail = Fails(kClose);
        const int result = FileOps::Close(fd);
        if (fail)
            errno = m_error;
        return fail ? -1 : result;
    }
    int Rename(const std::string& from, const std::string& to) override {
        return Fails(kRename) ? -1 : FileOps::Rename(from, to);
    }

    int calls[kKinds] = {};

private:
    bool Fails(Kind kind) {
        if (++calls[kind] != m_nth || kind != m_kind)
            return false;
        errno = m_error;
        return true;
    }
    Kind m_kind;
    int m_error;
    int m_nth;
};

} // namespace tivox::test
