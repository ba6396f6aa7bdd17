// Commit of many photos on 1 and on 2 threads of the photo pool.
//
//   bench_commit FOLDER COUNT [RUNS] [SOURCE]
//
// Makes a 4000 x 3000 photo (SOURCE enlarged with a little grain, or a
// pattern), copies it COUNT times into FOLDER before every run, records on
// each copy what the window records for a resize to 3000 x 2250 and a colour
// edit (brightness, contrast, gamma, saturation, sharpening), and times the
// commit as the window runs it, thumbnails included: best of RUNS for each
// thread count, then the ratio.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "imageops/commit_changes.h"
#include "photos/photo.h"
#include "platform/atomic_file.h"
#include "platform/bitmap_recycler.h"
#include "platform/jpeg_codec.h"
#include "platform/resampler.h"
#include "platform/user_seams.h"

namespace tivox {
namespace {

namespace fs = std::filesystem;

bool MakePhoto(const std::string& out, const char* source) {
    Bitmap picture;
    Bitmap small;
    std::string error;
    if (source && DecodeJpegFile(source, Size{0, 0}, small, error)) {
        auto big = ScaleImage(&small, 4000, 3000);
        if (!big)
            return false;
        picture = std::move(*big);
    } else {
        picture.Reset(4000, 3000);
        for (int y = 0; y < 3000; ++y)
            for (int x = 0; x < 4000; ++x)
                picture.SetPixel(x, y,
                                 0xFF000000u | std::uint32_t((x / 16) & 255) << 16 |
                                     std::uint32_t((y / 12) & 255) << 8 |
                                     std::uint32_t(((x + y) / 28) & 255));
    }
    std::mt19937 rng(7);
    std::uint8_t* p = picture.Data();
    for (std::size_t i = 0; i < picture.ByteSize(); ++i)
        if (i % 4 != 3)
            p[i] = std::uint8_t(std::clamp(int(p[i]) + int(rng() % 9) - 4, 0, 255));
    std::vector<std::uint8_t> bytes;
    JpegEncoder encoder;
    UiText failure;
    if (!encoder.Encode(picture, 92, bytes, error)) {
        std::fprintf(stderr, "bench_commit: %s\n", error.c_str());
        return false;
    }
    return WriteFileDurably(out, bytes.data(), bytes.size(), failure);
}

// Fresh copies with the edits pending, as the window holds them.
std::vector<std::unique_ptr<CPhoto>> Prepare(const fs::path& folder, const std::string& photo,
                                             int count) {
    std::vector<std::unique_ptr<CPhoto>> photos;
    for (int i = 0; i < count; ++i) {
        const fs::path path = folder / ("copy" + std::to_string(i) + ".jpg");
        fs::copy_file(photo, path, fs::copy_options::overwrite_existing);
        auto p = std::make_unique<CPhoto>();
        p->SetPath(path.string());
        p->edits.SetResize(Size{3000, 2250});
        p->edits.SetBrightness(0.1f);
        p->edits.SetContrast(1.2f);
        p->edits.SetSharpness(0.5f);
        p->edits.SetGamma(0.8f);
        p->edits.SetSaturation(1.3f);
        photos.push_back(std::move(p));
    }
    return photos;
}

int Run(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: bench_commit FOLDER COUNT [RUNS] [SOURCE]\n");
        return 2;
    }
    const fs::path folder = argv[1];
    const int count = std::max(1, std::atoi(argv[2]));
    const int runs = argc > 3 ? std::max(1, std::atoi(argv[3])) : 3;
    const char* source = argc > 4 ? argv[4] : nullptr;
    fs::create_directories(folder);
    const std::string photo = (folder / "source.jpg").string();
    if (!MakePhoto(photo, source))
        return 1;

    ChangeSettings settings;
    settings.screenSize = Size{1920, 1080};
    settings.thumbSize = Size{480, 270};
    std::printf("commit of %d photos of 4000 x 3000 (resize to 3000 x 2250, colour, "
                "sharpening), best of %d, %u cores\n",
                count, runs, std::thread::hardware_concurrency());
    double best[3] = {0, 0, 0};
    for (const int threads : {1, 2}) {
        settings.threads = threads;
        best[threads] = 1e30;
        for (int run = 0; run < runs; ++run) {
            auto photos = Prepare(folder, photo, count);
            std::vector<CPhoto*> pointers;
            for (auto& p : photos)
                pointers.push_back(p.get());
            NullStepProgress progress;
            BitmapRecycler recycler;
            const auto start = std::chrono::steady_clock::now();
            const ChangeReport report = CommitPhotos(pointers, settings, progress, &recycler);
            const double seconds =
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
            if (report.saved != count) {
                std::fprintf(stderr, "bench_commit: %d of %d saved\n", report.saved, count);
                return 1;
            }
            best[threads] = std::min(best[threads], seconds);
        }
        std::printf("%d thread%s %8.3f s  (%.1f ms a photo)\n", threads, threads > 1 ? "s" : " ",
                    best[threads], best[threads] * 1e3 / count);
    }
    std::printf("ratio 1 thread / 2 threads: %.2f\n", best[1] / best[2]);
    return 0;
}

} // namespace
} // namespace tivox

int main(int argc, char** argv) {
    return tivox::Run(argc, argv);
}
