#pragma once
// The 5 x 5 colour matrix that the colour sliders build, and its application
// to a bitmap together with the gamma curve.
//
// A pixel is the row vector (r, g, b, a, 1) with components from 0 to 1, and
// the result is that vector times the matrix, so a matrix multiplied in from
// the right acts later on the pixel.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "imageops/pixel_path.h"
#include "platform/bitmap.h"

namespace tivox {

// Luminance weights; they add up to 1.
inline constexpr float kLumRed = 0.3086f;
inline constexpr float kLumGreen = 0.6094f;
inline constexpr float kLumBlue = 0.082f;

struct ColorMatrix {
    float m[5][5] = {};

    static ColorMatrix Identity();
    bool IsIdentity() const;
    friend bool operator==(const ColorMatrix&, const ColorMatrix&) = default;
};

// The matrices of the single steps; entries not named stay as in the identity.
ColorMatrix BrightnessMatrix(float b); // row 4: b, b, b, 0, 1
ColorMatrix ContrastMatrix(float c);   // diagonal c, row 4: (1 - c) / 2 three times
ColorMatrix SaturationMatrix(float s); // mixes each colour with the luminance
ColorMatrix GrayscaleMatrix();
ColorMatrix NegativeMatrix();

// m = m x l, columns 0 to 3 only; column 4 of m stays. Each entry sums its
// products with k rising and is rounded to float32 when stored.
void MultiplyMatrix(ColorMatrix& m, const ColorMatrix& l);

// A colour matrix and gamma made ready for pixels in memory, so that they
// can be applied row by row (as the sharpening does while it walks down).
struct ColorTransform {
    ColorTransform(const ColorMatrix& matrix, float gamma);

    // Runs `count` pixels (4 bytes each) through the matrix and the curve.
    void Apply(std::uint8_t* pixels, std::size_t count, PixelPath path = PixelPath::Best) const;

    // The gamma curve is looked up at 1/64 of an 8-bit step, fine enough that
    // fractional matrix results keep their place on a steep curve.
    static constexpr int kGammaSteps = 64;
    static constexpr int kGammaEntries = 255 * kGammaSteps + 1;

    // coef[o][k] is the weight of input component k (0 red, 1 green, 2 blue,
    // 3 alpha) in output byte o (0 blue, 1 green, 2 red, 3 alpha), on the
    // 0..255 scale.
    float coef[4][4] = {};
    float offset[4] = {};
    bool neutral = false; // identity and gamma 1: no byte changes
    bool gamma = false;
    // Alpha goes through unchanged and no colour depends on it, so the
    // vector code can skip it (adding 0 * alpha changes no sum).
    bool alphaAlone = false;
    std::vector<std::uint8_t> lut; // kGammaEntries bytes
};

// Runs every pixel through the matrix, limits the colour to 0..1, applies the
// gamma curve out = in ^ gamma to red, green and blue (not when gamma is
// exactly 1), and rounds to 8 bits. The bitmap changes in place.
void ApplyColorMatrix(Bitmap& image, const ColorMatrix& matrix, float gamma,
                      PixelPath path = PixelPath::Best);

} // namespace tivox
