#pragma once
// The mounted volumes as the kernel lists them, and what sysfs says about the
// block device behind each. Every path that is read can be redirected, so
// that tests run over a fake mount table and a fake sysfs tree.

#include <string>
#include <vector>

namespace tivox {

// Where the system's facts about drives are read from.
struct DriveSources {
    std::string mountInfo = "/proc/self/mountinfo";
    std::string sysfs = "/sys";
    std::string labels = "/dev/disk/by-label";
};

struct MountEntry {
    std::string mountPoint; // unescaped, without a trailing "/" (except "/")
    std::string fsType;
    std::string source; // the device or remote name, as the table gives it
    unsigned major = 0;
    unsigned minor = 0;
};

class CMountTable {
public:
    // Reads the table; false when it can't be read (the table is then empty).
    bool Load(const DriveSources& sources);

    const std::vector<MountEntry>& Entries() const { return m_entries; }
    // The entry mounted last at exactly this mount point, or null.
    const MountEntry* Find(const std::string& mountPoint) const;
    // The entry whose mount point holds path most closely, or null.
    const MountEntry* Containing(const std::string& path) const;

private:
    std::vector<MountEntry> m_entries;
};

// File systems of the kernel's own (proc, sysfs, cgroup, ...), which are no
// drives of the user.
bool IsPseudoFileSystem(const std::string& fsType);

// Facts about the block device behind a mount, from sysfs.
struct BlockDeviceFacts {
    bool found = false;     // sysfs knows the device
    bool removable = false; // "removable" is 1, or it sits on the USB or MMC/SD bus
    bool optical = false;   // an "sr" device
    bool floppy = false;    // an "fd" device
    bool noMedium = false;  // the whole disc reports the size 0
    std::string name;       // kernel name of the disc, as "sdb"
};
BlockDeviceFacts InspectBlockDevice(const DriveSources& sources, const MountEntry& entry);

// The file-system label of the device behind the mount; false when it has none.
bool FindVolumeLabel(const DriveSources& sources, const MountEntry& entry, std::string& label);

} // namespace tivox
