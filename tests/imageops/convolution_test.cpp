#include "imageops/convolution.h"

#include <gtest/gtest.h>

#include "pixel_test_util.h"

namespace tivox {
namespace {

using test::Channel;

TEST(Sharpen, StrengthFollowsTheSliderInFourLevels) {
    const struct {
        int position, k;
    } cases[] = {{1, 12}, {25, 12}, {26, 11}, {50, 11}, {51, 10}, {75, 10}, {76, 9}, {100, 9}};
    for (const auto& c : cases) {
        EXPECT_EQ(SharpenStrength(float(c.position) * 0.01f), c.k) << "position " << c.position;
    }
}

TEST(Sharpen, UniformPicturesStayAtEveryStrength) {
    for (int k = 9; k <= 12; ++k) {
        Bitmap img = test::Uniform(21, 7, 0x80C03010);
        const Bitmap before = test::Copy(img);
        EXPECT_TRUE(Sharpen(img, k));
        EXPECT_TRUE(test::SamePixels(img, before)) << "k " << k;
    }
}

TEST(Sharpen, SinglePixelGrowsNinefoldAtNine) {
    for (int v : {20, 40}) {
        Bitmap img = test::Uniform(20, 5, 0xFF000000);
        img.SetPixel(10, 2, 0xFF000000u | std::uint32_t(v) << 16);
        EXPECT_TRUE(Sharpen(img, 9));
        EXPECT_EQ(Channel(img, 10, 2, 2), std::min(9 * v, 255));
        for (auto [x, y] : {std::pair{9, 2}, {11, 2}, {10, 1}, {10, 3}, {9, 1}, {11, 3}}) {
            EXPECT_EQ(Channel(img, x, y, 2), 0);
        }
    }
}

TEST(Convolve, BorderRingAndAlphaStay) {
    Bitmap img = test::RandomPicture(19, 9, 3);
    const Bitmap before = test::Copy(img);
    EXPECT_TRUE(Sharpen(img, 9));
    bool changed = false;
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 19; ++x) {
            EXPECT_EQ(Channel(img, x, y, 3), Channel(before, x, y, 3));
            if (x == 0 || y == 0 || x == 18 || y == 8) {
                EXPECT_EQ(img.PixelAt(x, y), before.PixelAt(x, y));
            } else {
                changed |= img.PixelAt(x, y) != before.PixelAt(x, y);
            }
        }
    EXPECT_TRUE(changed);
}

TEST(Convolve, RefusesFactorZeroAndKeepsTinyPictures) {
    Bitmap img = test::RandomPicture(10, 10, 4);
    const Bitmap before = test::Copy(img);
    CConvolution zero;
    zero.factor = 0;
    EXPECT_FALSE(Convolve(img, zero));
    EXPECT_TRUE(test::SamePixels(img, before));

    for (auto [w, h] : {std::pair{2, 10}, {10, 2}, {1, 1}}) {
        Bitmap tiny = test::RandomPicture(w, h, 5);
        const Bitmap copy = test::Copy(tiny);
        EXPECT_TRUE(Sharpen(tiny, 9));
        EXPECT_TRUE(test::SamePixels(tiny, copy));
    }
}

TEST(Convolve, MirroredPictureGivesMirroredResult) {
    Bitmap img = test::RandomPicture(17, 6, 6);
    Bitmap mirrored;
    mirrored.Reset(17, 6);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 17; ++x)
            mirrored.SetPixel(16 - x, y, img.PixelAt(x, y));
    Sharpen(img, 10);
    Sharpen(mirrored, 10);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 17; ++x)
            ASSERT_EQ(mirrored.PixelAt(16 - x, y), img.PixelAt(x, y));
}

TEST(Convolve, VectorPathGivesTheScalarBytes) {
    CConvolution blur;
    blur.SetAll(1);
    blur.factor = 9;
    CConvolution odd;
    const std::int32_t weights[9] = {1, -3, 2, 0, 5, -1, 4, 0, -2};
    std::copy(std::begin(weights), std::end(weights), odd.weights);
    odd.factor = -3;
    odd.offset = 17;
    CConvolution sharp;
    sharp.SetAll(0);
    sharp.weights[4] = 11;
    sharp.weights[1] = sharp.weights[3] = sharp.weights[5] = sharp.weights[7] = -2;
    sharp.factor = 3;
    CConvolution plainSum = sharp; // factor 1 with an offset
    plainSum.weights[4] = 9;
    plainSum.factor = 1;
    plainSum.offset = -20;
    CConvolution wide; // sums beyond 16 bits
    wide.SetAll(40);
    wide.factor = 7;
    CConvolution steep; // the largest weights whose pairs still fit 16 bits
    steep.SetAll(0);
    steep.weights[0] = 64;
    steep.weights[8] = -64;
    steep.factor = 4;
    CConvolution large = steep; // one past them
    large.weights[0] = 65;
    int round = 0;
    for (const CConvolution& k : {blur, odd, sharp, plainSum, wide, steep, large}) {
        for (int w : {3, 10, 33}) {
            const Bitmap source = test::RandomPicture(w, 7, std::uint32_t(50 + round++));
            Bitmap fast = test::Copy(source), plain = test::Copy(source);
            EXPECT_TRUE(Convolve(fast, k, PixelPath::Best));
            EXPECT_TRUE(Convolve(plain, k, PixelPath::Scalar));
            EXPECT_TRUE(test::SamePixels(fast, plain)) << "width " << w << " factor " << k.factor;
        }
    }
}

} // namespace
} // namespace tivox
