#pragma once
// Writers of test JPEG files: real pixel data from TurboJPEG, EXIF built with
// the TIFF builder, comments, extra sections, padding and broken lengths.
// No test framework here: the batch front end links this too.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/bitmap.h"
#include "photo_writer/tiff_builder.h"

namespace tivox::test {

using Bytes = std::vector<std::uint8_t>;

enum class Pattern {
    Gradient, // red rises left to right, green top to bottom, blue constant
    Checker,  // 8-pixel black and white squares
    Solid,    // the colour in TestJpegOptions::solid
    Noise,    // deterministic pseudo-random pixels (seeded)
};

// One marker section as it goes into a file.
struct Segment {
    std::uint8_t marker = 0xFE;     // the code behind 0xFF
    Bytes payload;                  // the bytes behind the length field
    std::optional<int> lengthField; // a literal length instead of payload + 2
    int padding = 0;                // extra 0xFF bytes before the marker
};

// The usual camera values of an EXIF section, for photos that tests rename.
struct CameraExif {
    ByteOrder order = ByteOrder::Little;
    std::string make = "Acme Imaging";
    std::string model = "Z 100";
    std::string dateTimeOriginal = "2004:04:23 15:00:53"; // empty: tag left out
    int orientation = 1;                                  // 0: tag left out
    std::uint32_t pixelWidth = 0;                         // 0: tags left out
    std::uint32_t pixelHeight = 0;
    Bytes thumbnail; // non-empty: a thumbnail directory behind the first one
};

// The APP1 payload ("Exif\0\0" + TIFF) of these values: IFD0 with Make,
// Model, Orientation and resolutions, a 0x8769 sub-directory with version,
// date, exposure and flash.
Bytes CameraExifPayload(const CameraExif& exif);

struct TestJpegOptions {
    int width = 64;
    int height = 48;
    int quality = 85;
    Pattern pattern = Pattern::Gradient;
    std::uint32_t solid = 0x808080; // 0xRRGGBB for Pattern::Solid
    std::uint32_t seed = 1;         // for Pattern::Noise
    bool grayscale = false;
    bool progressive = false;
    Bytes exif;                        // APP1 payload ("Exif\0\0..."); empty: none
    std::vector<std::string> comments; // COM sections, after the EXIF section
    std::vector<Segment> extra;        // further sections, after the comments
};

// The options of a picture of this size and pattern, the rest as above.
TestJpegOptions Picture(int width, int height, Pattern pattern = Pattern::Gradient);

// A complete JPEG: SOI, the EXIF section, comments and extra sections, then
// the encoder's tables, frame header, scan and EOI. Empty on encoder failure.
Bytes MakeJpeg(const TestJpegOptions& options);

// What a viewer shows of a `stored` picture under the EXIF Orientation `o`,
// by the tag's own definition: the sides the stored first row and first
// column stand on once upright.
Bitmap Shown(const Bitmap& stored, int orientation);
// `upright` as a camera turned by `orientation` writes it: the stored pixels
// at quality 95 with camera EXIF that carries the tag and, as the embedded
// thumbnail, the same stored picture (keep it small).
Bytes CameraJpeg(const Bitmap& upright, int orientation);

// Only the pixels, as TurboJPEG writes them (with its JFIF APP0).
Bytes EncodePixels(const TestJpegOptions& options);
// A small gradient picture of that size, as a thumbnail would be.
Bytes SmallJpeg(int width, int height);

// The bytes of one section: padding, 0xFF, marker, length, payload.
Bytes SegmentBytes(const Segment& segment);
// A file head built by hand: SOI, the given sections in order. Nothing else.
Bytes JpegHead(const std::vector<Segment>& segments);
// The usual tail of a hand-built head: a frame header (baseline unless
// another marker is given) and a start-of-scan section.
std::vector<Segment> FrameAndScan(int width, int height, int components = 3,
                                  std::uint8_t frameMarker = 0xC0);

// The first n bytes (all when n is larger).
Bytes Truncated(const Bytes& bytes, std::size_t n);

// Writes bytes to a file, replacing it. False with errno set on failure.
bool WriteFile(const std::string& path, const Bytes& bytes);
bool ReadFile(const std::string& path, Bytes& bytes);

// A fresh directory under the system's temporary folder, removed with all its
// contents when the object goes. Aborts the test program if none can be made.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return path_; }
    // path() + "/" + name
    std::string File(const std::string& name) const;

private:
    std::string path_;
};

} // namespace tivox::test
