#pragma once
// What the drive dialog shows of one drive, and which of its seven pictures
// a drive gets.

#include <functional>
#include <string>
#include <vector>

namespace tivox {

// Drive types, numbered as the system numbers them.
enum DriveType {
    kDriveUnknown = 0,
    kDriveNoRootDir = 1,
    kDriveRemovable = 2,
    kDriveFixed = 3,
    kDriveRemote = 4,
    kDriveCdRom = 5,
    kDriveRamDisk = 6,
};

struct DriveEntry {
    std::string name;        // what m_cameraDrive takes: the mount point
    std::string listText;    // name, and the label in brackets when it has one
    std::string description; // the text below the list
    int type = kDriveUnknown;
    bool floppy = false;
};

using DriveLister = std::function<std::vector<DriveEntry>()>;

// The pictures of the drive list, in image-list order.
enum DriveImage {
    kImageFloppy = 0,
    kImageHardDisc = 1,
    kImageOptical = 2,
    kImageRemovable = 3,
    kImageRamDisk = 4,
    kImageNetwork = 5,
    kImageUnknown = 6,
};

// A floppy whatever its type; then by type; the question mark for unknown
// types, a missing root and anything the system does not define.
int DriveImageIndex(const DriveEntry& drive);

} // namespace tivox
