// Helper of bench/thumbs.
//   bench_thumbs make DIR COUNT WxH    photo-like JPEGs at quality 90
//   bench_thumbs time DIR WxH          seconds for the worker's thumbnails of
//                                      DIR, in memory, and for the scaled
//                                      decodes alone (the floor)

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "photos/photo_list.h"
#include "platform/jpeg_codec.h"
#include "platform/resampler.h"
#include "photo_writer/photo_pixels.h"

using namespace tivox;

namespace {

double Now() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

bool ParseBox(const char* text, Size& size) {
    return std::sscanf(text, "%dx%d", &size.width, &size.height) == 2 && size.width > 0 &&
           size.height > 0;
}

int Make(const std::string& dir, int count, Size size) {
    for (int i = 0; i < count; ++i) {
        char name[64];
        std::snprintf(name, sizeof name, "/photo_%03d.jpg", i);
        if (!test::WritePhotoJpeg(dir + name, size.width, size.height, std::uint32_t(i + 1), 90)) {
            std::fprintf(stderr, "cannot write %s%s\n", dir.c_str(), name);
            return 1;
        }
    }
    return 0;
}

int Time(const std::string& dir, Size box) {
    const double t0 = Now();
    CPhotoList list;
    list.SetThumbnailSize(box);
    list.Open(dir);
    while (!list.WaitWorker(1000)) {
    }
    const double t1 = Now();
    // The floor: the same scaled decodes without resampling.
    JpegDecoder decoder;
    Bitmap decoded;
    double decodeOnly = 0;
    for (int i = 0; i < list.Count(); ++i) {
        std::string error;
        JpegInfo info;
        const double a = Now();
        if (decoder.LoadFile(list.PhotoAt(i)->path, error) && decoder.ReadHeader(info, error))
            decoder.Decode(FitInto({info.width, info.height}, box), decoded, info, error);
        decodeOnly += Now() - a;
    }
    std::printf("worker, %d thumbnails in memory: %.3f s (scaled decodes alone %.3f s)\n",
                list.Count(), t1 - t0, decodeOnly);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    Size size;
    if (argc == 5 && std::string(argv[1]) == "make" && ParseBox(argv[4], size))
        return Make(argv[2], std::atoi(argv[3]), size);
    if (argc == 4 && std::string(argv[1]) == "time" && ParseBox(argv[3], size))
        return Time(argv[2], size);
    std::fprintf(stderr, "usage: bench_thumbs make DIR COUNT WxH | time DIR WxH\n");
    return 2;
}
