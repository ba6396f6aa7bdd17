#include "imageops/crop_image.h"

#include <gtest/gtest.h>

#include "pixel_test_util.h"

namespace tivox {
namespace {

TEST(ScreenRectToImage, MapsByMarginAndScale) {
    struct Case {
        const char* name;
        Size image, fitted, screen;
        Rect rect, expected;
    };
    const Case cases[] = {
        // 2048 x 1536 on 1024 x 768 fills the screen: s = 2.
        {"commit of the worked example",
         {2048, 1536},
         {1024, 768},
         {1024, 768},
         {100, 100, 200, 150},
         {200, 200, 400, 300}},
        {"working image fills the width",
         {1023, 768},
         {1023, 768},
         {1024, 768},
         {10, 20, 30, 40},
         {10, 20, 30, 40}},
        // A square picture has side margins of 128: s = 1000 / 768.
        {"whole picture with side margins",
         {1000, 1000},
         {768, 768},
         {1024, 768},
         {128, 0, 768, 768},
         {0, 0, 1000, 1000}},
        // A wide picture has top and bottom margins: mx = 0, s = W / cx.
        {"margins above and below",
         {4000, 1000},
         {1024, 256},
         {1024, 768},
         {0, 256, 512, 256},
         {0, 0, 2000, 1000}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ScreenRectToImage(c.image, c.fitted, c.screen, c.rect), c.expected) << c.name;
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
}

TEST(ClipToImage, LimitsToThePicture) {
    EXPECT_EQ(ClipToImage({-3, 2, 10, 5}, {8, 6}), (Rect{0, 2, 7, 4}));
    EXPECT_EQ(ClipToImage({1, 1, 2, 2}, {8, 6}), (Rect{1, 1, 2, 2}));
    EXPECT_EQ(ClipToImage({9, 1, 2, 2}, {8, 6}).width, 0);
    EXPECT_EQ(ClipToImage({1, 1, 0, 2}, {8, 6}).width, 0);
}

} // namespace
} // namespace tivox
