#include "photos/scaled_loader.h"

#include "platform/pnm_io.h"

namespace tivox {

bool CScaledLoader::DecodeCovering(const std::string& path, Size target, Bitmap& decoded,
                                   Size& source, std::string& error) {
    source = {};
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
        source = {info.width, info.height};
        const Size fitted = target.width > 0 ? FitInto(source, target) : source;
        if (fitted.width <= 0 || fitted.height <= 0) {
            error = "picture too small for the box";
            return false;
        }
        if (!m_decoder.Decode(fitted, decoded, info, error)) {
            source = {};
            return false;
        }
    }
    return true;
}

bool CScaledLoader::LoadInto(const std::string& path, Size target, Bitmap& out, Size& source,
                             std::string& error) {
    if (!DecodeCovering(path, target, m_decoded, source, error)) {
        out.Release();
        return false;
    }
    const Size fitted = FitInto(source, target);
    if (fitted.width <= 0 || fitted.height <= 0) {
        error = "picture too small for the box";
        return false;
    }
    if (!m_resampler.Scale(m_decoded, fitted.width, fitted.height, out)) {
        error = "out of memory for the scaled picture";
        return false;
    }
    return true;
}

bool CScaledLoader::LoadFull(const std::string& path, Bitmap& out, std::string& error,
                             bool refuseDamaged) {
    Size source;
    m_decoder.RefuseDamagedData(refuseDamaged);
    const bool ok = DecodeCovering(path, {}, out, source, error);
    m_decoder.RefuseDamagedData(false);
    if (!ok)
        out.Release();
    return ok;
}

} // namespace tivox
