// The marker loop: which sections are kept, dropped, parsed, and how every
// kind of broken head ends.

#include <gtest/gtest.h>

#include <string>

#include "read_bytes.h"

namespace tivox::test {
namespace {

Segment App(std::uint8_t marker, const std::string& text) {
    return Segment{marker, Bytes(text.begin(), text.end()), {}, 0};
}

Bytes WithFrameAndScan(std::vector<Segment> segments) {
    for (const Segment& s : FrameAndScan(320, 240))
        segments.push_back(s);
    return JpegHead(segments);
}

TEST(SectionReader, HeadsEndWithTheirText) {
    struct Case {
        const char* name;
        Bytes bytes;
        bool ok;
        const char* error;
        const char* printed; // on standard error
    };
    auto padded = [](int padding) {
        std::vector<Segment> s = FrameAndScan(320, 240);
        s[0].padding = padding; // extra 0xFF before the marker's own
        return JpegHead(s);
    };
    Bytes premature = JpegHead({App(0xE2, "0123456789")});
    premature.resize(premature.size() - 3);
    Bytes plain = WithFrameAndScan({});
    plain.erase(plain.begin() + 2); // the 0xFF in front of the frame header's code
    const Case cases[] = {
        {"empty", {}, false, "", ""},
        {"one byte", {0xFF}, false, "", ""},
        {"end of image first", {0xFF, 0xD9}, false, "", ""},
        {"no start mark", {0x00, 0xD8}, false, "", ""},
        {"a GIF", {'G', 'I', 'F', '8'}, false, "", ""},
        {"start of image alone", {0xFF, 0xD8}, false, "invalid marker", ""},
        {"end of file in the length", {0xFF, 0xD8, 0xFF, 0xE2, 0x00}, false, "invalid marker", ""},
        {"length 1", JpegHead({Segment{0xE2, {}, 1, 0}}), false, "invalid marker", ""},
        {"length 0", JpegHead({Segment{0xE2, {}, 0, 0}}), false, "invalid marker", ""},
        {"file ends in a section", premature, false, "Premature end of file?", ""},
        {"seven fill bytes", padded(6), false, "", "too many padding unsigned chars\n"},
        {"end of image before the scan", JpegHead({App(0xD9, "")}), false, "",
         "No image in jpeg!\n"},
        {"six fill bytes", padded(5), true, "", ""},
        {"a plain byte taken as marker", plain, true, "", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CExifReader reader(nullptr);
        testing::internal::CaptureStderr();
        EXPECT_EQ(ReadBytes(reader, c.bytes), c.ok);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), c.printed);
        EXPECT_STREQ(reader.lastError, c.error);
        EXPECT_FALSE(reader.record->IsExif);
        EXPECT_EQ(reader.record->Width, c.ok ? 320 : 0);
    }
}

TEST(SectionReader, PrematureEndKeepsTheBlockOutOfTheCount) {
    Bytes bytes = JpegHead({App(0xE2, "kept"), App(0xE3, "0123456789")});
    bytes.resize(bytes.size() - 1);
    CExifReader reader(nullptr);
    EXPECT_FALSE(ReadBytes(reader, bytes));
    EXPECT_EQ(reader.sectionCount, 1);
    EXPECT_EQ(reader.sections[1].Type, 0xE3);
    EXPECT_NE(reader.sections[1].Data, nullptr); // freed by the destructor
}

// An empty section is kept; JFIF, XMP, a too short EXIF mark and later
// comments are dropped without taking a slot.
TEST(SectionReader, KeptAndDroppedSections) {
    std::vector<Segment> segments = {App(0xE2, "")};
    segments.insert(segments.end(), 25, App(0xE0, "JFIF"));
    for (const char* text : {"http://ns.example.com/xmp", "Exi"})
        segments.push_back(App(0xE1, text));
    segments.push_back(App(0xFE, "first"));
    segments.push_back(App(0xFE, "second"));
    ExifRecord mine{};
    {
        CExifReader reader(&mine);
        EXPECT_TRUE(ReadBytes(reader, WithFrameAndScan(segments)));
        ASSERT_EQ(reader.sectionCount, 4);
        EXPECT_EQ(reader.sections[0].Type, 0xE2);
        EXPECT_EQ(reader.sections[0].Size, 2);
        EXPECT_EQ(reader.sections[1].Type, 0xFE);
        EXPECT_EQ(reader.sections[3].Type, 0xDA);
    }
    // A record handed in is filled, and stays the caller's.
    EXPECT_EQ(mine.Width, 320);
    EXPECT_STREQ(mine.Comments, "first");
    EXPECT_FALSE(mine.IsExif);
    EXPECT_STREQ(mine.CameraMake, "");
}

TEST(SectionReader, TwentySectionLimit) {
    for (int fillers : {18, 19, 20}) {
        std::vector<Segment> segments(std::size_t(fillers), App(0xE2, "x"));
        segments.push_back(App(0xDA, "scan"));
        CExifReader reader(nullptr);
        EXPECT_EQ(ReadBytes(reader, JpegHead(segments)), fillers < 20) << fillers;
        if (fillers == 20) {
            EXPECT_STREQ(reader.lastError, "Too many sections in jpg file");
            EXPECT_EQ(reader.sectionCount, 20);
        }
    }
}

TEST(SectionReader, CommentBytesAreCleanedAndCut) {
    const std::pair<std::string, std::string> cases[] = {
        {"a\r\nb", "a\nb"},
        {"a\rb", "a?b"},
        {"bell\x07", "bell?"},
        {"tab\there", "tab\there"},
        {"M\xE4rz", "M\xE4rz"},
        {std::string("nul\0byte", 8), "nul?byte"},
        {"", ""},
        {std::string(1500, 'c'), std::string(998, 'c')},
    };
    for (const auto& [in, out] : cases) {
        CExifReader reader(nullptr);
        EXPECT_TRUE(ReadBytes(reader, WithFrameAndScan({App(0xFE, in)})));
        EXPECT_EQ(std::string(reader.record->Comments), out) << in;
    }
}

TEST(SectionReader, FrameHeaders) {
    // Process is the frame marker; one component means grayscale.
    for (auto [marker, components] : {std::pair{0xC0, 3}, {0xC2, 1}}) {
        CExifReader reader(nullptr);
        EXPECT_TRUE(ReadBytes(reader, JpegHead(FrameAndScan(97, 33, components, marker))));
        EXPECT_EQ(reader.record->Width, 97);
        EXPECT_EQ(reader.record->Height, 33);
        EXPECT_EQ(reader.record->Process, marker);
        EXPECT_EQ(reader.record->IsColor, components == 3);
    }
    // The last frame header wins; one too short to hold the size is none.
    std::vector<Segment> segments = FrameAndScan(100, 50, 1, 0xC2);
    segments.pop_back();
    for (const Segment& s : FrameAndScan(2048, 1536, 3, 0xC0))
        segments.push_back(s);
    segments.insert(segments.end() - 1, App(0xC0, "\x08\x01\x00\x02"));
    CExifReader reader(nullptr);
    EXPECT_TRUE(ReadBytes(reader, JpegHead(segments)));
    EXPECT_EQ(reader.record->Width, 2048);
    EXPECT_EQ(reader.record->Height, 1536);
    EXPECT_EQ(reader.record->IsColor, 1);
    EXPECT_EQ(reader.record->Process, 192);
}

TEST(SectionReader, CommentAndExifSectionOrder) {
    const Segment exif{
        0xE1, ExifPayload(TiffIfd().Sub(0x8769, TiffIfd().Ascii(0x9286, "exif"))), {}, 0};
    // A comment behind the EXIF section replaces its user comment, one in
    // front of it is wiped by it.
    CExifReader after(nullptr), before(nullptr);
    EXPECT_TRUE(ReadBytes(after, WithFrameAndScan({exif, App(0xFE, "comment")})));
    EXPECT_STREQ(after.record->Comments, "comment");
    EXPECT_TRUE(ReadBytes(before, WithFrameAndScan({App(0xFE, "comment"), exif})));
    EXPECT_STREQ(before.record->Comments, "exif");
}

TEST(SectionReader, TruncationAtEveryByteEndsCleanly) {
    CameraExif camera;
    camera.thumbnail = SmallJpeg(16, 16);
    TestJpegOptions o;
    o.exif = CameraExifPayload(camera);
    o.comments = {"hello"};
    const Bytes full = MakeJpeg(o);
    const std::size_t exifEnd = 2 + 4 + o.exif.size();
    for (std::size_t n = 0; n < 1200 && n < full.size(); ++n) {
        CExifReader reader(nullptr);
        testing::internal::CaptureStderr();
        const bool ok = ReadBytes(reader, Truncated(full, n));
        testing::internal::GetCapturedStderr();
        EXPECT_FALSE(ok && n < exifEnd) << n;
        // EXIF counts as soon as its section is complete, whatever follows.
        EXPECT_EQ(bool(reader.record->IsExif), n >= exifEnd) << n;
    }
}

} // namespace
} // namespace tivox::test
