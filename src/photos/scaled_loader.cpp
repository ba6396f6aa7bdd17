#include "photos/scaled_loader.h"

#include <cstring>
#include <utility>
#include <vector>

#include "exif/exif_reader.h"
#include "platform/orientation.h"
#include "platform/pnm_io.h"

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

bool CScaledLoader::DecodeCovering(const std::string& path, Size target, Bitmap& decoded,
                                   Size& source, int& orientation, std::string& error) {
    source = {};
    orientation = 1;
    if (!m_decoder.LoadFile(path, error))
        return false;
    const auto& bytes = m_decoder.Buffer();
    if (LooksLikePnm(bytes.data(), bytes.size())) {
        if (!ReadPnm(bytes.data(), bytes.size(), decoded, error))
            return false;
        source = {decoded.Width(), decoded.Height()};
    } else {
        JpegInfo info;
        if (!m_decoder.ReadHeader(info, error))
            return false;
        orientation = JpegOrientation(bytes.data(), bytes.size());
        source = UprightSize({info.width, info.height}, orientation);
        // The box holds the upright picture; the decoder covers it as stored.
        const Size fitted = target.width > 0 ? FitInto(source, target) : source;
        if (fitted.width <= 0 || fitted.height <= 0) {
            error = "picture too small for the box";
            return false;
        }
        if (!m_decoder.Decode(UprightSize(fitted, orientation), decoded, info, error)) {
            source = {};
            return false;
        }
    }
    return true;
}

bool CScaledLoader::LoadInto(const std::string& path, Size target, Bitmap& out, Size& source,
                             std::string& error) {
    int orientation = 1;
    if (!DecodeCovering(path, target, m_decoded, source, orientation, error)) {
        out.Release();
        return false;
    }
    const Size fitted = FitInto(source, target);
    if (fitted.width <= 0 || fitted.height <= 0) {
        error = "picture too small for the box";
        return false;
    }
    // Scaled first, then stood up: the turn walks the small picture.
    const Size stored = UprightSize(fitted, orientation);
    Bitmap& scaled = orientation == 1 ? out : m_stored;
    if (!m_resampler.Scale(m_decoded, stored.width, stored.height, scaled) ||
        (orientation != 1 && !OrientBitmap(m_stored, orientation, out))) {
        error = "out of memory for the scaled picture";
        return false;
    }
    return true;
}

bool CScaledLoader::LoadFull(const std::string& path, Bitmap& out, std::string& error,
                             bool refuseDamaged) {
    Size source;
    int orientation = 1;
    m_decoder.RefuseDamagedData(refuseDamaged);
    bool ok = DecodeCovering(path, {}, out, source, orientation, error);
    m_decoder.RefuseDamagedData(false);
    // Only a picture that must be stood up needs a second full-size buffer,
    // and only for as long as the turn takes.
    if (ok && orientation != 1) {
        ok = OrientBitmap(out, orientation, m_stored);
        if (ok)
            std::swap(out, m_stored);
        else
            error = "out of memory for the upright picture";
        m_stored.Release();
    }
    if (!ok)
        out.Release();
    return ok;
}

} // namespace tivox
