#include "photos/scaled_loader.h"

#include <cstring>
#include <utility>
#include <vector>

#include "exif/exif_orientation.h"
#include "platform/orientation.h"
#include "platform/pnm_io.h"

namespace tivox {

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
