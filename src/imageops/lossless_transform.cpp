#include "imageops/lossless_transform.h"

#include <optional>
#include <vector>

#include "exif/exif_orientation.h"
#include "exif/exif_update.h"
#include "photos/edit_host.h"
#include "photos/photo.h"
#include "photos/scaled_loader.h"
#include "platform/atomic_file.h"
#include "platform/jpeg_codec.h"
#include "platform/orientation.h"
#include "platform/ui_text.h"
#include "platform/user_seams.h"

namespace tivox {

bool TransformFile(int code, const std::string& source, const std::string& target, IPrompt* prompt,
                   UiText* cause) {
    JpegTransform op{};
    switch (code) {
    case kLosslessRotateLeft:
        op = JpegTransform::Rotate270; // turns run clockwise
        break;
    case kLosslessRotateRight:
        op = JpegTransform::Rotate90;
        break;
    case kLosslessRotate180:
        op = JpegTransform::Rotate180;
        break;
    case kLosslessMirrorHorizontal:
        op = JpegTransform::FlipHorizontal;
        break;
    case kLosslessMirrorVertical:
        op = JpegTransform::FlipVertical;
        break;
    default:
        if (prompt)
            prompt->Ask({TIVOX_TR("JPEG lossless transformation: unsupported"), {}},
                        PromptIcon::Stop, PromptButtons::Ok, PromptAnswer::Ok);
        return false;
    }
    std::vector<std::uint8_t> in, out;
    std::string error;
    bool perfect = false;
    if (!ReadWholeFile(source, in, error)) {
        if (cause)
            *cause = ReadErrorText(source, error);
        return false;
    }
    // The user turns the picture as shown, upright by its Orientation: the
    // stored pixels go from where they are to the new position in one
    // lossless step. A turn that undoes the tag moves no pixel at all.
    const std::optional<JpegTransform> move = UprightTransform(
        ComposeOrientations(JpegOrientation(in.data(), in.size()), OrientationOf(op)));
    if (move && !TransformJpeg(in.data(), in.size(), *move, out, perfect, error)) {
        if (cause)
            *cause = ReadErrorText(source, error);
        return false;
    }
    if (!move)
        out.swap(in);
    // The pixels now stand as the user turned them, as they are shown here:
    // Orientation 1, so that every other viewer shows them the same way.
    UpdateExifToPicture(out, {nullptr, move, 1}, error);
    UiText failure;
    if (WriteFileDurably(target, out.data(), out.size(), failure))
        return true;
    if (cause)
        *cause = failure;
    return false;
}

bool LosslessTransformPath(int code, const std::string& path, UiText& error, IPrompt* prompt) {
    // The turned picture goes straight over the photo, in one durable write.
    UiText cause;
    if (TransformFile(code, path, path, prompt, &cause))
        return true;
    error =
        cause.format.empty() ? UiText{TIVOX_TR("Error in lossless JPEG transform."), {}} : cause;
    return false;
}

bool LosslessTransformPath(int code, const std::string& path, std::string& errorText,
                           IPrompt* prompt) {
    UiText error;
    if (LosslessTransformPath(code, path, error, prompt))
        return true;
    errorText = RenderUiText(error);
    return false;
}

bool LosslessTransformPhoto(int code, CPhoto& photo, IEditHost& host, UiText& error,
                            IPrompt* prompt) {
    const bool done = LosslessTransformPath(code, photo.path, error, prompt);
    // The turn swaps width and height: both pictures come anew from the file.
    photo.RebuildImages(host.GetThumbSize(), host.GetScreenSize(), true);
    host.Invalidate();
    return done;
}

bool LosslessTransformPhoto(int code, CPhoto& photo, IEditHost& host, std::string& errorText,
                            IPrompt* prompt) {
    UiText error;
    if (LosslessTransformPhoto(code, photo, host, error, prompt))
        return true;
    errorText = RenderUiText(error);
    return false;
}

} // namespace tivox
