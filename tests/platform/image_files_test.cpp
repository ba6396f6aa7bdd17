// Pictures in and out of files: JPEG decode, encode and lossless turns, PNM.

#include <gtest/gtest.h>

#include <turbojpeg.h>

#include "platform/jpeg_codec.h"
#include "platform/pnm_io.h"
#include "support/batch_runner.h"
#include "photo_writer/photo_pixels.h"
#include "photo_writer/test_jpeg.h"

namespace tivox {
namespace {

using test::Bytes;

bool DecodeBytes(const Bytes& bytes, Size target, Bitmap& out, std::string& error,
                 std::int64_t budget = kDefaultBitmapBudget) {
    test::TempDir dir;
    if (!test::WriteFile(dir.File("p.jpg"), bytes))
        return false;
    JpegInfo info;
    return JpegDecoder().DecodeFile(dir.File("p.jpg"), target, out, info, error, budget);
}

TEST(JpegCodec, EncodeDecodeRoundTripKeepsPixelsAndResolution) {
    Bitmap photo, back;
    ASSERT_TRUE(test::PhotoBitmap(96, 64, 5, photo));
    photo.SetResolution(300, 300);
    std::vector<std::uint8_t> bytes;
    std::string error;
    ASSERT_TRUE(JpegEncoder().Encode(photo, 95, bytes, error)) << error;
    ASSERT_TRUE(DecodeBytes(bytes, {}, back, error)) << error;
    ASSERT_EQ(back.Width(), 96);
    ASSERT_EQ(back.Height(), 64);
    EXPECT_GT(test::Psnr(photo, back), 28.0); // the picture carries sensor noise
    EXPECT_EQ(back.DpiX(), 300.0f);
    EXPECT_EQ(back.PixelAt(10, 10) >> 24, 0xFFu); // opaque
    // A header with a zero density names no resolution: the default stays.
    ASSERT_EQ(std::string(bytes.begin() + 6, bytes.begin() + 10), "JFIF");
    bytes[14] = bytes[15] = 0;
    ASSERT_TRUE(DecodeBytes(bytes, {}, back, error)) << error;
    EXPECT_EQ(back.DpiX(), 96.0f);
}

TEST(JpegCodec, GreyProgressiveAndCmykPicturesDecode) {
    test::TestJpegOptions grey, progressive;
    grey.grayscale = true;
    grey.pattern = progressive.pattern = test::Pattern::Solid;
    grey.solid = 0x404040;
    progressive.progressive = true;
    progressive.solid = 0x204080;
    Bitmap out;
    std::string error;
    for (const auto& o : {grey, progressive}) {
        ASSERT_TRUE(DecodeBytes(test::MakeJpeg(o), {}, out, error)) << error;
        EXPECT_NEAR(int(out.PixelAt(30, 20) >> 16 & 0xFF), int(o.solid >> 16 & 0xFF), 3);
        EXPECT_NEAR(int(out.PixelAt(30, 20) & 0xFF), int(o.solid & 0xFF), 3);
    }
    // CMYK files store inverted inks: no cyan, full magenta and yellow, no black is red.
    std::vector<std::uint8_t> cmyk(32 * 16 * 4);
    for (std::size_t i = 0; i < cmyk.size(); i += 4)
        cmyk[i] = cmyk[i + 3] = 255;
    tjhandle h = tjInitCompress();
    unsigned char* jpeg = nullptr;
    unsigned long size = 0;
    ASSERT_EQ(tjCompress2(h, cmyk.data(), 32, 0, 16, TJPF_CMYK, &jpeg, &size, TJSAMP_444, 95, 0),
              0);
    const Bytes bytes(jpeg, jpeg + size);
    tjFree(jpeg);
    tjDestroy(h);
    ASSERT_TRUE(DecodeBytes(bytes, {}, out, error)) << error;
    EXPECT_GT(int(out.PixelAt(5, 5) >> 16 & 0xFF), 240);
    EXPECT_LT(int(out.PixelAt(5, 5) >> 8 & 0xFF), 15);
    EXPECT_LT(int(out.PixelAt(5, 5) & 0xFF), 15);
}

TEST(JpegCodec, BadInputFailsWithItsCauseAndSpoilsNoLaterDecode) {
    const Bytes good = test::MakeJpeg(test::Picture(64, 64, test::Pattern::Noise));
    // One decoder throughout, as the thumbnail worker keeps one.
    JpegDecoder decoder;
    test::TempDir dir;
    Bitmap out;
    std::string error;
    const auto decode = [&](const Bytes& bytes, std::int64_t budget = kDefaultBitmapBudget) {
        JpegInfo info;
        error.clear();
        return test::WriteFile(dir.File("p.jpg"), bytes) &&
               decoder.DecodeFile(dir.File("p.jpg"), {120, 88}, out, info, error, budget);
    };
    // Truncated in the scan: the decoder gives what it has, unless told not to.
    const Bytes cut = test::Truncated(good, good.size() * 3 / 4);
    EXPECT_TRUE(decode(cut));
    decoder.RefuseDamagedData(true);
    EXPECT_FALSE(decode(cut));
    EXPECT_EQ(error, kJpegDamaged);
    decoder.RefuseDamagedData(false);

    const struct {
        Bytes bytes;
        const char* cause;
    } bad[] = {
        {test::Truncated(good, 20), kJpegUnreadable},
        {{'h', 'e', 'l', 'l', 'o'}, kJpegUnreadable},
        {{}, kJpegUnreadable},
        // A frame of 0 x 0: it used to leave the decoder refusing every later file.
        {test::JpegHead(test::FrameAndScan(0, 0)), kJpegUnreadable},
        // 65500 x 65500 with hardly any data behind it.
        {test::JpegHead(test::FrameAndScan(65500, 65500)), kJpegDamaged},
    };
    for (const auto& b : bad) {
        EXPECT_FALSE(decode(b.bytes));
        EXPECT_EQ(error, b.cause);
        EXPECT_TRUE(decode(good)) << "after " << b.cause << ": " << error;
    }
    // A real picture above the budget is refused before allocation.
    EXPECT_FALSE(decode(good, 64 * 64 * 4 - 1));
    EXPECT_EQ(error, kJpegTooLarge);
    EXPECT_TRUE(decode(good, 64 * 64 * 4));
}

// Frame headers of 65500 x 65500 with enough data behind them to pass for a
// picture. Their coefficients alone would take 13 GB: a progressive decode
// keeps them all even for a thumbnail, a turn keeps them twice.
TEST(JpegCodec, HugeFramesAreRefusedBeforeTheirCoefficientsAreAllocated) {
    const auto padded = [](std::vector<test::Segment> head) {
        Bytes bytes = test::JpegHead(head);
        bytes.resize(bytes.size() + (2 << 20));
        return bytes;
    };
    auto multiScan = test::FrameAndScan(65500, 65500);
    multiScan[1].payload = {1, 1, 0x00, 0, 63, 0}; // the first scan holds only the luma
    const Bytes baseline = padded(test::FrameAndScan(65500, 65500));
    const Bytes progressive = padded(test::FrameAndScan(65500, 65500, 3, 0xC2));
    const Bytes partial = padded(multiScan);
    Bitmap out;
    std::string error;
    for (const Bytes* b : {&progressive, &partial}) {
        EXPECT_FALSE(DecodeBytes(*b, {120, 88}, out, error));
        EXPECT_EQ(error, kJpegTooLarge);
    }
    std::vector<std::uint8_t> turned;
    bool perfect = false;
    for (const Bytes* b : {&baseline, &progressive}) {
        EXPECT_FALSE(
            TransformJpeg(b->data(), b->size(), JpegTransform::Rotate90, turned, perfect, error));
        EXPECT_EQ(error, kJpegTooLarge);
    }

    // Every command says so, naming the file.
    test::TempDir dir;
    const std::string file = dir.File("huge.jpg");
    ASSERT_TRUE(test::WriteFile(file, progressive));
    const std::vector<std::vector<std::string>> commands = {
        {"show", file, "--screen", "1920x1080", "--out", dir.File("s.jpg")},
        {"thumbs", dir.path(), "--box", "160x120", "--out", dir.path()},
        {"transform", "left", file},
        {"edit", file, "--negative"}};
    for (const auto& args : commands) {
        const test::CommandRun run = test::RunBatch(args);
        EXPECT_EQ(run.exitCode, 1) << args[0];
        EXPECT_NE(run.output.find("Could not read " + file +
                                  ": the picture is too large for the memory budget."),
                  std::string::npos)
            << run.output;
    }
}

// Which way each turn goes is checked against the pixel turns with the
// orientation tests; here the trimming of partial blocks.
TEST(JpegTransform, TurnsTrimPartialBlocks) {
    // 70 x 40 in 16 x 16 blocks: the partial right column is trimmed away.
    const Bytes bytes = test::EncodePixels(test::Picture(70, 40));
    std::vector<std::uint8_t> out;
    std::string error;
    bool perfect = true;
    ASSERT_TRUE(TransformJpeg(bytes.data(), bytes.size(), JpegTransform::FlipHorizontal, out,
                              perfect, error));
    EXPECT_FALSE(perfect);
    Bitmap back;
    ASSERT_TRUE(DecodeBytes(out, {}, back, error));
    EXPECT_EQ(back.Width(), 64);
    EXPECT_EQ(back.Height(), 40);
    EXPECT_FALSE(TransformJpeg(bytes.data(), 10, JpegTransform::Rotate90, out, perfect, error));
}

TEST(PnmIo, PpmAndPamRoundTripExactlyAndMalformedFilesAreRefused) {
    Bitmap img, back;
    ASSERT_TRUE(img.Reset(5, 3));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            img.SetPixel(x, y, 0x80000000u | std::uint32_t(x * 40 << 16 | y * 70 << 8 | 7));
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

    const auto read = [&](const std::string& s) {
        return ReadPnm(reinterpret_cast<const std::uint8_t*>(s.data()), s.size(), back, error);
    };
    for (const char* bad : {"P6\n2 2\n255\n\x01", "P6\n2 2\n65535\n", "P7\nWIDTH 1\nHEIGHT 1\n",
                            "P6 -1 2 255 ", "JFIF"})
        EXPECT_FALSE(read(bad)) << bad;
    ASSERT_TRUE(read("P5\n# comment\n2 1\n255\n\x10\x20"));
    EXPECT_EQ(back.PixelAt(1, 0), 0xFF202020u);
}

} // namespace
} // namespace tivox
