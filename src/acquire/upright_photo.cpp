#include "acquire/upright_photo.h"

#include <cstdio>
#include <memory>
#include <string>

#include "exif/exif_reader.h"
#include "exif/exif_update.h"
#include "platform/orientation.h"

namespace tivox {

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

} // namespace

int HeadOrientation(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    // The reader that renames the photos reads the tag here too; it only
    // reads, so the bytes can stand behind a read-only stream.
    std::unique_ptr<std::FILE, FileCloser> stream(
        fmemopen(const_cast<std::uint8_t*>(data), size, "rb"));
    if (!stream)
        return 0;
    CExifReader reader(nullptr);
    reader.ReadSections(stream.get());
    return reader.record->IsExif ? reader.record->Orientation : 0;
}

bool TurnUpright(const std::vector<std::uint8_t>& jpeg, int orientation,
                 std::vector<std::uint8_t>& out) {
    const std::optional<JpegTransform> op = UprightTransform(ValidOrientation(orientation));
    if (!op)
        return false;
    bool perfect = false;
    std::string error;
    // A trimmed edge would lose a strip of the photo: such a photo keeps its
    // pixels as the camera stored them, and its tag says how to show them.
    if (!TransformJpeg(jpeg.data(), jpeg.size(), *op, out, perfect, error, kDefaultBitmapBudget,
                       false) ||
        !perfect)
        return false;
    // Turned pixels under the old tag would be shown turned twice.
    return UpdateExifToPicture(out, {nullptr, op, 1}, error);
}

} // namespace tivox
