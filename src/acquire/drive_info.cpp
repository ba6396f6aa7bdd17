#include "acquire/drive_info.h"

#include <sys/statvfs.h>

#include <array>

#include "acquire/file_walker.h"

namespace tivox {

namespace {

bool IsRemoteFileSystem(const std::string& fsType) {
    static constexpr std::array<const char*, 16> kRemote = {
        "nfs",         "nfs4", "cifs",  "smb3",       "smbfs",          "sshfs",
        "fuse.sshfs",  "9p",   "ceph",  "glusterfs",  "fuse.glusterfs", "davfs",
        "fuse.davfs2", "afs",  "ncpfs", "fuse.rclone"};
    for (const char* r : kRemote)
        if (fsType == r)
            return true;
    return false;
}

bool StartsWith(const std::string& text, const char* prefix) {
    return text.rfind(prefix, 0) == 0;
}

std::string Render(const char* format, const std::string& arg, const Translator& translate) {
    return RenderUiText(UiText{format, {arg}}, translate);
}

std::string Grouped(std::uint64_t value) {
    std::string text = std::to_string(value);
    GroupDigits(text);
    return text;
}

} // namespace

std::uint32_t GetDriveType(const CMountTable& table, const DriveSources& sources,
                           const std::string& root, BlockDeviceFacts* facts) {
    std::string point = root;
    if (point.size() > 1 && point.back() == '/')
        point.pop_back();
    const MountEntry* entry = table.Find(point);
    if (!entry || !IsFolder(point == "/" ? std::string("/.") : point))
        return kDriveNoRootDir;
    const std::string& type = entry->fsType;
    if (IsRemoteFileSystem(type))
        return kDriveRemote;
    if (type == "iso9660" || type == "udf")
        return kDriveCdRom;
    if (type == "tmpfs" || type == "ramfs")
        return kDriveRamDisk;
    const BlockDeviceFacts device = InspectBlockDevice(sources, *entry);
    if (facts)
        *facts = device;
    if (!device.found)
        return device.floppy ? kDriveRemovable : kDriveUnknown;
    if (device.optical)
        return kDriveCdRom;
    return device.removable || device.floppy ? kDriveRemovable : kDriveFixed;
}

const char* DriveTypeText(std::uint32_t type, bool floppy) {
    switch (type) {
    case kDriveUnknown:
        return TIVOX_TR("Drive type cannot be determined.");
    case kDriveNoRootDir:
        return TIVOX_TR("Root directory does not exist.");
    case kDriveRemovable:
        return floppy ? TIVOX_TR("Floppy Disc Drive") : TIVOX_TR("Removable Drive");
    case kDriveFixed:
        return TIVOX_TR("Hard Disc");
    case kDriveRemote:
        return TIVOX_TR("Remote (Network) Drive");
    case kDriveCdRom:
        return TIVOX_TR("CD-/DVD-ROM drive");
    case kDriveRamDisk:
        return TIVOX_TR("RAM disk");
    default:
        return "";
    }
}

void CDriveInfo::Inspect(const DriveSources& sources) {
    if (m_root.empty())
        return;
    CMountTable table;
    table.Load(sources);
    Inspect(table, sources);
}

void CDriveInfo::Inspect(const CMountTable& table, const DriveSources& sources) {
    if (m_root.empty())
        return;
    BlockDeviceFacts facts;
    m_type = GetDriveType(table, sources, m_root, &facts);
    m_isFloppy = facts.floppy;
    m_hasSizes = false;
    const MountEntry* entry = table.Find(GetDriveName());
    // A reader without a card still has its mount, but no volume answers.
    const bool answers = entry && m_type != kDriveNoRootDir && !facts.noMedium;
    if (answers) {
        struct statvfs st {};
        if (statvfs(GetDriveName().c_str(), &st) == 0) {
            m_freeBytes = std::uint64_t(st.f_bavail) * st.f_frsize;
            m_totalBytes = std::uint64_t(st.f_blocks) * st.f_frsize;
            m_totalFreeBytes = std::uint64_t(st.f_bfree) * st.f_frsize;
            m_hasSizes = true;
        }
        std::string label;
        if (FindVolumeLabel(sources, *entry, label))
            m_label = label;
    }
    m_description = GetDescription();
}

bool CDriveInfo::IsFloppyLetter() const {
    return m_root.empty() || m_isFloppy;
}

std::string CDriveInfo::GetDriveName() const {
    std::string name = m_root;
    if (name.size() > 1 && name.back() == '/')
        name.pop_back();
    return name;
}

std::string CDriveInfo::GetFreeText(const Translator& translate) const {
    return Render(TIVOX_TR("Bytes free: %s"), Grouped(m_freeBytes), translate);
}

std::string CDriveInfo::GetTotalText(const Translator& translate) const {
    return Render(TIVOX_TR("Bytes total: %s"), Grouped(m_totalBytes), translate);
}

std::string CDriveInfo::GetDescription(const Translator& translate) const {
    const char* typeText = DriveTypeText(m_type, IsFloppyLetter());
    std::string text = translate && *typeText ? translate(typeText) : typeText;
    if (m_hasSizes)
        text += "\n\n" + GetTotalText(translate) + "\n" + GetFreeText(translate);
    return text;
}

void GroupDigits(std::string& text) {
    // The first group takes one to three digits, every further group three.
    std::size_t first = text.size() % 3;
    if (first == 0)
        first = 3;
    std::string grouped;
    grouped.reserve(text.size() + text.size() / 3);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i >= first && (i - first) % 3 == 0)
            grouped += '.';
        grouped += text[i];
    }
    text = grouped;
}

std::vector<CDriveInfo> ListDrives(const DriveSources& sources) {
    CMountTable table;
    table.Load(sources);
    std::vector<CDriveInfo> drives;
    const auto& entries = table.Entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const MountEntry& e = entries[i];
        if (IsPseudoFileSystem(e.fsType))
            continue;
        const std::string& m = e.mountPoint;
        if (StartsWith(m, "/proc/") || StartsWith(m, "/sys/") || StartsWith(m, "/dev/") ||
            m == "/proc" || m == "/sys" || m == "/dev")
            continue;
        // A later mount at the same point hides this one.
        if (table.Find(m) != &e)
            continue;
        CDriveInfo drive;
        drive.m_root = m;
        drive.Inspect(table, sources);
        drives.push_back(drive);
    }
    return drives;
}

std::string GetListText(const CDriveInfo& drive) {
    if (drive.m_label.empty())
        return drive.GetDriveName();
    return drive.GetDriveName() + "  (" + drive.m_label + ")";
}

int DriveImageIndex(const CDriveInfo& drive) {
    if (drive.IsFloppyLetter())
        return 0;
    switch (drive.m_type) {
    case kDriveFixed:
        return 1;
    case kDriveCdRom:
        return 2;
    case kDriveRemovable:
        return 3;
    case kDriveRamDisk:
        return 4;
    case kDriveRemote:
        return 5;
    default:
        return 6;
    }
}

} // namespace tivox
