// The thumbnail loader over arbitrary bytes as a photo file, at a thumbnail
// box and at full size, and the lossless turn over the same bytes. The loader
// lives on from input to input, as the thumbnail worker's does, and a good
// JPEG must still decode after each one: a bad file must not spoil the next.

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "photos/scaled_loader.h"
#include "platform/atomic_file.h"
#include "platform/jpeg_codec.h"
#include "platform/resampler.h"

namespace {

constexpr tivox::Size kBox{160, 120};

struct Harness {
    Harness() {
        char name[] = "/tmp/fuzz_loader_XXXXXX";
        const int fd = ::mkstemp(name);
        if (fd < 0)
            std::abort();
        ::close(fd);
        path = name;
        good = path + ".good";
        tivox::Bitmap picture;
        std::vector<std::uint8_t> bytes;
        std::string error;
        if (!picture.Reset(48, 32))
            std::abort();
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 48; ++x)
                picture.SetPixel(x, y, 0xFF000000u | std::uint32_t(x * 5 << 16 | y * 7 << 8));
        if (!tivox::JpegEncoder().Encode(picture, 90, bytes, error) ||
            !tivox::WriteWholeFile(good, bytes.data(), bytes.size(), error))
            std::abort();
    }
    ~Harness() {
        ::unlink(path.c_str());
        ::unlink(good.c_str());
    }
    Harness(const Harness&) = delete;
    Harness& operator=(const Harness&) = delete;

    std::string path, good;
    tivox::CScaledLoader loader;
    tivox::Bitmap out;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Harness h;
    std::string error;
    if (!tivox::WriteWholeFile(h.path, data, size, error))
        std::abort();
    tivox::Size source;
    if (h.loader.LoadInto(h.path, kBox, h.out, source, error) &&
        (h.out.Width() > kBox.width || h.out.Height() > kBox.height))
        std::abort();
    if (h.loader.LoadFull(h.path, h.out, error, true) && h.out.IsEmpty())
        std::abort();

    std::vector<std::uint8_t> turned;
    bool perfect = false;
    tivox::TransformJpeg(data, size, tivox::JpegTransform::Rotate90, turned, perfect, error);

    const tivox::Size want = tivox::FitInto({48, 32}, kBox);
    if (!h.loader.LoadInto(h.good, kBox, h.out, source, error) || source != tivox::Size{48, 32} ||
        h.out.Width() != want.width || h.out.Height() != want.height)
        std::abort();
    return 0;
}
