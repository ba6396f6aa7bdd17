#pragma once
// The text of every renaming-rule token for one photo, the expansion of a
// rule, and the filter that keeps a text usable in a file name.

#include <array>
#include <string>

namespace tivox {

class CExifReader;

inline constexpr int kRuleTokenCount = 29;

// The tokens in the order of replacement (%Version% ... %Brightness%).
const std::array<const char*, kRuleTokenCount>& RuleTokens();
// The same tokens in the order the main window's tag combo box lists them.
const std::array<const char*, kRuleTokenCount>& RuleTokensDialogOrder();

// Replaces in place every byte that is not a letter, a digit or one of
// $ % ' - _ @ ~ ` ! ( ) { } ^ # & + , ; = [ ] by "_". The length is kept.
void FilterFileName(std::string& text);

// A float in two significant digits the way the rule shows it: fixed notation
// for decimal exponents -4 to 1, else scientific with a signed three-digit
// exponent; trailing zeros and a trailing point removed ("1.8E+002").
std::string FormatTwoDigits(float value);

class CExifTags {
public:
    // Fills all token texts from the reader's record.
    explicit CExifTags(const CExifReader& reader);

    // output := rule with every token replaced by its text, token by token in
    // replacement order, left to right. Always true.
    bool ExpandRule(const std::string& rule, std::string& output) const;

    // The text of token index (replacement order).
    const std::string& Text(int index) const { return texts_[std::size_t(index)]; }

private:
    std::array<std::string, kRuleTokenCount> texts_;
};

} // namespace tivox
