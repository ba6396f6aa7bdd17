#include "imageops/denoise_filter.h"

#include <cstring>
#include <new>

#include "imageops/inner_rows.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace tivox {

namespace {

struct Thresholds {
    int blue, green, red;
};

// The defining computation for the pixels x0 <= x < x1 of one row.
void DenoiseRowScalar(const std::uint8_t* above, const std::uint8_t* row, const std::uint8_t* below,
                      std::uint8_t* out, int x0, int x1, const Thresholds& t) {
    const int limit[3] = {t.blue, t.green, t.red};
    for (int x = x0; x < x1; ++x) {
        const int l = (x - 1) * 4, c = x * 4, r = (x + 1) * 4;
        int mean[3];
        bool deviates = false;
        for (int ch = 0; ch < 3; ++ch) {
            const unsigned sum = unsigned(above[l + ch]) + above[c + ch] + above[r + ch] +
                                 row[l + ch] + row[r + ch] + below[l + ch] + below[c + ch] +
                                 below[r + ch];
            mean[ch] = int(sum >> 3);
            const int d = int(row[c + ch]) - mean[ch];
            if ((d < 0 ? -d : d) > limit[ch])
                deviates = true;
        }
        if (deviates) {
            out[c + 0] = std::uint8_t(mean[0]);
            out[c + 1] = std::uint8_t(mean[1]);
            out[c + 2] = std::uint8_t(mean[2]);
            out[c + 3] = 255;
        } else if (out != row) {
            std::memcpy(out + c, row + c, 4);
        }
    }
}

#if defined(__x86_64__) || defined(__i386__)
// Eight pixels at a time in 16-bit lanes (a sum of eight bytes fits). The
// unpacking and the final pack pair up, so the pixel order is kept.
__attribute__((target("avx2"))) int DenoiseRowAvx2(const std::uint8_t* above,
                                                   const std::uint8_t* row,
                                                   const std::uint8_t* below, std::uint8_t* out,
                                                   int x0, int x1, const Thresholds& t) {
    const __m256i zero = _mm256_setzero_si256();
    const __m256i ones = _mm256_set1_epi8(1);
    // Alpha lanes get a threshold no difference can pass.
    const __m256i limit = _mm256_setr_epi16(short(t.blue), short(t.green), short(t.red), 0x7FFF,
                                            short(t.blue), short(t.green), short(t.red), 0x7FFF,
                                            short(t.blue), short(t.green), short(t.red), 0x7FFF,
                                            short(t.blue), short(t.green), short(t.red), 0x7FFF);
    const __m256i opaque =
        _mm256_setr_epi16(0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255);
    const __m256i colour =
        _mm256_setr_epi16(-1, -1, -1, 0, -1, -1, -1, 0, -1, -1, -1, 0, -1, -1, -1, 0);
    int x = x0;
    for (; x + 8 <= x1; x += 8) {
        const int l = (x - 1) * 4, c = x * 4, r = (x + 1) * 4;
        const std::uint8_t* const neighbours[8] = {above + l, above + c, above + r, row + l,
                                                   row + r,   below + l, below + c, below + r};
        // Neighbours in pairs: their bytes interleaved, one multiply-add by
        // ones gives the sum of both.
        __m256i sumLo = zero, sumHi = zero;
        for (int k = 0; k < 8; k += 2) {
            const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(neighbours[k]));
            const __m256i b =
                _mm256_loadu_si256(reinterpret_cast<const __m256i*>(neighbours[k + 1]));
            sumLo = _mm256_add_epi16(sumLo, _mm256_maddubs_epi16(_mm256_unpacklo_epi8(a, b), ones));
            sumHi = _mm256_add_epi16(sumHi, _mm256_maddubs_epi16(_mm256_unpackhi_epi8(a, b), ones));
        }
        const __m256i p = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(row + c));
        __m256i result[2];
        const __m256i sums[2] = {sumLo, sumHi};
        const __m256i pixels[2] = {_mm256_unpacklo_epi8(p, zero), _mm256_unpackhi_epi8(p, zero)};
        for (int h = 0; h < 2; ++h) {
            const __m256i mean = _mm256_srli_epi16(sums[h], 3);
            const __m256i distance = _mm256_abs_epi16(_mm256_sub_epi16(pixels[h], mean));
            const __m256i far = _mm256_cmpgt_epi16(distance, limit);
            // A pixel keeps its value when none of its lanes is too far.
            const __m256i keep = _mm256_cmpeq_epi64(far, zero);
            const __m256i replacement = _mm256_or_si256(_mm256_and_si256(mean, colour), opaque);
            result[h] = _mm256_blendv_epi8(replacement, pixels[h], keep);
        }
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + c),
                            _mm256_packus_epi16(result[0], result[1]));
    }
    return x;
}
#endif

} // namespace

void CDenoiseFilter::FilterRow(const std::uint8_t* above, const std::uint8_t* row,
                               const std::uint8_t* below, std::uint8_t* out, int width,
                               PixelPath path) const {
    const Thresholds t{thresholdBlue, thresholdGreen, thresholdRed};
    int x = 1;
#if defined(__x86_64__) || defined(__i386__)
    if (UseAvx2(path) && t.blue >= 0 && t.green >= 0 && t.red >= 0 && t.blue < 0x7FFF &&
        t.green < 0x7FFF && t.red < 0x7FFF)
        x = DenoiseRowAvx2(above, row, below, out, 1, width - 1, t);
#endif
    DenoiseRowScalar(above, row, below, out, x, width - 1, t);
}

std::unique_ptr<Bitmap> CDenoiseFilter::Filter(const Bitmap& source, PixelPath path) const {
    auto out = std::unique_ptr<Bitmap>(new (std::nothrow) Bitmap);
    if (!out || !Filter(source, *out, path))
        return nullptr;
    return out;
}

bool CDenoiseFilter::Filter(const Bitmap& source, Bitmap& out, PixelPath path) const {
    if (&out == &source)
        return false;
    if (source.IsEmpty()) {
        out.Release();
        return true;
    }
    // The result starts as a copy, so the border keeps the source's pixels.
    if (!source.CopyTo(out))
        return false;
    const int w = source.Width(), h = source.Height();
    if (w < 3 || h < 3)
        return true;
    for (int y = 1; y < h - 1; ++y)
        FilterRow(source.Row(y - 1), source.Row(y), source.Row(y + 1), out.Row(y), w, path);
    return true;
}

bool CDenoiseFilter::FilterInPlace(Bitmap& image, PixelPath path) const {
    const int w = image.Width();
    return ForEachInnerRowInPlace(
        image,
        [&](const std::uint8_t* above, const std::uint8_t* row, const std::uint8_t* below,
            std::uint8_t* out) { FilterRow(above, row, below, out, w, path); },
        path);
}

} // namespace tivox
