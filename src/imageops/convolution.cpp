#include "imageops/convolution.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

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

bool Sharpen(Bitmap& image, int k, PixelPath path) {
    CConvolution kernel;
    kernel.SetAll(0);
    kernel.weights[4] = k;
    kernel.weights[1] = kernel.weights[3] = kernel.weights[5] = kernel.weights[7] = -2;
    kernel.factor = k - 8;
    return Convolve(image, kernel, path);
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

} // namespace

bool Convolve(Bitmap& image, const CConvolution& kernel, PixelPath path) {
    if (kernel.factor == 0)
        return false;
    const int w = image.Width();
    const int h = image.Height();
    if (w < 3 || h < 3)
        return true;

    Tap taps[9];
    int tapCount = 0;
    std::int64_t reach = 0; // largest possible |sum|
    for (int i = 0; i < 9; ++i) {
        if (kernel.weights[i] == 0)
            continue;
        taps[tapCount++] = Tap{i / 3, i % 3 - 1, kernel.weights[i]};
        reach += std::llabs(std::int64_t(kernel.weights[i])) * 255;
    }
    bool vector = false;
#if defined(__x86_64__) || defined(__i386__)
    vector = UseAvx2(path) && reach < (std::int64_t{1} << 24) &&
             std::llabs(std::int64_t(kernel.factor)) < (std::int64_t{1} << 24);
#endif

    // Rows are written top down, so only the two rows above the one being
    // written need their original pixels kept aside; the row below is still
    // untouched in the bitmap. This keeps the extra memory to two rows.
    const std::size_t rowBytes = std::size_t(w) * 4;
    std::unique_ptr<std::uint8_t[]> keep(new (std::nothrow) std::uint8_t[rowBytes * 2]);
    if (!keep)
        return false;
    std::uint8_t* above = keep.get();
    std::uint8_t* current = keep.get() + rowBytes;
    std::memcpy(above, image.Row(0), rowBytes);
    std::memcpy(current, image.Row(1), rowBytes);
    for (int y = 1; y < h - 1; ++y) {
        const Rows rows{{above, current, image.Row(y + 1)}};
        std::uint8_t* out = image.Row(y);
        int x = 1;
#if defined(__x86_64__) || defined(__i386__)
        if (vector)
            x = ConvolveRowAvx2(rows, out, 1, w - 1, taps, tapCount, kernel);
#endif
        ConvolveRowScalar(rows, out, x, w - 1, taps, tapCount, kernel);
        std::swap(above, current);
        if (y + 1 < h - 1)
            std::memcpy(current, image.Row(y + 1), rowBytes);
    }
    return true;
}

} // namespace tivox
