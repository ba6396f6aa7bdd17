// The commit of an edited photo, timed pass by pass and as a whole.
//
//   bench_edit make OUT [SOURCE]  writes a 6000 x 4000 test photo: SOURCE
//                                 enlarged with a little grain, or a pattern
//   bench_edit run FILE [RUNS]    prints the memory-copy bandwidth, each
//                                 pass's throughput, the floor (a full
//                                 decode plus a quality-80 encode) and the
//                                 commit, best of RUNS; then the operations
//                                 for ImageMagick that do the same
//
// The edits: brightness 0.10, contrast 1.20, sharpness 0.50, gamma 0.80,
// saturation 1.30 and denoise.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <unistd.h>

#include "imageops/apply_edits.h"
#include "imageops/color_matrix.h"
#include "imageops/convolution.h"
#include "imageops/denoise_filter.h"
#include "imageops/image_processor.h"
#include "imageops/operation.h"
#include "photos/headless_host.h"
#include "photos/photo.h"
#include "platform/atomic_file.h"
#include "platform/bitmap_recycler.h"
#include "platform/jpeg_codec.h"
#include "platform/resampler.h"

namespace tivox {
namespace {

constexpr ColorSettings kColor{0.10f, 1.20f, 0.50f, 0.80f, 1.30f, false, false};
constexpr float kSharpness = kColor.sharpness, kGamma = kColor.gamma;

double Seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Best(int runs, const std::function<void()>& prepare, const std::function<void()>& work) {
    double best = 1e30;
    for (int i = 0; i < runs; ++i) {
        if (prepare)
            prepare();
        best = std::min(best, Seconds(work));
    }
    return best;
}

int Make(const std::string& out, const char* source) {
    Bitmap picture;
    std::string error;
    Bitmap small;
    if (source && DecodeJpegFile(source, Size{0, 0}, small, error)) {
        auto big = ScaleImage(&small, 6000, 4000);
        if (!big)
            return 1;
        picture = std::move(*big);
    } else {
        picture.Reset(6000, 4000);
        for (int y = 0; y < 4000; ++y)
            for (int x = 0; x < 6000; ++x)
                picture.SetPixel(x, y,
                                 0xFF000000u | std::uint32_t((x / 24) & 255) << 16 |
                                     std::uint32_t((y / 16) & 255) << 8 |
                                     std::uint32_t(((x + y) / 40) & 255));
    }
    // Sensor-like grain, so the denoise has something to find.
    std::mt19937 rng(42);
    std::uint8_t* p = picture.Data();
    for (std::size_t i = 0; i < picture.ByteSize(); ++i) {
        if (i % 4 == 3)
            continue;
        const int v = int(p[i]) + int(rng() % 9) - 4;
        p[i] = std::uint8_t(v < 0 ? 0 : (v > 255 ? 255 : v));
    }
    // The source's EXIF data (with its thumbnail) comes along, so that the
    // commit pays for bringing it up to date as it does on a camera's photo.
    std::vector<std::uint8_t> bytes, original;
    JpegEncoder encoder;
    UiText failure;
    if (!encoder.Encode(picture, 92, bytes, error))
        return std::fprintf(stderr, "%s\n", error.c_str()), 1;
    if (source && ReadWholeFile(source, original, error))
        CopyMetadataSections(original, bytes);
    if (!WriteFileDurably(out, bytes.data(), bytes.size(), failure))
        return std::fprintf(stderr, "%s\n", RenderUiText(failure).c_str()), 1;
    return 0;
}

ColorMatrix BenchMatrix() {
    CImageProcessor processor;
    processor.SetColor(kColor);
    return processor.m_colorMatrix;
}

// The same operations in ImageMagick's words. Its colour matrix works on
// column vectors (the transpose of ours) and its gamma is the reciprocal.
std::string MagickArguments() {
    const ColorMatrix m = BenchMatrix();
    // Its 6 x 6 form: rows and columns red, green, blue, alpha, black, offset.
    std::string matrix = "6x6:";
    for (int out = 0; out < 6; ++out)
        for (int in = 0; in < 6; ++in) {
            double v = out == in ? 1.0 : 0.0;
            if (out < 4 && in < 4)
                v = m.m[in][out];
            else if (out < 4 && in == 5)
                v = m.m[4][out];
            char text[32];
            std::snprintf(text, sizeof text, "%s%.6f", out + in ? "," : "", v);
            matrix += text;
        }
    const int k = SharpenStrength(kSharpness);
    const double f = k - 8;
    char kernel[160];
    std::snprintf(kernel, sizeof kernel, "3x3:0,%.6f,0,%.6f,%.6f,%.6f,0,%.6f,0", -2 / f, -2 / f,
                  k / f, -2 / f, -2 / f);
    char gamma[32];
    std::snprintf(gamma, sizeof gamma, "%.6f", 1.0 / double(kGamma));
    return "-despeckle -color-matrix " + matrix + " -gamma " + gamma + " -morphology Convolve " +
           kernel + " -quality 80";
}

int Run(const std::string& file, int runs) {
    std::string error;
    JpegDecoder decoder;
    JpegEncoder encoder;
    JpegInfo info;
    Bitmap image;
    std::vector<std::uint8_t> encoded;
    if (!decoder.DecodeFile(file, Size{0, 0}, image, info, error)) {
        std::fprintf(stderr, "bench_edit: %s\n", error.c_str());
        return 1;
    }
    const double megabytes = double(image.ByteSize()) / 1e6;
    std::printf("picture %d x %d, %.1f MB of pixels, best of %d runs\n", image.Width(),
                image.Height(), megabytes, runs);

    // Memory-copy bandwidth over buffers of the picture's size, both touched.
    Bitmap copy;
    image.CopyTo(copy);
    const double copyTime =
        Best(runs, nullptr, [&] { std::memcpy(copy.Data(), image.Data(), image.ByteSize()); });
    std::printf("%-28s %8.0f MB/s\n", "memcpy", megabytes / copyTime);

    // Each pass on the decoded picture, vector and plain paths.
    const ColorMatrix matrix = BenchMatrix();
    const CDenoiseFilter filter;
    const int k = SharpenStrength(kSharpness);
    struct Pass {
        const char* name;
        std::function<void(PixelPath)> run;
    };
    const Pass passes[] = {
        {"denoise", [&](PixelPath p) { filter.FilterInPlace(copy, p); }},
        {"colour matrix + gamma", [&](PixelPath p) { ApplyColorMatrix(copy, matrix, kGamma, p); }},
        {"sharpen", [&](PixelPath p) { Sharpen(copy, k, p); }},
    };
    auto restore = [&] { std::memcpy(copy.Data(), image.Data(), image.ByteSize()); };
    for (const Pass& pass : passes) {
        const double fast = Best(runs, restore, [&] { pass.run(PixelPath::Best); });
        const double plain = Best(std::min(runs, 2), restore, [&] { pass.run(PixelPath::Scalar); });
        std::printf("%-28s %8.0f MB/s  (%6.1f ms; plain path %6.0f MB/s)\n", pass.name,
                    megabytes / fast, fast * 1e3, megabytes / plain);
    }

    // The commit as the window runs it, on a copy of the photo.
    namespace fs = std::filesystem;
    const fs::path work = fs::temp_directory_path() / ("bench_edit_" + std::to_string(::getpid()));
    fs::create_directories(work);
    const std::string target = (work / "photo.jpg").string();
    HeadlessHost host;
    host.screen = {1920, 1080};
    host.thumb = {160, 120};
    host.keepsBuffers = true;
    CPhoto photo;
    photo.SetPath(target);
    CImageProcessor colour;
    colour.SetColor(kColor);
    auto prepare = [&] {
        fs::copy_file(file, target, fs::copy_options::overwrite_existing);
        // The copy's own writing is not the commit's to pay for.
        ::sync();
        photo.LoadScreenImage(host.GetScreenSize()); // the photo is on the screen
        CPendingEdits& e = photo.edits;
        e.Clear();
        colour.RecordColor(&photo);
        e.SetDenoise(1);
    };

    // The floor (what any tool needs to read and write the photo) and the
    // commit take turns, so that both see the machine in the same state.
    double floor = 1e30, commit = 1e30, applyBest = 1e30;
    bool saved = true;
    for (int i = 0; i < runs; ++i) {
        floor = std::min(floor, Seconds([&] {
                             decoder.DecodeFile(file, Size{0, 0}, image, info, error);
                             encoder.Encode(image, 80, encoded, error);
                         }));
        prepare();
        commit = std::min(commit, Seconds([&] {
                              applyBest = std::min(applyBest, Seconds([&] {
                                                       ApplyEdits(photo, editAll, host, true);
                                                   }));
                              saved = saved && photo.SaveAsJpeg(80, host.GetBitmapRecycler());
                          }));
    }
    const double decodeOnly = Best(runs, nullptr, [&] {
        decoder.DecodeFile(file, Size{0, 0}, image, info, error);
    });
    const double encodeOnly =
        Best(runs, nullptr, [&] { encoder.Encode(image, 80, encoded, error); });
    // What the window's commit saves by handing on the full-size buffer: a
    // decode into a fresh one.
    const double freshDecode = Best(runs, prepare, [&] {
        photo.LoadFullImage();
        photo.DropFullImage();
    });
    fs::remove_all(work);
    if (!saved) {
        std::fprintf(stderr, "bench_edit: the commit could not save\n");
        return 1;
    }
    std::printf("%-28s %8.3f s  (decode %.3f s, encode %.3f s)\n", "floor: decode + encode q80",
                floor, decodeOnly, encodeOnly);
    std::printf("%-28s %8.3f s\n", "decode into a fresh buffer", freshDecode);
    std::printf("%-28s %8.3f s  (replay %.3f s, then save)\n", "commit", commit, applyBest);
    std::printf("floor_seconds %.6f\ncommit_seconds %.6f\n", floor, commit);
    std::printf("magick_args %s\n", MagickArguments().c_str());
    std::printf("batch_args --brightness %.2f --contrast %.2f --sharpness %.2f --gamma %.2f "
                "--saturation %.2f --denoise\n",
                double(kColor.brightness), double(kColor.contrast), double(kSharpness),
                double(kGamma), double(kColor.saturation));
    return 0;
}

} // namespace
} // namespace tivox

int main(int argc, char** argv) {
    const std::string verb = argc > 1 ? argv[1] : "";
    if (verb == "make" && argc >= 3)
        return tivox::Make(argv[2], argc > 3 ? argv[3] : nullptr);
    if (verb == "run" && argc >= 3)
        return tivox::Run(argv[2], argc > 3 ? std::max(1, std::atoi(argv[3])) : 5);
    std::fprintf(stderr, "usage: bench_edit make OUT [SOURCE] | run FILE [RUNS]\n");
    return 2;
}
