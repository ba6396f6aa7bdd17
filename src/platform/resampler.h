#pragma once
// Separable resampling of 32-bit pictures. Bicubic (Keys, a = -0.5) whose
// kernel is widened by the shrink factor, so that shrinking weighs every
// source pixel and does not alias, and enlarging is smooth. Edge pixels are
// repeated beyond the border. Works row by row through a small ring of
// horizontally filtered rows, so no picture-sized intermediate is made.
// The SSE2 path and the plain path give bit-identical results.

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/bitmap.h"
#include "platform/geometry.h"

namespace tivox {

// Fits the box (x, y) to a width x height source, keeping the aspect ratio;
// only one of x and y changes. The ratios are single-precision floats and the
// comparison takes the unrounded width ratio, so equal ratios on paper may
// fall to either side; results are truncated.
void FitInto(int width, int height, int& x, int& y);
Size FitInto(Size source, Size box);

class Resampler {
public:
    // Scales all of `source` into `out`, which becomes width x height (its
    // buffer is reused when large enough). False when the target is empty,
    // too large for the budget or memory is short. The resolution of the
    // source travels along.
    bool Scale(const Bitmap& source, int width, int height, Bitmap& out);

    // For tests: force the plain path.
    void SetUseSimd(bool on) { m_simd = on; }

private:
    struct Taps {
        std::vector<int> first;     // first source index per output index
        std::vector<int> count;     // taps per output index
        std::vector<float> weights; // `stride` weights per output index
        int stride = 0;
    };
    static void BuildTaps(int inSize, int outSize, Taps& taps);
    void HorizontalRow(const std::uint8_t* in, float* out, int outWidth) const;
    void VerticalRow(const float* const* rows, const float* w, int n, std::uint8_t* dst,
                     std::size_t count) const;

    Taps m_h, m_v;
    std::vector<float> m_ring;        // horizontally filtered source rows
    std::vector<const float*> m_rows; // the ring rows of one output row
    bool m_simd = true;
};

// A new bitmap of width x height holding all of `source` scaled, owned by the
// caller. A null or empty source gives an opaque black bitmap of that size.
// Null when the size is empty, above the budget, or memory is short.
std::unique_ptr<Bitmap> ScaleImage(const Bitmap* source, int width, int height);

} // namespace tivox
