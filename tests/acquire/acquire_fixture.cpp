#include "acquire_fixture.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>

namespace tivox::test {

namespace fs = std::filesystem;

void MakeFolder(const std::string& path) {
    fs::create_directories(path);
}

void PutFile(const std::string& path, const std::string& text) {
    PutFile(path, Bytes(text.begin(), text.end()));
}

void PutFile(const std::string& path, const Bytes& bytes) {
    fs::create_directories(fs::path(path).parent_path());
    WriteFile(path, bytes);
}

std::vector<std::string> TreeNames(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::recursive_directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        std::string name = fs::relative(it->path(), folder).string();
        if (it->is_directory() && !it->is_symlink())
            name += "/";
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> FileNames(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
        if (!it->is_directory())
            names.push_back(it->path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::map<std::string, std::string> TreeChecksums(const std::string& folder) {
    std::map<std::string, std::string> sums;
    for (const std::string& name : TreeNames(folder)) {
        const std::string path = folder + "/" + name;
        struct stat st {};
        lstat(path.c_str(), &st);
        std::string entry = std::to_string(st.st_mode) + " " + std::to_string(st.st_mtim.tv_sec) +
                            "." + std::to_string(st.st_mtim.tv_nsec);
        if (S_ISREG(st.st_mode)) {
            Bytes bytes;
            ReadFile(path, bytes);
            std::uint64_t h = 1469598103934665603ull; // FNV-1a
            for (std::uint8_t b : bytes)
                h = (h ^ b) * 1099511628211ull;
            entry += " " + std::to_string(bytes.size()) + " " + std::to_string(h);
        }
        sums[name] = entry;
    }
    return sums;
}

Bytes PhotoShotAt(const std::string& dateTime, bool bigEndian) {
    CameraExif exif;
    exif.order = bigEndian ? ByteOrder::Big : ByteOrder::Little;
    exif.dateTimeOriginal = dateTime;
    TestJpegOptions options;
    options.exif = CameraExifPayload(exif);
    return MakeJpeg(options);
}

int RunInChild(const ChildLimits& limits, const std::function<int()>& body) {
    const pid_t pid = fork();
    if (pid == 0) {
        if (limits.fileSizeLimit >= 0) {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{rlim_t(limits.fileSizeLimit), rlim_t(limits.fileSizeLimit)};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        if (limits.unprivileged && geteuid() == 0) {
            if (setgid(65534) != 0 || setuid(65534) != 0)
                _exit(250);
        }
        _exit(body());
    }
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) != pid || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

void OpenToAll(const std::string& folder) {
    chmod(folder.c_str(), 0777);
    std::error_code ec;
    for (fs::recursive_directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
        chmod(it->path().c_str(), it->is_directory() ? 0777 : 0666);
}

} // namespace tivox::test
