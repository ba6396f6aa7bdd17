// The camera corpus: every file ends cleanly, and the camera files give the
// records kept in data/corpus_exif.txt (checked against exiftool by
// data/check-fixture).

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "exif/exif_reader.h"
#include "exif/exif_record_text.h"

namespace tivox::test {
namespace {

namespace fs = std::filesystem;

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

// The reader's dump of a file and how far into it the reader went.
std::string ReadPhoto(const fs::path& path, long* consumed = nullptr) {
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return "cannot open";
    CExifReader reader(nullptr);
    reader.ReadSections(file.get());
    if (consumed)
        *consumed = std::ftell(file.get());
    return ReaderText(reader);
}

// File name -> the lines that follow its File= line, up to the empty line.
std::map<std::string, std::string> LoadFixture() {
    std::ifstream in(std::string(TIVOX_SOURCE_DIR) + "/tests/exif/data/corpus_exif.txt",
                     std::ios::binary);
    std::map<std::string, std::string> records;
    std::string line, file, body;
    while (std::getline(in, line)) {
        if (line.rfind("File=", 0) == 0) {
            file = line.substr(5);
            body.clear();
        } else if (line.empty()) {
            if (!file.empty())
                records[file] = body;
            file.clear();
        } else {
            body += line + "\n";
        }
    }
    return records;
}

class Corpus : public testing::Test {
protected:
    void SetUp() override {
        if (!fs::is_directory(root))
            GTEST_SKIP() << "no corpus at " << root;
    }
    const fs::path root = TIVOX_CORPUS_DIR;
};

TEST_F(Corpus, EveryFileEndsInsideItsHead) {
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file())
            continue;
        long consumed = 0;
        testing::internal::CaptureStderr();
        ReadPhoto(entry.path(), &consumed);
        testing::internal::GetCapturedStderr();
        EXPECT_LE(consumed, long(entry.file_size())) << entry.path();
        ++files;
    }
    EXPECT_GT(files, 50);
}

TEST_F(Corpus, CameraFilesMatchTheFixture) {
    const auto fixture = LoadFixture();
    ASSERT_GT(fixture.size(), 60u);
    int exif = 0;
    for (const auto& [file, expected] : fixture) {
        const std::string actual = ReadPhoto(root / file);
        EXPECT_EQ(actual, expected) << file;
        exif += actual.find("IsExif=1\n") != std::string::npos;
    }
    EXPECT_GT(exif, 55);
}

} // namespace
} // namespace tivox::test
