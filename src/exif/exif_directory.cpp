// The EXIF parser of CExifReader: the TIFF header of an APP1 "Exif" section,
// its directories and the tags the record keeps.
//
// Every read is checked against the end of the section's block: a count,
// link or value that would lie outside it counts as missing. Directories are
// walked at most once each, to a bounded depth and number, so that a crafted
// file can neither loop nor fan out.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "exif/exif_reader.h"

namespace tivox {

namespace {

constexpr int kMaxDirectoryDepth = 32;
constexpr std::size_t kMaxDirectories = 64;

// Bytes per component, by TIFF format code; code 0 carries no value.
constexpr std::uint32_t kBytesPerFormat[13] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};

// A number truncated towards zero to 32 bits. Values out of range (and NaN)
// become INT32_MIN, which every check below treats as invalid.
std::int32_t WholeNumber(double value) {
    if (!(value > -2147483649.0 && value < 2147483648.0))
        return INT32_MIN;
    return std::int32_t(value);
}

// Inches per TIFF resolution unit; false for an unknown unit.
bool InchesPerUnit(std::int32_t unit, float& inches) {
    switch (unit) {
    case 1:
    case 2:
        inches = 1.0f;
        return true;
    case 3:
        inches = float(1.0 / 2.54);
        return true;
    case 4:
        inches = float(0.1 / 2.54);
        return true;
    case 5:
        inches = float(0.0001 / 2.54);
        return true;
    default:
        return false;
    }
}

// Copies at most max characters, ending at the first zero byte or at the end
// of the data, into a field of max + 1 bytes whose other bytes become zero.
void CopyText(char* field, std::size_t max, const std::uint8_t* from, const std::uint8_t* end) {
    std::memset(field, 0, max + 1);
    const std::size_t available = from < end ? std::size_t(end - from) : 0;
    const std::size_t limit = std::min(max, available);
    for (std::size_t i = 0; i < limit && from[i] != 0; ++i)
        field[i] = char(from[i]);
}

// APEX values: taken in double, stored as float once at the end.
double PowerOfTwo(double exponent) {
    return std::exp(exponent * std::log(2.0));
}

} // namespace

std::uint32_t CExifReader::Read16(const std::uint8_t* p) const {
    return bigEndian ? std::uint32_t(p[0] << 8 | p[1]) : std::uint32_t(p[1] << 8 | p[0]);
}

std::uint32_t CExifReader::Read32(const std::uint8_t* p) const {
    if (bigEndian)
        return std::uint32_t(p[0]) << 24 | std::uint32_t(p[1]) << 16 | std::uint32_t(p[2]) << 8 |
               p[3];
    return std::uint32_t(p[3]) << 24 | std::uint32_t(p[2]) << 16 | std::uint32_t(p[1]) << 8 | p[0];
}

double CExifReader::ReadNumber(const std::uint8_t* value, int format) const {
    switch (format) {
    case 1:
        return value[0];
    case 3:
        return Read16(value);
    case 4:
        return Read32(value);
    case 5:
    case 10: {
        const auto numerator = std::int32_t(Read32(value));
        const auto denominator = std::int32_t(Read32(value + 4));
        return denominator == 0 ? 0.0 : double(numerator) / double(denominator);
    }
    case 6:
        return std::int8_t(value[0]);
    case 8:
        return std::int16_t(Read16(value));
    case 9:
        return std::int32_t(Read32(value));
    case 11: {
        // Floats are taken little-endian whatever the file's byte order.
        std::uint32_t bits = 0;
        for (int i = 3; i >= 0; --i)
            bits = bits << 8 | value[i];
        return std::bit_cast<float>(bits);
    }
    case 12: {
        std::uint64_t bits = 0;
        for (int i = 7; i >= 0; --i)
            bits = bits << 8 | value[i];
        return std::bit_cast<double>(bits);
    }
    default:
        return 0.0;
    }
}

bool CExifReader::ParseExifSection(std::uint8_t* payload, int size) {
    record->FlashUsed = 0;
    record->Comments[0] = '\0';
    exifImageWidth = 0;

    // Header fields that lie beyond the section count as wrong.
    const int available = size - 2;
    if (available < 6 || std::memcmp(payload, "Exif\0\0", 6) != 0) {
        Fail("Incorrect Exif header");
        return false;
    }
    if (available >= 8 && payload[6] == 'I' && payload[7] == 'I') {
        bigEndian = 0;
    } else if (available >= 8 && payload[6] == 'M' && payload[7] == 'M') {
        bigEndian = 1;
    } else {
        Fail("Invalid Exif alignment marker.");
        return false;
    }
    if (available < 10 || Read16(payload + 8) != 0x2A) {
        Fail("Invalid Exif start (1)");
        return false;
    }
    if (available < 14) {
        Fail("Suspicious offset of first IFD value");
        return false;
    }
    const std::uint32_t firstOffset = Read32(payload + 10);
    if (firstOffset < 8 || firstOffset > 16) {
        Fail("Suspicious offset of first IFD value");
        return false;
    }

    // The first directory is always taken right behind the header.
    visited_.clear();
    std::uint8_t* base = payload + 6;
    if (!ParseDirectory(payload + 14, base, std::uint32_t(size - 8), record))
        return false;

    if (record->FocalplaneXRes != 0.0f)
        record->CCDWidth = float(exifImageWidth) * record->FocalplaneUnits / record->FocalplaneXRes;
    return true;
}

bool CExifReader::ParseDirectory(std::uint8_t* dir, std::uint8_t* base, std::uint32_t length,
                                 ExifRecord* target, int depth) {
    const std::uint8_t* end = base + length;
    const auto dirOffset = std::uint32_t(dir - base);
    if (std::find(visited_.begin(), visited_.end(), dirOffset) != visited_.end()) {
        Fail("EXIF directory linked twice");
        return false;
    }
    if (depth > kMaxDirectoryDepth || visited_.size() >= kMaxDirectories) {
        Fail("Too many EXIF directories");
        return false;
    }
    visited_.push_back(dirOffset);

    // A count field outside the data makes a directory without room.
    if (end - dir < 2) {
        Fail("Illegally sized directory");
        return false;
    }
    const std::uint32_t entries = Read16(dir);
    if (std::size_t(end - dir) < 2 + 12 * std::size_t(entries)) {
        Fail("Illegally sized directory");
        return false;
    }
    const std::uint8_t* dirEnd = dir + 2 + 12 * std::size_t(entries);

    std::int32_t thumbnailOffset = 0;
    std::int32_t thumbnailSize = 0;
    for (std::uint32_t index = 0; index < entries; ++index) {
        std::uint8_t* entry = dir + 2 + 12 * std::size_t(index);
        const std::uint32_t tag = Read16(entry);
        const std::uint32_t format = Read16(entry + 2);
        const std::uint32_t components = Read32(entry + 4);
        if (format > 12) {
            Fail("Illegal format code in EXIF dir");
            return false;
        }
        const std::uint64_t byteCount = std::uint64_t(components) * kBytesPerFormat[format];
        std::uint8_t* value = entry + 8;
        if (byteCount > 4) {
            const std::uint32_t offset = Read32(entry + 8);
            if (std::uint64_t(offset) + byteCount > length) {
                Fail("Illegal pointer offset value in EXIF.");
                return false;
            }
            value = base + offset;
        }

        switch (tag) {
        case 0x8769:
        case 0xA005: {
            const std::uint32_t link = Read32(value);
            if (link > length) {
                Fail("Illegal subdirectory link");
                return false;
            }
            // A linked directory's own result does not matter to its parent.
            ParseDirectory(base + link, base, length, target, depth + 1);
            break;
        }
        case 0x0201:
        case 0x0202: {
            const std::int32_t number =
                components == 0 ? 0 : WholeNumber(ReadNumber(value, int(format)));
            (tag == 0x0201 ? thumbnailOffset : thumbnailSize) = number;
            break;
        }
        default:
            StoreTag(tag, int(format), components, value, std::uint32_t(byteCount), end, target);
            break;
        }
    }

    // A link that would lie outside the data counts as no link.
    if (end - dirEnd >= 4) {
        const std::uint32_t link = Read32(dirEnd);
        if (link != 0) {
            if (link > length) {
                Fail("Illegal subdirectory link");
                return false;
            }
            ParseDirectory(base + link, base, length, target, depth + 1);
        }
    }

    if (thumbnailOffset > 0 && thumbnailSize > 0 &&
        std::uint64_t(thumbnailOffset) + std::uint64_t(thumbnailSize) <= length) {
        target->ThumbnailSize = thumbnailSize;
        target->ThumbnailData = base + thumbnailOffset;
    }
    return true;
}

void CExifReader::StoreTag(unsigned tag, int format, std::uint32_t components, std::uint8_t* value,
                           std::uint32_t byteCount, const std::uint8_t* end, ExifRecord* target) {
    // An entry without components has no value: the tag counts as absent.
    if (components == 0)
        return;
    const double number = ReadNumber(value, format);
    const std::int32_t whole = WholeNumber(number);

    switch (tag) {
    case 0x010F:
        CopyText(target->CameraMake, 31, value, end);
        break;
    case 0x0110:
        CopyText(target->CameraModel, 39, value, end);
        break;
    case 0x0112:
        if (whole < 1 || whole > 8) {
            Fail("Undefined rotation value");
            target->Orientation = 0;
        } else {
            target->Orientation = whole;
        }
        break;
    case 0x011A:
        target->Xresolution = float(number);
        break;
    case 0x011B:
        target->Yresolution = float(number);
        break;
    case 0x0128:
        InchesPerUnit(whole, target->ResolutionUnit);
        break;
    case 0x829A:
        target->ExposureTime = float(number);
        break;
    case 0x829D:
        target->ApertureFNumber = float(number);
        break;
    case 0x8822:
        target->ExposureProgram = whole;
        break;
    case 0x8827:
        // Some cameras store the speed in units of 200 ISO.
        target->ISOequivalent = whole < 50 ? std::int32_t(std::int64_t(whole) * 200) : whole;
        break;
    case 0x9000:
        CopyText(target->Version, 4, value, end);
        break;
    case 0x9003:
        CopyText(target->DateTime, 19, value, end);
        break;
    case 0x9102:
        target->CompressionLevel = whole;
        break;
    case 0x9201:
        if (target->ExposureTime == 0.0f)
            target->ExposureTime = float(1.0 / PowerOfTwo(number));
        break;
    case 0x9202:
    case 0x9205:
        if (target->ApertureFNumber == 0.0f)
            target->ApertureFNumber = float(PowerOfTwo(number * 0.5));
        break;
    case 0x9203:
        target->Brightness = float(number);
        break;
    case 0x9204:
        target->ExposureBias = float(number);
        break;
    case 0x9206:
        target->Distance = float(number);
        break;
    case 0x9207:
        target->MeteringMode = whole;
        break;
    case 0x9208:
        target->Whitebalance = whole;
        break;
    case 0x9209:
        target->FlashUsed = (whole & 7) != 0 ? 1 : 0;
        break;
    case 0x920A:
        target->FocalLength = float(number);
        break;
    case 0x9286:
        StoreUserComment(value, byteCount, end, target);
        break;
    case 0xA002:
    case 0xA003:
        exifImageWidth = std::max(exifImageWidth, whole);
        break;
    case 0xA20E:
        target->FocalplaneXRes = float(number);
        break;
    case 0xA20F:
        target->FocalplaneYRes = float(number);
        break;
    case 0xA210:
        InchesPerUnit(whole, target->FocalplaneUnits);
        break;
    default:
        break;
    }
}

void CExifReader::StoreUserComment(std::uint8_t* value, std::uint32_t byteCount,
                                   const std::uint8_t* end, ExifRecord* target) {
    constexpr std::size_t kMaxUserComment = 199;
    // Trailing spaces go, in the block itself.
    for (std::uint32_t i = byteCount; i > 0 && value[i - 1] == ' '; --i)
        value[i - 1] = 0;

    const std::size_t available = std::size_t(end - value);
    if (available >= 5 && std::memcmp(value, "ASCII", 5) == 0) {
        for (std::size_t i = 5; i < 10 && i < available; ++i) {
            if (value[i] != 0 && value[i] != ' ') {
                CopyText(target->Comments, kMaxUserComment, value + i, end);
                return;
            }
        }
        return;
    }
    CopyText(target->Comments, kMaxUserComment, value, end);
}

} // namespace tivox
