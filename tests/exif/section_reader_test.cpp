// The marker loop: which sections are kept, dropped, parsed, and how every
// kind of broken head ends.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "read_bytes.h"

namespace tivox::test {
namespace {

Segment App(std::uint8_t marker, const std::string& text) {
    return Segment{marker, Bytes(text.begin(), text.end()), {}, 0};
}

std::vector<Segment> WithFrameAndScan(std::vector<Segment> segments) {
    for (const Segment& s : FrameAndScan(320, 240))
        segments.push_back(s);
    return segments;
}

TEST(SectionReader, NotAJpegGivesFalseAndNoText) {
    const Bytes cases[] = {{}, {0xFF}, {0xFF, 0xD9}, {0x00, 0xD8}, {'G', 'I', 'F', '8'}};
    for (const Bytes& bytes : cases) {
        CExifReader reader(nullptr);
        EXPECT_FALSE(ReadBytes(reader, bytes));
        EXPECT_STREQ(reader.lastError, "");
        EXPECT_FALSE(reader.record->IsExif);
        EXPECT_EQ(reader.sectionCount, 0);
    }
}

TEST(SectionReader, OwnsItsRecordOnlyWhenGivenNone) {
    CExifReader owning(nullptr);
    EXPECT_EQ(owning.ownsRecord, 1);
    ASSERT_NE(owning.record, nullptr);
    EXPECT_EQ(owning.record->Width, 0);

    ExifRecord mine{};
    {
        CExifReader borrowing(&mine);
        EXPECT_EQ(borrowing.ownsRecord, 0);
        EXPECT_EQ(borrowing.record, &mine);
        EXPECT_TRUE(ReadBytes(borrowing, MakeJpeg({})));
    }
    EXPECT_EQ(mine.Width, 64); // filled, and still ours after the reader went
}

TEST(SectionReader, SixFillBytesPassSevenFail) {
    auto head = [](int padding) {
        std::vector<Segment> s = WithFrameAndScan({});
        s[0].padding = padding;
        return JpegHead(s);
    };
    CExifReader six(nullptr);
    EXPECT_TRUE(ReadBytes(six, head(5))); // 5 extra + the marker's own 0xFF
    EXPECT_EQ(six.record->Width, 320);

    CExifReader seven(nullptr);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(ReadBytes(seven, head(6)));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "too many padding unsigned chars\n");
    EXPECT_STREQ(seven.lastError, "");
}

TEST(SectionReader, PlainByteIsTakenAsMarker) {
    Bytes bytes = JpegHead(WithFrameAndScan({}));
    // Remove the 0xFF in front of the frame header's code.
    bytes.erase(bytes.begin() + 2);
    CExifReader reader(nullptr);
    EXPECT_TRUE(ReadBytes(reader, bytes));
    EXPECT_EQ(reader.record->Process, 0xC0);
}

TEST(SectionReader, BrokenHeadsEndWithTheirText) {
    struct Case {
        const char* name;
        Bytes bytes;
        const char* error;
    };
    Bytes premature = JpegHead({App(0xE2, "0123456789")});
    premature.resize(premature.size() - 3);
    const Case cases[] = {
        {"start of image alone", {0xFF, 0xD8}, "invalid marker"},
        {"end of file in the length", {0xFF, 0xD8, 0xFF, 0xE2, 0x00}, "invalid marker"},
        {"length 1", JpegHead({Segment{0xE2, {}, 1, 0}}), "invalid marker"},
        {"length 0", JpegHead({Segment{0xE2, {}, 0, 0}}), "invalid marker"},
        {"file ends in a section", premature, "Premature end of file?"},
    };
    for (const Case& c : cases) {
        CExifReader reader(nullptr);
        EXPECT_FALSE(ReadBytes(reader, c.bytes)) << c.name;
        EXPECT_STREQ(reader.lastError, c.error) << c.name;
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

TEST(SectionReader, EndOfImageBeforeScan) {
    CExifReader reader(nullptr);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(ReadBytes(reader, JpegHead({App(0xD9, "")})));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "No image in jpeg!\n");
    EXPECT_STREQ(reader.lastError, "");
}

TEST(SectionReader, EmptySectionIsLegalAndKept) {
    CExifReader reader(nullptr);
    EXPECT_TRUE(ReadBytes(reader, JpegHead(WithFrameAndScan({App(0xE2, "")}))));
    ASSERT_EQ(reader.sectionCount, 3);
    EXPECT_EQ(reader.sections[0].Type, 0xE2);
    EXPECT_EQ(reader.sections[0].Size, 2);
    EXPECT_EQ(reader.sections[2].Type, 0xDA);
}

TEST(SectionReader, TwentySectionLimit) {
    for (int fillers : {18, 19, 20}) {
        std::vector<Segment> segments(std::size_t(fillers), App(0xE2, "x"));
        segments.push_back(App(0xDA, "scan"));
        CExifReader reader(nullptr);
        const bool ok = ReadBytes(reader, JpegHead(segments));
        EXPECT_EQ(ok, fillers < 20) << fillers;
        if (fillers == 20) {
            EXPECT_STREQ(reader.lastError, "Too many sections in jpg file");
            EXPECT_EQ(reader.sectionCount, 20);
        }
    }
}

TEST(SectionReader, DroppedSectionsCostNoSlot) {
    std::vector<Segment> segments(25, App(0xE0, "JFIF"));
    segments.push_back(App(0xE1, "http://ns.example.com/xmp"));
    segments.push_back(App(0xE1, "Exi")); // too short to carry the mark
    segments.push_back(App(0xFE, "first"));
    segments.push_back(App(0xFE, "second"));
    CExifReader reader(nullptr);
    EXPECT_TRUE(ReadBytes(reader, JpegHead(WithFrameAndScan(segments))));
    ASSERT_EQ(reader.sectionCount, 3); // the first comment, frame, scan
    EXPECT_EQ(reader.sections[0].Type, 0xFE);
    EXPECT_STREQ(reader.record->Comments, "first");
    EXPECT_FALSE(reader.record->IsExif);
    EXPECT_STREQ(reader.record->CameraMake, "");
}

TEST(SectionReader, CommentBytesAreCleaned) {
    struct Case {
        std::string in;
        std::string out;
    };
    const Case cases[] = {
        {"a\r\nb", "a\nb"},
        {"a\rb", "a?b"},
        {"bell\x07", "bell?"},
        {"tab\there", "tab\there"},
        {"M\xE4rz", "M\xE4rz"},
        {std::string("nul\0byte", 8), "nul?byte"},
        {"", ""},
    };
    for (const Case& c : cases) {
        CExifReader reader(nullptr);
        EXPECT_TRUE(ReadBytes(reader, JpegHead(WithFrameAndScan({App(0xFE, c.in)}))));
        EXPECT_EQ(std::string(reader.record->Comments), c.out) << c.in;
    }
}

TEST(SectionReader, LongCommentIsCutTo998Characters) {
    CExifReader reader(nullptr);
    const std::string text(1500, 'c');
    EXPECT_TRUE(ReadBytes(reader, JpegHead(WithFrameAndScan({App(0xFE, text)}))));
    EXPECT_EQ(std::strlen(reader.record->Comments), 998u);
}

TEST(SectionReader, LastFrameHeaderWins) {
    std::vector<Segment> segments = FrameAndScan(100, 50, 1, 0xC2);
    segments.pop_back();
    for (const Segment& s : FrameAndScan(2048, 1536, 3, 0xC0))
        segments.push_back(s);
    CExifReader reader(nullptr);
    EXPECT_TRUE(ReadBytes(reader, JpegHead(segments)));
    EXPECT_EQ(reader.record->Width, 2048);
    EXPECT_EQ(reader.record->Height, 1536);
    EXPECT_EQ(reader.record->IsColor, 1);
    EXPECT_EQ(reader.record->Process, 192);
}

TEST(SectionReader, ShortFrameHeaderIsNoFrameHeader) {
    CExifReader reader(nullptr);
    EXPECT_TRUE(ReadBytes(reader, JpegHead({App(0xC0, "\x08\x01\x00\x02"), App(0xDA, "")})));
    EXPECT_EQ(reader.record->Width, 0);
    EXPECT_EQ(reader.record->Process, 0);
}

TEST(SectionReader, EncodedPhotosGiveTheirFrame) {
    struct Case {
        bool progressive;
        bool grayscale;
        int process;
        int color;
    };
    for (const Case c :
         {Case{false, false, 192, 1}, Case{true, false, 194, 1}, Case{false, true, 192, 0}}) {
        TestJpegOptions o;
        o.width = 97;
        o.height = 33;
        o.progressive = c.progressive;
        o.grayscale = c.grayscale;
        CExifReader reader(nullptr);
        EXPECT_TRUE(ReadBytes(reader, MakeJpeg(o)));
        EXPECT_EQ(reader.record->Width, 97);
        EXPECT_EQ(reader.record->Height, 33);
        EXPECT_EQ(reader.record->Process, c.process);
        EXPECT_EQ(reader.record->IsColor, c.color);
    }
}

TEST(SectionReader, CommentAndExifSectionOrder) {
    const Bytes exif = ExifPayload(TiffIfd().Sub(0x8769, TiffIfd().Ascii(0x9286, "from exif")));
    // A comment behind the EXIF section replaces its user comment ...
    CExifReader after(nullptr);
    EXPECT_TRUE(ReadBytes(after, JpegHead(WithFrameAndScan(
                                     {Segment{0xE1, exif, {}, 0}, App(0xFE, "from comment")}))));
    EXPECT_STREQ(after.record->Comments, "from comment");
    // ... and one in front of it is wiped by it.
    CExifReader before(nullptr);
    EXPECT_TRUE(ReadBytes(before, JpegHead(WithFrameAndScan(
                                      {App(0xFE, "from comment"), Segment{0xE1, exif, {}, 0}}))));
    EXPECT_STREQ(before.record->Comments, "from exif");
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
