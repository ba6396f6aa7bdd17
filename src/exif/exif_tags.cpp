// Token texts of the renaming rule, its expansion and the file-name filter.

#include "exif/exif_tags.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "exif/exif_reader.h"

namespace tivox {

namespace {

constexpr std::array<const char*, kRuleTokenCount> kTokens = {
    "%Version%",
    "%CameraMake%",
    "%CameraModel%",
    "%Date%",
    "%Time%",
    "%Height%",
    "%Width%",
    "%Orientation%",
    "%IsColor%",
    "%Process%",
    "%FlashUsed%",
    "%FocalLength%",
    "%ExposureTime%",
    "%ApertureFNumber%",
    "%Distance%",
    "%CCDWidth%",
    "%ExposureBias%",
    "%Whitebalance%",
    "%MeteringMode%",
    "%ExposureProgram%",
    "%ISOequivalent%",
    "%CompressionLevel%",
    "%FocalplaneXRes%",
    "%FocalplaneYRes%",
    "%FocalplaneUnits%",
    "%Xresolution%",
    "%Yresolution%",
    "%ResolutionUnit%",
    "%Brightness%",
};

// The combo box puts date, time, size and the camera first, then follows the
// replacement order from %Orientation% on.
constexpr std::array<const char*, kRuleTokenCount> kDialogTokens = [] {
    constexpr int kHead[] = {3, 4, 6, 5, 0, 1, 2, 7};
    std::array<const char*, kRuleTokenCount> tokens{};
    for (int i = 0; i < kRuleTokenCount; ++i)
        tokens[std::size_t(i)] = kTokens[std::size_t(i < 8 ? kHead[i] : i)];
    return tokens;
}();

bool KeepInFileName(unsigned char c) {
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))
        return true;
    return c != 0 && std::strchr("$%'-_@~`!(){}^#&+,;=[]", c) != nullptr;
}

std::string Decimal(std::int32_t value) {
    return std::to_string(value);
}

// Picks characters of the date text by position; a zero byte ends the text,
// and positions past the field read as zero.
std::string Pick(const char (&field)[20], std::initializer_list<int> positions) {
    std::string out;
    for (int p : positions) {
        if (field[p] == '\0')
            break;
        out += field[p];
    }
    return out;
}

// The text of a zero-terminated character field that may lack its zero.
template <std::size_t N> std::string FieldText(const char (&field)[N]) {
    return std::string(field, std::find(field, field + N, '\0'));
}

std::string Filtered(std::string text) {
    FilterFileName(text);
    return text;
}

} // namespace

const std::array<const char*, kRuleTokenCount>& RuleTokens() {
    return kTokens;
}
const std::array<const char*, kRuleTokenCount>& RuleTokensDialogOrder() {
    return kDialogTokens;
}

void FilterFileName(std::string& text) {
    for (char& c : text)
        if (!KeepInFileName(static_cast<unsigned char>(c)))
            c = '_';
}

std::string FormatTwoDigits(float value) {
    // %.2G already chooses fixed or scientific notation by the rounded
    // exponent and drops trailing zeros; only the exponent needs widening to
    // three digits.
    char buffer[64];
    std::snprintf(buffer, sizeof(buffer), "%.2G", double(value));
    std::string text = buffer;
    const auto e = text.find('E');
    if (e == std::string::npos || e + 2 > text.size())
        return text;
    std::string digits = text.substr(e + 2);
    while (digits.size() < 3)
        digits.insert(digits.begin(), '0');
    return text.substr(0, e + 2) + digits;
}

CExifTags::CExifTags(const CExifReader& reader) {
    const ExifRecord& r = *reader.record;
    texts_ = {
        Filtered(FieldText(r.Version)),
        Filtered(FieldText(r.CameraMake)),
        Filtered(FieldText(r.CameraModel)),
        Pick(r.DateTime, {0, 1, 2, 3, 5, 6, 8, 9}),
        Pick(r.DateTime, {11, 12, 14, 15, 17, 18}),
        Decimal(r.Height),
        Decimal(r.Width),
        Decimal(r.Orientation),
        Decimal(r.IsColor),
        Decimal(r.Process),
        Decimal(r.FlashUsed),
        Filtered(FormatTwoDigits(r.FocalLength)),
        Filtered(FormatTwoDigits(r.ExposureTime)),
        Filtered(FormatTwoDigits(r.ApertureFNumber)),
        Filtered(FormatTwoDigits(r.Distance)),
        Filtered(FormatTwoDigits(r.CCDWidth)),
        Filtered(FormatTwoDigits(r.ExposureBias)),
        Decimal(r.Whitebalance),
        Decimal(r.MeteringMode),
        Decimal(r.ExposureProgram),
        Decimal(r.ISOequivalent),
        Decimal(r.CompressionLevel),
        Filtered(FormatTwoDigits(r.FocalplaneXRes)),
        Filtered(FormatTwoDigits(r.FocalplaneYRes)),
        Filtered(FormatTwoDigits(r.FocalplaneUnits)),
        Filtered(FormatTwoDigits(r.Xresolution)),
        Filtered(FormatTwoDigits(r.Yresolution)),
        Filtered(FormatTwoDigits(r.ResolutionUnit)),
        Filtered(FormatTwoDigits(r.Brightness)),
    };
}

bool CExifTags::ExpandRule(const std::string& rule, std::string& output) const {
    output = rule;
    for (std::size_t t = 0; t < kTokens.size(); ++t) {
        const std::string token = kTokens[t];
        const std::string& text = texts_[t];
        std::size_t at = 0;
        while ((at = output.find(token, at)) != std::string::npos) {
            output.replace(at, token.size(), text);
            at += text.size();
        }
    }
    return true;
}

} // namespace tivox
