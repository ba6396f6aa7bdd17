// Separable bicubic resampling with a kernel widened by the shrink factor.

#include "platform/resampler.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tivox {

void FitInto(int width, int height, int& x, int& y) {
    const double rx = double(x) / double(width);
    const float rxf = float(rx);
    const float ry = float(double(y) / double(height));
    // The products are taken in double: a float product would round
    // 1023.99997 up to 1024 and hide the one-pixel shortfall.
    if (rx > double(ry))
        x = int(double(width) * double(ry));
    else
        y = int(double(height) * double(rxf));
}

Size FitInto(Size source, Size box) {
    if (source.width <= 0 || source.height <= 0)
        return box;
    FitInto(source.width, source.height, box.width, box.height);
    return box;
}

namespace {

// Keys' cubic convolution kernel with a = -0.5 (support 2).
double Cubic(double x) {
    constexpr double a = -0.5;
    x = std::fabs(x);
    if (x < 1.0)
        return ((a + 2.0) * x - (a + 3.0)) * x * x + 1.0;
    if (x < 2.0)
        return ((a * x - 5.0 * a) * x + 8.0 * a) * x - 4.0 * a;
    return 0.0;
}

} // namespace

void Resampler::BuildTaps(int inSize, int outSize, Taps& taps) {
    const double scale = double(inSize) / double(outSize);
    // Shrinking stretches the kernel over the source so that every source
    // pixel contributes; enlarging keeps it at its own width.
    const double filterScale = std::max(scale, 1.0);
    const double support = 2.0 * filterScale;
    taps.stride = int(std::ceil(support)) * 2 + 1;
    taps.first.assign(std::size_t(outSize), 0);
    taps.count.assign(std::size_t(outSize), 0);
    taps.weights.assign(std::size_t(outSize) * std::size_t(taps.stride), 0.0f);
    std::vector<double> w(static_cast<std::size_t>(inSize));
    for (int i = 0; i < outSize; ++i) {
        const double center = (i + 0.5) * scale;
        const int lo = int(std::floor(center - support));
        const int hi = int(std::ceil(center + support));
        // Beyond the border the edge pixel repeats: clamped taps add up.
        int first = std::clamp(lo, 0, inSize - 1);
        int last = std::clamp(hi, 0, inSize - 1);
        std::fill(w.begin() + first, w.begin() + last + 1, 0.0);
        double sum = 0.0;
        for (int j = lo; j <= hi; ++j) {
            const double k = Cubic((j + 0.5 - center) / filterScale);
            w[std::size_t(std::clamp(j, 0, inSize - 1))] += k;
            sum += k;
        }
        while (first < last && w[std::size_t(first)] == 0.0)
            ++first;
        while (last > first && w[std::size_t(last)] == 0.0)
            --last;
        const int count = std::min(last - first + 1, taps.stride);
        taps.first[std::size_t(i)] = first;
        taps.count[std::size_t(i)] = count;
        float* out = &taps.weights[std::size_t(i) * std::size_t(taps.stride)];
        for (int k = 0; k < count; ++k)
            out[k] = float(w[std::size_t(first + k)] / sum);
    }
}

void Resampler::HorizontalRow(const std::uint8_t* in, float* out, int outWidth) const {
    const int stride = m_h.stride;
#if defined(__SSE2__)
    if (m_simd) {
        const __m128i zero = _mm_setzero_si128();
        for (int x = 0; x < outWidth; ++x) {
            const std::uint8_t* p = in + std::size_t(m_h.first[std::size_t(x)]) * 4;
            const float* w = &m_h.weights[std::size_t(x) * std::size_t(stride)];
            const int n = m_h.count[std::size_t(x)];
            __m128 acc = _mm_setzero_ps();
            for (int k = 0; k < n; ++k, p += 4) {
                std::int32_t bits;
                std::memcpy(&bits, p, 4);
                const __m128i px8 = _mm_cvtsi32_si128(bits);
                const __m128i px32 = _mm_unpacklo_epi16(_mm_unpacklo_epi8(px8, zero), zero);
                acc = _mm_add_ps(acc, _mm_mul_ps(_mm_cvtepi32_ps(px32), _mm_set1_ps(w[k])));
            }
            _mm_storeu_ps(out + std::size_t(x) * 4, acc);
        }
        return;
    }
#endif
    for (int x = 0; x < outWidth; ++x) {
        const std::uint8_t* p = in + std::size_t(m_h.first[std::size_t(x)]) * 4;
        const float* w = &m_h.weights[std::size_t(x) * std::size_t(stride)];
        const int n = m_h.count[std::size_t(x)];
        float acc[4] = {0.0f, 0.0f, 0.0f, 0.0f};
        for (int k = 0; k < n; ++k, p += 4)
            for (int c = 0; c < 4; ++c)
                acc[c] = acc[c] + float(p[c]) * w[k];
        std::memcpy(out + std::size_t(x) * 4, acc, sizeof acc);
    }
}

void Resampler::VerticalRow(const float* const* rows, const float* w, int n, std::uint8_t* dst,
                            std::size_t count) const {
    std::size_t i = 0;
#if defined(__SSE2__)
    if (m_simd) {
        // Four floats are one pixel; a row is always whole pixels.
        const __m128 lo = _mm_setzero_ps(), hi = _mm_set1_ps(255.0f), half = _mm_set1_ps(0.5f);
        for (; i + 4 <= count; i += 4) {
            __m128 acc = _mm_setzero_ps();
            for (int k = 0; k < n; ++k)
                acc = _mm_add_ps(acc, _mm_mul_ps(_mm_loadu_ps(rows[k] + i), _mm_set1_ps(w[k])));
            acc = _mm_add_ps(_mm_min_ps(_mm_max_ps(acc, lo), hi), half);
            const __m128i v32 = _mm_cvttps_epi32(acc);
            const __m128i v8 = _mm_packus_epi16(_mm_packs_epi32(v32, v32), v32);
            const std::int32_t px = _mm_cvtsi128_si32(v8);
            std::memcpy(dst + i, &px, 4);
        }
    }
#endif
    for (; i < count; ++i) {
        float acc = 0.0f;
        for (int k = 0; k < n; ++k)
            acc = acc + rows[k][i] * w[k];
        const float v = std::min(std::max(acc, 0.0f), 255.0f) + 0.5f;
        dst[i] = std::uint8_t(int(v));
    }
}

bool Resampler::Scale(const Bitmap& source, int width, int height, Bitmap& out) {
    if (width <= 0 || height <= 0 || source.IsEmpty())
        return false;
    if (!out.Reset(width, height))
        return false;
    out.SetResolution(source.DpiX(), source.DpiY());
    if (width == source.Width() && height == source.Height()) {
        std::memcpy(out.Data(), source.Data(), source.ByteSize());
        return true;
    }
    BuildTaps(source.Width(), width, m_h);
    BuildTaps(source.Height(), height, m_v);
    const std::size_t rowFloats = std::size_t(width) * 4;
    const int ringRows = std::min(m_v.stride, source.Height());
    m_ring.resize(rowFloats * std::size_t(ringRows));
    m_rows.resize(std::size_t(m_v.stride));
    std::vector<int> slotRow(std::size_t(ringRows), -1);

    for (int y = 0; y < height; ++y) {
        const int first = m_v.first[std::size_t(y)];
        const int n = m_v.count[std::size_t(y)];
        const float* w = &m_v.weights[std::size_t(y) * std::size_t(m_v.stride)];
        // Filter the source rows this output row needs and the ring lacks.
        // The windows move forward only, so a slot is never needed again
        // once a later row has taken it.
        for (int k = 0; k < n; ++k) {
            const int row = first + k;
            const std::size_t slot = std::size_t(row % ringRows);
            if (slotRow[slot] != row) {
                HorizontalRow(source.Row(row), &m_ring[slot * rowFloats], width);
                slotRow[slot] = row;
            }
        }
        for (int k = 0; k < n; ++k)
            m_rows[std::size_t(k)] = &m_ring[std::size_t((first + k) % ringRows) * rowFloats];
        VerticalRow(m_rows.data(), w, n, out.Row(y), rowFloats);
    }
    return true;
}

std::unique_ptr<Bitmap> ScaleImage(const Bitmap* source, int width, int height) {
    auto out = std::make_unique<Bitmap>();
    if (source && !source->IsEmpty()) {
        Resampler resampler;
        if (!resampler.Scale(*source, width, height, *out))
            return nullptr;
        return out;
    }
    if (!out->Reset(width, height))
        return nullptr;
    out->Fill(0xFF000000u);
    if (source)
        out->SetResolution(source->DpiX(), source->DpiY());
    return out;
}

} // namespace tivox
