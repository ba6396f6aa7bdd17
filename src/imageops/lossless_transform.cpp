#include "imageops/lossless_transform.h"

#include <cerrno>
#include <unistd.h>
#include <vector>

#include "photos/edit_host.h"
#include "photos/photo.h"
#include "platform/atomic_file.h"
#include "platform/jpeg_codec.h"
#include "platform/ui_text.h"
#include "platform/user_seams.h"

namespace tivox {

std::string LosslessTempPath(const std::string& path) {
    const auto slash = path.rfind('/');
    const auto dot = path.rfind('.');
    const bool hasExtension =
        dot != std::string::npos && (slash == std::string::npos || dot > slash);
    return (hasExtension ? path.substr(0, dot) : path) + ".tmp";
}

bool TransformFile(int code, const std::string& source, const std::string& target,
                   IPrompt* prompt) {
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
    return ReadWholeFile(source, in, error) &&
           TransformJpeg(in.data(), in.size(), op, out, perfect, error) &&
           WriteWholeFile(target, out.data(), out.size(), error);
}

int LosslessTransformPath(int code, const std::string& path, UiText& error, IPrompt* prompt) {
    const std::string temp = LosslessTempPath(path);
    if (!TransformFile(code, path, temp, prompt)) {
        ::unlink(temp.c_str()); // a half-written target holds nothing of value
        error = {TIVOX_TR("Error in lossless JPEG transform."), {}};
        return -1;
    }
    // One rename puts the new file over the photo; the photo file is never
    // missing. What the rename refuses because of the photo file itself
    // counts as failing to remove the original.
    int errorNumber = 0;
    std::string detail;
    if (!ReplaceFileDurably(temp, path, errorNumber, detail)) {
        const bool original = errorNumber == EPERM || errorNumber == EBUSY ||
                              errorNumber == EISDIR || errorNumber == ETXTBSY ||
                              errorNumber == EROFS;
        error = {original ? TIVOX_TR("Failed to delete the original file. %s")
                          : TIVOX_TR("Failed to rename the temporary file. %s"),
                 {std::to_string(errorNumber)}};
        return -1;
    }
    return 0;
}

int LosslessTransformPath(int code, const std::string& path, std::string& errorText,
                          IPrompt* prompt) {
    UiText error;
    const int result = LosslessTransformPath(code, path, error, prompt);
    if (result != 0)
        errorText = RenderUiText(error);
    return result;
}

int LosslessTransformPhoto(int code, CPhoto& photo, IEditHost& host, UiText& error,
                           IPrompt* prompt) {
    const int result = LosslessTransformPath(code, photo.path, error, prompt);
    // The turn swaps width and height: both pictures come anew from the file.
    photo.RebuildImages(host.GetThumbSize(), host.GetScreenSize(), true);
    host.Invalidate();
    return result;
}

int LosslessTransformPhoto(int code, CPhoto& photo, IEditHost& host, std::string& errorText,
                           IPrompt* prompt) {
    UiText error;
    const int result = LosslessTransformPhoto(code, photo, host, error, prompt);
    if (result != 0)
        errorText = RenderUiText(error);
    return result;
}

} // namespace tivox
