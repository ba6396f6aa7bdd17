// Drive records and the drive listing over a fake mount table and sysfs tree.

#include <gtest/gtest.h>

#include <sys/statvfs.h>

#include <filesystem>

#include "acquire/drive_info.h"
#include "acquire_fixture.h"

namespace tivox::test {
namespace {

namespace fs = std::filesystem;

// A small machine: a card reader with a card, a second reader without one, a
// USB stick that calls itself fixed, a fixed disc, a floppy, a CD, tmpfs,
// nfs, a vanished mount point, and the kernel's own file systems.
class FakeMachine {
public:
    FakeMachine() {
        sources = {dir.File("mountinfo"), dir.File("sys"), dir.File("by-label")};
        MakeFolder(sources.labels);
        MakeFolder(sources.sysfs + "/dev/block");
        Disc("usb1/block/sdb", "8:16", "1", "31116288", "sdb1", "8:17");
        Disc("usb1/block/sdc", "8:32", "1", "0");
        Disc("usb2/block/sdd", "8:48", "0", "15000000", "sdd1", "8:49");
        Disc("ata1/block/sda", "8:0", "0", "500000000", "sda2", "8:2");
        Disc("platform/block/fd0", "2:0", "1", "2880");
        Disc("ata2/block/sr0", "11:0", "1", "1000");
        for (const char* d : {"sdb1", "sdc", "sdd1", "sda2", "fd0", "sr0"})
            PutFile(Dev(d), "");
        fs::create_symlink(Dev("sdb1"), sources.labels + "/CARD");
        fs::create_symlink(Dev("sdd1"), sources.labels + "/MY\\x20STICK");

        std::string table;
        auto row = [&](const char* device, const std::string& point, const char* type,
                       const std::string& source) {
            table += "30 1 " + std::string(device) + " / " + point + " rw,relatime shared:1 - " +
                     type + " " + source + " rw\n";
        };
        row("0:22", "/proc", "proc", "proc");
        row("0:23", "/sys/fs/cgroup", "cgroup2", "cgroup2");
        row("8:2", Mount("disc"), "ext4", Dev("sda2"));
        row("8:17", Mount("card"), "vfat", Dev("sdb1"));
        row("8:32", Mount("reader"), "vfat", Dev("sdc"));
        row("8:49", Mount("my\\040stick", "my stick"), "exfat", Dev("sdd1"));
        row("2:0", Mount("floppy"), "vfat", "/dev/fd0");
        row("11:0", Mount("cdrom"), "iso9660", Dev("sr0"));
        row("0:40", Mount("ram"), "tmpfs", "tmpfs");
        row("0:41", Mount("net"), "nfs4", "server:/export/photos");
        row("8:17", dir.File("m/gone"), "vfat", Dev("sdb1"));
        row("8x:17", Mount("garbled"), "vfat", Dev("sdb1")); // no device number: skipped
        PutFile(sources.mountInfo, table);
    }

    std::string MountPoint(const std::string& name) const { return dir.File("m/" + name); }
    CDriveInfo Inspect(const std::string& name) const {
        CDriveInfo drive;
        drive.m_root = MountPoint(name);
        drive.Inspect(sources);
        return drive;
    }

    TempDir dir;
    DriveSources sources;

private:
    std::string Dev(const char* name) const { return dir.File(std::string("dev/") + name); }
    // The mount point as the table writes it; the folder is made under its real name.
    std::string Mount(const std::string& escaped, const std::string& real = "") {
        MakeFolder(MountPoint(real.empty() ? escaped : real));
        return MountPoint(escaped);
    }
    void Disc(const std::string& path, const char* number, const char* removable, const char* size,
              const char* partition = nullptr, const char* partNumber = "") {
        const std::string full = sources.sysfs + "/devices/" + path;
        PutFile(full + "/removable", std::string(removable) + "\n");
        PutFile(full + "/size", std::string(size) + "\n");
        Link(full, number);
        if (partition) {
            PutFile(full + "/" + partition + "/partition", "1\n");
            Link(full + "/" + partition, partNumber);
        }
    }
    void Link(const std::string& target, const char* number) {
        fs::create_symlink(fs::relative(target, sources.sysfs + "/dev/block"),
                           sources.sysfs + "/dev/block/" + number);
    }
};

TEST(DriveInfo, TypesFromTheMountTableAndSysfs) {
    FakeMachine machine;
    struct Case {
        const char* mount;
        std::uint32_t type;
        const char* text;
        const char* label;
        bool sizes;
        int image;
    };
    const Case cases[] = {
        {"card", kDriveRemovable, "Removable Drive", "CARD", true, 3},
        {"reader", kDriveRemovable, "Removable Drive", "", false, 3},
        {"my stick", kDriveRemovable, "Removable Drive", "MY STICK", true, 3},
        {"disc", kDriveFixed, "Hard Disc", "", true, 1},
        {"floppy", kDriveRemovable, "Floppy Disc Drive", "", true, 0},
        {"cdrom", kDriveCdRom, "CD-/DVD-ROM drive", "", true, 2},
        {"ram", kDriveRamDisk, "RAM disk", "", true, 4},
        {"net", kDriveRemote, "Remote (Network) Drive", "", true, 5},
        {"gone", kDriveNoRootDir, "Root directory does not exist.", "", false, 6},
        {"not-mounted", kDriveNoRootDir, "Root directory does not exist.", "", false, 6},
        {"garbled", kDriveNoRootDir, "Root directory does not exist.", "", false, 6},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.mount);
        const CDriveInfo drive = machine.Inspect(c.mount);
        EXPECT_EQ(drive.m_type, c.type);
        EXPECT_EQ(drive.m_label, c.label);
        EXPECT_EQ(DriveImageIndex(drive), c.image);
        EXPECT_EQ(drive.IsFloppyLetter(), c.image == 0);
        const std::string text = c.text;
        if (c.sizes) {
            EXPECT_EQ(drive.m_description.substr(0, text.size() + 2), text + "\n\n");
            EXPECT_NE(drive.m_description.find("\nBytes free: "), std::string::npos);
        } else {
            EXPECT_EQ(drive.m_description, text);
            EXPECT_EQ(drive.m_totalBytes, 0u);
        }
    }

    // Four lines, the numbers grouped.
    const CDriveInfo disc = machine.Inspect("disc");
    struct statvfs st {};
    ASSERT_EQ(statvfs(machine.MountPoint("disc").c_str(), &st), 0);
    EXPECT_EQ(disc.m_totalBytes, std::uint64_t(st.f_blocks) * st.f_frsize);
    const std::string head = "Hard Disc\n\n" + disc.GetTotalText() + "\nBytes free: ";
    EXPECT_EQ(disc.m_description.substr(0, head.size()), head);
    EXPECT_EQ(disc.m_description.find('\n', head.size()), std::string::npos);
}

TEST(DriveInfo, SizesInGroupsOfThreeDigits) {
    CDriveInfo drive;
    for (auto [bytes, text] : {std::pair{0ull, "0"},
                               {999ull, "999"},
                               {123456ull, "123.456"},
                               {1234567ull, "1.234.567"}}) {
        drive.m_freeBytes = drive.m_totalBytes = bytes;
        EXPECT_EQ(drive.GetFreeText(), std::string("Bytes free: ") + text);
        EXPECT_EQ(drive.GetTotalText(), std::string("Bytes total: ") + text);
    }
}

TEST(DriveInfo, ListShowsTheUsersVolumesWithTheirLabels) {
    FakeMachine machine;
    std::vector<std::string> texts;
    for (const CDriveInfo& d : ListDrives(machine.sources))
        texts.push_back(GetListText(d));
    const auto m = [&](const char* n) { return machine.MountPoint(n); };
    EXPECT_EQ(texts, (std::vector<std::string>{m("disc"), m("card") + "  (CARD)", m("reader"),
                                               m("my stick") + "  (MY STICK)", m("floppy"),
                                               m("cdrom"), m("ram"), m("net"), m("gone")}));

    // A later mount on the same point hides the earlier one; bad lines are skipped.
    PutFile(machine.sources.mountInfo, "30 1 8:2 / " + m("card") + " rw - ext4 /dev/x rw\n" +
                                           "garbage line\n" + "31 1 0:40 / " + m("card") +
                                           " rw - tmpfs tmpfs rw\n");
    const auto drives = ListDrives(machine.sources);
    ASSERT_EQ(drives.size(), 1u);
    EXPECT_EQ(drives[0].m_type, kDriveRamDisk);
    machine.sources.mountInfo = machine.dir.File("no-such-table");
    EXPECT_TRUE(ListDrives(machine.sources).empty());
}

} // namespace
} // namespace tivox::test
