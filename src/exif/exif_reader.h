#pragma once
// CExifReader reads the head of a JPEG file, up to the start of the scan, into
// a table of its marker sections and fills an ExifRecord from the frame
// header, the first comment and every EXIF section on the way.
//
// One reader serves one file: construct, call ReadSections once, read the
// record, destroy. Failures come back as false with a text in lastError; the
// caller normally looks only at record->IsExif. Used by one thread at a time.

#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "exif/exif_record.h"

namespace tivox {

// One retained marker section: its length bytes as they stand in the file,
// then its payload.
struct SectionEntry {
    std::unique_ptr<std::uint8_t[]> Data; // Size bytes; null when the slot is empty
    std::int32_t Type = 0;                // the marker code (0xC0, 0xE1, ...)
    std::int32_t Size = 0;                // the length field: length bytes + payload
};

class CExifReader {
public:
    static constexpr int kMaxSections = 20;

    // With a record the reader fills it and leaves it to the caller; with null
    // it makes a zeroed record of its own.
    explicit CExifReader(ExifRecord* record);
    ~CExifReader();
    CExifReader(const CExifReader&) = delete;
    CExifReader& operator=(const CExifReader&) = delete;

    // Reads from the stream's current position (the file's first byte). True
    // only when a start-of-scan section was reached. Leaves the stream open.
    bool ReadSections(std::FILE* stream);

    // Parses an APP1 payload that starts with "Exif" (the bytes behind the
    // length field) of a section whose length field is size. True on success.
    bool ParseExifSection(std::uint8_t* payload, int size);

    // Walks one directory at dir and the directories it links to. base is the
    // byte order mark, length the bytes of TIFF data behind it. depth counts
    // the links followed to get here.
    bool ParseDirectory(std::uint8_t* dir, std::uint8_t* base, std::uint32_t length,
                        ExifRecord* target, int depth = 0);

    // The first component of a value of the given format code as a double.
    double ReadNumber(const std::uint8_t* value, int format) const;
    std::uint32_t Read16(const std::uint8_t* p) const;
    std::uint32_t Read32(const std::uint8_t* p) const;

    ExifRecord* record;
    char lastError[256];
    std::int32_t exifImageWidth = 0;
    std::int32_t bigEndian = 0;
    SectionEntry sections[kMaxSections];
    std::int32_t sectionCount = 0;
    std::uint8_t ownsRecord = 0;

private:
    void Fail(const char* text);
    void DropLastSection();
    void ParseFrameHeader(const SectionEntry& section, int marker);
    void ParseComment(const SectionEntry& section);
    void StoreTag(unsigned tag, int format, std::uint32_t components, std::uint8_t* value,
                  std::uint32_t byteCount, const std::uint8_t* end, ExifRecord* target);
    void StoreUserComment(std::uint8_t* value, std::uint32_t byteCount, const std::uint8_t* end,
                          ExifRecord* target);

    std::unique_ptr<ExifRecord> ownedRecord_;
    // Directories already walked in the current EXIF section, by offset from
    // the TIFF base; guards against loops and against exponential fan-out.
    std::vector<std::uint32_t> visited_;
};

} // namespace tivox
