#pragma once
// Keeps the EXIF data of JPEG bytes true to the picture they hold, before
// the bytes are written: every writer of a photo (commit, lossless turns,
// the batch front end) calls this one function. Renaming still reads EXIF
// through CExifReader; this side only writes. Any thread.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/bitmap.h"
#include "platform/jpeg_codec.h"

namespace tivox {

// Largest side of an embedded thumbnail that is made anew.
inline constexpr int kExifThumbnailSide = 160;

// What a write did to the picture.
struct PictureChange {
    // The new picture as it is stored, when the writer has it decoded (a
    // commit): the embedded thumbnail is made from it.
    const Bitmap* picture = nullptr;
    // Without a picture: the lossless operation done to the stored pixels,
    // which the old embedded thumbnail undergoes too; with neither, the
    // pixels did not move and the thumbnail stays.
    std::optional<JpegTransform> turn;
    // The Orientation tag after the write, 1 to 8; 0 keeps it as it is.
    int orientation = 0;
};

// Makes the EXIF data (and the XMP copies of the same values) in `jpeg`
// describe its picture: the pixel dimension tags get the frame's size,
// Orientation follows `change`, and an embedded thumbnail is rebuilt from the
// new picture (JPEG, at most 160 x 160) or removed when it cannot be. Every
// other tag, maker notes included, stays. Bytes without EXIF data are left
// as they are. False, with `error` set and `jpeg` unchanged, when the
// metadata could not be read or written.
bool UpdateExifToPicture(std::vector<std::uint8_t>& jpeg, const PictureChange& change,
                         std::string& error);

// An edited picture of the photo at `photoPath` as JPEG bytes at `quality`,
// with the photo's metadata made true to it. Pictures are edited upright, so
// Orientation becomes 1. False only when the encoding fails; metadata that
// cannot be read or updated stays out or as it was, and the picture is kept.
bool EncodeEditedPhoto(const Bitmap& picture, int quality, const std::string& photoPath,
                       std::vector<std::uint8_t>& jpeg, std::string& error);

} // namespace tivox
