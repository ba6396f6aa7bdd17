// bench_gallery make DIR COUNT [WxH]
//   Writes COUNT landscape photos (4000x3000 unless given) as DIR/P0001.jpg ...:
//   a sky, a sun and hills in a hue of their own, with fine grain, so that
//   they compress like camera photos (a few MB each at quality 90).
// bench_gallery run PHOTOS OUT THREADS
//   Makes the gallery of the photos in PHOTOS (default form) in OUT with the
//   pictures on a pool of THREADS threads, as the gallery command does.
// bench/gallery times tivox-batch gallery and llgal on them.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "gallery/gallery_command.h"
#include "photos/headless_host.h"
#include "photos/photo_list.h"
#include "platform/bitmap.h"
#include "platform/jpeg_codec.h"
#include "platform/user_seams.h"

namespace {

using namespace tivox;

std::uint8_t Clamp(double v) {
    return std::uint8_t(v < 0 ? 0 : v > 255 ? 255 : v);
}

// One photo: its hue turns with `index`; the grain comes from a small LCG.
void PaintPhoto(Bitmap& image, int index) {
    const int w = image.Width(), h = image.Height();
    const double hue = index * 0.61803398875 * 6.2831853;
    const double skyR = 90 + 60 * std::cos(hue), skyG = 140 + 50 * std::cos(hue + 2.1),
                 skyB = 200 + 50 * std::cos(hue + 4.2);
    const double sunX = w * (0.2 + 0.6 * std::fmod(index * 0.37, 1.0)), sunY = h * 0.25;
    const double sunR2 = (h * 0.08) * (h * 0.08);
    std::uint32_t seed = 12345u + std::uint32_t(index) * 7919u;
    for (int y = 0; y < h; ++y) {
        std::uint8_t* row = image.Row(y);
        const double t = double(y) / h;
        for (int x = 0; x < w; ++x) {
            const double hill1 = h * (0.55 + 0.08 * std::sin(x * 0.0021 + index));
            const double hill2 = h * (0.70 + 0.05 * std::sin(x * 0.0047 + index * 2));
            double r, g, b;
            if (y > hill2) {
                r = 60 + 40 * std::sin(x * 0.03) * std::sin(y * 0.02);
                g = 110 + 30 * std::sin(hue + x * 0.011);
                b = 40;
            } else if (y > hill1) {
                r = 40 + 30 * t;
                g = 90 + 40 * t;
                b = 60;
            } else {
                r = skyR * (1 - 0.4 * t) + 60 * t;
                g = skyG * (1 - 0.3 * t) + 50 * t;
                b = skyB * (1 - 0.2 * t);
                const double dx = x - sunX, dy = y - sunY;
                if (dx * dx + dy * dy < sunR2)
                    r = 255, g = 235, b = 160;
            }
            seed = seed * 1664525u + 1013904223u;
            const double grain = double(int(seed >> 28) - 8) * 1.5;
            row[4 * x + 0] = Clamp(b + grain);
            row[4 * x + 1] = Clamp(g + grain);
            row[4 * x + 2] = Clamp(r + grain);
            row[4 * x + 3] = 255;
        }
    }
}

int Make(const std::string& folder, int count, int width, int height) {
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    Bitmap image;
    if (!image.Reset(width, height)) {
        std::fprintf(stderr, "cannot make a %dx%d picture\n", width, height);
        return 1;
    }
    for (int i = 1; i <= count; ++i) {
        PaintPhoto(image, i);
        char name[32];
        std::snprintf(name, sizeof name, "/P%04d.jpg", i);
        std::string error;
        if (!EncodeJpegFile(image, 90, folder + name, error)) {
            std::fprintf(stderr, "%s: %s\n", name + 1, error.c_str());
            return 1;
        }
    }
    return 0;
}

// Says yes to emptying the benchmark's own folder and prints the rest.
class YesPrompt final : public IPrompt {
public:
    PromptAnswer Ask(const UiText& text, PromptIcon, PromptButtons, PromptAnswer,
                     const UiText&) override {
        std::fprintf(stderr, "%s\n", RenderUiText(text).c_str());
        return PromptAnswer::Yes;
    }
};

int Run(const std::string& photos, const std::string& out, int threads) {
    // Every photo of the folder, as tivox-batch gallery chooses them.
    CPhotoList list;
    list.Open(photos);
    list.StopWorker(1000); // no thumbnails wanted here
    HeadlessHost host;
    host.list = &list;
    const ProcessScope all{false, true, false, false, false};
    YesPrompt prompt;
    NullBusyIndicator busy;
    NullStepProgress progress;
    CGalleryCommand command(prompt, busy, progress);
    command.m_photoFolder = photos;
    command.m_threads = threads;
    const GalleryReport report = command.CreateGalleryIn(out, all, host);
    return report.outcome == GalleryOutcome::Written && report.failures.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "make" && (argc == 4 || argc == 5)) {
        int width = 4000, height = 3000;
        if (argc == 5 && std::sscanf(argv[4], "%dx%d", &width, &height) != 2)
            return 2;
        return Make(argv[2], std::atoi(argv[3]), width, height);
    }
    if (mode == "run" && argc == 5)
        return Run(argv[2], argv[3], std::atoi(argv[4]));
    std::fprintf(stderr, "usage: bench_gallery make DIR COUNT [WxH] | run PHOTOS OUT THREADS\n");
    return 2;
}
