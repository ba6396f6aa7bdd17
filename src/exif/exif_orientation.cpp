#include "exif/exif_orientation.h"

#include <cstring>
#include <vector>

#include "exif/exif_reader.h"
#include "platform/orientation.h"

namespace tivox {

int JpegOrientation(const std::uint8_t* data, std::size_t size) {
    if (size < 4 || data[0] != 0xFF || data[1] != 0xD8)
        return 1;
    std::size_t pos = 2;
    // Only the head up to the scan is walked; the reader parses the section.
    while (pos + 4 <= size && data[pos] == 0xFF) {
        const std::uint8_t marker = data[pos + 1];
        if (marker == 0xFF) {
            ++pos; // fill byte
            continue;
        }
        if (marker == 0xDA || marker == 0xD9)
            break;
        const std::size_t length = std::size_t(data[pos + 2]) << 8 | data[pos + 3];
        if (length < 2 || pos + 2 + length > size)
            break;
        if (marker == 0xE1 && length >= 8 && std::memcmp(data + pos + 4, "Exif\0\0", 6) == 0) {
            // The reader takes a writable payload; the file's bytes stay as
            // they are.
            std::vector<std::uint8_t> payload(data + pos + 4, data + pos + 2 + length);
            ExifRecord record{};
            CExifReader reader(&record);
            reader.ParseExifSection(payload.data(), int(length));
            return ValidOrientation(record.Orientation);
        }
        pos += 2 + length;
    }
    return 1;
}

} // namespace tivox
