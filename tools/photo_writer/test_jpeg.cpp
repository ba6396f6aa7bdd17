// Test JPEG files: pixels through TurboJPEG, sections put together by hand.

#include "photo_writer/test_jpeg.h"

#include <turbojpeg.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "platform/jpeg_codec.h"

namespace tivox::test {

namespace {

std::vector<std::uint8_t> Pixels(const TestJpegOptions& o, int channels) {
    std::vector<std::uint8_t> pixels(std::size_t(o.width) * std::size_t(o.height) *
                                     std::size_t(channels));
    std::uint32_t state = o.seed ? o.seed : 1;
    std::size_t i = 0;
    for (int y = 0; y < o.height; ++y) {
        for (int x = 0; x < o.width; ++x) {
            std::uint8_t rgb[3] = {0, 0, 0};
            switch (o.pattern) {
            case Pattern::Gradient:
                rgb[0] = std::uint8_t(o.width > 1 ? x * 255 / (o.width - 1) : 0);
                rgb[1] = std::uint8_t(o.height > 1 ? y * 255 / (o.height - 1) : 0);
                rgb[2] = 96;
                break;
            case Pattern::Checker: {
                const std::uint8_t v = ((x / 8) + (y / 8)) % 2 ? 255 : 0;
                rgb[0] = rgb[1] = rgb[2] = v;
                break;
            }
            case Pattern::Solid:
                rgb[0] = std::uint8_t(o.solid >> 16);
                rgb[1] = std::uint8_t(o.solid >> 8);
                rgb[2] = std::uint8_t(o.solid);
                break;
            case Pattern::Noise:
                for (auto& c : rgb) {
                    state = state * 1664525u + 1013904223u;
                    c = std::uint8_t(state >> 24);
                }
                break;
            }
            if (channels == 1) {
                pixels[i++] = std::uint8_t((rgb[0] * 77 + rgb[1] * 150 + rgb[2] * 29) >> 8);
            } else {
                pixels[i++] = rgb[0];
                pixels[i++] = rgb[1];
                pixels[i++] = rgb[2];
            }
        }
    }
    return pixels;
}

void Append(Bytes& to, const Bytes& from) {
    to.insert(to.end(), from.begin(), from.end());
}

struct TjHandle {
    tjhandle handle;
    ~TjHandle() {
        if (handle)
            tjDestroy(handle);
    }
};

} // namespace

Bytes EncodePixels(const TestJpegOptions& o) {
    if (o.width <= 0 || o.height <= 0)
        return {};
    TjHandle tj{tjInitCompress()};
    if (!tj.handle)
        return {};
    const int channels = o.grayscale ? 1 : 3;
    const std::vector<std::uint8_t> pixels = Pixels(o, channels);
    unsigned char* jpeg = nullptr;
    unsigned long size = 0;
    const int flags = o.progressive ? TJFLAG_PROGRESSIVE : 0;
    const int rc = tjCompress2(tj.handle, pixels.data(), o.width, 0, o.height,
                               o.grayscale ? TJPF_GRAY : TJPF_RGB, &jpeg, &size,
                               o.grayscale ? TJSAMP_GRAY : TJSAMP_420, o.quality, flags);
    Bytes out;
    if (rc == 0)
        out.assign(jpeg, jpeg + size);
    tjFree(jpeg);
    return out;
}

TestJpegOptions Picture(int width, int height, Pattern pattern) {
    TestJpegOptions o;
    o.width = width;
    o.height = height;
    o.pattern = pattern;
    return o;
}

Bytes SmallJpeg(int width, int height) {
    return EncodePixels(Picture(width, height));
}

Bytes MakeJpeg(const TestJpegOptions& o) {
    const Bytes encoded = EncodePixels(o);
    if (encoded.size() < 4)
        return {};
    Bytes out = {0xFF, 0xD8};
    if (!o.exif.empty())
        Append(out, SegmentBytes(Segment{0xE1, o.exif, {}, 0}));
    for (const std::string& c : o.comments)
        Append(out, SegmentBytes(Segment{0xFE, Bytes(c.begin(), c.end()), {}, 0}));
    for (const Segment& s : o.extra)
        Append(out, SegmentBytes(s));

    // Cameras write no JFIF section beside their EXIF section.
    std::size_t rest = 2;
    if (!o.exif.empty() && encoded[2] == 0xFF && encoded[3] == 0xE0 && encoded.size() > 6)
        rest = 4 + std::size_t(encoded[4] << 8 | encoded[5]);
    out.insert(out.end(), encoded.begin() + long(rest), encoded.end());
    return out;
}

Bitmap Shown(const Bitmap& stored, int o) {
    // The first stored row stands on the top (1, 2), bottom (3, 4), left
    // (5, 8) or right (6, 7); the first stored column on the left (1, 4),
    // right (2, 3), top (5, 6) or bottom (7, 8).
    const int w = stored.Width(), h = stored.Height();
    Bitmap shown;
    shown.Reset(o >= 5 ? h : w, o >= 5 ? w : h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const int across = o >= 5 ? y : x, down = o >= 5 ? x : y;
            const bool flipAcross = o == 2 || o == 3 || o == 6 || o == 7;
            const bool flipDown = o == 3 || o == 4 || o == 7 || o == 8;
            shown.SetPixel(flipAcross ? shown.Width() - 1 - across : across,
                           flipDown ? shown.Height() - 1 - down : down, stored.PixelAt(x, y));
        }
    return shown;
}

Bytes CameraJpeg(const Bitmap& upright, int orientation) {
    Bytes pixels;
    std::string error;
    // Turning right and turning left undo each other; the rest undo themselves.
    const int undo = orientation == 6 ? 8 : orientation == 8 ? 6 : orientation;
    if (!JpegEncoder().Encode(Shown(upright, undo), 95, pixels, error) || pixels.size() < 6)
        return {};
    CameraExif exif;
    exif.orientation = orientation;
    exif.thumbnail = pixels;
    Bytes out = {0xFF, 0xD8};
    Append(out, SegmentBytes(Segment{0xE1, CameraExifPayload(exif), {}, 0}));
    // Behind the encoder's JFIF section.
    out.insert(out.end(), pixels.begin() + 4 + (pixels[4] << 8 | pixels[5]), pixels.end());
    return out;
}

Bytes SegmentBytes(const Segment& s) {
    Bytes out(std::size_t(s.padding), 0xFF);
    out.push_back(0xFF);
    out.push_back(s.marker);
    const int length = s.lengthField.value_or(int(s.payload.size()) + 2);
    out.push_back(std::uint8_t(length >> 8));
    out.push_back(std::uint8_t(length));
    Append(out, s.payload);
    return out;
}

Bytes JpegHead(const std::vector<Segment>& segments) {
    Bytes out = {0xFF, 0xD8};
    for (const Segment& s : segments)
        Append(out, SegmentBytes(s));
    return out;
}

std::vector<Segment> FrameAndScan(int width, int height, int components, std::uint8_t frameMarker) {
    Bytes frame = {8,
                   std::uint8_t(height >> 8),
                   std::uint8_t(height),
                   std::uint8_t(width >> 8),
                   std::uint8_t(width),
                   std::uint8_t(components)};
    for (int c = 0; c < components; ++c) {
        frame.push_back(std::uint8_t(c + 1));
        frame.push_back(c == 0 ? 0x22 : 0x11);
        frame.push_back(c == 0 ? 0 : 1);
    }
    Bytes scan = {std::uint8_t(components)};
    for (int c = 0; c < components; ++c) {
        scan.push_back(std::uint8_t(c + 1));
        scan.push_back(c == 0 ? 0x00 : 0x11);
    }
    scan.insert(scan.end(), {0, 63, 0});
    return {Segment{frameMarker, frame, {}, 0}, Segment{0xDA, scan, {}, 0}};
}

static TiffIfd CameraIfd(const CameraExif& e) {
    TiffIfd exif;
    exif.Rational(0x829A, 10, 600)
        .Rational(0x829D, 28, 10)
        .Short(0x8822, {2})
        .Short(0x8827, {100})
        .Undefined(0x9000, {'0', '2', '1', '0'});
    if (!e.dateTimeOriginal.empty())
        exif.Ascii(0x9003, e.dateTimeOriginal);
    exif.Rational(0x9102, 4, 1)
        .SRational(0x9204, -1, 3)
        .Short(0x9207, {5})
        .Short(0x9209, {0x10})
        .Rational(0x920A, 78, 10);
    if (e.pixelWidth && e.pixelHeight) {
        // A sensor 0.28 inches wide.
        exif.Long(0xA002, {e.pixelWidth}).Long(0xA003, {e.pixelHeight});
        exif.Rational(0xA20E, e.pixelWidth * 100, 28).Rational(0xA20F, e.pixelWidth * 100, 28);
        exif.Short(0xA210, {2});
    }

    TiffIfd ifd0;
    ifd0.Ascii(0x010F, e.make).Ascii(0x0110, e.model);
    if (e.orientation)
        ifd0.Short(0x0112, {std::uint16_t(e.orientation)});
    ifd0.Rational(0x011A, 72, 1).Rational(0x011B, 72, 1).Short(0x0128, {2}).Sub(0x8769, exif);
    if (!e.thumbnail.empty()) {
        TiffIfd ifd1;
        ifd1.Rational(0x011A, 180, 1).Rational(0x011B, 180, 1).Short(0x0128, {2});
        ifd1.Thumbnail(e.thumbnail);
        ifd0.Next(std::move(ifd1));
    }
    return ifd0;
}

Bytes CameraExifPayload(const CameraExif& e) {
    return ExifPayload(CameraIfd(e), e.order);
}

Bytes Truncated(const Bytes& bytes, std::size_t n) {
    return Bytes(bytes.begin(), bytes.begin() + long(std::min(n, bytes.size())));
}

bool WriteFile(const std::string& path, const Bytes& bytes) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f)
        return false;
    const bool written =
        bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    return std::fclose(f) == 0 && written;
}

bool ReadFile(const std::string& path, Bytes& bytes) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}

TempDir::TempDir() {
    namespace fs = std::filesystem;
    std::error_code ec;
    fs::path root = fs::temp_directory_path(ec);
    if (ec)
        root = "/tmp";
    std::string pattern = (root / "tivox-test.XXXXXX").string();
    // Without a folder of its own a test would write beside other files:
    // stop right here instead.
    if (!mkdtemp(pattern.data())) {
        std::perror("TempDir: mkdtemp");
        std::abort();
    }
    path_ = pattern;
}

TempDir::~TempDir() {
    if (path_.empty())
        return;
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

std::string TempDir::File(const std::string& name) const {
    return path_ + "/" + name;
}

} // namespace tivox::test
