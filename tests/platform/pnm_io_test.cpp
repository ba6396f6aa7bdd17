#include <gtest/gtest.h>

#include "platform/pnm_io.h"
#include "support/test_jpeg.h"

namespace tivox {
namespace {

TEST(PnmIo, PpmAndPamRoundTripExactly) {
    Bitmap img, back;
    ASSERT_TRUE(img.Reset(5, 3));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            img.SetPixel(
                x, y, 0x80000000u | std::uint32_t(x * 40) << 16 | std::uint32_t(y * 70) << 8 | 7u);
    test::TempDir dir;
    std::string error;
    ASSERT_TRUE(WritePnmFile(img, dir.File("a.pam"), error));
    ASSERT_TRUE(ReadPnmFile(dir.File("a.pam"), back, error)) << error;
    EXPECT_EQ(back.PixelAt(4, 2), img.PixelAt(4, 2)); // alpha kept
    ASSERT_TRUE(WritePnmFile(img, dir.File("a.PPM"), error));
    ASSERT_TRUE(ReadPnmFile(dir.File("a.PPM"), back, error)) << error;
    EXPECT_EQ(back.PixelAt(4, 2), img.PixelAt(4, 2) | 0xFF000000u); // opaque
    EXPECT_TRUE(IsPnmName("x.Pam"));
    EXPECT_FALSE(IsPnmName("x.jpg"));
}

TEST(PnmIo, MalformedFilesAreRefused) {
    const char* bad[] = {"P6\n2 2\n255\n\x01", "P6\n2 2\n65535\n", "P7\nWIDTH 1\nHEIGHT 1\n",
                         "P6 -1 2 255 ", "JFIF"};
    for (const char* text : bad) {
        Bitmap out;
        std::string error;
        const std::string s(text);
        EXPECT_FALSE(ReadPnm(reinterpret_cast<const std::uint8_t*>(s.data()), s.size(), out, error))
            << text;
    }
    const std::string grey = "P5\n# comment\n2 1\n255\n\x10\x20";
    Bitmap out;
    std::string error;
    ASSERT_TRUE(
        ReadPnm(reinterpret_cast<const std::uint8_t*>(grey.data()), grey.size(), out, error));
    EXPECT_EQ(out.PixelAt(1, 0), 0xFF202020u);
}

} // namespace
} // namespace tivox
