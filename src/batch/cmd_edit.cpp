// tivox-batch edit: the edits of the Image Operations window on one photo,
// recorded as the window records them for a photo shown on a screen of the
// given size, then committed as "&Commit" does.

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "batch/batch_command.h"
#include "exif/exif_update.h"
#include "imageops/commit_changes.h"
#include "imageops/image_processor.h"
#include "imageops/operation.h"
#include "imageops/red_eye_click.h"
#include "photos/headless_host.h"
#include "photos/photo.h"
#include "platform/atomic_file.h"
#include "platform/jpeg_codec.h"
#include "platform/pnm_io.h"
#include "platform/user_seams.h"

namespace tivox::batch {

namespace {

// A slider: its code, option, and range of positions (value = position * 0.01).
struct Slider {
    std::int32_t code;
    const char* option;
    int lowest, highest;
};
constexpr Slider kSliders[] = {
    {opBrightness, "--brightness", -60, 60}, {opContrast, "--contrast", 60, 300},
    {opSharpness, "--sharpness", 0, 100},    {opGamma, "--gamma", 10, 200},
    {opSaturation, "--saturation", 0, 300},
};

bool ParseInts(const std::string& text, std::vector<int>& values, std::size_t count) {
    values.clear();
    std::size_t start = 0;
    while (true) {
        const auto comma = text.find(',', start);
        int v = 0;
        if (!ParseInt(text.substr(start, comma - start), v))
            return false;
        values.push_back(v);
        if (comma == std::string::npos)
            break;
        start = comma + 1;
    }
    return values.size() == count;
}

int Fail(const std::string& message) {
    std::fprintf(stderr, "tivox-batch edit: %s\n", message.c_str());
    return kExitFailure;
}

// Writes the committed picture somewhere else than over the photo: exact
// pixels for .ppm and .pam, else JPEG with the photo's metadata, which
// appears whole or not at all.
bool WriteOut(const Bitmap& image, const std::string& photoPath, const std::string& out,
              int quality, std::string& error) {
    if (IsPnmName(out))
        return WritePnmFile(image, out, error);
    std::vector<std::uint8_t> bytes;
    if (!EncodeEditedPhoto(image, quality, photoPath, bytes, error)) {
        error = "Save failed: " + out + " (" + error + ")";
        return false;
    }
    UiText failure;
    if (WriteFileDurably(out, bytes.data(), bytes.size(), failure))
        return true;
    error = RenderUiText(failure);
    return false;
}

} // namespace

int RunEdit(const Args& input) {
    Args args = input;
    // Slider values as positions, so they become the very floats a slider gives.
    ColorSettings settings;
    bool colour = false;
    for (int i = 0; i < 5; ++i) {
        const Slider& s = kSliders[i];
        std::string text;
        if (!TakeOption(args, s.option, text))
            continue;
        double value = 0;
        if (!ParseFloat(text, value) || !std::isfinite(value))
            return UsageError("edit");
        const long position = std::lround(value * 100.0);
        if (position < s.lowest || position > s.highest)
            return Fail(std::string(s.option) + " takes " + std::to_string(s.lowest / 100.0) +
                        " to " + std::to_string(s.highest / 100.0));
        settings.Set(s.code, float(position) * 0.01f);
        colour = true;
    }
    settings.grayscale = TakeFlag(args, "--grayscale");
    settings.negative = TakeFlag(args, "--negative");
    colour = colour || settings.grayscale || settings.negative;
    const bool denoise = TakeFlag(args, "--denoise");

    std::vector<Point> redEyes;
    std::string text;
    std::vector<int> values;
    while (TakeOption(args, "--redeye", text)) {
        if (!ParseInts(text, values, 2))
            return UsageError("edit");
        redEyes.push_back(Point{values[0], values[1]});
    }
    bool crop = false;
    Rect cropRect;
    if (TakeOption(args, "--crop", text)) {
        if (!ParseInts(text, values, 4))
            return UsageError("edit");
        crop = true;
        cropRect = Rect{values[0], values[1], values[2], values[3]};
    }
    Size resize{0, 0}, screen{1024, 768};
    if (TakeOption(args, "--resize", text) && !ParseSize(text, resize.width, resize.height))
        return UsageError("edit");
    if (TakeOption(args, "--screen", text) && !ParseSize(text, screen.width, screen.height))
        return UsageError("edit");
    int quality = 80;
    if (TakeOption(args, "--quality", text) &&
        (!ParseInt(text, quality) || quality < 1 || quality > 100))
        return Fail("--quality takes 1 to 100");
    std::string out;
    const bool hasOut = TakeOption(args, "--out", out);
    if (args.size() != 1 || args[0].empty() || args[0][0] == '-')
        return UsageError("edit");

    CPhoto photo;
    photo.SetPath(args[0]);
    // Only the file is written: the edits go straight to the commit.
    HeadlessHost host;
    host.screen = screen;
    host.quality = quality;
    host.current = &photo;
    host.showsPreviews = false;
    host.keepsBuffers = true;
    // The photo as the window shows it alone, where edits are drawn on the
    // screen; the other edits are only recorded, and the commit reads the file.
    if (crop || !redEyes.empty()) {
        photo.LoadScreenImage(screen);
        if (photo.sourceSize.width <= 0 || !photo.screenImage || photo.screenImage->IsEmpty())
            return Fail(RenderUiText(ReadErrorText(photo.path, photo.readError)));
    }

    CImageProcessor processor;
    processor.SetWindow(&host);
    auto execute = [&](const COperation& op) {
        if (processor.Execute(op, &photo, false) == 0)
            return true;
        std::fprintf(stderr, "tivox-batch edit: %s\n",
                     RenderUiText(processor.GetErrorText()).c_str());
        return false;
    };
    if (denoise && !execute(COperation::Denoise()))
        return kExitFailure;
    for (const Point& click : redEyes)
        RedEyeClick(photo, screen, click);
    if (crop && !execute(COperation::Crop(cropRect.x, cropRect.y, cropRect.width, cropRect.height)))
        return kExitFailure;
    if (resize.width > 0 && !execute(COperation::Resize(resize.width, resize.height)))
        return kExitFailure;
    if (colour) // as the colour tab does it
        processor.ShowColor(settings, [&](const COperation& op) { execute(op); });

    // The commit decodes the whole file again and refuses damaged data.
    PictureWriter writer;
    if (hasOut)
        writer = [&](const CPhoto& edited, const Bitmap& picture, UiText& error) {
            std::string why;
            if (WriteOut(picture, edited.path, out, quality, why))
                return true;
            error = {"%s", {why}};
            return false;
        };
    NullStepProgress progress;
    const ChangeReport report =
        CommitPhotos({&photo}, ChangeSettingsOf(host), progress, nullptr, writer);
    if (!report.failures.empty())
        return Fail(RenderUiText(report.failures.front()));
    std::printf("saved %s\n", (hasOut ? out : photo.path).c_str());
    return kExitOk;
}

} // namespace tivox::batch
