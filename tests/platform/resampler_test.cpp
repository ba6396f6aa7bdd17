#include "platform/resampler.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "photo_writer/photo_pixels.h"
#include "platform/jpeg_codec.h"

namespace tivox {
namespace {

TEST(FitInto, KeepsAspectWithFloatRounding) {
    const struct {
        Size source, box, expected;
    } cases[] = {
        {{1600, 1200}, {120, 90}, {120, 90}},     // RY rounds up: width limits
        {{1600, 1200}, {1024, 768}, {1023, 768}}, // RY rounds down: one pixel short
        {{1600, 1200}, {120, 88}, {117, 88}},
        {{1200, 1600}, {120, 88}, {65, 88}},    // 88/1600 as a float lies below 0.055
        {{60, 40}, {120, 88}, {120, 80}},       // small pictures are enlarged
        {{6000, 4000}, {472, 262}, {392, 262}}, // 6000 x 0.0655f = 392.99...
        {{6000, 4000}, {1920, 1080}, {1620, 1080}},
        {{1, 1}, {120, 88}, {88, 88}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FitInto(c.source, c.box), c.expected)
            << c.source.width << "x" << c.source.height << " into " << c.box.width;
}

TEST(ScaledDecodeSize, SmallestDctScaleCoveringTheTarget) {
    EXPECT_EQ(ScaledDecodeSize({6000, 4000}, {393, 262}), (Size{750, 500}));     // 1/8
    EXPECT_EQ(ScaledDecodeSize({6000, 4000}, {750, 500}), (Size{750, 500}));     // exactly
    EXPECT_EQ(ScaledDecodeSize({6000, 4000}, {1620, 1080}), (Size{2250, 1500})); // 3/8
    EXPECT_EQ(ScaledDecodeSize({6000, 4000}, {751, 262}), (Size{1500, 1000}));   // 2/8
    EXPECT_EQ(ScaledDecodeSize({600, 400}, {1200, 800}), (Size{600, 400}));      // never enlarges
    EXPECT_EQ(ScaledDecodeSize({600, 400}, {1, 1}), (Size{75, 50}));
}

// A zone plate: grey rings whose frequency rises with the distance from the
// centre, up to the pixel frequency at the corners.
bool ZonePlate(int size, Bitmap& out) {
    if (!out.Reset(size, size))
        return false;
    const double c = size / 2.0;
    // Phase k * r^2 gives the local frequency k * r / pi cycles per pixel;
    // it reaches 0.5 (the pixel limit) at the edge's middle.
    const double k = 3.14159265358979 / (2.0 * c);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const double dx = x + 0.5 - c, dy = y + 0.5 - c;
            const auto v =
                std::uint8_t(std::lround(127.5 + 127.5 * std::cos(k * (dx * dx + dy * dy))));
            out.SetPixel(x, y, 0xFF000000u | v << 16 | v << 8 | v);
        }
    }
    return true;
}

// How close shrinking comes to the area average is checked on thumbnails
// with the photo tests.
TEST(Resampler, ZonePlateDoesNotAlias) {
    Bitmap plate, small;
    ASSERT_TRUE(ZonePlate(512, plate));
    ASSERT_TRUE(Resampler().Scale(plate, 64, 64, small));
    // The frequency at radius d is d / 512 cycles per source pixel; after a
    // shrink by 8 the output limit lies at d = 32, 4 output pixels. Rings well
    // beyond it must fade to mid grey instead of folding back.
    int worst = 0;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            if (std::hypot(x + 0.5 - 32, y + 0.5 - 32) >= 12)
                worst = std::max(worst, std::abs(int(small.PixelAt(x, y) & 0xFF) - 128));
    EXPECT_LE(worst, 12);
    EXPECT_GT(int(small.PixelAt(32, 32) & 0xFF), 200); // the low frequencies survive
}

TEST(Resampler, UniformPicturesStayUniformAndEdgesAreNotDarkened) {
    Bitmap flat, out;
    ASSERT_TRUE(flat.Reset(37, 23));
    flat.Fill(0xFF336699u);
    for (Size s : {Size{5, 3}, Size{37, 23}, Size{100, 71}, Size{1, 1}}) {
        ASSERT_TRUE(Resampler().Scale(flat, s.width, s.height, out));
        for (int y = 0; y < s.height; ++y)
            for (int x = 0; x < s.width; ++x)
                ASSERT_EQ(out.PixelAt(x, y), 0xFF336699u) << s.width << "x" << s.height;
    }
    auto black = ScaleImage(nullptr, 8, 6); // a missing source gives opaque black
    ASSERT_TRUE(black);
    EXPECT_EQ(black->PixelAt(7, 5), 0xFF000000u);
    EXPECT_EQ(ScaleImage(nullptr, 0, 6), nullptr);
}

TEST(Resampler, VectorAndPlainPathsAgreeBitForBit) {
    Bitmap photo;
    ASSERT_TRUE(test::PhotoBitmap(301, 203, 3, photo));
    for (Size s : {Size{97, 61}, Size{301, 100}, Size{640, 431}, Size{3, 2}}) {
        Bitmap a, b;
        Resampler fast, plain;
        plain.SetUseSimd(false);
        ASSERT_TRUE(fast.Scale(photo, s.width, s.height, a));
        ASSERT_TRUE(plain.Scale(photo, s.width, s.height, b));
        ASSERT_EQ(0, std::memcmp(a.Data(), b.Data(), a.ByteSize())) << s.width << "x" << s.height;
    }
}

} // namespace
} // namespace tivox
