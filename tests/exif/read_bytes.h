#pragma once
// Runs a CExifReader over bytes in memory, through a real stdio stream.

#include <cstdio>
#include <memory>
#include <vector>

#include "exif/exif_reader.h"
#include "photo_writer/test_jpeg.h"

namespace tivox::test {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

// ReadSections over the bytes; the reader keeps what it read.
inline bool ReadBytes(CExifReader& reader, const Bytes& bytes) {
    std::unique_ptr<std::FILE, FileCloser> file(std::tmpfile());
    if (!file)
        return false;
    if (!bytes.empty())
        std::fwrite(bytes.data(), 1, bytes.size(), file.get());
    std::rewind(file.get());
    return reader.ReadSections(file.get());
}

// A file head with one EXIF section and a frame header, up to the scan.
inline Bytes ExifHead(const Bytes& exifPayload) {
    std::vector<Segment> segments = {Segment{0xE1, exifPayload, {}, 0}};
    for (const Segment& s : FrameAndScan(2048, 1536))
        segments.push_back(s);
    return JpegHead(segments);
}

} // namespace tivox::test
