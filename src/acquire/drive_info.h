#pragma once
// CDriveInfo: what the system says about one mounted volume, for the drive
// dialog and for the check of the camera drive before a transfer. A drive is
// named by its mount point ("/media/anna/EOS_DIGITAL"); the type values keep
// the classic numbering of drive types (2 removable, 3 fixed, ...).

#include <cstdint>
#include <string>
#include <vector>

#include "acquire/mount_table.h"
#include "platform/ui_text.h"

namespace tivox {

enum DriveType : std::uint32_t {
    kDriveUnknown = 0,
    kDriveNoRootDir = 1,
    kDriveRemovable = 2,
    kDriveFixed = 3,
    kDriveRemote = 4,
    kDriveCdRom = 5,
    kDriveRamDisk = 6,
};

class CDriveInfo {
public:
    // Fills the record from m_root: the type, its text and, when the volume
    // answers, the sizes and the label. An empty root leaves it as it is.
    void Inspect(const DriveSources& sources = {});
    // The same over a mount table read already (the listing reads it once).
    void Inspect(const CMountTable& table, const DriveSources& sources);

    // True for an empty root and for a floppy device.
    bool IsFloppyLetter() const;
    // The mount point, without a trailing "/".
    std::string GetDriveName() const;
    std::string GetFreeText(const Translator& translate = {}) const;  // "Bytes free: 1.000"
    std::string GetTotalText(const Translator& translate = {}) const; // "Bytes total: ..."
    // m_description in the user's language.
    std::string GetDescription(const Translator& translate = {}) const;

    std::string m_root;
    std::uint32_t m_type = kDriveUnknown;
    std::string m_label;
    std::string m_description; // English, as built by Inspect
    std::uint64_t m_freeBytes = 0;
    std::uint64_t m_totalBytes = 0;
    std::uint64_t m_totalFreeBytes = 0;

private:
    bool m_isFloppy = false;
    bool m_hasSizes = false; // the volume told its sizes at the last Inspect
};

// Inserts "." between groups of three digits, from the right: 1234567 gives
// 1.234.567.
void GroupDigits(std::string& text);

// The type value of a mount point, from the mount table and sysfs.
std::uint32_t GetDriveType(const CMountTable& table, const DriveSources& sources,
                           const std::string& root, BlockDeviceFacts* facts = nullptr);

// The English text of a type value ("Removable Drive", ...); empty for values
// outside the table. A removable floppy reads "Floppy Disc Drive".
const char* DriveTypeText(std::uint32_t type, bool floppy);

// Every mounted volume of the user, in the order of the mount table; the
// kernel's own file systems are left out. Each record is inspected.
std::vector<CDriveInfo> ListDrives(const DriveSources& sources = {});

// The list text of the drive dialog: the name, and the label in brackets
// behind two blanks when there is one ("/media/card  (CARD)").
std::string GetListText(const CDriveInfo& drive);

// The image of the drive dialog's list: 0 floppy, 1 hard disc, 2 optical,
// 3 removable, 4 RAM disk, 5 network, 6 unknown or no root directory.
int DriveImageIndex(const CDriveInfo& drive);

} // namespace tivox
