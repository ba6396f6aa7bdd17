// JPEG over TurboJPEG 2.1: scaled decode straight into BGRA, encode, lossless
// transform.

#include "platform/jpeg_codec.h"

#include <sys/mman.h>
#include <turbojpeg.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

#include "platform/atomic_file.h"

namespace tivox {

namespace {

// A whole photo decoded into a fresh buffer touches every page of up to a
// hundred megabytes: in huge pages that is a few dozen faults instead of
// tens of thousands, a good part of a one-photo edit's time. The advice comes
// before the decoder's first touch. Smaller pictures (thumbnails) keep
// ordinary pages.
void AdviseHugePages(std::uint8_t* data, std::size_t bytes) {
    constexpr std::uintptr_t kHuge = std::uintptr_t(2) << 20;
    if (bytes < 8 * kHuge)
        return;
    const auto start = (reinterpret_cast<std::uintptr_t>(data) + kHuge - 1) & ~(kHuge - 1);
    const auto end = (reinterpret_cast<std::uintptr_t>(data) + bytes) & ~(kHuge - 1);
    if (end > start) // advice only: a kernel without it keeps ordinary pages
        (void)::madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
}

std::string TjError(void* handle) {
    return tjGetErrorStr2(static_cast<tjhandle>(handle));
}

JpegColorspace FromTj(int cs) {
    switch (cs) {
    case TJCS_RGB:
        return JpegColorspace::Rgb;
    case TJCS_YCbCr:
        return JpegColorspace::YCbCr;
    case TJCS_GRAY:
        return JpegColorspace::Gray;
    case TJCS_CMYK:
        return JpegColorspace::Cmyk;
    case TJCS_YCCK:
        return JpegColorspace::Ycck;
    default:
        return JpegColorspace::Unknown;
    }
}

std::uint16_t Be16(const std::uint8_t* p) {
    return std::uint16_t(p[0] << 8 | p[1]);
}

// The resolution of a JFIF header, when the file starts with one that names
// dots per inch or per centimetre.
void ReadJfifDensity(const std::uint8_t* data, std::size_t size, JpegInfo& info) {
    if (size < 20 || data[0] != 0xFF || data[1] != 0xD8 || data[2] != 0xFF || data[3] != 0xE0)
        return;
    const std::uint8_t* p = data + 4;
    if (Be16(p) < 16 || std::memcmp(p + 2, "JFIF\0", 5) != 0)
        return;
    const int units = p[9];
    const int xd = Be16(p + 10), yd = Be16(p + 12);
    if (xd <= 0 || yd <= 0 || (units != 1 && units != 2))
        return;
    const float scale = units == 1 ? 1.0f : 2.54f;
    info.dpiX = float(xd) * scale;
    info.dpiY = float(yd) * scale;
}

// Whether decoding the data keeps every coefficient of the picture in memory
// at once: a progressive file, or one whose first scan leaves components for
// later scans. Data whose markers cannot be followed counts as such.
bool NeedsWholeCoefficients(const std::uint8_t* data, std::size_t size) {
    int components = 0;
    std::size_t pos = 2;
    while (pos + 4 <= size) {
        if (data[pos] != 0xFF)
            return true;
        const std::uint8_t marker = data[pos + 1];
        if (marker == 0xFF || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8)) {
            pos += marker == 0xFF ? 1 : 2; // fill byte, or a marker without length
            continue;
        }
        const std::size_t length = Be16(data + pos + 2);
        const bool frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame && pos + 10 <= size) {
            if ((marker & 0x3) == 2) // SOF2, SOF6, SOF10, SOF14
                return true;
            components = data[pos + 9];
        }
        if (marker == 0xDA)
            return pos + 5 > size || data[pos + 4] < components;
        pos += 2 + length;
    }
    return true;
}

// The bytes of a whole-picture coefficient buffer: 64 two-byte coefficients
// per 8x8 block of each component, the picture padded to whole MCUs. In the
// subsamplings TurboJPEG accepts, a chroma component has one block per MCU.
std::int64_t CoefficientBytes(const JpegInfo& info) {
    if (info.subsampling < 0 || info.subsampling >= TJ_NUMSAMP)
        return std::numeric_limits<std::int64_t>::max();
    const int mcuW = tjMCUWidth[info.subsampling], mcuH = tjMCUHeight[info.subsampling];
    const std::int64_t mcus = (std::int64_t(info.width) + mcuW - 1) / mcuW *
                              ((std::int64_t(info.height) + mcuH - 1) / mcuH);
    const bool fourInks =
        info.colorspace == JpegColorspace::Cmyk || info.colorspace == JpegColorspace::Ycck;
    const int full = info.subsampling == TJSAMP_GRAY ? 1 : fourInks ? 2 : 1;
    const int chroma = info.subsampling == TJSAMP_GRAY ? 0 : 2;
    return mcus * (full * (mcuW / 8) * (mcuH / 8) + chroma) * 64 * 2;
}

} // namespace

UiText ReadErrorText(const std::string& path, const std::string& cause) {
    if (cause == kJpegTooLarge)
        return {TIVOX_TR("Could not read %s: the picture is too large for the memory budget."),
                {path}};
    if (cause == kJpegDamaged)
        return {TIVOX_TR("Could not read %s: the JPEG data is damaged or incomplete."), {path}};
    if (cause == kJpegUnreadable)
        return {TIVOX_TR("Could not read %s: it is not a readable JPEG picture."), {path}};
    return {TIVOX_TR("Could not read %s: %s"), {path, cause}};
}

Size ScaledDecodeSize(Size source, Size target) {
    int count = 0;
    const tjscalingfactor* factors = tjGetScalingFactors(&count);
    Size best = source;
    if (!factors || source.width <= 0 || source.height <= 0)
        return best;
    // The factors come largest first; the last one that still covers the
    // target is the smallest such scale.
    for (int i = 0; i < count; ++i) {
        const tjscalingfactor f = factors[i];
        if (f.num > f.denom)
            continue;
        const Size s{TJSCALED(source.width, f), TJSCALED(source.height, f)};
        if (s.width >= target.width && s.height >= target.height &&
            std::int64_t(s.width) * s.height < std::int64_t(best.width) * best.height)
            best = s;
    }
    return best;
}

JpegDecoder::JpegDecoder() : m_handle(tjInitDecompress()) {}

JpegDecoder::~JpegDecoder() {
    if (m_handle)
        tjDestroy(static_cast<tjhandle>(m_handle));
}

void JpegDecoder::Restart() {
    if (m_handle)
        tjDestroy(static_cast<tjhandle>(m_handle));
    m_handle = tjInitDecompress();
}

int JpegDecoder::Flags() const {
    // A progressive file of thousands of tiny scans would take minutes.
    return TJFLAG_LIMITSCANS | (m_refuseDamaged ? TJFLAG_STOPONWARNING : 0);
}

bool JpegDecoder::Failed(int rc, std::string& error) {
    if (rc == 0)
        return false;
    const bool warning = tjGetErrorCode(static_cast<tjhandle>(m_handle)) == TJERR_WARNING;
    Restart();
    // A warning (damaged or truncated data) still leaves a picture.
    if (warning && !m_refuseDamaged)
        return false;
    error = kJpegDamaged;
    return true;
}

bool JpegDecoder::LoadFile(const std::string& path, std::string& error) {
    return ReadWholeFile(path, m_buffer, error);
}

bool JpegDecoder::ReadHeader(JpegInfo& info, std::string& error) {
    info = JpegInfo{};
    if (!m_handle) {
        error = "the JPEG decoder could not be started";
        return false;
    }
    int w = 0, h = 0, sub = 0, cs = 0;
    if (tjDecompressHeader3(static_cast<tjhandle>(m_handle), m_buffer.data(),
                            static_cast<unsigned long>(m_buffer.size()), &w, &h, &sub, &cs) != 0) {
        Restart();
        error = kJpegUnreadable;
        return false;
    }
    if (w <= 0 || h <= 0) {
        error = kJpegUnreadable;
        return false;
    }
    info.width = w;
    info.height = h;
    info.subsampling = sub;
    info.colorspace = FromTj(cs);
    ReadJfifDensity(m_buffer.data(), m_buffer.size(), info);
    return true;
}

bool JpegDecoder::Decode(Size target, Bitmap& out, JpegInfo& info, std::string& error,
                         std::int64_t budget) {
    if (!ReadHeader(info, error))
        return false;
    // Even a flat grey picture needs more than a bit per 8x8 block; a file far
    // below that is a header whose scan is missing, and decoding it would only
    // spend time and memory on a picture of nothing.
    const std::int64_t blocks =
        (std::int64_t(info.width) + 7) / 8 * ((std::int64_t(info.height) + 7) / 8);
    if (std::int64_t(m_buffer.size()) * 64 < blocks) {
        error = kJpegDamaged;
        return false;
    }
    const Size want =
        target.width > 0 && target.height > 0 ? target : Size{info.width, info.height};
    const Size scaled = ScaledDecodeSize({info.width, info.height}, want);
    const bool cmyk =
        info.colorspace == JpegColorspace::Cmyk || info.colorspace == JpegColorspace::Ycck;
    const std::int64_t pixels = std::int64_t(scaled.width) * scaled.height;
    // The bitmap, the CMYK scratch, and the coefficients that a progressive
    // decode keeps for the whole picture, whatever the output scale.
    const std::int64_t need =
        pixels * 4 * (cmyk ? 2 : 1) +
        (NeedsWholeCoefficients(m_buffer.data(), m_buffer.size()) ? CoefficientBytes(info) : 0);
    if (need > budget) {
        error = kJpegTooLarge;
        return false;
    }
    if (!out.Reset(scaled.width, scaled.height, budget)) {
        error = "out of memory for the picture";
        return false;
    }
    out.SetResolution(info.dpiX, info.dpiY);
    AdviseHugePages(out.Data(), std::size_t(out.Stride()) * std::size_t(out.Height()));
    if (cmyk)
        return DecodeCmyk(scaled, out, error);
    const int rc = tjDecompress2(static_cast<tjhandle>(m_handle), m_buffer.data(),
                                 static_cast<unsigned long>(m_buffer.size()), out.Data(),
                                 scaled.width, out.Stride(), scaled.height, TJPF_BGRA, Flags());
    if (Failed(rc, error)) {
        out.Release();
        return false;
    }
    return true;
}

bool JpegDecoder::DecodeCmyk(Size scaled, Bitmap& out, std::string& error) {
    const std::size_t bytes = std::size_t(scaled.width) * std::size_t(scaled.height) * 4;
    m_cmyk.resize(bytes);
    const int rc = tjDecompress2(static_cast<tjhandle>(m_handle), m_buffer.data(),
                                 static_cast<unsigned long>(m_buffer.size()), m_cmyk.data(),
                                 scaled.width, scaled.width * 4, scaled.height, TJPF_CMYK, Flags());
    if (Failed(rc, error)) {
        out.Release();
        return false;
    }
    // Such files store inverted inks (as the common editors write them), so
    // each colour is its ink value times the black value.
    for (int y = 0; y < scaled.height; ++y) {
        const std::uint8_t* s = m_cmyk.data() + std::size_t(y) * std::size_t(scaled.width) * 4;
        std::uint8_t* d = out.Row(y);
        for (int x = 0; x < scaled.width; ++x, s += 4, d += 4) {
            const unsigned k = s[3];
            d[0] = std::uint8_t((s[2] * k + 127) / 255);
            d[1] = std::uint8_t((s[1] * k + 127) / 255);
            d[2] = std::uint8_t((s[0] * k + 127) / 255);
            d[3] = 255;
        }
    }
    return true;
}

bool JpegDecoder::DecodeFile(const std::string& path, Size target, Bitmap& out, JpegInfo& info,
                             std::string& error, std::int64_t budget) {
    info = JpegInfo{};
    return LoadFile(path, error) && Decode(target, out, info, error, budget);
}

JpegEncoder::JpegEncoder() : m_handle(tjInitCompress()) {}

JpegEncoder::~JpegEncoder() {
    if (m_handle)
        tjDestroy(static_cast<tjhandle>(m_handle));
}

bool JpegEncoder::Encode(const Bitmap& image, int quality, std::vector<std::uint8_t>& out,
                         std::string& error) {
    if (!m_handle) {
        error = "the JPEG encoder could not be started";
        return false;
    }
    if (image.IsEmpty()) {
        error = "no picture to encode";
        return false;
    }
    if (quality < 1)
        quality = 1;
    if (quality > 100)
        quality = 100;
    unsigned char* jpeg = nullptr;
    unsigned long size = 0;
    const int rc =
        tjCompress2(static_cast<tjhandle>(m_handle), image.Data(), image.Width(), image.Stride(),
                    image.Height(), TJPF_BGRA, &jpeg, &size, TJSAMP_420, quality, 0);
    if (rc != 0) {
        error = "JPEG encoding failed: " + TjError(m_handle);
        tjFree(jpeg);
        return false;
    }
    out.assign(jpeg, jpeg + size);
    tjFree(jpeg);
    // The encoder's JFIF header says "no unit"; give it the picture's dots
    // per inch when they are whole numbers that fit.
    const long dx = std::lround(image.DpiX()), dy = std::lround(image.DpiY());
    if (out.size() > 20 && out[2] == 0xFF && out[3] == 0xE0 &&
        std::memcmp(out.data() + 6, "JFIF\0", 5) == 0 && dx > 0 && dy > 0 && dx < 65536 &&
        dy < 65536) {
        out[13] = 1;
        out[14] = std::uint8_t(dx >> 8);
        out[15] = std::uint8_t(dx);
        out[16] = std::uint8_t(dy >> 8);
        out[17] = std::uint8_t(dy);
    }
    return true;
}

bool TransformJpeg(const std::uint8_t* data, std::size_t size, JpegTransform op,
                   std::vector<std::uint8_t>& out, bool& perfect, std::string& error,
                   std::int64_t budget, bool allowTrim) {
    perfect = false;
    std::unique_ptr<void, int (*)(tjhandle)> owner(tjInitTransform(), tjDestroy);
    tjhandle handle = owner.get();
    if (!handle) {
        error = "the JPEG transformer could not be started";
        return false;
    }
    JpegInfo info;
    int sub = 0, cs = 0;
    if (tjDecompressHeader3(handle, data, static_cast<unsigned long>(size), &info.width,
                            &info.height, &sub, &cs) != 0 ||
        info.width <= 0 || info.height <= 0) {
        error = kJpegUnreadable;
        return false;
    }
    info.subsampling = sub;
    info.colorspace = FromTj(cs);
    // The transform reads every coefficient of the source and builds the
    // turned picture's beside them, whatever the file's coding.
    if (CoefficientBytes(info) > budget / 2) {
        error = kJpegTooLarge;
        return false;
    }
    tjtransform t{};
    switch (op) {
    case JpegTransform::Rotate90:
        t.op = TJXOP_ROT90;
        break;
    case JpegTransform::Rotate180:
        t.op = TJXOP_ROT180;
        break;
    case JpegTransform::Rotate270:
        t.op = TJXOP_ROT270;
        break;
    case JpegTransform::FlipHorizontal:
        t.op = TJXOP_HFLIP;
        break;
    case JpegTransform::FlipVertical:
        t.op = TJXOP_VFLIP;
        break;
    case JpegTransform::Transpose:
        t.op = TJXOP_TRANSPOSE;
        break;
    case JpegTransform::Transverse:
        t.op = TJXOP_TRANSVERSE;
        break;
    }
    // First ask for a perfect transform; a picture with partial edge blocks
    // is then trimmed to whole blocks instead of leaving them unturned.
    bool ok = false;
    for (int attempt = 0; attempt < (allowTrim ? 2 : 1) && !ok; ++attempt) {
        t.options = attempt == 0 ? TJXOPT_PERFECT : TJXOPT_TRIM;
        unsigned char* dst = nullptr;
        unsigned long dstSize = 0;
        // Damaged data is a failure (no partial picture is ever written
        // over a photo); so is an imperfect picture on the first attempt.
        if (tjTransform(handle, data, static_cast<unsigned long>(size), 1, &dst, &dstSize, &t,
                        TJFLAG_LIMITSCANS | TJFLAG_STOPONWARNING) == 0) {
            out.assign(dst, dst + dstSize);
            perfect = attempt == 0;
            ok = true;
        } else {
            const char* message = tjGetErrorStr2(handle);
            error = attempt == 0 && message && std::strstr(message, "perfect") ? kJpegNotPerfect
                                                                               : kJpegDamaged;
        }
        tjFree(dst);
    }
    return ok;
}

void CopyMetadataSections(const std::vector<std::uint8_t>& from, std::vector<std::uint8_t>& into) {
    if (from.size() < 4 || from[0] != 0xFF || from[1] != 0xD8 || into.size() < 4 ||
        into[0] != 0xFF || into[1] != 0xD8)
        return;
    std::vector<std::uint8_t> sections;
    std::size_t pos = 2;
    // Walk the head up to the first section that is no APPn or comment.
    while (pos + 4 <= from.size() && from[pos] == 0xFF) {
        const std::uint8_t marker = from[pos + 1];
        if (marker == 0xFF) {
            ++pos; // fill byte
            continue;
        }
        if (!((marker >= 0xE0 && marker <= 0xEF) || marker == 0xFE))
            break;
        const std::size_t length = Be16(&from[pos + 2]);
        if (length < 2 || pos + 2 + length > from.size())
            break;
        if (marker == 0xE1)
            sections.insert(sections.end(), from.begin() + long(pos),
                            from.begin() + long(pos + 2 + length));
        pos += 2 + length;
    }
    if (sections.empty())
        return;
    std::size_t at = 2;
    if (into[2] == 0xFF && into[3] == 0xE0 && into.size() >= 6)
        at = std::min(into.size(), 4 + std::size_t(Be16(&into[4])));
    into.insert(into.begin() + long(at), sections.begin(), sections.end());
}

bool ReadJpegInfo(const std::string& path, JpegInfo& info, std::string& error) {
    JpegDecoder decoder;
    return decoder.LoadFile(path, error) && decoder.ReadHeader(info, error);
}

bool DecodeJpegFile(const std::string& path, Size target, Bitmap& out, std::string& error) {
    JpegDecoder decoder;
    JpegInfo info;
    return decoder.DecodeFile(path, target, out, info, error);
}

bool EncodeJpegFile(const Bitmap& image, int quality, const std::string& path, std::string& error) {
    JpegEncoder encoder;
    std::vector<std::uint8_t> bytes;
    return encoder.Encode(image, quality, bytes, error) &&
           WriteWholeFile(path, bytes.data(), bytes.size(), error);
}

} // namespace tivox
