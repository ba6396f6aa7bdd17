#include "imageops/color_matrix.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "imageops/split_work.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace tivox {

ColorMatrix ColorMatrix::Identity() {
    ColorMatrix r;
    for (int i = 0; i < 5; ++i)
        r.m[i][i] = 1.0f;
    return r;
}

bool ColorMatrix::IsIdentity() const {
    return *this == Identity();
}

ColorMatrix BrightnessMatrix(float b) {
    ColorMatrix r = ColorMatrix::Identity();
    r.m[4][0] = r.m[4][1] = r.m[4][2] = b;
    return r;
}

ColorMatrix ContrastMatrix(float c) {
    ColorMatrix r = ColorMatrix::Identity();
    const float t = (1.0f - c) * 0.5f;
    for (int i = 0; i < 3; ++i) {
        r.m[i][i] = c;
        r.m[4][i] = t;
    }
    return r;
}

ColorMatrix SaturationMatrix(float s) {
    ColorMatrix r = ColorMatrix::Identity();
    const float u = 1.0f - s;
    const float weights[3] = {kLumRed * u, kLumGreen * u, kLumBlue * u};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            r.m[i][j] = i == j ? weights[i] + s : weights[i];
    return r;
}

ColorMatrix GrayscaleMatrix() {
    ColorMatrix r = ColorMatrix::Identity();
    const float weights[3] = {kLumRed, kLumGreen, kLumBlue};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            r.m[i][j] = weights[i];
    return r;
}

ColorMatrix NegativeMatrix() {
    ColorMatrix r = ColorMatrix::Identity();
    for (int i = 0; i < 3; ++i) {
        r.m[i][i] = -1.0f;
        r.m[4][i] = 1.0f;
    }
    return r;
}

void MultiplyMatrix(ColorMatrix& m, const ColorMatrix& l) {
    // The product goes to a temporary so that m is not read after a change.
    // Products of two floats are exact in double; the sum is rounded once.
    float product[5][4];
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 4; ++j) {
            double sum = 0.0;
            for (int k = 0; k < 5; ++k)
                sum += double(m.m[i][k]) * double(l.m[k][j]);
            product[i][j] = float(sum);
        }
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 4; ++j)
            m.m[i][j] = product[i][j];
}

namespace {

constexpr int kGammaSteps = ColorTransform::kGammaSteps;
constexpr int kGammaEntries = ColorTransform::kGammaEntries;

inline float Clamp255(float v) {
    v = v > 0.0f ? v : 0.0f;
    return v < 255.0f ? v : 255.0f;
}

// The defining computation of one pixel; the vector path repeats it exactly,
// operation for operation.
inline std::uint32_t ColorPixel(std::uint32_t px, const ColorTransform& p) {
    const float in[4] = {float((px >> 16) & 255), float((px >> 8) & 255), float(px & 255),
                         float(px >> 24)};
    std::uint32_t out = 0;
    for (int o = 0; o < 4; ++o) {
        float v = in[0] * p.coef[o][0];
        v = v + in[1] * p.coef[o][1];
        v = v + in[2] * p.coef[o][2];
        v = v + in[3] * p.coef[o][3];
        v = Clamp255(v + p.offset[o]);
        std::uint32_t q;
        if (p.gamma && o < 3)
            q = p.lut[std::size_t(int(v * float(kGammaSteps) + 0.5f))];
        else
            q = std::uint32_t(int(v + 0.5f));
        out |= q << (8 * o);
    }
    return out;
}

void ColorScalar(std::uint32_t* px, std::size_t n, const ColorTransform& p) {
    for (std::size_t i = 0; i < n; ++i)
        px[i] = ColorPixel(px[i], p);
}

#if defined(__x86_64__) || defined(__i386__)
struct ColorVectors {
    __m256 coef[4][4];
    __m256 offset[4];
    __m256 top[4]; // the upper limit of each output
};

// Output byte o of eight pixels before rounding: the matrix row, limited to
// 0..top, in the operation order of ColorPixel.
template <bool AlphaAlone>
__attribute__((target("avx2"))) inline __m256 MatrixRow(const __m256 (&in)[4],
                                                        const ColorVectors& c, int o) {
    __m256 s = _mm256_mul_ps(in[0], c.coef[o][0]);
    s = _mm256_add_ps(s, _mm256_mul_ps(in[1], c.coef[o][1]));
    s = _mm256_add_ps(s, _mm256_mul_ps(in[2], c.coef[o][2]));
    if (!AlphaAlone) // else the alpha weight is 0 and adds nothing
        s = _mm256_add_ps(s, _mm256_mul_ps(in[3], c.coef[o][3]));
    s = _mm256_add_ps(s, c.offset[o]);
    return _mm256_min_ps(_mm256_max_ps(s, _mm256_setzero_ps()), c.top[o]);
}

// Eight pixels at a time. With a gamma curve the table indices of a block of
// pixels are kept and looked up by plain loads afterwards: on the processors we measured, three
// gathers per eight pixels cost more than the matrix itself.
template <bool Gamma, bool AlphaAlone>
__attribute__((target("avx2"))) std::size_t ColorAvx2(std::uint32_t* px, std::size_t n,
                                                      const ColorTransform& p) {
    constexpr std::size_t kBlock = 64;
    const __m256i byteMask = _mm256_set1_epi32(255);
    const __m256 half = _mm256_set1_ps(0.5f);
    // With the curve, colours are wanted in table steps (v * 64). Scaling
    // the weights, the offset and the limit by 64 instead gives the same
    // floats, since a power of two scales every rounding step exactly.
    const float scale = Gamma ? float(kGammaSteps) : 1.0f;
    ColorVectors c;
    for (int o = 0; o < 4; ++o) {
        const float s = o < 3 ? scale : 1.0f;
        for (int k = 0; k < 4; ++k)
            c.coef[o][k] = _mm256_set1_ps(p.coef[o][k] * s);
        c.offset[o] = _mm256_set1_ps(p.offset[o] * s);
        c.top[o] = _mm256_set1_ps(255.0f * s);
    }
    // Red and green moved to the low byte of their pixel's lane, the rest
    // zero (byte shuffles count within each 16-byte half).
    const __m256i redByte =
        _mm256_setr_epi8(2, -1, -1, -1, 6, -1, -1, -1, 10, -1, -1, -1, 14, -1, -1, -1, 2, -1, -1,
                         -1, 6, -1, -1, -1, 10, -1, -1, -1, 14, -1, -1, -1);
    const __m256i greenByte =
        _mm256_setr_epi8(1, -1, -1, -1, 5, -1, -1, -1, 9, -1, -1, -1, 13, -1, -1, -1, 1, -1, -1, -1,
                         5, -1, -1, -1, 9, -1, -1, -1, 13, -1, -1, -1);
    const std::uint8_t* lut = p.lut.data();
    alignas(32) std::int32_t index[3][kBlock];
    std::size_t i = 0;
    while (i + 8 <= n) {
        const std::size_t blockStart = i;
        const std::size_t blockEnd = i + std::min(kBlock, (n - i) / 8 * 8);
        for (; i < blockEnd; i += 8) {
            const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(px + i));
            const __m256 in[4] = {_mm256_cvtepi32_ps(_mm256_shuffle_epi8(v, redByte)),
                                  _mm256_cvtepi32_ps(_mm256_shuffle_epi8(v, greenByte)),
                                  _mm256_cvtepi32_ps(_mm256_and_si256(v, byteMask)),
                                  _mm256_cvtepi32_ps(_mm256_srli_epi32(v, 24))};
            // Alpha as a byte in the lowest 8 bits of each lane.
            __m256i alpha = _mm256_srli_epi32(v, 24);
            if (!AlphaAlone)
                alpha = _mm256_cvttps_epi32(_mm256_add_ps(MatrixRow<false>(in, c, 3), half));
            if (Gamma) {
                for (int o = 0; o < 3; ++o)
                    _mm256_store_si256(
                        reinterpret_cast<__m256i*>(&index[o][i - blockStart]),
                        _mm256_cvttps_epi32(_mm256_add_ps(MatrixRow<AlphaAlone>(in, c, o), half)));
                _mm256_storeu_si256(reinterpret_cast<__m256i*>(px + i),
                                    _mm256_slli_epi32(alpha, 24));
            } else {
                __m256i out = _mm256_slli_epi32(alpha, 24);
                for (int o = 0; o < 3; ++o) {
                    const __m256 s = MatrixRow<AlphaAlone>(in, c, o);
                    out = _mm256_or_si256(
                        out, _mm256_slli_epi32(_mm256_cvttps_epi32(_mm256_add_ps(s, half)), 8 * o));
                }
                _mm256_storeu_si256(reinterpret_cast<__m256i*>(px + i), out);
            }
        }
        if (Gamma) {
            std::uint32_t* q = px + blockStart;
            for (std::size_t j = 0; j < blockEnd - blockStart; ++j)
                q[j] |= std::uint32_t(lut[index[0][j]]) | std::uint32_t(lut[index[1][j]]) << 8 |
                        std::uint32_t(lut[index[2][j]]) << 16;
        }
    }
    return i;
}

std::size_t ColorVector(std::uint32_t* px, std::size_t n, const ColorTransform& p) {
    if (p.gamma)
        return p.alphaAlone ? ColorAvx2<true, true>(px, n, p) : ColorAvx2<true, false>(px, n, p);
    return p.alphaAlone ? ColorAvx2<false, true>(px, n, p) : ColorAvx2<false, false>(px, n, p);
}
#endif

} // namespace

ColorTransform::ColorTransform(const ColorMatrix& matrix, float gammaValue) {
    static constexpr int kColumnOfByte[4] = {2, 1, 0, 3};
    for (int o = 0; o < 4; ++o) {
        const int j = kColumnOfByte[o];
        for (int k = 0; k < 4; ++k)
            coef[o][k] = matrix.m[k][j];
        offset[o] = matrix.m[4][j] * 255.0f;
    }
    alphaAlone = coef[3][0] == 0.0f && coef[3][1] == 0.0f && coef[3][2] == 0.0f &&
                 coef[3][3] == 1.0f && offset[3] == 0.0f && coef[0][3] == 0.0f &&
                 coef[1][3] == 0.0f && coef[2][3] == 0.0f;
    neutral = matrix.IsIdentity() && gammaValue == 1.0f;
    gamma = gammaValue != 1.0f;
    if (gamma) {
        lut.assign(kGammaEntries, 0);
        for (int i = 0; i < kGammaEntries; ++i) {
            double v = 255.0 * std::pow(double(i) / double(kGammaEntries - 1), double(gammaValue));
            v = v < 0.0 ? 0.0 : (v > 255.0 ? 255.0 : v);
            lut[std::size_t(i)] = std::uint8_t(v + 0.5);
        }
    }
}

void ColorTransform::Apply(std::uint8_t* pixels, std::size_t count, PixelPath path) const {
    if (neutral || count == 0)
        return;
    auto* px = reinterpret_cast<std::uint32_t*>(pixels);
    std::size_t done = 0;
#if defined(__x86_64__) || defined(__i386__)
    if (UseAvx2(path))
        done = ColorVector(px, count, *this);
#endif
    ColorScalar(px + done, count - done, *this);
}

void ApplyColorMatrix(Bitmap& image, const ColorMatrix& matrix, float gamma, PixelPath path) {
    if (image.IsEmpty())
        return;
    const ColorTransform transform(matrix, gamma);
    const std::size_t pixels = std::size_t(image.Width()) * std::size_t(image.Height());
    if (!SplitInTwo(pixels, path)) {
        transform.Apply(image.Data(), pixels, path);
        return;
    }
    // Halves on a cache-line boundary, so the two threads never share a line.
    const std::size_t firstHalf = pixels / 2 / 16 * 16;
    std::uint8_t* second = image.Data() + firstHalf * 4;
    RunBoth([&] { transform.Apply(second, pixels - firstHalf, path); },
            [&] { transform.Apply(image.Data(), firstHalf, path); });
}

} // namespace tivox
