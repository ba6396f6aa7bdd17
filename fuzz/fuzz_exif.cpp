// Fuzz target: the JPEG section reader over arbitrary bytes, the EXIF parser
// over the same bytes taken as an APP1 payload, and the tag texts of both
// records. Crashes, sanitizer reports and reads outside a section's block are
// the findings.

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "exif/exif_reader.h"
#include "exif/exif_record_text.h"
#include "exif/exif_tags.h"

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

// Every token of the rule, so that each text is built and replaced.
std::string AllTokens() {
    std::string rule;
    for (const char* token : tivox::RuleTokens())
        rule += token;
    return rule;
}

// block: the payload parsed directly, if any, besides the retained sections.
void UseRecord(const tivox::CExifReader& reader, const std::uint8_t* block = nullptr,
               std::size_t blockSize = 0) {
    const tivox::ExifRecord& r = *reader.record;
    // The thumbnail must lie inside one retained section's block.
    if (r.ThumbnailData != nullptr) {
        bool inside = block && r.ThumbnailData >= block &&
                      r.ThumbnailData + r.ThumbnailSize <= block + blockSize;
        for (const auto& s : reader.sections) {
            const std::uint8_t* begin = s.Data.get();
            if (begin && r.ThumbnailData >= begin &&
                r.ThumbnailData + r.ThumbnailSize <= begin + s.Size)
                inside = true;
        }
        if (!inside)
            __builtin_trap();
        volatile std::uint8_t sum = 0;
        for (std::int32_t i = 0; i < r.ThumbnailSize; ++i)
            sum = std::uint8_t(sum + r.ThumbnailData[i]);
    }
    std::string name;
    tivox::CExifTags(reader).ExpandRule(AllTokens(), name);
    const std::string text = tivox::ReaderText(reader);
    if (text.empty())
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 0) {
        std::vector<std::uint8_t> copy(data, data + size);
        std::unique_ptr<std::FILE, FileCloser> file(fmemopen(copy.data(), size, "rb"));
        if (file) {
            tivox::CExifReader reader(nullptr);
            reader.ReadSections(file.get());
            UseRecord(reader);
        }
    }

    // The same bytes as the payload of an EXIF section, in a block of exactly
    // its size so that any read beyond it is caught.
    if (size <= 65533 - 6) {
        const std::size_t length = size + 6;
        auto payload = std::make_unique<std::uint8_t[]>(length);
        std::memcpy(payload.get(), "Exif\0\0", 6);
        if (size > 0)
            std::memcpy(payload.get() + 6, data, size);
        tivox::CExifReader reader(nullptr);
        reader.record->IsExif = reader.ParseExifSection(payload.get(), int(length) + 2);
        UseRecord(reader, payload.get(), length);
    }
    return 0;
}
