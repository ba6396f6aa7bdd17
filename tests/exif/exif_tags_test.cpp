// Token texts, the two-digit number form, the file-name filter and the
// expansion of renaming rules.

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "exif/exif_tags.h"
#include "read_bytes.h"

namespace tivox::test {
namespace {

TEST(ExifTags, TwoDigitNumbers) {
    struct Case {
        float value;
        const char* formatted;
        const char* filtered;
    };
    const Case cases[] = {
        {0.0f, "0", "0"},
        {1.0f, "1", "1"},
        {7.8f, "7.8", "7_8"},
        {2.8f, "2.8", "2_8"},
        {0.016666668f, "0.017", "0_017"},
        {-0.33f, "-0.33", "-0_33"},
        {72.0f, "72", "72"},
        {100.0f, "1E+002", "1E+002"},
        {180.0f, "1.8E+002", "1_8E+002"},
        {300.0f, "3E+002", "3E+002"},
        {0.3937008f, "0.39", "0_39"},
        {0.00003937008f, "3.9E-005", "3_9E-005"},
        {8114.2856f, "8.1E+003", "8_1E+003"},
        {99.6f, "1E+002", "1E+002"}, // rounding moves the exponent
        {0.0001f, "0.0001", "0_0001"},
        {-1.5f, "-1.5", "-1_5"},
        {3.4e38f, "3.4E+038", "3_4E+038"},
    };
    for (const Case& c : cases) {
        std::string text = FormatTwoDigits(c.value);
        EXPECT_EQ(text, c.formatted) << c.value;
        FilterFileName(text);
        EXPECT_EQ(text, c.filtered) << c.value;
    }
}

TEST(ExifTags, FilterKeepsExactlyItsCharacterSet) {
    const std::string keep =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789$%'-_@~`!(){}^#&+,;=[]";
    ASSERT_EQ(keep.size(), 26u + 26u + 10u + 22u);
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += char(c);
    std::string filtered = all;
    FilterFileName(filtered);
    ASSERT_EQ(filtered.size(), 256u);
    for (int c = 0; c < 256; ++c) {
        const bool kept = keep.find(char(c)) != std::string::npos && c != 0;
        EXPECT_EQ(filtered[std::size_t(c)], kept ? char(c) : '_') << c;
    }
    std::string empty;
    FilterFileName(empty);
    EXPECT_EQ(empty, "");
    std::string run = "a  b..c";
    FilterFileName(run);
    EXPECT_EQ(run, "a__b__c"); // runs are not merged
}

TEST(ExifTags, TokenOrders) {
    const auto& table = RuleTokens();
    const auto& dialog = RuleTokensDialogOrder();
    EXPECT_STREQ(table.front(), "%Version%");
    EXPECT_STREQ(table[17], "%Whitebalance%");
    EXPECT_STREQ(table.back(), "%Brightness%");
    const char* head[] = {"%Date%",    "%Time%",       "%Width%",       "%Height%",
                          "%Version%", "%CameraMake%", "%CameraModel%", "%Orientation%"};
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_STREQ(dialog[i], head[i]);
    for (std::size_t i = 8; i < dialog.size(); ++i)
        EXPECT_STREQ(dialog[i], table[i]);
    std::set<std::string> a(table.begin(), table.end());
    std::set<std::string> b(dialog.begin(), dialog.end());
    EXPECT_EQ(a.size(), 29u);
    EXPECT_EQ(a, b);
}

// The texts of a photo of the given camera values and frame size.
CExifTags TagsOf(const CameraExif& camera = {}, int width = 2048, int height = 1536) {
    TestJpegOptions o;
    o.width = width;
    o.height = height;
    o.pattern = Pattern::Solid;
    o.quality = 50;
    o.exif = CameraExifPayload(camera);
    CExifReader reader(nullptr);
    EXPECT_TRUE(ReadBytes(reader, MakeJpeg(o)));
    return CExifTags(reader);
}

std::string Expand(const std::string& rule, const CExifTags& tags) {
    std::string out = "garbage";
    EXPECT_TRUE(tags.ExpandRule(rule, out));
    return out;
}

TEST(ExpandRule, ExamplesOfTheRule) {
    const CExifTags tags = TagsOf();
    struct Case {
        const char* rule;
        const char* name;
    };
    const Case cases[] = {
        {"%Date%_%Time%", "20040423_150053"},
        {"%Date%-%Width%x%Height%", "20040423-2048x1536"},
        {"%CameraMake%_%CameraModel%_%Time%", "Acme_Imaging_Z_100_150053"},
        {"Trip %Date%", "Trip 20040423"},
        {"%Date%%Date%", "2004042320040423"},
        {"%date%_%Date", "%date%_%Date"},
        {"no tokens", "no tokens"},
        {"", ""},
        {"%Version%/%FlashUsed%/%Process%/%IsColor%", "0210/0/192/1"},
        {"%ExposureTime%_%ApertureFNumber%_%FocalLength%", "0_017_2_8_7_8"},
        {"%ExposureBias%_%ISOequivalent%_%MeteringMode%_%ExposureProgram%", "-0_33_100_5_2"},
        {"%Xresolution%_%ResolutionUnit%_%Orientation%_%CompressionLevel%", "72_1_1_4"},
        {"%Distance%_%CCDWidth%_%Whitebalance%_%Brightness%", "0_0_0_0"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Expand(c.rule, tags), c.name) << c.rule;
}

TEST(ExpandRule, CameraTexts) {
    struct Case {
        const char* make;
        const char* rule;
        const char* name;
    };
    const Case cases[] = {
        {"Acme  ", "%CameraMake%", "Acme__"},
        {"M\xE4rz", "%CameraMake%", "M_rz"},
        {"a/b:c*d", "%CameraMake%", "a_b_c_d"},
        // A token inside a camera text is expanded when it comes later ...
        {"%Date%", "%CameraMake%", "20040423"},
        // ... and stays when it came earlier.
        {"%Version%", "%CameraMake%", "%Version%"},
    };
    for (const Case& c : cases) {
        CameraExif camera;
        camera.make = c.make;
        EXPECT_EQ(Expand(c.rule, TagsOf(camera, 16, 16)), c.name) << c.make;
    }
}

TEST(ExpandRule, MissingDateGivesEmptyTexts) {
    CameraExif camera;
    camera.dateTimeOriginal.clear();
    EXPECT_EQ(Expand("%Date%_%Time%", TagsOf(camera, 16, 16)), "_");
}

TEST(ExpandRule, ShortDateStopsAtItsEnd) {
    CameraExif camera;
    camera.dateTimeOriginal = "2004:04:2";
    EXPECT_EQ(Expand("%Date%|%Time%", TagsOf(camera, 16, 16)), "2004042|");
}

TEST(ExpandRule, WidthIsTheFramesNotTheExifDimension) {
    CameraExif camera;
    camera.pixelWidth = 4000;
    camera.pixelHeight = 3000;
    EXPECT_EQ(Expand("%Width%x%Height%", TagsOf(camera, 640, 480)), "640x480");
}

} // namespace
} // namespace tivox::test
