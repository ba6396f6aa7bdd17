// The passes over pixels: colour matrix, convolution, denoise, red eye and
// crop, each with worked numbers and, where there is a vector body, the
// vector path against the scalar one on random pictures.

#include <gtest/gtest.h>

#include <set>

#include "imageops/color_matrix.h"
#include "imageops/convolution.h"
#include "imageops/crop_image.h"
#include "imageops/denoise_filter.h"
#include "imageops/red_eye_fixer.h"
#include "imageops/split_work.h"
#include "pixel_test_util.h"

namespace tivox {
namespace {

using test::Channel;

ColorMatrix Product(std::initializer_list<ColorMatrix> steps) {
    ColorMatrix m = ColorMatrix::Identity();
    for (const auto& step : steps)
        MultiplyMatrix(m, step);
    return m;
}

// Neutral slider positions change nothing; saturation 0 is grayscale.
TEST(ColorMatrix, NeutralStepsAreTheIdentity) {
    EXPECT_TRUE(BrightnessMatrix(0).IsIdentity());
    EXPECT_TRUE(ContrastMatrix(1).IsIdentity());
    EXPECT_TRUE(SaturationMatrix(1).IsIdentity());
    EXPECT_EQ(SaturationMatrix(0), GrayscaleMatrix());
}

TEST(ColorMatrix, PixelsFollowTheSteps) {
    const struct {
        const char* name;
        ColorMatrix matrix;
        float gamma;
        std::uint32_t in, out;
    } cases[] = {
        {"identity keeps every byte", ColorMatrix::Identity(), 1.0f, 0x7F123456, 0x7F123456},
        {"negative", NegativeMatrix(), 1.0f, 0xFF00FF10, 0xFFFF00EF},
        {"grayscale of white", GrayscaleMatrix(), 1.0f, 0xFFFFFFFF, 0xFFFFFFFF},
        {"grayscale of red", GrayscaleMatrix(), 1.0f, 0xFFFF0000, 0xFF4F4F4F},
        {"gray then negative", Product({GrayscaleMatrix(), NegativeMatrix()}), 1.0f, 0xFFFF0000,
         0xFFB0B0B0},
        // ((v / 255 + 0.10) * 2 - 0.5) * 255 for 0x40, 0x60, 0x80
        {"brightness 0.10 then contrast 2", Product({BrightnessMatrix(0.10f), ContrastMatrix(2)}),
         1.0f, 0xFF406080, 0xFF3474B4},
        {"brightness clamps at white", BrightnessMatrix(0.6f), 1.0f, 0xFFC0C0C0, 0xFFFFFFFF},
        {"gamma keeps black and white", ColorMatrix::Identity(), 0.5f, 0x80FF0000, 0x80FF0000},
        {"gamma 0.5 lifts mid-tones", ColorMatrix::Identity(), 0.5f, 0xFF404040, 0xFF808080},
        {"gamma 2 darkens mid-tones", ColorMatrix::Identity(), 2.0f, 0xFF808080, 0xFF404040},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Bitmap img = test::Uniform(9, 2, c.in); // vector body and scalar tail
        ApplyColorMatrix(img, c.matrix, c.gamma);
        for (int x = 0; x < 9; ++x)
            for (int shift : {0, 8, 16})
                EXPECT_NEAR(double(img.PixelAt(x, 1) >> shift & 0xFF),
                            double(c.out >> shift & 0xFF), 1.0);
        EXPECT_EQ(img.PixelAt(8, 1) >> 24, c.out >> 24);
    }
}

TEST(ColorMatrix, VectorPathGivesTheScalarBytes) {
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> step(-1.0f, 1.0f);
    for (int round = 0; round < 12; ++round) {
        ColorMatrix m =
            Product({BrightnessMatrix(step(rng) * 0.6f), ContrastMatrix(1.8f + step(rng) * 1.2f),
                     SaturationMatrix(1.5f + step(rng) * 1.5f)});
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

TEST(Sharpen, StrengthFollowsTheSliderInFourLevels) {
    const struct {
        int position, k;
    } cases[] = {{1, 12}, {25, 12}, {26, 11}, {50, 11}, {51, 10}, {75, 10}, {76, 9}, {100, 9}};
    for (const auto& c : cases)
        EXPECT_EQ(SharpenStrength(float(c.position) * 0.01f), c.k) << "position " << c.position;
}

TEST(Sharpen, SinglePixelGrowsNinefoldAtNineAndUniformPicturesStay) {
    for (int v : {20, 40}) {
        Bitmap img = test::Uniform(20, 5, 0xFF000000);
        img.SetPixel(10, 2, 0xFF000000u | std::uint32_t(v) << 16);
        EXPECT_TRUE(Sharpen(img, 9));
        EXPECT_EQ(Channel(img, 10, 2, 2), std::min(9 * v, 255));
        for (auto [x, y] : {std::pair{9, 2}, {11, 2}, {10, 1}, {10, 3}, {9, 1}, {11, 3}})
            EXPECT_EQ(Channel(img, x, y, 2), 0);
    }
    for (int k = 9; k <= 12; ++k) {
        Bitmap img = test::Uniform(21, 7, 0x80C03010);
        EXPECT_TRUE(Sharpen(img, k));
        EXPECT_TRUE(test::SamePixels(img, test::Uniform(21, 7, 0x80C03010))) << "k " << k;
    }
}

TEST(Convolve, BorderRingAndAlphaStayAndBadInputIsHarmless) {
    Bitmap img = test::RandomPicture(19, 9, 3);
    const Bitmap before = test::Copy(img);
    EXPECT_TRUE(Sharpen(img, 9));
    bool changed = false;
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 19; ++x) {
            EXPECT_EQ(Channel(img, x, y, 3), Channel(before, x, y, 3));
            if (x == 0 || y == 0 || x == 18 || y == 8)
                EXPECT_EQ(img.PixelAt(x, y), before.PixelAt(x, y));
            else
                changed |= img.PixelAt(x, y) != before.PixelAt(x, y);
        }
    EXPECT_TRUE(changed);

    CConvolution zero;
    zero.factor = 0;
    EXPECT_FALSE(Convolve(img, zero));
    for (auto [w, h] : {std::pair{2, 10}, {10, 2}, {1, 1}}) {
        Bitmap tiny = test::RandomPicture(w, h, 5);
        EXPECT_TRUE(Sharpen(tiny, 9));
        EXPECT_TRUE(test::SamePixels(tiny, test::RandomPicture(w, h, 5)));
    }
}

TEST(Convolve, VectorPathGivesTheScalarBytes) {
    const auto kernel = [](std::initializer_list<std::int32_t> w, int factor, int offset) {
        CConvolution k;
        std::copy(w.begin(), w.end(), k.weights);
        k.factor = factor;
        k.offset = offset;
        return k;
    };
    const CConvolution kernels[] = {
        kernel({1, 1, 1, 1, 1, 1, 1, 1, 1}, 9, 0),
        kernel({1, -3, 2, 0, 5, -1, 4, 0, -2}, -3, 17),
        kernel({0, -2, 0, -2, 11, -2, 0, -2, 0}, 3, 0),
        kernel({0, -2, 0, -2, 9, -2, 0, -2, 0}, 1, -20),
        kernel({40, 40, 40, 40, 40, 40, 40, 40, 40}, 7, 0), // sums beyond 16 bits
        kernel({64, 0, 0, 0, 0, 0, 0, 0, -64}, 4, 0),       // the largest pairs that fit 16 bits
        kernel({65, 0, 0, 0, 0, 0, 0, 0, -64}, 4, 0),       // one past them
    };
    std::uint32_t seed = 50;
    for (const CConvolution& k : kernels)
        for (int w : {3, 10, 33}) {
            const Bitmap source = test::RandomPicture(w, 7, seed++);
            Bitmap fast = test::Copy(source), plain = test::Copy(source);
            EXPECT_TRUE(Convolve(fast, k, PixelPath::Best));
            EXPECT_TRUE(Convolve(plain, k, PixelPath::Scalar));
            EXPECT_TRUE(test::SamePixels(fast, plain)) << "width " << w << " factor " << k.factor;
        }
}

TEST(Denoise, ThresholdIsThreeInEachChannel) {
    const struct {
        int channel, delta;
        bool replaced;
    } cases[] = {{2, 3, false}, {2, 4, true}, {1, -4, true}, {0, 4, true}, {0, -3, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.channel << " " << c.delta);
        Bitmap img = test::Uniform(5, 5, 0x80646464); // alpha 0x80, every colour 100
        img.Row(2)[2 * 4 + c.channel] = std::uint8_t(100 + c.delta);
        auto out = CDenoiseFilter().Filter(img);
        ASSERT_TRUE(out);
        EXPECT_EQ(out->PixelAt(2, 2), c.replaced ? 0xFF646464u : img.PixelAt(2, 2));
        EXPECT_EQ(Channel(*out, 1, 1, 3), 0x80); // kept neighbours keep their alpha
    }
}

TEST(Denoise, NeighboursOfAnOutlierAreJudgedOnTheSource) {
    Bitmap img = test::Uniform(7, 7, 0xFF646464);
    img.SetPixel(3, 3, 0xFF8C6464); // red 140 among 100
    auto out = CDenoiseFilter().Filter(img);
    ASSERT_TRUE(out);
    EXPECT_EQ(Channel(*out, 3, 3, 2), 100); // the outlier goes
    // Its neighbour's mean moved by 40 / 8 = 5 > 3: replaced by that mean.
    EXPECT_EQ(Channel(*out, 2, 3, 2), 105);
    EXPECT_EQ(Channel(*out, 4, 4, 2), 105);
    EXPECT_EQ(Channel(*out, 1, 3, 2), 100); // two steps away it is no neighbour
}

TEST(Denoise, AllPathsGiveTheSameBytesAndBordersStay) {
    CDenoiseFilter filter;
    for (int round = 0; round < 6; ++round) {
        SCOPED_TRACE(round);
        const int w = 3 + round * 7, h = 4 + round;
        const Bitmap source = test::RandomPicture(w, h, std::uint32_t(round), round % 2 == 0);
        Bitmap plain, fast;
        ASSERT_TRUE(filter.Filter(source, plain, PixelPath::Scalar));
        ASSERT_TRUE(filter.Filter(source, fast, PixelPath::Best));
        EXPECT_TRUE(test::SamePixels(fast, plain));
        for (PixelPath path : {PixelPath::Scalar, PixelPath::Best}) {
            Bitmap inPlace = test::Copy(source);
            ASSERT_TRUE(filter.FilterInPlace(inPlace, path));
            EXPECT_TRUE(test::SamePixels(inPlace, plain));
        }
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                if (x == 0 || y == 0 || x == w - 1 || y == h - 1) {
                    EXPECT_EQ(plain.PixelAt(x, y), source.PixelAt(x, y));
                }
    }
    // Pictures without inner pixels, and uniform ones, come back unchanged.
    for (auto [w, h] : {std::pair{12, 9}, {2, 9}, {9, 2}, {1, 1}}) {
        const Bitmap source =
            w >= 3 && h >= 3 ? test::Uniform(w, h, 0x40112233) : test::RandomPicture(w, h, 9);
        auto out = filter.Filter(source);
        ASSERT_TRUE(out);
        EXPECT_TRUE(test::SamePixels(*out, source)) << w << "x" << h;
    }
}

TEST(SpiralWalker, FirstTenPositionsThenEachPositionOnce) {
    CSpiralWalker walker;
    walker.SetCenter(5, 7);
    const int expected[10][2] = {{0, 0}, {-1, 0}, {-1, 1}, {0, 1},   {1, 1},
                                 {1, 0}, {1, -1}, {0, -1}, {-1, -1}, {-2, -1}};
    std::set<std::pair<int, int>> seen;
    for (int i = 0; i < 81; ++i) { // a 9 x 9 square
        std::int32_t a = 0, b = 0;
        const int ring = walker.Next(a, b);
        EXPECT_TRUE(seen.insert({a - 5, b - 7}).second) << "step " << i;
        EXPECT_LE(std::max(std::abs(a - 5), std::abs(b - 7)), 4) << "step " << i;
        if (i < 10) {
            EXPECT_EQ(a - 5, expected[i][0]) << "step " << i;
            EXPECT_EQ(b - 7, expected[i][1]) << "step " << i;
            EXPECT_EQ(ring, i < 5 ? 1 : 2) << "step " << i;
        }
    }
}

TEST(RedEye, ReddishTest) {
    const struct {
        const char* name;
        std::uint32_t in, out;
    } cases[] = {
        {"dark pixel passes easily", 0xFF0A0A09, 0xFF000A09},
        {"pure red turns black", 0xFFFF0000, 0xFF000000},
        {"white stays", 0xFFFFFFFF, 0xFFFFFFFF},
        {"gray stays", 0xFF808080, 0xFF808080},
        {"blue stays", 0xFF2020F0, 0xFF2020F0},
        {"red + 10 equal to green + blue stays", 0xFF1E1414, 0xFF1E1414}, // 40 = 40
    };
    for (const auto& c : cases) {
        Bitmap img = test::Uniform(41, 41, c.in);
        CRedEyeFixer fixer(10);
        fixer.SetImage(&img);
        fixer.Fix(20, 20);
        EXPECT_EQ(img.PixelAt(20, 20), c.out) << c.name;
        EXPECT_EQ(img.PixelAt(21, 20), c.out) << c.name;
    }
}

TEST(RedEye, GrayAreaEndsTheWalkAfterFiveRings) {
    // A red line at distance 7 lies beyond the fifth ring.
    Bitmap img = test::Uniform(41, 41, 0xFF808080);
    for (int x = 0; x < 41; ++x)
        img.SetPixel(x, 27, 0xFFFF0000);
    CRedEyeFixer fixer(15);
    fixer.SetImage(&img);
    fixer.Fix(20, 20);
    EXPECT_EQ(Channel(img, 20, 27, 2), 255);
}

TEST(RedEye, RedAreaChangesOnlyInsideTheCircleAndTheBitmapAndOnlyOnce) {
    // Under the address sanitizer this also proves no stray access.
    for (auto [x, y] : {std::pair{20, 20}, {0, 0}, {3, 40}, {-5, 10}, {41, 41}, {-100, -100}}) {
        SCOPED_TRACE(testing::Message() << x << "," << y);
        Bitmap img = test::Uniform(41, 41, 0xFFC00000);
        CRedEyeFixer fixer(10);
        fixer.SetImage(&img);
        fixer.Fix(x, y);
        int changed = 0;
        for (int py = 0; py < 41; ++py)
            for (int px = 0; px < 41; ++px) {
                if ((px - x) * (px - x) + (py - y) * (py - y) >= 100) {
                    EXPECT_EQ(Channel(img, px, py, 2), 0xC0) << px << "," << py;
                }
                changed += Channel(img, px, py, 2) == 0;
            }
        if (x == 20) {
            EXPECT_GT(changed, 250); // about pi * 9.5^2 pixels
            const Bitmap after = test::Copy(img);
            fixer.Fix(20, 20); // no red left: nothing more changes
            EXPECT_TRUE(test::SamePixels(img, after));
        } else if (x >= 0 && y >= 0 && x < 41 && y < 41) {
            EXPECT_EQ(Channel(img, x, y, 2), 0);
        }
    }
    CRedEyeFixer().Fix(1, 1); // no bitmap: nothing happens
}

TEST(ScreenRectToImage, MapsByMarginAndScale) {
    const struct {
        const char* name;
        Size image, fitted;
        Rect rect, expected;
    } cases[] = {
        // 2048 x 1536 on 1024 x 768 fills the screen: s = 2.
        {"twice the screen", {2048, 1536}, {1024, 768}, {100, 100, 200, 150}, {200, 200, 400, 300}},
        {"fills the width", {1023, 768}, {1023, 768}, {10, 20, 30, 40}, {10, 20, 30, 40}},
        // A square picture has side margins of 128: s = 1000 / 768.
        {"side margins", {1000, 1000}, {768, 768}, {128, 0, 768, 768}, {0, 0, 1000, 1000}},
        // A wide picture has margins above and below: mx = 0, s = W / cx.
        {"margins above", {4000, 1000}, {1024, 256}, {0, 256, 512, 256}, {0, 0, 2000, 1000}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ScreenRectToImage(c.image, c.fitted, {1024, 768}, c.rect), c.expected) << c.name;
}

TEST(CropImage, CopiesTheRectangleAndLeavesTheRestTransparent) {
    Bitmap source = test::RandomPicture(20, 10, 21);
    source.SetResolution(300.0f, 300.0f);
    auto inside = CropImage(&source, 3, 2, 5, 4);
    ASSERT_TRUE(inside);
    ASSERT_EQ(inside->Width(), 5);
    ASSERT_EQ(inside->Height(), 4);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 5; ++x)
            EXPECT_EQ(inside->PixelAt(x, y), source.PixelAt(3 + x, 2 + y));
    EXPECT_EQ(inside->DpiX(), 96.0f);

    auto over = CropImage(&source, 18, -1, 4, 3);
    ASSERT_TRUE(over);
    EXPECT_EQ(over->PixelAt(0, 1), source.PixelAt(18, 0));
    EXPECT_EQ(over->PixelAt(2, 1), 0u);
    EXPECT_EQ(over->PixelAt(0, 0), 0u);
    auto missing = CropImage(nullptr, 0, 0, 3, 3);
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->PixelAt(1, 1), 0u);
    EXPECT_FALSE(CropImage(&source, 0, 0, 0, 5));
    EXPECT_FALSE(CropImage(&source, 0, 0, 5, -1));
    EXPECT_FALSE(CropImage(&source, 0, 0, 50000, 50000)); // above the memory budget

    EXPECT_EQ(ClipToImage({-3, 2, 10, 5}, {8, 6}), (Rect{0, 2, 7, 4}));
    EXPECT_EQ(ClipToImage({1, 1, 2, 2}, {8, 6}), (Rect{1, 1, 2, 2}));
    EXPECT_EQ(ClipToImage({9, 1, 2, 2}, {8, 6}).width, 0);
    EXPECT_EQ(ClipToImage({1, 1, 0, 2}, {8, 6}).width, 0);
}

// Big pictures run each pass in two halves on two threads; the bytes must be
// those of the one-thread plain walk, also on the rows where the halves meet.
TEST(SplitPasses, BigPicturesGiveTheBytesOfOneWalk) {
    const int w = 1031, h = int(kSplitPixels / w) + 3;
    const Bitmap source = test::RandomPicture(w, h, 77, true);
    const auto same = [&](auto pass) {
        Bitmap fast = test::Copy(source), plain = test::Copy(source);
        pass(fast, PixelPath::Best);
        pass(plain, PixelPath::Scalar);
        return test::SamePixels(fast, plain) && !test::SamePixels(fast, source);
    };
    EXPECT_TRUE(same([](Bitmap& b, PixelPath p) { CDenoiseFilter().FilterInPlace(b, p); }));
    EXPECT_TRUE(same([](Bitmap& b, PixelPath p) { Sharpen(b, SharpenStrength(0.9f), p); }));
    EXPECT_TRUE(
        same([](Bitmap& b, PixelPath p) { ApplyColorMatrix(b, ContrastMatrix(1.7f), 1.3f, p); }));
}

// A pass run row by row inside the sharpening walk gives the bytes of the
// pass over the whole picture first: every row once, in both halves, and in
// pictures too small to sharpen.
TEST(SplitPasses, ARowPassInsideTheWalkIsThePassBeforeIt) {
    const ColorTransform colour(ContrastMatrix(1.7f), 1.3f);
    for (auto [w, h, path] : {std::tuple{1031, int(kSplitPixels / 1031) + 3, PixelPath::Best},
                              {37, 11, PixelPath::Scalar},
                              {2, 10, PixelPath::Best}}) {
        const Bitmap source = test::RandomPicture(w, h, 78, true);
        Bitmap fused = test::Copy(source), apart = test::Copy(source);
        ApplyColorMatrix(apart, ContrastMatrix(1.7f), 1.3f, path);
        Sharpen(apart, 9, path);
        const std::size_t width = std::size_t(w);
        EXPECT_TRUE(
            Sharpen(fused, 9, path, [&](std::uint8_t* row) { colour.Apply(row, width, path); }));
        EXPECT_TRUE(test::SamePixels(fused, apart)) << w << " x " << h;
    }
}

} // namespace
} // namespace tivox
