#include "imageops/denoise_filter.h"

#include <gtest/gtest.h>

#include "pixel_test_util.h"

namespace tivox {
namespace {

using test::Channel;

TEST(Denoise, UniformAndTinyPicturesComeBackIdentical) {
    CDenoiseFilter filter;
    for (auto [w, h] : {std::pair{12, 9}, {2, 9}, {9, 2}, {1, 1}}) {
        const Bitmap source =
            w >= 3 && h >= 3 ? test::Uniform(w, h, 0x40112233) : test::RandomPicture(w, h, 9);
        auto out = filter.Filter(source);
        ASSERT_TRUE(out);
        EXPECT_TRUE(test::SamePixels(*out, source)) << w << "x" << h;
    }
}

TEST(Denoise, ThresholdIsThreeInEachChannel) {
    struct Case {
        int channel, delta;
        bool replaced;
    };
    const Case cases[] = {{2, 3, false}, {2, 4, true}, {1, -4, true}, {0, 4, true}, {0, -3, false}};
    for (const auto& c : cases) {
        Bitmap img = test::Uniform(5, 5, 0x80646464); // alpha 0x80, every colour 100
        img.Row(2)[2 * 4 + c.channel] = std::uint8_t(100 + c.delta);
        auto out = CDenoiseFilter().Filter(img);
        ASSERT_TRUE(out);
        if (c.replaced) {
            EXPECT_EQ(out->PixelAt(2, 2), 0xFF646464u) << c.channel << " " << c.delta;
        } else {
            EXPECT_EQ(out->PixelAt(2, 2), img.PixelAt(2, 2)) << c.channel << " " << c.delta;
        }
        // The kept neighbours keep their alpha.
        EXPECT_EQ(Channel(*out, 1, 1, 3), 0x80);
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
    // Two steps away the outlier is not a neighbour.
    EXPECT_EQ(Channel(*out, 1, 3, 2), 100);
}

TEST(Denoise, BorderRingIsTheSourcesAndSourceStays) {
    const Bitmap source = test::RandomPicture(11, 8, 12);
    const Bitmap before = test::Copy(source);
    auto out = CDenoiseFilter().Filter(source);
    ASSERT_TRUE(out);
    EXPECT_TRUE(test::SamePixels(source, before));
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 11; ++x)
            if (x == 0 || y == 0 || x == 10 || y == 7) {
                EXPECT_EQ(out->PixelAt(x, y), source.PixelAt(x, y));
            }
}

TEST(Denoise, AllPathsGiveTheSameBytes) {
    CDenoiseFilter filter;
    for (int round = 0; round < 6; ++round) {
        const int w = 3 + round * 7, h = 4 + round;
        const Bitmap source = round % 2 ? test::RandomPicture(w, h, std::uint32_t(round))
                                        : test::GentlePicture(w, h, std::uint32_t(round));
        Bitmap plain, fast;
        ASSERT_TRUE(filter.Filter(source, plain, PixelPath::Scalar));
        ASSERT_TRUE(filter.Filter(source, fast, PixelPath::Best));
        EXPECT_TRUE(test::SamePixels(fast, plain)) << "round " << round;
        for (PixelPath path : {PixelPath::Scalar, PixelPath::Best}) {
            Bitmap inPlace = test::Copy(source);
            ASSERT_TRUE(filter.FilterInPlace(inPlace, path));
            EXPECT_TRUE(test::SamePixels(inPlace, plain)) << "in place, round " << round;
        }
    }
}

} // namespace
} // namespace tivox
