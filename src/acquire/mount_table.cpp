#include "acquire/mount_table.h"

#include <sys/stat.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace tivox {

namespace fs = std::filesystem;

namespace {

// The mount table writes space, tab, line feed and backslash as "\ooo".
std::string UnescapeOctal(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size()) {
            const std::string digits = text.substr(i + 1, 3);
            if (digits.size() == 3 && digits.find_first_not_of("01234567") == std::string::npos) {
                out += char(std::strtol(digits.c_str(), nullptr, 8));
                i += 3;
                continue;
            }
        }
        out += text[i];
    }
    return out;
}

// udev writes unusual bytes of a label as "\xHH".
std::string UnescapeHex(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size() && text[i + 1] == 'x') {
            const std::string digits = text.substr(i + 2, 2);
            if (digits.size() == 2 &&
                digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos) {
                out += char(std::strtol(digits.c_str(), nullptr, 16));
                i += 3;
                continue;
            }
        }
        out += text[i];
    }
    return out;
}

bool ParseLine(const std::string& line, MountEntry& entry) {
    std::istringstream in(line);
    std::string id, parent, device, root, mountPoint, options, field;
    if (!(in >> id >> parent >> device >> root >> mountPoint >> options))
        return false;
    // Optional fields run up to the lone "-".
    while (in >> field && field != "-") {
    }
    if (field != "-" || !(in >> entry.fsType >> entry.source))
        return false;
    const auto colon = device.find(':');
    if (colon == std::string::npos)
        return false;
    const char* end = device.data() + device.size();
    const auto major = std::from_chars(device.data(), device.data() + colon, entry.major);
    const auto minor = std::from_chars(device.data() + colon + 1, end, entry.minor);
    if (major.ec != std::errc() || major.ptr != device.data() + colon || minor.ec != std::errc() ||
        minor.ptr != end)
        return false;
    entry.mountPoint = UnescapeOctal(mountPoint);
    entry.source = UnescapeOctal(entry.source);
    if (entry.mountPoint.size() > 1 && entry.mountPoint.back() == '/')
        entry.mountPoint.pop_back();
    return true;
}

bool ReadFirstLine(const fs::path& path, std::string& text) {
    std::ifstream in(path);
    return static_cast<bool>(std::getline(in, text));
}

bool StartsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

fs::path Canonical(const fs::path& path) {
    std::error_code ec;
    fs::path result = fs::canonical(path, ec);
    return ec ? fs::path() : result;
}

} // namespace

bool CMountTable::Load(const DriveSources& sources) {
    m_entries.clear();
    std::ifstream in(sources.mountInfo);
    if (!in)
        return false;
    std::string line;
    while (std::getline(in, line)) {
        // A line that can't be parsed is left out.
        MountEntry entry;
        if (ParseLine(line, entry))
            m_entries.push_back(entry);
    }
    return true;
}

const MountEntry* CMountTable::Find(const std::string& mountPoint) const {
    std::string wanted = mountPoint;
    if (wanted.size() > 1 && wanted.back() == '/')
        wanted.pop_back();
    for (auto it = m_entries.rbegin(); it != m_entries.rend(); ++it)
        if (it->mountPoint == wanted)
            return &*it;
    return nullptr;
}

const MountEntry* CMountTable::Containing(const std::string& path) const {
    const MountEntry* best = nullptr;
    for (auto it = m_entries.rbegin(); it != m_entries.rend(); ++it) {
        const std::string& m = it->mountPoint;
        const bool inside = m == "/" || path == m || StartsWith(path, m + "/");
        if (inside && (!best || m.size() > best->mountPoint.size()))
            best = &*it;
    }
    return best;
}

bool IsPseudoFileSystem(const std::string& fsType) {
    static constexpr std::array<const char*, 23> kPseudo = {
        "proc",       "sysfs",   "cgroup",      "cgroup2",         "devpts",     "securityfs",
        "bpf",        "tracefs", "debugfs",     "pstore",          "mqueue",     "hugetlbfs",
        "configfs",   "fusectl", "binfmt_misc", "autofs",          "efivarfs",   "devtmpfs",
        "rpc_pipefs", "nsfs",    "selinuxfs",   "fuse.gvfsd-fuse", "fuse.portal"};
    for (const char* p : kPseudo)
        if (fsType == p)
            return true;
    return false;
}

BlockDeviceFacts InspectBlockDevice(const DriveSources& sources, const MountEntry& entry) {
    BlockDeviceFacts facts;
    const fs::path sysfs(sources.sysfs);
    fs::path device = Canonical(sysfs / "dev/block" /
                                (std::to_string(entry.major) + ":" + std::to_string(entry.minor)));
    // Some file systems (btrfs) report an anonymous device number; the source
    // still names the device.
    if (device.empty() && StartsWith(entry.source, "/dev/"))
        device = Canonical(sysfs / "class/block" / fs::path(entry.source).filename());
    if (StartsWith(entry.source, "/dev/fd"))
        facts.floppy = true;
    if (device.empty())
        return facts;
    facts.found = true;
    std::error_code ec;
    const fs::path disk = fs::exists(device / "partition", ec) ? device.parent_path() : device;
    facts.name = disk.filename().string();
    std::string text;
    if (ReadFirstLine(disk / "removable", text) && text == "1")
        facts.removable = true;
    const std::string where = disk.string();
    if (where.find("/usb") != std::string::npos || where.find("/mmc") != std::string::npos)
        facts.removable = true;
    facts.optical = StartsWith(facts.name, "sr");
    facts.floppy = facts.floppy || StartsWith(facts.name, "fd");
    facts.noMedium = ReadFirstLine(disk / "size", text) && text == "0";
    return facts;
}

bool FindVolumeLabel(const DriveSources& sources, const MountEntry& entry, std::string& label) {
    if (!StartsWith(entry.source, "/"))
        return false;
    const fs::path device = Canonical(entry.source);
    if (device.empty())
        return false;
    std::error_code ec;
    for (fs::directory_iterator it(sources.labels, ec), end; !ec && it != end; it.increment(ec)) {
        if (Canonical(it->path()) == device) {
            label = UnescapeHex(it->path().filename().string());
            return true;
        }
    }
    return false;
}

} // namespace tivox
