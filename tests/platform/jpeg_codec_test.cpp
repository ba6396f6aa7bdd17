#include <gtest/gtest.h>

#include <turbojpeg.h>

#include <algorithm>
#include <cerrno>

#include "platform/atomic_file.h"
#include "platform/jpeg_codec.h"
#include "support/photo_pixels.h"
#include "support/test_jpeg.h"

namespace tivox {
namespace {

using test::Bytes;

bool DecodeBytes(const Bytes& bytes, Size target, Bitmap& out, std::string& error,
                 std::int64_t budget = kDefaultBitmapBudget) {
    test::TempDir dir;
    const std::string path = dir.File("p.jpg");
    if (!test::WriteFile(path, bytes))
        return false;
    JpegDecoder d;
    JpegInfo info;
    return d.DecodeFile(path, target, out, info, error, budget);
}

TEST(JpegCodec, EncodeDecodeRoundTripKeepsPixelsAndResolution) {
    Bitmap photo, back;
    ASSERT_TRUE(test::PhotoBitmap(96, 64, 5, photo));
    photo.SetResolution(300, 300);
    JpegEncoder enc;
    std::vector<std::uint8_t> bytes;
    std::string error;
    ASSERT_TRUE(enc.Encode(photo, 95, bytes, error)) << error;
    ASSERT_TRUE(DecodeBytes(bytes, {}, back, error)) << error;
    ASSERT_EQ(back.Width(), 96);
    ASSERT_EQ(back.Height(), 64);
    EXPECT_GT(test::Psnr(photo, back), 28.0); // the picture carries sensor noise
    EXPECT_EQ(back.DpiX(), 300.0f);
    EXPECT_EQ(back.PixelAt(10, 10) >> 24, 0xFFu); // opaque
}

TEST(JpegCodec, ScaledDecodeTakesTheSmallestCoveringScale) {
    test::TempDir dir;
    ASSERT_TRUE(test::WritePhotoJpeg(dir.File("a.jpg"), 800, 600, 1));
    Bitmap out;
    std::string error;
    JpegDecoder d;
    JpegInfo info;
    ASSERT_TRUE(d.DecodeFile(dir.File("a.jpg"), {100, 75}, out, info, error)) << error;
    EXPECT_EQ(out.Width(), 100); // 1/8
    EXPECT_EQ(info.width, 800);
    ASSERT_TRUE(d.DecodeFile(dir.File("a.jpg"), {101, 75}, out, info, error));
    EXPECT_EQ(out.Width(), 200); // 1/8 falls short by a pixel; 2/8 covers
}

TEST(JpegCodec, GreyProgressiveAndCmykPicturesDecode) {
    test::TestJpegOptions grey;
    grey.grayscale = true;
    grey.pattern = test::Pattern::Solid;
    grey.solid = 0x404040;
    test::TestJpegOptions progressive;
    progressive.progressive = true;
    progressive.pattern = test::Pattern::Solid;
    progressive.solid = 0x204080;
    for (const auto& o : {grey, progressive}) {
        Bitmap out;
        std::string error;
        ASSERT_TRUE(DecodeBytes(test::MakeJpeg(o), {}, out, error)) << error;
        const std::uint32_t px = out.PixelAt(30, 20);
        EXPECT_NEAR(int(px >> 16 & 0xFF), int(o.solid >> 16 & 0xFF), 3);
        EXPECT_NEAR(int(px & 0xFF), int(o.solid & 0xFF), 3);
    }
    // A CMYK file stores inverted inks: C=255-cyan..., here pure red.
    std::vector<std::uint8_t> cmyk(32 * 16 * 4);
    for (std::size_t i = 0; i < cmyk.size(); i += 4) {
        cmyk[i] = 255;     // no cyan
        cmyk[i + 1] = 0;   // full magenta
        cmyk[i + 2] = 0;   // full yellow
        cmyk[i + 3] = 255; // no black
    }
    tjhandle h = tjInitCompress();
    unsigned char* jpeg = nullptr;
    unsigned long size = 0;
    ASSERT_EQ(0,
              tjCompress2(h, cmyk.data(), 32, 0, 16, TJPF_CMYK, &jpeg, &size, TJSAMP_444, 95, 0));
    Bytes bytes(jpeg, jpeg + size);
    tjFree(jpeg);
    tjDestroy(h);
    Bitmap out;
    std::string error;
    ASSERT_TRUE(DecodeBytes(bytes, {}, out, error)) << error;
    const std::uint32_t px = out.PixelAt(5, 5);
    EXPECT_GT(int(px >> 16 & 0xFF), 240);
    EXPECT_LT(int(px >> 8 & 0xFF), 15);
    EXPECT_LT(int(px & 0xFF), 15);
}

TEST(JpegCodec, BadInputFailsCleanlyOrGivesWhatIsThere) {
    test::TestJpegOptions o;
    o.width = 64;
    o.height = 64;
    o.pattern = test::Pattern::Noise;
    const Bytes good = test::MakeJpeg(o);
    Bitmap out;
    std::string error;
    // Truncated in the scan: the decoder gives what it has.
    EXPECT_TRUE(DecodeBytes(test::Truncated(good, good.size() * 3 / 4), {}, out, error));
    // Truncated in the header, no JPEG at all, nothing at all: failures.
    const Bytes notJpeg = {'h', 'e', 'l', 'l', 'o'};
    for (const Bytes& bad : {test::Truncated(good, 20), notJpeg, Bytes{}}) {
        error.clear();
        EXPECT_FALSE(DecodeBytes(bad, {}, out, error));
        EXPECT_FALSE(error.empty());
    }
    // A header that claims 65500 x 65500 with hardly any data behind it.
    const Bytes huge = test::JpegHead(test::FrameAndScan(65500, 65500));
    EXPECT_FALSE(DecodeBytes(huge, {120, 88}, out, error));
    // A real picture above the budget is refused before allocation.
    EXPECT_FALSE(DecodeBytes(good, {}, out, error, 64 * 64 * 4 - 1));
    EXPECT_TRUE(DecodeBytes(good, {}, out, error, 64 * 64 * 4));
}

TEST(JpegCodec, MetadataSectionsMoveIntoANewEncoding) {
    test::TestJpegOptions o;
    test::CameraExif exif;
    o.exif = test::CameraExifPayload(exif);
    const Bytes original = test::MakeJpeg(o);
    Bitmap img;
    ASSERT_TRUE(img.Reset(16, 16));
    img.Fill(0xFF808080u);
    std::vector<std::uint8_t> fresh;
    std::string error;
    JpegEncoder enc;
    ASSERT_TRUE(enc.Encode(img, 80, fresh, error));
    CopyMetadataSections(original, fresh);
    const auto at = std::search(fresh.begin(), fresh.end(), o.exif.begin(), o.exif.end());
    EXPECT_NE(at, fresh.end());
    Bitmap back;
    EXPECT_TRUE(DecodeBytes(fresh, {}, back, error)) << error;
}

// Four quarter turns, or a left after a right, give the very same bytes back,
// with the EXIF section kept.
TEST(JpegTransform, TurnsAreLosslessAndKeepSections) {
    test::TestJpegOptions o;
    o.width = 64;
    o.height = 48;
    o.pattern = test::Pattern::Noise;
    o.exif = test::CameraExifPayload(test::CameraExif{});
    const Bytes original = test::MakeJpeg(o);
    std::vector<std::uint8_t> a(original), b;
    bool perfect = false;
    std::string error;
    // Normalise once: the transform writes its own tables.
    ASSERT_TRUE(TransformJpeg(a.data(), a.size(), JpegTransform::Rotate180, b, perfect, error));
    ASSERT_TRUE(TransformJpeg(b.data(), b.size(), JpegTransform::Rotate180, a, perfect, error));
    const std::vector<std::uint8_t> start = a;
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(TransformJpeg(a.data(), a.size(), JpegTransform::Rotate90, b, perfect, error));
        EXPECT_TRUE(perfect);
        a.swap(b);
    }
    EXPECT_EQ(a, start);
    ASSERT_TRUE(TransformJpeg(a.data(), a.size(), JpegTransform::Rotate90, b, perfect, error));
    ASSERT_TRUE(TransformJpeg(b.data(), b.size(), JpegTransform::Rotate270, a, perfect, error));
    EXPECT_EQ(a, start);
    for (auto op : {JpegTransform::FlipHorizontal, JpegTransform::FlipVertical}) {
        ASSERT_TRUE(TransformJpeg(start.data(), start.size(), op, b, perfect, error));
        ASSERT_TRUE(TransformJpeg(b.data(), b.size(), op, a, perfect, error));
        EXPECT_EQ(a, start);
    }
    EXPECT_NE(std::search(a.begin(), a.end(), o.exif.begin(), o.exif.end()), a.end());
}

TEST(JpegTransform, TurnsMovePixelsClockwiseAndTrimPartialBlocks) {
    test::TempDir dir;
    Bitmap img, back;
    ASSERT_TRUE(img.Reset(64, 32));
    img.Fill(0xFF000000u);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            img.SetPixel(x, y, 0xFFFFFFFFu); // white top-left block
    std::vector<std::uint8_t> bytes, out;
    std::string error;
    JpegEncoder enc;
    ASSERT_TRUE(enc.Encode(img, 95, bytes, error));
    bool perfect = false;
    ASSERT_TRUE(
        TransformJpeg(bytes.data(), bytes.size(), JpegTransform::Rotate90, out, perfect, error));
    ASSERT_TRUE(DecodeBytes(out, {}, back, error));
    ASSERT_EQ(back.Width(), 32);
    ASSERT_EQ(back.Height(), 64);
    EXPECT_GT(back.PixelAt(28, 4) & 0xFF, 200u); // now top-right
    EXPECT_LT(back.PixelAt(4, 4) & 0xFF, 50u);

    // 70 x 40 with 16 x 16 blocks: the partial right column is trimmed away.
    Bitmap odd;
    ASSERT_TRUE(odd.Reset(70, 40));
    odd.Fill(0xFF406080u);
    ASSERT_TRUE(enc.Encode(odd, 90, bytes, error));
    ASSERT_TRUE(TransformJpeg(bytes.data(), bytes.size(), JpegTransform::FlipHorizontal, out,
                              perfect, error));
    EXPECT_FALSE(perfect);
    ASSERT_TRUE(DecodeBytes(out, {}, back, error));
    EXPECT_EQ(back.Width(), 64);
    EXPECT_EQ(back.Height(), 40);
    EXPECT_FALSE(TransformJpeg(bytes.data(), 10, JpegTransform::Rotate90, out, perfect, error));
}

TEST(AtomicFile, ReplaceMovesTheTemporaryOverThePhoto) {
    test::TempDir dir;
    const std::string photo = dir.File("p.jpg"), temp = dir.File("p.tmp");
    ASSERT_TRUE(test::WriteFile(photo, {1, 2, 3}));
    const std::vector<std::uint8_t> data = {9, 8};
    std::string error;
    ASSERT_TRUE(WriteWholeFile(temp, data.data(), data.size(), error));
    int err = 0;
    ASSERT_TRUE(ReplaceFileDurably(temp, photo, err, error)) << error;
    std::vector<std::uint8_t> back;
    ASSERT_TRUE(ReadWholeFile(photo, back, error));
    EXPECT_EQ(back, data);
    EXPECT_FALSE(ReadWholeFile(temp, back, error));
    EXPECT_FALSE(ReplaceFileDurably(temp, photo, err, error)); // nothing to move
    EXPECT_EQ(err, ENOENT);
    EXPECT_FALSE(ReadWholeFile(dir.path(), back, error)); // a folder is no file
}

} // namespace
} // namespace tivox
