// tivox-batch thumbs DIR --box WxH --out DIR [--ext jpg|ppm|pam] [--quality Q]
//     the thumbnail worker's pictures for a folder, one file each
// tivox-batch show FILE --screen WxH --out FILE [--quality Q]
//     the working image of one photo (fitted into the screen)
// tivox-batch transform left|right|180|hflip|vflip FILE...
//     lossless turns and mirrors, replacing each file atomically
// Output names ending in .ppm or .pam get the exact pixels instead of JPEG;
// PPM and PAM files are read wherever a photo is read.

#include <cstdio>
#include <string>

#include "batch/batch_command.h"
#include "imageops/lossless_transform.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/jpeg_codec.h"
#include "platform/pnm_io.h"

namespace tivox::batch {

namespace {

constexpr int kDefaultQuality = 90;

bool SavePicture(const Bitmap& image, const std::string& path, int quality) {
    std::string error;
    const bool ok = IsPnmName(path) ? WritePnmFile(image, path, error)
                                    : EncodeJpegFile(image, quality, path, error);
    if (!ok)
        std::fprintf(stderr, "tivox-batch: %s\n", error.c_str());
    return ok;
}

// The photo's path below the folder, with sub-folders joined by '_' and the
// extension replaced.
std::string OutputName(const std::string& photoPath, const std::string& folder,
                       const std::string& ext) {
    std::string rel = photoPath.substr(folder.size());
    while (!rel.empty() && rel.front() == '/')
        rel.erase(0, 1);
    for (char& c : rel)
        if (c == '/')
            c = '_';
    const auto dot = rel.rfind('.');
    return rel.substr(0, dot) + "." + ext;
}

bool TakeQuality(Args& args, int& quality) {
    std::string text;
    if (!TakeOption(args, "--quality", text))
        return true;
    return ParseInt(text, quality) && quality >= 1 && quality <= 100;
}

} // namespace

int RunThumbs(const Args& argsIn) {
    Args args = argsIn;
    std::string boxText, out, ext = "jpg";
    int w = 0, h = 0, quality = kDefaultQuality;
    TakeOption(args, "--ext", ext);
    if (!TakeOption(args, "--box", boxText) || !ParseSize(boxText, w, h) ||
        !TakeOption(args, "--out", out) || !TakeQuality(args, quality) || args.size() != 1 ||
        (ext != "jpg" && ext != "ppm" && ext != "pam"))
        return UsageError("thumbs");
    const std::string folder = args[0];
    CPhotoList list;
    list.SetThumbnailSize({w, h});
    list.Open(folder);
    // The worker runs on its own; the front end only waits for its end.
    while (!list.WaitWorker(1000)) {
    }
    int status = kExitOk;
    for (int i = 0; i < list.Count(); ++i) {
        CPhoto* photo = list.PhotoAt(i);
        const Bitmap* thumb = photo->thumbnail.get();
        if (!thumb || thumb->IsEmpty()) {
            // The worker keeps no causes; reading the file again finds it.
            photo->LoadScaled({w, h});
            std::printf("%s\n", RenderUiText(ReadErrorText(photo->path, photo->readError)).c_str());
            status = kExitFailure;
            continue;
        }
        const std::string target = out + "/" + OutputName(photo->path, folder, ext);
        if (!SavePicture(*thumb, target, quality)) {
            status = kExitFailure;
            continue;
        }
        std::printf("%s %dx%d\n", target.c_str(), thumb->Width(), thumb->Height());
    }
    return status;
}

int RunShow(const Args& argsIn) {
    Args args = argsIn;
    std::string screenText, out;
    int w = 0, h = 0, quality = kDefaultQuality;
    if (!TakeOption(args, "--screen", screenText) || !ParseSize(screenText, w, h) ||
        !TakeOption(args, "--out", out) || !TakeQuality(args, quality) || args.size() != 1)
        return UsageError("show");
    CPhoto photo;
    photo.SetPath(args[0]);
    photo.LoadScreenImage({w, h});
    if (!photo.screenImage || photo.screenImage->IsEmpty()) {
        std::fprintf(stderr, "tivox-batch: %s\n",
                     RenderUiText(ReadErrorText(photo.path, photo.readError)).c_str());
        return kExitFailure;
    }
    if (!SavePicture(*photo.screenImage, out, quality))
        return kExitFailure;
    std::printf("%s %dx%d from %dx%d\n", out.c_str(), photo.screenSize.width,
                photo.screenSize.height, photo.sourceSize.width, photo.sourceSize.height);
    return kExitOk;
}

int RunTransform(const Args& args) {
    static const struct {
        const char* name;
        int code;
    } kOps[] = {{"left", kLosslessRotateLeft},
                {"right", kLosslessRotateRight},
                {"180", kLosslessRotate180},
                {"hflip", kLosslessMirrorHorizontal},
                {"vflip", kLosslessMirrorVertical}};
    if (args.size() < 2)
        return UsageError("transform");
    int code = 0;
    for (const auto& op : kOps)
        if (args[0] == op.name)
            code = op.code;
    if (code == 0)
        return UsageError("transform");
    int status = kExitOk;
    for (std::size_t i = 1; i < args.size(); ++i) {
        std::string error;
        if (!LosslessTransformPath(code, args[i], error)) {
            std::fprintf(stderr, "tivox-batch: %s\n", error.c_str()); // it names the file
            status = kExitFailure;
        }
    }
    return status;
}

} // namespace tivox::batch
