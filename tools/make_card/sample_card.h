#pragma once
// A camera-like memory card of generated photos, for the demo and for tests
// of the transfer: DCIM/100TIVOX/IMG_0001.JPG ... with varied EXIF data.

#include <string>
#include <vector>

namespace tivox {

struct CardFile {
    std::string path;        // relative to the card's root
    std::string description; // what is special about it
};

inline constexpr int kDefaultCardPhotos = 12;

// Writes the card under root (created if missing). Photo i (from 1) is shot
// 67 seconds after photo i-1, starting at 2004:04:23 15:00:53, except:
//   2 and 3 share the same second; 4 has no EXIF; 5 has EXIF without
//   DateTimeOriginal; 6 stands on its side (orientation 6) with a thumbnail.
// Even photos are big-endian ("MM"), odd ones little-endian ("II").
// Beside them: IMG_9001.JPEG (a photo with a longer extension), BROKEN.JPG (text,
// not a JPEG) and MVI_0001.AVI. Refuses a root that already holds DCIM/100TIVOX.
// False with a reason in error on failure.
bool WriteSampleCard(const std::string& root, int photos, std::vector<CardFile>& written,
                     std::string& error);

} // namespace tivox
