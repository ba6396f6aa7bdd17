#include "gallery_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "photo_writer/test_jpeg.h"

namespace tivox::test {

namespace fs = std::filesystem;

void MakePictureFolders(const std::string& gallery, const std::vector<std::string>& names) {
    fs::create_directories(gallery + "/pics/thumbs");
    const Bytes small = SmallJpeg(16, 12);
    for (const auto& name : names) {
        WriteFile(gallery + "/pics/" + name, small);
        WriteFile(gallery + "/pics/thumbs/" + name, small);
    }
}

std::vector<std::string> NumberedNames(int count) {
    std::vector<std::string> names;
    for (int i = 1; i <= count; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "IMG_%04d.jpg", i);
        names.emplace_back(name);
    }
    return names;
}

std::string ReadText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

bool Exists(const std::string& path) {
    std::error_code ec;
    return fs::exists(path, ec);
}

std::vector<std::string> HtmlPages(const std::string& folder) {
    std::vector<std::string> pages;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(folder, ec))
        if (entry.path().extension() == ".html")
            pages.push_back(entry.path().filename().string());
    std::sort(pages.begin(), pages.end());
    return pages;
}

int CountOf(const std::string& text, const std::string& needle) {
    int count = 0;
    for (auto at = text.find(needle); at != std::string::npos; at = text.find(needle, at + 1))
        ++count;
    return count;
}

void ExpectPagesValid(const std::string& gallery) {
    if (Capture("command -v python3").exitCode != 0)
        GTEST_SKIP() << "python3 is not installed; the pages were not parsed";
    const CommandRun run = Capture(
        "python3 " + ShellQuote(std::string(TIVOX_SOURCE_DIR) + "/tests/gallery/check_pages.py") +
        " " + ShellQuote(gallery) + " 2>&1");
    EXPECT_EQ(run.exitCode, 0) << run.output;
}

} // namespace tivox::test
