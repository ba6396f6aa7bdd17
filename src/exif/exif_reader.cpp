// The marker loop of CExifReader: splits the head of a JPEG file into
// sections, keeps the ones that matter and parses the frame header and the
// first comment. The EXIF directories are parsed in exif_directory.cpp.

#include "exif/exif_reader.h"

#include <cstring>
#include <new>

namespace tivox {

namespace {

constexpr int kMaxPadding = 6; // 0xFF fill bytes accepted before a marker code
constexpr int kMaxCommentBytes = 1000;

bool IsFrameHeader(int marker) {
    switch (marker) {
    case 0xC0:
    case 0xC1:
    case 0xC2:
    case 0xC3:
    case 0xC5:
    case 0xC6:
    case 0xC7:
    case 0xC9:
    case 0xCA:
    case 0xCB:
    case 0xCD:
    case 0xCE:
    case 0xCF:
        return true;
    default:
        return false;
    }
}

} // namespace

CExifReader::CExifReader(ExifRecord* target) : record(target) {
    lastError[0] = '\0';
    if (record == nullptr) {
        // Value-initialised: every byte of the plain record is zero.
        ownedRecord_ = std::make_unique<ExifRecord>();
        std::memset(ownedRecord_.get(), 0, sizeof(ExifRecord));
        record = ownedRecord_.get();
        ownsRecord = 1;
    }
}

// The section blocks and an owned record go with their unique_ptr holders.
CExifReader::~CExifReader() = default;

void CExifReader::Fail(const char* text) {
    std::strncpy(lastError, text, sizeof(lastError) - 1);
    lastError[sizeof(lastError) - 1] = '\0';
}

void CExifReader::DropLastSection() {
    --sectionCount;
    sections[sectionCount].Data.reset();
}

bool CExifReader::ReadSections(std::FILE* stream) {
    if (std::fgetc(stream) != 0xFF || std::fgetc(stream) != 0xD8)
        return false;
    if (sectionCount >= kMaxSections) {
        Fail("Too many sections in jpg file");
        return false;
    }
    bool haveComment = false;

    for (;;) {
        // Skip the fill bytes; whatever byte is not 0xFF is the marker code,
        // also when no 0xFF stood before it.
        int marker = 0;
        int fill = 0;
        for (;;) {
            marker = std::fgetc(stream);
            if (marker != 0xFF)
                break;
            if (++fill > kMaxPadding) {
                std::fputs("too many padding unsigned chars\n", stderr);
                return false;
            }
        }

        SectionEntry& slot = sections[sectionCount];
        slot.Type = marker;

        // End of file reads as -1 and so gives a negative length.
        const int high = std::fgetc(stream);
        const int low = std::fgetc(stream);
        const int length = high * 256 + low;
        if (high < 0 || low < 0 || length < 2) {
            Fail("invalid marker");
            return false;
        }
        slot.Size = length;
        slot.Data.reset(new (std::nothrow) std::uint8_t[std::size_t(length)]);
        if (!slot.Data) {
            Fail("Could not allocate memory");
            return false;
        }
        slot.Data[0] = std::uint8_t(high);
        slot.Data[1] = std::uint8_t(low);
        const std::size_t want = std::size_t(length - 2);
        if (std::fread(slot.Data.get() + 2, 1, want, stream) != want) {
            Fail("Premature end of file?");
            return false;
        }
        ++sectionCount;

        if (IsFrameHeader(marker)) {
            ParseFrameHeader(slot, marker);
        } else if (marker == 0xD9) {
            std::fputs("No image in jpeg!\n", stderr);
            return false;
        } else if (marker == 0xDA) {
            return true;
        } else if (marker == 0xE0) {
            DropLastSection();
        } else if (marker == 0xE1) {
            if (length >= 6 && std::memcmp(slot.Data.get() + 2, "Exif", 4) == 0)
                record->IsExif = ParseExifSection(slot.Data.get() + 2, length);
            else
                DropLastSection();
        } else if (marker == 0xFE) {
            if (haveComment) {
                DropLastSection();
            } else {
                ParseComment(slot);
                haveComment = true;
            }
        }

        if (sectionCount >= kMaxSections) {
            Fail("Too many sections in jpg file");
            return false;
        }
    }
}

void CExifReader::ParseFrameHeader(const SectionEntry& section, int marker) {
    // A header too short to hold the size and the component count is no
    // frame header at all.
    if (section.Size < 8)
        return;
    const std::uint8_t* data = section.Data.get();
    record->Height = data[3] * 256 + data[4];
    record->Width = data[5] * 256 + data[6];
    record->IsColor = data[7] == 3 ? 1 : 0;
    record->Process = marker;
}

void CExifReader::ParseComment(const SectionEntry& section) {
    const int length = section.Size > kMaxCommentBytes ? kMaxCommentBytes : section.Size;
    const std::uint8_t* data = section.Data.get();
    char* out = record->Comments;
    int n = 0;
    for (int i = 2; i < length; ++i) {
        const std::uint8_t c = data[i];
        if (c == 0x0D && i + 1 < length && data[i + 1] == 0x0A)
            continue;
        if (c >= 32 || c == 0x0A || c == 0x09)
            out[n++] = char(c);
        else
            out[n++] = '?';
    }
    out[n] = '\0';
}

} // namespace tivox
