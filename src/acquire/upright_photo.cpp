#include "acquire/upright_photo.h"

#include <string>

#include "exif/exif_update.h"
#include "platform/orientation.h"

namespace tivox {

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
