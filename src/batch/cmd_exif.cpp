// tivox-batch exif FILE...        the EXIF record of each file
// tivox-batch name RULE FILE...   the name each photo would get under a rule

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "batch/batch_command.h"
#include "exif/exif_reader.h"
#include "exif/exif_record_text.h"
#include "exif/exif_tags.h"

namespace tivox::batch {

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Opens a file for the head read; reports on standard error when it can't.
File OpenPhoto(const std::string& path) {
    File file(std::fopen(path.c_str(), "rb"));
    if (!file)
        std::fprintf(stderr, "tivox-batch: cannot open %s: %s\n", path.c_str(),
                     std::strerror(errno));
    return file;
}

std::string BaseName(const std::string& path) {
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace

int RunExif(const Args& args) {
    if (args.empty())
        return UsageError("exif");
    int status = kExitOk;
    for (const std::string& path : args) {
        File file = OpenPhoto(path);
        if (!file) {
            status = kExitFailure;
            continue;
        }
        CExifReader reader(nullptr);
        reader.ReadSections(file.get());
        std::printf("File=%s\n%s\n", path.c_str(), ReaderText(reader).c_str());
    }
    return status;
}

int RunName(const Args& args) {
    if (args.size() < 2)
        return UsageError("name");
    const std::string& rule = args[0];
    int status = kExitOk;
    for (std::size_t i = 1; i < args.size(); ++i) {
        File file = OpenPhoto(args[i]);
        if (!file) {
            status = kExitFailure;
            continue;
        }
        CExifReader reader(nullptr);
        reader.ReadSections(file.get());
        file.reset();
        // A photo without good EXIF data keeps its own name.
        std::string name = BaseName(args[i]);
        if (reader.record->IsExif) {
            CExifTags(reader).ExpandRule(rule, name);
            name += ".jpg";
        }
        std::printf("%s\n", name.c_str());
    }
    return status;
}

} // namespace tivox::batch
