// Token texts, the two-digit number form, the file-name filter and the
// expansion of renaming rules.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "exif/exif_tags.h"
#include "read_bytes.h"

namespace tivox::test {
namespace {

TEST(ExifTags, TwoDigitNumbers) {
    // Two significant digits, from 100 up (and below 0.0001) in the exponent
    // form with three digits; rounding 99.6 moves the exponent. Plainer
    // numbers are in the rule examples below.
    const std::pair<float, const char*> cases[] = {
        {100.0f, "1E+002"},  {180.0f, "1.8E+002"},         {99.6f, "1E+002"},
        {0.0001f, "0.0001"}, {0.00003937008f, "3.9E-005"}, {3.4e38f, "3.4E+038"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(FormatTwoDigits(value), text) << value;
}

TEST(ExifTags, TheDialogListsEveryTokenOnce) {
    const auto& dialog = RuleTokensDialogOrder();
    const std::set<std::string> listed(dialog.begin(), dialog.end());
    EXPECT_EQ(listed, std::set<std::string>(RuleTokens().begin(), RuleTokens().end()));
    EXPECT_EQ(listed.size(), dialog.size());
}

// The texts of a photo of the given camera values and frame size.
CExifTags TagsOf(const CameraExif& camera = {}, int width = 2048, int height = 1536) {
    TestJpegOptions o = Picture(width, height, Pattern::Solid);
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
    const std::pair<const char*, const char*> cases[] = {
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
    for (const auto& [rule, name] : cases)
        EXPECT_EQ(Expand(rule, tags), name) << rule;
}

TEST(ExpandRule, CameraTextsAreFiltered) {
    // Letters, digits and these marks stay. A token inside a camera text is
    // expanded when it comes later in the table, and stays when it came earlier.
    const std::pair<const char*, const char*> cases[] = {
        {"Acme  ", "Acme__"},
        {"M\xE4rz\x01\x7F", "M_rz__"},
        {"a/b:c*d.e\\f\"g<h>i?j|k", "a_b_c_d_e_f_g_h_i_j_k"},
        {"$%'-_@~`!(){}^#&+,;=[]", "$%'-_@~`!(){}^#&+,;=[]"},
        {"%Date%", "20040423"},
        {"%Version%", "%Version%"}};
    for (const auto& [make, name] : cases) {
        CameraExif camera;
        camera.make = make;
        EXPECT_EQ(Expand("%CameraMake%", TagsOf(camera, 16, 16)), name) << make;
    }
}

TEST(ExpandRule, DateAndSizeOfThePhoto) {
    CameraExif camera;
    camera.pixelWidth = 4000; // the frame's size counts, not these
    camera.pixelHeight = 3000;
    EXPECT_EQ(Expand("%Width%x%Height%", TagsOf(camera, 640, 480)), "640x480");
    for (auto [date, name] : {std::pair{"", "|"}, {"2004:04:2", "2004042|"}}) {
        camera.dateTimeOriginal = date; // missing or cut short
        EXPECT_EQ(Expand("%Date%|%Time%", TagsOf(camera, 16, 16)), name) << date;
    }
}

} // namespace
} // namespace tivox::test
