#include "platform/atomic_file.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tivox {

namespace {

std::string Describe(const std::string& what, const std::string& path) {
    return what + " " + path + ": " + std::strerror(errno);
}

// The temporary file for `path`: hidden (a leading point), beside it, with a
// random part so that it cannot be a name the user chose.
std::string HiddenTempName(const std::string& path, int attempt) {
    static constexpr char kLetters[] =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::uint64_t bits = 0;
    if (::getrandom(&bits, sizeof bits, GRND_NONBLOCK) != ssize_t(sizeof bits))
        bits = std::uint64_t(std::chrono::steady_clock::now().time_since_epoch().count()) ^
               (std::uint64_t(::getpid()) << 32) ^ std::uint64_t(attempt);
    const auto slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
    // Long names are cut so that the temporary one stays within NAME_MAX.
    std::string name = "." + path.substr(folder.size()).substr(0, 200) + ".";
    for (int i = 0; i < 10; ++i, bits /= 62)
        name += kLetters[bits % 62];
    return folder + name + ".tmp";
}

} // namespace

namespace {

// Reads `path` from its start, all of it or at most `limit` bytes.
bool ReadFile(const std::string& path, std::size_t limit, std::vector<std::uint8_t>& bytes,
              std::string& error) {
    // Non-blocking, so that a FIFO under a photo's name can't stall the
    // open; the check below then refuses it.
    OpsFd fd(SystemFileOps(), ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (fd.get() < 0) {
        error = Describe("cannot open", path);
        return false;
    }
    struct stat st {};
    if (::fstat(fd.get(), &st) != 0 || !S_ISREG(st.st_mode)) {
        error = "not a regular file: " + path;
        return false;
    }
    bytes.clear();
    bool read = true;
    if (std::size_t(st.st_size) < limit) {
        read = AppendRest(fd.get(), bytes, std::size_t(st.st_size));
    } else {
        bytes.resize(limit);
        std::size_t used = 0;
        while (used < limit) {
            const ssize_t n = ::read(fd.get(), bytes.data() + used, limit - used);
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0) {
                read = n == 0;
                break;
            }
            used += std::size_t(n);
        }
        bytes.resize(used);
    }
    if (!read) {
        error = Describe("cannot read", path);
        bytes.clear();
    }
    return read;
}

} // namespace

bool ReadWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes, std::string& error) {
    return ReadFile(path, SIZE_MAX, bytes, error);
}

bool ReadFileStart(const std::string& path, std::size_t limit, std::vector<std::uint8_t>& bytes,
                   std::string& error) {
    return ReadFile(path, limit, bytes, error);
}

bool AppendRest(int fd, std::vector<std::uint8_t>& bytes, std::size_t sizeHint) {
    // Grow as we go: the file may change size while it is read.
    std::size_t used = bytes.size();
    bytes.resize(std::max(used, sizeHint) + 1);
    for (;;) {
        if (used == bytes.size())
            bytes.resize(bytes.size() * 2 + 4096);
        const ssize_t n = ::read(fd, bytes.data() + used, bytes.size() - used);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            bytes.resize(used);
            return n == 0;
        }
        used += std::size_t(n);
    }
}

bool WriteWholeFile(const std::string& path, const std::uint8_t* data, std::size_t size,
                    std::string& error) {
    OpsFd fd(SystemFileOps(), ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
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
    if (!fd.Close()) {
        error = Describe("cannot close", path);
        return false;
    }
    return true;
}

UiText WriteErrorText(const std::string& path, int errorNumber) {
    switch (errorNumber) {
    case ENOSPC:
    case EDQUOT:
        return {TIVOX_TR("Could not write %s: the disc is full."), {path}};
    case EROFS:
        return {TIVOX_TR("Could not write %s: the disc is read-only."), {path}};
    case EACCES:
    case EPERM:
        return {TIVOX_TR("Could not write %s: the folder is read-only."), {path}};
    default:
        return {TIVOX_TR("Could not write %s: %s"), {path, std::strerror(errorNumber)}};
    }
}

bool WriteFileDurably(const std::string& path, const std::uint8_t* data, std::size_t size,
                      UiText& error, FileOps& ops) {
    struct stat old {};
    const bool exists = ::stat(path.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) {
        error = WriteErrorText(path, errno);
        return false;
    }
    if (exists && !S_ISREG(old.st_mode)) {
        error = {TIVOX_TR("Could not write %s: it is not a regular file."), {path}};
        return false;
    }
    // The superuser could replace a file without write permission; the user
    // took that permission away to keep the photo as it is, so it stays.
    const int denied = !exists                        ? 0
                       : (old.st_mode & 0222) == 0    ? EACCES
                       : ::access(path.c_str(), W_OK) ? errno
                                                      : 0;
    if (denied != 0) {
        error = denied == EROFS
                    ? WriteErrorText(path, EROFS)
                    : UiText{TIVOX_TR("Could not write %s: the file is write-protected."), {path}};
        return false;
    }

    std::string temp;
    int fd = -1;
    for (int attempt = 0; fd < 0 && attempt < 100; ++attempt) {
        temp = HiddenTempName(path, attempt);
        fd = ops.Open(temp, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, exists ? 0600 : 0666);
        if (fd < 0 && errno != EEXIST)
            break;
    }
    if (fd < 0) {
        error = WriteErrorText(path, errno);
        return false;
    }
    OpsFd file(ops, fd);
    RemoveUnlessKept guard(temp);
    if (exists) {
        // Owner first: a change of owner clears the set-id bits of the mode.
        // Only the superuser may give a file away; others keep their own.
        if (old.st_uid != ::geteuid() || old.st_gid != ::getegid())
            (void)::fchown(fd, old.st_uid, old.st_gid);
        // File systems without modes (FAT) refuse; they give every file the same.
        (void)::fchmod(fd, old.st_mode & 07777);
    }
    if (!ops.WriteAll(fd, data, size) || ops.Fsync(fd) != 0 || !file.Close() ||
        ops.Rename(temp, path) != 0) {
        error = WriteErrorText(path, errno);
        return false;
    }
    guard.Keep();
    // The new name must reach the disc too. File systems that cannot flush a
    // folder say EINVAL, and a folder without read permission cannot be
    // opened for it; their rename is as durable as it gets.
    OpsFd folder(ops, ops.Open(FolderOf(path), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0));
    if (folder.get() >= 0 && ops.Fsync(folder.get()) != 0 && errno != EINVAL) {
        error = WriteErrorText(path, errno);
        return false;
    }
    return true;
}

} // namespace tivox
