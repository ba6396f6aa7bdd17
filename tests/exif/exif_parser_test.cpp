// The EXIF directory parser: tag conversions, order-dependent tags, byte
// orders, directory structure and every refusal.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <string>

#include "exif/exif_record_text.h"
#include "read_bytes.h"

namespace tivox::test {
namespace {

struct Parsed {
    bool ok = false;
    std::string error;
    ExifRecord record{};
};

// Parses the APP1 payload of the directory tree, as the marker loop would.
Parsed ParsePayload(Bytes payload) {
    Parsed p;
    CExifReader reader(&p.record);
    p.ok = reader.ParseExifSection(payload.data(), int(payload.size()) + 2);
    p.error = reader.lastError;
    p.record.ThumbnailData = nullptr; // points into the payload, gone soon
    return p;
}

Parsed Parse(const TiffIfd& ifd0, ByteOrder order = ByteOrder::Little) {
    return ParsePayload(ExifPayload(ifd0, order));
}

// Most tags live in the Exif sub-directory of a camera file.
TiffIfd InExif(TiffIfd exif) {
    return TiffIfd().Ascii(0x010F, "Make").Sub(0x8769, std::move(exif));
}

std::uint32_t Bits(float f) {
    return std::bit_cast<std::uint32_t>(f);
}

// A field of the record as the dump shows it.
double Field(const ExifRecord& record, const std::string& name) {
    const std::string text = RecordFieldsText(record);
    const auto at = text.find("\n" + name + "=");
    return at == std::string::npos ? NAN : std::stod(text.substr(at + name.size() + 2));
}

TEST(ExifParser, NumbersFromTheirTagsInBothByteOrders) {
    struct Case {
        TiffIfd ifd;
        const char* field;
        double expected;
    };
    auto sensor = [](std::uint32_t width, std::uint32_t height) {
        return TiffIfd().Long(0xA002, {width}).Long(0xA003, {height}).Rational(0xA20E, 227200, 28);
    };
    const Case cases[] = {
        {TiffIfd().Rational(0x829A, 10, 600), "ExposureTime", 1.0 / 60},
        // ShutterSpeedValue 6 is 1/2^6 s; a later ExposureTime overwrites it,
        // an earlier one is kept.
        {TiffIfd().SRational(0x9201, 6, 1), "ExposureTime", 0.015625},
        {TiffIfd().Rational(0x829A, 1, 100).SRational(0x9201, 6, 1), "ExposureTime", 0.01},
        {TiffIfd().SRational(0x9201, 6, 1).Rational(0x829A, 1, 100), "ExposureTime", 0.01},
        // FNumber, else ApertureValue (sqrt 2 to the power 3), else MaxApertureValue.
        {TiffIfd().Rational(0x829D, 28, 10), "ApertureFNumber", 2.8},
        {TiffIfd().Rational(0x9202, 3, 1), "ApertureFNumber", 2.828427},
        {TiffIfd().Rational(0x829D, 0, 0).Rational(0x9202, 3, 1), "ApertureFNumber", 2.828427},
        {TiffIfd().Rational(0x9202, 3, 1).Rational(0x9205, 2, 1), "ApertureFNumber", 2.828427},
        {TiffIfd().Rational(0x9205, 2, 1), "ApertureFNumber", 2.0},
        {TiffIfd().Rational(0x9206, 3, 2), "Distance", 1.5},
        {TiffIfd().SRational(0x9204, -1, 3), "ExposureBias", -1.0 / 3},
        {TiffIfd().Rational(0x9204, 0xFFFFFFFE, 2), "ExposureBias", -1.0}, // numerator signed
        // Every number format converts; text and format 0 read 0; only the
        // first component counts.
        {TiffIfd().SShort(0x9203, {-7}), "Brightness", -7},
        {TiffIfd().SByte(0x9203, {-3}), "Brightness", -3},
        {TiffIfd().SLong(0x9203, {-70000}), "Brightness", -70000},
        {TiffIfd().Byte(0x9203, {200}), "Brightness", 200},
        {TiffIfd().Ascii(0x9203, "12"), "Brightness", 0},
        {TiffIfd().Raw(0x9203, 0, 5, {1, 2, 3, 4}), "Brightness", 0},
        {TiffIfd().Short(0x9203, {5, 6, 7}), "Brightness", 5},
        {TiffIfd().Rational(0xA20E, 8100, 1), "FocalplaneXRes", 8100},
        {TiffIfd().Rational(0xA20F, 300, 1), "FocalplaneYRes", 300},
        // Flash fired is bit 0.
        {TiffIfd().Short(0x9209, {0x10}), "FlashUsed", 0},
        {TiffIfd().Short(0x9209, {0x19}), "FlashUsed", 1},
        {TiffIfd().Short(0x9209, {7}), "FlashUsed", 1},
        // ISO below 50 is in units of 200.
        {TiffIfd().Short(0x8827, {2}), "ISOequivalent", 400},
        {TiffIfd().Short(0x8827, {49}), "ISOequivalent", 9800},
        {TiffIfd().Short(0x8827, {50}), "ISOequivalent", 50},
        {TiffIfd().Short(0x0112, {6}), "Orientation", 6},
        {TiffIfd().Short(0x0112, {9}), "Orientation", 0},
        {TiffIfd().Short(0x9208, {3}), "Whitebalance", 3},
        // Whole numbers truncate towards zero; a LONG is read unsigned.
        {TiffIfd().Rational(0x9102, 37, 10), "CompressionLevel", 3},
        {TiffIfd().SRational(0x9207, -37, 10), "MeteringMode", -3},
        {TiffIfd().Long(0x9207, {0xFFFFFFFF}), "MeteringMode", INT32_MIN},
        // Inches per unit: 1 and 2 are inches, then cm, mm and micrometres; others leave 0.
        {TiffIfd().Short(0x0128, {1}), "ResolutionUnit", 1},
        {TiffIfd().Short(0x0128, {3}), "ResolutionUnit", 1 / 2.54},
        {TiffIfd().Short(0x0128, {0}), "ResolutionUnit", 0},
        {TiffIfd().Short(0xA210, {2}), "FocalplaneUnits", 1},
        {TiffIfd().Short(0xA210, {4}), "FocalplaneUnits", 0.1 / 2.54},
        {TiffIfd().Short(0xA210, {5}), "FocalplaneUnits", 0.0001 / 2.54},
        {TiffIfd().Short(0xA210, {6}), "FocalplaneUnits", 0},
        // Sensor width: the greater pixel dimension at 2272/0.28 pixels per
        // inch; without the resolution or its unit there is none.
        {sensor(2272, 1704).Short(0xA210, {2}), "CCDWidth", 0.28},
        {sensor(1704, 2272).Short(0xA210, {2}), "CCDWidth", 0.28},
        {sensor(2272, 1704), "CCDWidth", 0},
        {TiffIfd().Long(0xA002, {2272}).Short(0xA210, {2}), "CCDWidth", 0},
    };
    for (const Case& c : cases) {
        for (ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
            SCOPED_TRACE(std::string(c.field) + (order == ByteOrder::Big ? " big" : " little"));
            const Parsed p = Parse(InExif(c.ifd), order);
            EXPECT_TRUE(p.ok);
            EXPECT_NEAR(Field(p.record, c.field), c.expected, 1e-6 * std::abs(c.expected));
        }
    }
}

TEST(ExifParser, Texts) {
    // Long texts are cut to their fields.
    const Parsed p = Parse(TiffIfd()
                               .Ascii(0x010F, std::string(40, 'M'))
                               .Ascii(0x0110, std::string(50, 'm'))
                               .Sub(0x8769, TiffIfd().Undefined(0x9000, {'0', '2', '2', '0'})));
    EXPECT_EQ(std::string(p.record.CameraMake), std::string(31, 'M'));
    EXPECT_EQ(std::string(p.record.CameraModel), std::string(39, 'm'));
    EXPECT_STREQ(p.record.Version, "0220");

    // Four bytes stand in the entry, five behind an offset: both read alike.
    EXPECT_STREQ(Parse(TiffIfd().Ascii(0x010F, "abc")).record.CameraMake, "abc");
    EXPECT_STREQ(Parse(TiffIfd().Ascii(0x010F, "abcd")).record.CameraMake, "abcd");
    // A text without components is no text.
    EXPECT_STREQ(Parse(TiffIfd().Raw(0x010F, 2, 0, {'x', 0})).record.CameraMake, "");
}

TEST(ExifParser, UserCommentDropsItsCodeAndTrailingSpaces) {
    const std::pair<std::string, std::string> cases[] = {
        {std::string("ASCII\0\0\0word   ", 15), "word"},
        {"ASCII     ", ""},
        {std::string("ASCII\0\0\0\0\0late", 14), ""}, // a fifth zero ends it
        {"plain  ", "plain"},
        {std::string("UNICODE\0h\0i\0", 12), "UNICODE"}, // copied up to its zero
        {std::string(8, '\0') + "text", ""},
        {"        ", ""},
        {std::string(300, 'c'), std::string(199, 'c')},
    };
    for (const auto& [value, expected] : cases) {
        const Parsed p =
            Parse(InExif(TiffIfd().Undefined(0x9286, Bytes(value.begin(), value.end()))));
        EXPECT_EQ(std::string(p.record.Comments), expected) << value;
    }
}

// FLOAT and DOUBLE values are read little-endian whatever the file's order
// (the whole big-endian record is compared in the batch exif test).
TEST(ExifParser, FloatsAreReadLittleEndianInEitherOrder) {
    const TiffIfd ifd = InExif(TiffIfd().Float(0x9203, 2.5f));
    EXPECT_FLOAT_EQ(Parse(ifd).record.Brightness, 2.5f);
    EXPECT_EQ(Bits(Parse(ifd, ByteOrder::Big).record.Brightness), __builtin_bswap32(Bits(2.5f)));
    EXPECT_FLOAT_EQ(Parse(InExif(TiffIfd().Double(0x9203, -2.25))).record.Brightness, -2.25f);
}

TEST(ExifParser, HeaderRefusals) {
    struct Case {
        std::size_t at;
        Bytes bytes;
        const char* error; // empty: accepted
    };
    const char* const offset = "Suspicious offset of first IFD value";
    const Case cases[] = {{5, {1}, "Incorrect Exif header"},
                          {6, {'I', 'M'}, "Invalid Exif alignment marker."},
                          {8, {43, 0}, "Invalid Exif start (1)"},
                          {10, {7, 0, 0, 0}, offset},
                          {10, {17, 0, 0, 0}, offset},
                          {10, {8, 0, 0, 0}, ""},
                          {10, {16, 0, 0, 0}, ""}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.error);
        Bytes payload = ExifPayload(TiffIfd().Ascii(0x010F, "Cam"));
        std::copy(c.bytes.begin(), c.bytes.end(), payload.begin() + long(c.at));
        const Parsed p = ParsePayload(payload);
        EXPECT_EQ(p.ok, !*c.error);
        EXPECT_EQ(p.error, c.error);
        // Accepted offsets still read the directory at offset 8.
        EXPECT_STREQ(p.record.CameraMake, *c.error ? "" : "Cam");
    }
    // Payloads too short for their header fields.
    const Bytes full = ExifPayload(TiffIfd());
    const std::pair<std::size_t, const char*> cuts[] = {
        {0, "Incorrect Exif header"},          {5, "Incorrect Exif header"},
        {6, "Invalid Exif alignment marker."}, {7, "Invalid Exif alignment marker."},
        {9, "Invalid Exif start (1)"},
        {10, "Suspicious offset of first IFD value"},         {13, "Suspicious offset of first IFD value"},
        {15, "Illegally sized directory"}};
    for (const auto& [n, error] : cuts) {
        const Parsed p = ParsePayload(Truncated(full, n));
        EXPECT_FALSE(p.ok) << n;
        EXPECT_EQ(p.error, error) << n;
    }
}

TEST(ExifParser, ValueBounds) {
    // The Make value of 8 bytes, placed by hand at the very end of the data.
    auto withOffset = [](std::int64_t delta) {
        TiffIfd ifd;
        ifd.Short(0x0112, {3});
        const Bytes probe = BuildTiff(TiffIfd(ifd).RawOffset(0x010F, 2, 8, 0));
        const auto length = std::uint32_t(probe.size() + 8); // 8 text bytes appended
        ifd.RawOffset(0x010F, 2, 8, std::uint32_t(std::int64_t(length) - 8 + delta));
        Bytes payload = ExifPayload(ifd);
        for (char c : std::string("Edgecam"))
            payload.push_back(std::uint8_t(c));
        payload.push_back(0);
        return ParsePayload(payload);
    };
    const Parsed edge = withOffset(0);
    EXPECT_TRUE(edge.ok);
    EXPECT_STREQ(edge.record.CameraMake, "Edgecam");
    const Parsed beyond = withOffset(1);
    EXPECT_FALSE(beyond.ok);
    EXPECT_EQ(beyond.error, "Illegal pointer offset value in EXIF.");
    EXPECT_EQ(beyond.record.Orientation, 3); // entries before the failure stay

    // Counts that would wrap a 32-bit sum are refused too.
    const Parsed huge = Parse(TiffIfd().RawOffset(0x010F, 5, 0x20000000, 16));
    EXPECT_EQ(huge.error, "Illegal pointer offset value in EXIF.");

    // A directory whose link would lie beyond the data has no link.
    Bytes payload = ExifPayload(TiffIfd().Ascii(0x010F, "Cut"));
    payload.resize(payload.size() - 4);
    const Parsed cut = ParsePayload(payload);
    EXPECT_TRUE(cut.ok);
    EXPECT_STREQ(cut.record.CameraMake, "Cut");
}

TEST(ExifParser, BrokenDirectoriesKeepTheEntriesReadAroundThem) {
    struct Case {
        const char* name;
        TiffIfd ifd;
        bool ok; // false: the section is refused
        const char* error;
        const char* make; // "" where the Make entry is never reached
    };
    const TiffIfd cam = TiffIfd().Ascii(0x010F, "Cam");
    TiffIfd deep = cam, wide = cam;
    for (int i = 0; i < 200; ++i)
        deep = TiffIfd().Next(std::move(deep));
    for (int i = 0; i < 2000; ++i) // all pointing at the first directory: walked once
        wide.Long(0x8769, {8});
    const Case cases[] = {
        {"count beyond the data", TiffIfd(cam).CountField(200), false, "Illegally sized directory",
         ""},
        {"format code", TiffIfd(cam).Raw(0x0110, 13, 1, {}), false,
         "Illegal format code in EXIF dir", "Cam"},
        {"next link beyond", TiffIfd(cam).RawLink(5000), false, "Illegal subdirectory link", "Cam"},
        {"sub link beyond", TiffIfd(cam).Long(0x8769, {5000}), false, "Illegal subdirectory link",
         "Cam"},
        // A fault inside a sub-directory loses only that directory.
        {"sub count", TiffIfd().Sub(0x8769, TiffIfd().CountField(900)).Ascii(0x010F, "Cam"), true,
         "Illegally sized directory", "Cam"},
        {"sub format code",
         TiffIfd().Sub(0x8769, TiffIfd().Raw(0x9207, 99, 1, {})).Ascii(0x010F, "Cam"), true,
         "Illegal format code in EXIF dir", "Cam"},
        {"rotation", TiffIfd().Short(0x0112, {9}).Ascii(0x010F, "Cam"), true,
         "Undefined rotation value", "Cam"},
        {"sub is itself", TiffIfd(cam).Long(0x8769, {8}), true, "EXIF directory linked twice",
         "Cam"},
        {"next is itself", TiffIfd(cam).RawLink(8), true, "EXIF directory linked twice", "Cam"},
        {"interop at the very end", TiffIfd(cam).Long(0xA005, {38}), true,
         "Illegally sized directory", "Cam"},
        {"empty directory, then linked", TiffIfd().Next(cam), true, "", "Cam"},
        {"200 linked", deep, true, "Too many EXIF directories", ""},
        {"2000 links", wide, true, "EXIF directory linked twice", "Cam"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Parsed p = Parse(c.ifd);
        EXPECT_EQ(p.ok, c.ok);
        EXPECT_EQ(p.error, c.error);
        EXPECT_STREQ(p.record.CameraMake, c.make);
    }
}

TEST(ExifParser, ThumbnailReference) {
    CameraExif camera;
    camera.thumbnail = SmallJpeg(24, 16);
    CExifReader reader(nullptr);
    ASSERT_TRUE(ReadBytes(reader, ExifHead(CameraExifPayload(camera))));
    const ExifRecord& r = *reader.record;
    ASSERT_EQ(r.ThumbnailSize, int(camera.thumbnail.size()));
    ASSERT_NE(r.ThumbnailData, nullptr);
    EXPECT_EQ(std::memcmp(r.ThumbnailData, camera.thumbnail.data(), camera.thumbnail.size()), 0);
    EXPECT_FLOAT_EQ(r.Xresolution, 180.0f); // the thumbnail directory came later and wins

    // Reaching beyond the data, at offset 0 (the TIFF header) or without a
    // length, it is no thumbnail.
    for (auto [offset, size] : {std::pair{8u, 100000u}, {0u, 16u}, {8u, 0u}}) {
        CExifReader other(nullptr);
        ASSERT_TRUE(ReadBytes(
            other, ExifHead(ExifPayload(TiffIfd().Long(0x0201, {offset}).Long(0x0202, {size})))));
        EXPECT_EQ(other.record->ThumbnailData, nullptr) << offset << " " << size;
    }
}

TEST(ExifParser, SecondExifSectionOverwritesWhatItTouches) {
    const Bytes first = ExifPayload(TiffIfd().Ascii(0x010F, "First").Ascii(0x0110, "Model"));
    const Bytes second = ExifPayload(TiffIfd().Ascii(0x010F, "Second"));
    const Bytes broken = Truncated(second, 9);
    std::vector<Segment> segments = {Segment{0xE1, first, {}, 0}, Segment{0xE1, second, {}, 0}};
    for (const Segment& s : FrameAndScan(8, 8))
        segments.push_back(s);
    CExifReader reader(nullptr);
    ASSERT_TRUE(ReadBytes(reader, JpegHead(segments)));
    EXPECT_STREQ(reader.record->CameraMake, "Second");
    EXPECT_STREQ(reader.record->CameraModel, "Model");
    EXPECT_TRUE(reader.record->IsExif);

    segments[1].payload = broken;
    CExifReader last(nullptr);
    ASSERT_TRUE(ReadBytes(last, JpegHead(segments)));
    EXPECT_STREQ(last.record->CameraMake, "First");
    EXPECT_FALSE(last.record->IsExif); // the last section decides
}

} // namespace
} // namespace tivox::test
