#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "platform/jpeg_codec.h"
#include "platform/resampler.h"
#include "support/photo_pixels.h"

namespace tivox {
namespace {

struct FitCase {
    Size source, box, expected;
};

TEST(FitInto, KeepsAspectWithFloatRounding) {
    const FitCase cases[] = {
        {{1600, 1200}, {120, 90}, {120, 90}},     // RY rounds up: width limits
        {{1600, 1200}, {1024, 768}, {1023, 768}}, // RY rounds down: one pixel short
        {{1600, 1200}, {120, 88}, {117, 88}},
        {{1200, 1600}, {120, 88}, {65, 88}},    // 88/1600 as a float lies below 0.055
        {{60, 40}, {120, 88}, {120, 80}},       // small pictures are enlarged
        {{6000, 4000}, {472, 262}, {392, 262}}, // 6000 x 0.0655f = 392.99...
        {{6000, 4000}, {1920, 1080}, {1620, 1080}},
        {{1, 1}, {120, 88}, {88, 88}},
    };
    for (const auto& c : cases) {
        const Size got = FitInto(c.source, c.box);
        EXPECT_EQ(got, c.expected) << c.source.width << "x" << c.source.height << " into "
                                   << c.box.width << "x" << c.box.height;
    }
}

TEST(ScaledDecodeSize, SmallestDctScaleCoveringTheTarget) {
    EXPECT_EQ(ScaledDecodeSize({6000, 4000}, {393, 262}), (Size{750, 500}));     // 1/8
    EXPECT_EQ(ScaledDecodeSize({6000, 4000}, {1620, 1080}), (Size{2250, 1500})); // 3/8
    EXPECT_EQ(ScaledDecodeSize({6000, 4000}, {751, 262}), (Size{1500, 1000}));   // 2/8
    EXPECT_EQ(ScaledDecodeSize({600, 400}, {1200, 800}), (Size{600, 400}));      // never enlarges
    EXPECT_EQ(ScaledDecodeSize({600, 400}, {1, 1}), (Size{75, 50}));
}

// The exact mean of each factor x factor block.
void AreaAverage(const Bitmap& in, int factor, Bitmap& out) {
    ASSERT_TRUE(out.Reset(in.Width() / factor, in.Height() / factor));
    for (int y = 0; y < out.Height(); ++y)
        for (int x = 0; x < out.Width(); ++x) {
            std::uint8_t* d = out.Row(y) + 4 * x;
            for (int c = 0; c < 4; ++c) {
                int sum = 0;
                for (int j = 0; j < factor; ++j)
                    for (int i = 0; i < factor; ++i)
                        sum += in.Row(y * factor + j)[4 * (x * factor + i) + c];
                d[c] = std::uint8_t((sum + factor * factor / 2) / (factor * factor));
            }
        }
}

TEST(Resampler, ShrinkingStaysCloseToTheAreaAverage) {
    Bitmap photo;
    ASSERT_TRUE(test::PhotoBitmap(640, 480, 7, photo));
    for (int factor : {2, 4, 8}) {
        Bitmap reference, scaled;
        AreaAverage(photo, factor, reference);
        Resampler r;
        ASSERT_TRUE(r.Scale(photo, reference.Width(), reference.Height(), scaled));
        EXPECT_GE(test::Psnr(scaled, reference), 35.0) << "factor " << factor;
    }
}

TEST(Resampler, ZonePlateDoesNotAlias) {
    // Rings beyond the output's own pixel limit must fade to mid grey instead
    // of folding back as false rings.
    Bitmap plate, small;
    ASSERT_TRUE(test::ZonePlate(512, plate));
    Resampler r;
    ASSERT_TRUE(r.Scale(plate, 64, 64, small));
    // In the source the frequency at radius d is d / 512 cycles per pixel;
    // after a shrink by 8 the output limit (0.5) lies at d = 32 source pixels
    // = 4 output pixels. Well beyond it nothing may stand out.
    int worst = 0;
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const double dx = x + 0.5 - 32, dy = y + 0.5 - 32;
            if (std::sqrt(dx * dx + dy * dy) < 12)
                continue;
            const int g = int(small.PixelAt(x, y) & 0xFF);
            worst = std::max(worst, std::abs(g - 128));
        }
    EXPECT_LE(worst, 12);
    // The low frequencies in the middle survive.
    EXPECT_GT(int(small.PixelAt(32, 32) & 0xFF), 200);
}

TEST(Resampler, UniformPicturesStayUniform) {
    Bitmap flat, out;
    ASSERT_TRUE(flat.Reset(37, 23));
    flat.Fill(0xFF336699u);
    Resampler r;
    for (Size s : {Size{5, 3}, Size{37, 23}, Size{100, 71}, Size{1, 1}}) {
        ASSERT_TRUE(r.Scale(flat, s.width, s.height, out));
        for (int y = 0; y < s.height; ++y)
            for (int x = 0; x < s.width; ++x)
                ASSERT_EQ(out.PixelAt(x, y), 0xFF336699u) << s.width << "x" << s.height;
    }
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

TEST(Resampler, EdgesAreClampedNotDarkened) {
    // A white picture with a black border pixel nowhere: enlarging must not
    // pull in black from outside.
    Bitmap white, out;
    ASSERT_TRUE(white.Reset(4, 4));
    white.Fill(0xFFFFFFFFu);
    Resampler r;
    ASSERT_TRUE(r.Scale(white, 16, 16, out));
    EXPECT_EQ(out.PixelAt(0, 0), 0xFFFFFFFFu);
    EXPECT_EQ(out.PixelAt(15, 15), 0xFFFFFFFFu);
}

TEST(ScaleImage, MissingSourceGivesOpaqueBlack) {
    auto img = ScaleImage(nullptr, 8, 6);
    ASSERT_TRUE(img);
    EXPECT_EQ(img->Width(), 8);
    EXPECT_EQ(img->PixelAt(7, 5), 0xFF000000u);
    EXPECT_EQ(ScaleImage(nullptr, 0, 6), nullptr);
}

} // namespace
} // namespace tivox
