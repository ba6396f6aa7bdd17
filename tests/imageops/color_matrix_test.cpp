#include "imageops/color_matrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "pixel_test_util.h"

namespace tivox {
namespace {

using test::Channel;

TEST(ColorMatrix, StepMatricesHaveTheirEntries) {
    const ColorMatrix b = BrightnessMatrix(0.25f);
    EXPECT_FLOAT_EQ(b.m[4][0], 0.25f);
    EXPECT_FLOAT_EQ(b.m[4][2], 0.25f);
    EXPECT_FLOAT_EQ(b.m[4][3], 0.0f);
    EXPECT_FLOAT_EQ(b.m[0][0], 1.0f);

    const ColorMatrix c = ContrastMatrix(2.0f);
    EXPECT_FLOAT_EQ(c.m[1][1], 2.0f);
    EXPECT_FLOAT_EQ(c.m[3][3], 1.0f);
    EXPECT_FLOAT_EQ(c.m[4][1], -0.5f);

    const ColorMatrix s = SaturationMatrix(2.0f);
    EXPECT_FLOAT_EQ(s.m[0][0], 0.3086f * -1.0f + 2.0f);
    EXPECT_FLOAT_EQ(s.m[0][1], -0.3086f);
    EXPECT_FLOAT_EQ(s.m[2][1], -0.082f);
    EXPECT_FLOAT_EQ(s.m[3][3], 1.0f);

    const ColorMatrix g = GrayscaleMatrix();
    for (int j = 0; j < 3; ++j) {
        EXPECT_FLOAT_EQ(g.m[0][j], kLumRed);
        EXPECT_FLOAT_EQ(g.m[1][j], kLumGreen);
        EXPECT_FLOAT_EQ(g.m[2][j], kLumBlue);
    }
    EXPECT_FLOAT_EQ(kLumRed + kLumGreen + kLumBlue, 1.0f);

    const ColorMatrix n = NegativeMatrix();
    EXPECT_FLOAT_EQ(n.m[2][2], -1.0f);
    EXPECT_FLOAT_EQ(n.m[4][0], 1.0f);
    EXPECT_FLOAT_EQ(n.m[4][3], 0.0f);
}

TEST(ColorMatrix, NeutralStepsAreTheIdentityAndSaturationZeroIsGrayscale) {
    EXPECT_TRUE(BrightnessMatrix(0).IsIdentity());
    EXPECT_TRUE(ContrastMatrix(1).IsIdentity());
    EXPECT_TRUE(SaturationMatrix(1).IsIdentity());
    EXPECT_EQ(SaturationMatrix(0), GrayscaleMatrix());
}

TEST(ColorMatrix, LaterStepsActLaterOnThePixel) {
    // Brightness 0.10, then contrast 2: (v + 0.10) * 2 - 0.5.
    ColorMatrix m = ColorMatrix::Identity();
    MultiplyMatrix(m, BrightnessMatrix(0.10f));
    MultiplyMatrix(m, ContrastMatrix(2.0f));
    EXPECT_FLOAT_EQ(m.m[0][0], 2.0f);
    EXPECT_FLOAT_EQ(m.m[4][0], -0.3f);
    EXPECT_FLOAT_EQ(m.m[3][3], 1.0f);

    Bitmap img = test::Uniform(4, 4, 0xFF406080); // r 0x40, g 0x60, b 0x80
    ApplyColorMatrix(img, m, 1.0f);
    for (int c : {0, 1, 2}) {
        const int v = Channel(test::Uniform(1, 1, 0xFF406080), 0, 0, c);
        const double expected = ((v / 255.0 + 0.10) * 2 - 0.5) * 255.0;
        EXPECT_NEAR(Channel(img, 1, 1, c), expected, 0.51) << "channel " << c;
    }
    EXPECT_EQ(Channel(img, 1, 1, 3), 255);
}

TEST(ColorMatrix, MultiplyLeavesColumnFourAlone) {
    ColorMatrix m = ColorMatrix::Identity();
    m.m[0][4] = 7.0f;
    MultiplyMatrix(m, ContrastMatrix(3.0f));
    EXPECT_FLOAT_EQ(m.m[0][4], 7.0f);
    // Column 4 still takes part in the sums: 1 * 3 + 7 * (1 - 3) / 2.
    EXPECT_FLOAT_EQ(m.m[0][0], -4.0f);
}

TEST(ColorMatrix, PixelsFollowTheSteps) {
    struct Case {
        const char* name;
        ColorMatrix matrix;
        float gamma;
        std::uint32_t in, out;
    };
    ColorMatrix grayThenNegative = GrayscaleMatrix();
    MultiplyMatrix(grayThenNegative, NegativeMatrix());
    const Case cases[] = {
        {"identity keeps every byte", ColorMatrix::Identity(), 1.0f, 0x7F123456, 0x7F123456},
        {"negative", NegativeMatrix(), 1.0f, 0xFF00FF10, 0xFFFF00EF},
        {"grayscale of white", GrayscaleMatrix(), 1.0f, 0xFFFFFFFF, 0xFFFFFFFF},
        {"grayscale of red", GrayscaleMatrix(), 1.0f, 0xFFFF0000, 0xFF4F4F4F},
        {"gray then negative", grayThenNegative, 1.0f, 0xFFFF0000, 0xFFB0B0B0},
        {"brightness clamps at white", BrightnessMatrix(0.6f), 1.0f, 0xFFC0C0C0, 0xFFFFFFFF},
        {"gamma keeps black and white", ColorMatrix::Identity(), 0.5f, 0x80FF0000, 0x80FF0000},
        {"gamma 0.5 lifts mid-tones", ColorMatrix::Identity(), 0.5f, 0xFF404040, 0xFF808080},
        {"gamma 2 darkens mid-tones", ColorMatrix::Identity(), 2.0f, 0xFF808080, 0xFF404040},
    };
    for (const auto& c : cases) {
        Bitmap img = test::Uniform(9, 2, c.in);
        ApplyColorMatrix(img, c.matrix, c.gamma);
        // Every pixel alike, vector body and scalar tail.
        for (int x = 0; x < 9; ++x)
            EXPECT_NEAR(double(img.PixelAt(x, 1) & 0xFF), double(c.out & 0xFF), 1.0) << c.name;
        EXPECT_EQ(img.PixelAt(8, 1) >> 24, c.out >> 24) << c.name;
        for (int shift : {8, 16})
            EXPECT_NEAR(double((img.PixelAt(0, 0) >> shift) & 0xFF),
                        double((c.out >> shift) & 0xFF), 1.0)
                << c.name;
    }
}

TEST(ColorMatrix, SaturationAboveOnePushesAwayFromLuminance) {
    Bitmap img = test::Uniform(2, 2, 0xFF806040);
    ApplyColorMatrix(img, SaturationMatrix(2.0f), 1.0f);
    EXPECT_GT(Channel(img, 0, 0, 2), 0x80);
    EXPECT_LT(Channel(img, 0, 0, 0), 0x40);
}

TEST(ColorMatrix, VectorPathGivesTheScalarBytes) {
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> step(-1.0f, 1.0f);
    for (int round = 0; round < 12; ++round) {
        ColorMatrix m = ColorMatrix::Identity();
        MultiplyMatrix(m, BrightnessMatrix(step(rng) * 0.6f));
        MultiplyMatrix(m, ContrastMatrix(1.8f + step(rng) * 1.2f));
        MultiplyMatrix(m, SaturationMatrix(1.5f + step(rng) * 1.5f));
        if (round % 3 == 0)
            MultiplyMatrix(m, GrayscaleMatrix());
        if (round % 4 == 1)
            MultiplyMatrix(m, NegativeMatrix());
        if (round % 5 == 2) { // alpha that depends on red, and a colour on alpha
            m.m[0][3] = 0.25f;
            m.m[3][3] = 0.5f;
            m.m[3][1] = 0.125f;
        }
        const float gamma = round % 2 ? 1.0f : 1.05f + step(rng);
        const Bitmap source = test::RandomPicture(37 + round, 11, 100 + round);
        Bitmap fast = test::Copy(source), plain = test::Copy(source);
        ApplyColorMatrix(fast, m, gamma, PixelPath::Best);
        ApplyColorMatrix(plain, m, gamma, PixelPath::Scalar);
        EXPECT_TRUE(test::SamePixels(fast, plain)) << "round " << round;
    }
}

} // namespace
} // namespace tivox
