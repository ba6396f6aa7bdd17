// Every text of the acquisition layer that reaches the user has its German
// translation in resources/translations/acquire.ts.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace tivox::test {
namespace {

std::string ReadText(const std::filesystem::path& path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

// The texts inside TIVOX_TR(...): adjacent literals joined, escapes resolved.
std::set<std::string> MarkedTexts(const std::string& code) {
    std::set<std::string> texts;
    const std::string mark = "TIVOX_TR(", blank = " \t\n";
    for (auto at = code.find(mark); at != std::string::npos; at = code.find(mark, at + 1)) {
        std::string text;
        for (auto i = code.find_first_not_of(blank, at + mark.size());
             i < code.size() && code[i] == '"'; i = code.find_first_not_of(blank, i + 1)) {
            for (++i; code[i] != '"'; ++i) {
                if (code[i] == '\\' && code[++i] == 'n')
                    text += '\n';
                else
                    text += code[i];
            }
        }
        if (!text.empty())
            texts.insert(text);
    }
    return texts;
}

std::string XmlText(std::string s) {
    const std::pair<const char*, const char*> entities[] = {
        {"&quot;", "\""}, {"&apos;", "'"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}};
    for (const auto& [entity, plain] : entities)
        for (auto p = s.find(entity); p != std::string::npos; p = s.find(entity, p + 1))
            s.replace(p, std::string(entity).size(), plain);
    return s;
}

TEST(Translation, EveryAcquisitionTextIsTranslated) {
    const std::filesystem::path root = TIVOX_SOURCE_DIR;
    std::set<std::string> marked;
    for (const auto& e : std::filesystem::directory_iterator(root / "src/acquire"))
        if (e.path().extension() == ".cpp")
            for (const std::string& t : MarkedTexts(ReadText(e.path())))
                marked.insert(t);
    ASSERT_GE(marked.size(), 20u);

    const std::string ts = ReadText(root / "resources/translations/acquire.ts");
    std::set<std::string> translated;
    for (auto p = ts.find("<source>"); p != std::string::npos; p = ts.find("<source>", p + 1)) {
        const auto end = ts.find("</source>", p);
        const auto t = ts.find("<translation>", end);
        ASSERT_NE(t, std::string::npos);
        if (ts.compare(t + 13, 14, "</translation>") != 0) // empty: not translated
            translated.insert(XmlText(ts.substr(p + 8, end - p - 8)));
    }
    for (const std::string& text : marked)
        EXPECT_TRUE(translated.count(text)) << "no German text for: " << text;
}

} // namespace
} // namespace tivox::test
