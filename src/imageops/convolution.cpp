#include "imageops/convolution.h"

#include <cstdlib>

#include "imageops/inner_rows.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace tivox {

void CConvolution::SetAll(std::int32_t value) {
    for (auto& w : weights)
        w = value;
}

int SharpenStrength(float sharpness) {
    const float k = 13.0f - 4.0f * sharpness;
    return int(k);
}

bool Sharpen(Bitmap& image, int k, PixelPath path, const RowPass& before) {
    CConvolution kernel;
    kernel.SetAll(0);
    kernel.weights[4] = k;
    kernel.weights[1] = kernel.weights[3] = kernel.weights[5] = kernel.weights[7] = -2;
    kernel.factor = k - 8;
    return Convolve(image, kernel, path, before);
}

namespace {

// One tap of the kernel: which of the three rows, which column offset, and
// its weight. Zero weights are left out of the loops.
struct Tap {
    int row; // 0 above, 1 the row itself, 2 below
    int dx;
    std::int32_t weight;
};

struct Rows {
    const std::uint8_t* r[3]; // original pixels of the rows y - 1, y, y + 1
};

// The defining computation for the pixels x0 <= x < x1 of one row.
void ConvolveRowScalar(const Rows& rows, std::uint8_t* out, int x0, int x1, const Tap* taps,
                       int tapCount, const CConvolution& k) {
    for (int x = x0; x < x1; ++x) {
        for (int c = 0; c < 3; ++c) {
            std::int32_t s = 0;
            for (int t = 0; t < tapCount; ++t)
                s += taps[t].weight * std::int32_t(rows.r[taps[t].row][(x + taps[t].dx) * 4 + c]);
            std::int32_t v = s / k.factor + k.offset;
            v = v < 0 ? 0 : (v > 255 ? 255 : v);
            out[x * 4 + c] = std::uint8_t(v);
        }
    }
}

#if defined(__x86_64__) || defined(__i386__)
// Eight pixels at a time, all four bytes of a pixel as 32-bit lanes. The sum
// is exact in int32 and below 2^24, so the float division truncates to the
// same quotient as the integer one. Returns the first x left to the caller.
__attribute__((target("avx2"))) int ConvolveRowAvx2(const Rows& rows, std::uint8_t* out, int x0,
                                                    int x1, const Tap* taps, int tapCount,
                                                    const CConvolution& k) {
    const __m256 factor = _mm256_set1_ps(float(k.factor));
    const __m256i offset =
        _mm256_setr_epi32(k.offset, k.offset, k.offset, 0, k.offset, k.offset, k.offset, 0);
    const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    const __m256i alphaMask = _mm256_set1_epi32(int(0xFF000000u));
    int x = x0;
    for (; x + 8 <= x1; x += 8) {
        __m256i pairs[4];
        for (int p = 0; p < 4; ++p) {
            __m256i s = _mm256_setzero_si256();
            for (int t = 0; t < tapCount; ++t) {
                const std::uint8_t* src = rows.r[taps[t].row] + (x + 2 * p + taps[t].dx) * 4;
                const __m256i px =
                    _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(src)));
                s = _mm256_add_epi32(s, _mm256_mullo_epi32(px, _mm256_set1_epi32(taps[t].weight)));
            }
            const __m256i q = _mm256_cvttps_epi32(_mm256_div_ps(_mm256_cvtepi32_ps(s), factor));
            pairs[p] = _mm256_add_epi32(q, offset);
        }
        // Saturating packs limit to 0..255; they interleave the 128-bit lanes,
        // which the permutation puts back into pixel order.
        const __m256i words0 = _mm256_packs_epi32(pairs[0], pairs[1]);
        const __m256i words1 = _mm256_packs_epi32(pairs[2], pairs[3]);
        const __m256i bytes =
            _mm256_permutevar8x32_epi32(_mm256_packus_epi16(words0, words1), order);
        const __m256i original =
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows.r[1] + x * 4));
        const __m256i result = _mm256_blendv_epi8(bytes, original, alphaMask);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + x * 4), result);
    }
    return x;
}
#endif

// Truncating division of the kernel's sums by a positive constant, done as
// a multiply-high in 16 bits. The magic number is accepted only after it
// gave the quotient of every sum the kernel can produce.
struct Divider16 {
    bool usable = false;
    bool identity = false;
    std::int16_t magic = 0;
    bool addN = false;
    int shift = 0;

    int Divide(int n) const { // exactly what the vector code computes
        if (identity)
            return n;
        int h = (n * int(magic)) >> 16;
        if (addN)
            h += n;
        h >>= shift;
        return h + (n < 0 ? 1 : 0);
    }
};

Divider16 MakeDivider(std::int32_t factor, std::int64_t reach) {
    Divider16 d;
    if (reach > 32767 || factor <= 0)
        return d;
    if (factor == 1) {
        d.usable = d.identity = true;
        return d;
    }
    for (int shift = 0; shift < 16; ++shift) {
        const std::int64_t m = ((std::int64_t{1} << (16 + shift)) + factor - 1) / factor;
        if (m > 65535)
            break;
        d.magic = std::int16_t(m >= 32768 ? m - 65536 : m);
        d.addN = m >= 32768;
        d.shift = shift;
        bool exact = true;
        for (int n = -int(reach); n <= int(reach) && exact; ++n)
            exact = d.Divide(n) == n / factor;
        if (exact) {
            d.usable = true;
            return d;
        }
    }
    return d;
}

#if defined(__x86_64__) || defined(__i386__)
// Eight pixels at a time in 16-bit lanes, for kernels whose sums fit them
// (the sharpening kernels among them). Taps go in pairs: the bytes of two
// source pixels are interleaved and one multiply-add gives both weighted
// terms, so a tap costs half an unpack and half a multiply. `Pairs` is a
// constant so that the loop over the taps unrolls.
template <int Pairs>
__attribute__((target("avx2"))) int ConvolveRow16(const Rows& rows, std::uint8_t* out, int x0,
                                                  int x1, const Tap* taps, const Divider16& divider,
                                                  std::int32_t offset) {
    const __m256i magic = _mm256_set1_epi16(divider.magic);
    const __m128i shift = _mm_cvtsi32_si128(divider.shift);
    const __m256i add = _mm256_set1_epi16(std::int16_t(offset));
    const __m256i alphaMask = _mm256_set1_epi32(int(0xFF000000u));
    __m256i weights[Pairs];
    const std::uint8_t* sources[2 * Pairs];
    for (int p = 0; p < Pairs; ++p) {
        const Tap& a = taps[2 * p];
        const Tap& b = taps[2 * p + 1];
        weights[p] = _mm256_set1_epi16(std::int16_t(std::uint8_t(std::int8_t(a.weight)) |
                                                    std::uint8_t(std::int8_t(b.weight)) << 8));
        sources[2 * p] = rows.r[a.row] + a.dx * 4;
        sources[2 * p + 1] = rows.r[b.row] + b.dx * 4;
    }
    int x = x0;
    for (; x + 8 <= x1; x += 8) {
        __m256i lo = _mm256_setzero_si256(), hi = _mm256_setzero_si256();
        for (int p = 0; p < Pairs; ++p) {
            const __m256i a =
                _mm256_loadu_si256(reinterpret_cast<const __m256i*>(sources[2 * p] + x * 4));
            const __m256i b =
                _mm256_loadu_si256(reinterpret_cast<const __m256i*>(sources[2 * p + 1] + x * 4));
            lo = _mm256_add_epi16(lo, _mm256_maddubs_epi16(_mm256_unpacklo_epi8(a, b), weights[p]));
            hi = _mm256_add_epi16(hi, _mm256_maddubs_epi16(_mm256_unpackhi_epi8(a, b), weights[p]));
        }
        __m256i sums[2] = {lo, hi};
        for (__m256i& n : sums) {
            if (!divider.identity) {
                __m256i h = _mm256_mulhi_epi16(n, magic);
                if (divider.addN)
                    h = _mm256_add_epi16(h, n);
                h = _mm256_sra_epi16(h, shift);
                n = _mm256_add_epi16(h, _mm256_srli_epi16(n, 15));
            }
            n = _mm256_adds_epi16(n, add);
        }
        const __m256i bytes = _mm256_packus_epi16(sums[0], sums[1]);
        const __m256i original =
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows.r[1] + x * 4));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + x * 4),
                            _mm256_blendv_epi8(bytes, original, alphaMask));
    }
    return x;
}

using ConvolveRow16Fn = int (*)(const Rows&, std::uint8_t*, int, int, const Tap*, const Divider16&,
                                std::int32_t);
constexpr ConvolveRow16Fn kConvolveRow16[6] = {nullptr,          ConvolveRow16<1>,
                                               ConvolveRow16<2>, ConvolveRow16<3>,
                                               ConvolveRow16<4>, ConvolveRow16<5>};
#endif

} // namespace

bool Convolve(Bitmap& image, const CConvolution& kernel, PixelPath path, const RowPass& before) {
    const int w = image.Width();
    if (kernel.factor == 0)
        return false;

    Tap taps[10];
    int tapCount = 0;
    std::int64_t reach = 0;  // largest possible |sum|
    bool byteWeights = true; // every weight a signed byte whose pair sums fit 16 bits
    for (int i = 0; i < 9; ++i) {
        if (kernel.weights[i] == 0)
            continue;
        taps[tapCount++] = Tap{i / 3, i % 3 - 1, kernel.weights[i]};
        reach += std::llabs(std::int64_t(kernel.weights[i])) * 255;
        byteWeights = byteWeights && std::llabs(std::int64_t(kernel.weights[i])) <= 64;
    }
    taps[tapCount] = Tap{1, 0, 0}; // the partner of an odd last tap
    const int pairs = (tapCount + 1) / 2;
    bool vector = false, narrow = false;
    Divider16 divider;
#if defined(__x86_64__) || defined(__i386__)
    if (UseAvx2(path)) {
        divider = MakeDivider(kernel.factor, reach);
        narrow = divider.usable && byteWeights && pairs > 0 && kernel.offset > -32768 &&
                 kernel.offset < 32768;
        vector = reach < (std::int64_t{1} << 24) &&
                 std::llabs(std::int64_t(kernel.factor)) < (std::int64_t{1} << 24);
    }
#endif

    return ForEachInnerRowInPlace(
        image,
        [&](const std::uint8_t* above, const std::uint8_t* row, const std::uint8_t* below,
            std::uint8_t* out) {
            const Rows rows{{above, row, below}};
            int x = 1;
#if defined(__x86_64__) || defined(__i386__)
            if (narrow)
                x = kConvolveRow16[pairs](rows, out, 1, w - 1, taps, divider, kernel.offset);
            else if (vector)
                x = ConvolveRowAvx2(rows, out, 1, w - 1, taps, tapCount, kernel);
#endif
            ConvolveRowScalar(rows, out, x, w - 1, taps, tapCount, kernel);
        },
        path,
        [&](std::uint8_t* row) {
            if (before)
                before(row);
        });
}

} // namespace tivox
