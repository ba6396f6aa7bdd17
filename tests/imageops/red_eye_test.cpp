#include "imageops/red_eye_fixer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include "pixel_test_util.h"

namespace tivox {
namespace {

using test::Channel;

TEST(SpiralWalker, FirstTenPositionsAndRings) {
    CSpiralWalker walker;
    walker.SetCenter(5, 7);
    const int expected[10][2] = {{0, 0}, {-1, 0}, {-1, 1}, {0, 1},   {1, 1},
                                 {1, 0}, {1, -1}, {0, -1}, {-1, -1}, {-2, -1}};
    for (int i = 0; i < 10; ++i) {
        std::int32_t a = 0, b = 0;
        const int ring = walker.Next(a, b);
        EXPECT_EQ(a - 5, expected[i][0]) << "step " << i;
        EXPECT_EQ(b - 7, expected[i][1]) << "step " << i;
        EXPECT_EQ(ring, i < 5 ? 1 : 2) << "step " << i;
    }
}

TEST(SpiralWalker, VisitsEachPositionOfARingOnce) {
    CSpiralWalker walker;
    walker.SetCenter(0, 0);
    std::set<std::pair<int, int>> seen;
    std::int32_t a = 0, b = 0;
    for (int i = 0; i < 81; ++i) { // a 9 x 9 square
        walker.Next(a, b);
        EXPECT_TRUE(seen.insert({a, b}).second);
        EXPECT_LE(std::abs(a), 4);
        EXPECT_LE(std::abs(b), 4);
    }
}

TEST(RedEye, ReddishTest) {
    struct Case {
        const char* name;
        std::uint32_t in, out;
    };
    const Case cases[] = {
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

TEST(RedEye, LargeRedAreaChangesOnlyInsideTheCircle) {
    const int r = 10;
    Bitmap img = test::Uniform(41, 41, 0xFFC00000);
    CRedEyeFixer fixer(r);
    fixer.SetImage(&img);
    fixer.Fix(20, 20);
    int changed = 0;
    for (int y = 0; y < 41; ++y)
        for (int x = 0; x < 41; ++x) {
            const int d2 = (x - 20) * (x - 20) + (y - 20) * (y - 20);
            if (d2 >= r * r) {
                EXPECT_EQ(Channel(img, x, y, 2), 0xC0) << x << "," << y;
            }
            if (Channel(img, x, y, 2) == 0)
                ++changed;
        }
    EXPECT_GT(changed, 250); // about pi * 9.5^2 pixels
    // A second click finds no red left: nothing more changes.
    const Bitmap after = test::Copy(img);
    fixer.Fix(20, 20);
    EXPECT_TRUE(test::SamePixels(img, after));
}

TEST(RedEye, GrayAreaEndsTheWalkAfterFiveRings) {
    // A reddish ring at distance 7 lies beyond the fifth ring; with gray
    // inside the walk stops before it.
    Bitmap img = test::Uniform(41, 41, 0xFF808080);
    for (int x = 0; x < 41; ++x)
        img.SetPixel(x, 27, 0xFFFF0000);
    CRedEyeFixer fixer(15);
    fixer.SetImage(&img);
    fixer.Fix(20, 20);
    EXPECT_EQ(Channel(img, 20, 27, 2), 255);
}

TEST(RedEye, ClicksAtAndBeyondTheEdgeStayInsideTheBitmap) {
    // Run under the address sanitizer this also proves no stray access.
    for (auto [x, y] : {std::pair{0, 0}, {3, 29}, {19, 15}, {-5, 10}, {40, 40}, {-100, -100}}) {
        Bitmap img = test::Uniform(20, 30, 0xFFFF0000);
        CRedEyeFixer fixer(20);
        fixer.SetImage(&img);
        fixer.Fix(x, y);
        for (int py = 0; py < 30; ++py)
            for (int px = 0; px < 20; ++px) {
                const int d2 = (px - x) * (px - x) + (py - y) * (py - y);
                if (d2 >= 400) {
                    EXPECT_EQ(Channel(img, px, py, 2), 255);
                }
            }
        if (x >= 0 && y >= 0 && x < 20 && y < 30) {
            EXPECT_EQ(Channel(img, x, y, 2), 0);
        }
    }
    CRedEyeFixer none;
    none.Fix(1, 1); // no bitmap: nothing happens
}

} // namespace
} // namespace tivox
