#include "platform/orientation.h"

#include <gtest/gtest.h>

#include "photo_writer/photo_pixels.h"
#include "photo_writer/test_jpeg.h"

namespace tivox {
namespace {

bool SamePixels(const Bitmap& a, const Bitmap& b, int tolerance = 0) {
    if (a.Width() != b.Width() || a.Height() != b.Height())
        return false;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x)
            for (int shift = 0; shift < 24; shift += 8)
                if (std::abs(int((a.PixelAt(x, y) >> shift) & 0xFF) -
                             int((b.PixelAt(x, y) >> shift) & 0xFF)) > tolerance)
                    return false;
    return true;
}

// What the tag's values mean, by where the stored top-left pixel of a 3 x 2
// picture is seen once upright.
TEST(Orientation, StoredTopLeftLandsWhereTheTagSays) {
    const Point expected[] = {{0, 0}, {0, 0}, {2, 0}, {2, 1}, {0, 1},
                              {0, 0}, {1, 0}, {1, 2}, {0, 2}};
    for (int o = 0; o <= 8; ++o) {
        EXPECT_EQ(UprightPoint({0, 0}, {3, 2}, o), expected[o]) << o;
        EXPECT_EQ(StoredPoint(expected[o], {3, 2}, o), (Point{0, 0})) << o;
    }
    EXPECT_EQ(UprightSize({3, 2}, 6), (Size{2, 3}));
    EXPECT_EQ(UprightSize({3, 2}, 9), (Size{3, 2}));
}

// The lossless operation for each tag, decoded, gives the same pixels as the
// pixel operation; composing two tags gives what doing both does.
TEST(Orientation, LosslessAndPixelTurnsAgreeAndCompose) {
    test::TestJpegOptions options = test::Picture(48, 32, test::Pattern::Noise);
    options.quality = 100;
    options.grayscale = true; // no chroma, whose upsampling is not symmetric to the pixel
    const test::Bytes jpeg = test::EncodePixels(options);
    JpegDecoder decoder;
    JpegInfo info;
    std::string error;
    Bitmap stored;
    decoder.LoadBytes(jpeg.data(), jpeg.size());
    ASSERT_TRUE(decoder.Decode({}, stored, info, error)) << error;
    for (int o = 1; o <= 8; ++o) {
        Bitmap upright;
        ASSERT_TRUE(OrientBitmap(stored, o, upright));
        const auto op = UprightTransform(o);
        ASSERT_EQ(op.has_value(), o != 1);
        if (op) {
            EXPECT_EQ(OrientationOf(*op), o);
            std::vector<std::uint8_t> turned;
            bool perfect = false;
            ASSERT_TRUE(TransformJpeg(jpeg.data(), jpeg.size(), *op, turned, perfect, error));
            EXPECT_TRUE(perfect);
            Bitmap decoded;
            decoder.LoadBytes(turned.data(), turned.size());
            ASSERT_TRUE(decoder.Decode({}, decoded, info, error)) << error;
            EXPECT_TRUE(SamePixels(decoded, upright, 2)) << o;
        }
        for (int then = 1; then <= 8; ++then) {
            Bitmap twice, once;
            ASSERT_TRUE(OrientBitmap(upright, then, twice));
            ASSERT_TRUE(OrientBitmap(stored, ComposeOrientations(o, then), once));
            EXPECT_TRUE(SamePixels(twice, once)) << o << " then " << then;
        }
    }
}

TEST(Orientation, ATurnThatWouldTrimIsRefusedWhenTrimmingIsNotAllowed) {
    const test::Bytes jpeg = test::EncodePixels(test::Picture(50, 30)); // 4:2:0, 16 x 16 blocks
    std::vector<std::uint8_t> out;
    bool perfect = true;
    std::string error;
    EXPECT_FALSE(TransformJpeg(jpeg.data(), jpeg.size(), JpegTransform::Rotate90, out, perfect,
                               error, kDefaultBitmapBudget, false));
    EXPECT_EQ(error, kJpegNotPerfect);
    EXPECT_TRUE(TransformJpeg(jpeg.data(), jpeg.size(), JpegTransform::Transpose, out, perfect,
                              error, kDefaultBitmapBudget, false)); // moves no edge
    EXPECT_TRUE(perfect);
}

} // namespace
} // namespace tivox
