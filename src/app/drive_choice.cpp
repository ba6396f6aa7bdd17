#include "app/drive_choice.h"

namespace tivox {

int DriveImageIndex(const DriveEntry& drive) {
    if (drive.floppy)
        return kImageFloppy;
    switch (drive.type) {
    case kDriveFixed:
        return kImageHardDisc;
    case kDriveCdRom:
        return kImageOptical;
    case kDriveRemovable:
        return kImageRemovable;
    case kDriveRamDisk:
        return kImageRamDisk;
    case kDriveRemote:
        return kImageNetwork;
    default:
        return kImageUnknown;
    }
}

} // namespace tivox
