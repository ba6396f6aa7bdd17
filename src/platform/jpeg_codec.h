#pragma once
// JPEG decoding, encoding and lossless transforms over TurboJPEG. Every call
// reports failure by its result and an error text; nothing throws. A decoder
// or encoder object keeps its TurboJPEG handle and its file buffer between
// calls, so a loop over many photos allocates nothing per photo. One object
// per thread.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/bitmap.h"
#include "platform/geometry.h"
#include "platform/ui_text.h"

namespace tivox {

enum class JpegColorspace { Rgb, YCbCr, Gray, Cmyk, Ycck, Unknown };

struct JpegInfo {
    int width = 0;
    int height = 0;
    JpegColorspace colorspace = JpegColorspace::Unknown;
    int subsampling = -1; // TurboJPEG's TJSAMP value
    float dpiX = 96.0f;   // from the JFIF header when it names one
    float dpiY = 96.0f;
};

// The causes the codec gives in `error` besides those of the file system.
inline constexpr char kJpegTooLarge[] = "picture too large for the memory budget";
inline constexpr char kJpegDamaged[] = "damaged or incomplete JPEG data";
inline constexpr char kJpegUnreadable[] = "not a readable JPEG picture";
inline constexpr char kJpegNotPerfect[] = "the turn would trim the picture's edge";

// "Could not read PATH: CAUSE" for a `cause` given by the codec (or by a
// file read), as one translatable sentence per cause the codec knows.
UiText ReadErrorText(const std::string& path, const std::string& cause);

// The decoded size when a `source` picture is decoded at the smallest DCT
// scale (1/8, 1/4, 3/8, 1/2, ... 1) whose result still covers `target` in both
// directions. A target at or above the source gives the source size.
Size ScaledDecodeSize(Size source, Size target);

class JpegDecoder {
public:
    JpegDecoder();
    ~JpegDecoder();
    JpegDecoder(const JpegDecoder&) = delete;
    JpegDecoder& operator=(const JpegDecoder&) = delete;

    // Reads a whole file into the decoder's buffer (reused between calls).
    bool LoadFile(const std::string& path, std::string& error);
    const std::vector<std::uint8_t>& Buffer() const { return m_buffer; }
    // Takes JPEG data already in memory (an embedded thumbnail) instead.
    void LoadBytes(const std::uint8_t* data, std::size_t size) {
        m_buffer.assign(data, data + size);
    }

    // The frame header of the data in the buffer.
    bool ReadHeader(JpegInfo& info, std::string& error);

    // Decodes the buffer into `out` as opaque BGRA at the smallest DCT scale
    // that still covers `target` (a zero target means full size). Grayscale,
    // CMYK and progressive pictures decode. Damaged data gives what the
    // decoder could recover, unless RefuseDamagedData is set; failure only
    // when nothing usable came out. A picture whose decode would take more
    // than `budget` (the bitmap, and the whole-picture coefficient buffers of
    // a progressive or multi-scan file even when the output is scaled) is
    // refused before anything is allocated. `out` keeps its buffer when it
    // is large enough. After any failure the next call starts afresh.
    bool Decode(Size target, Bitmap& out, JpegInfo& info, std::string& error,
                std::int64_t budget = kDefaultBitmapBudget);

    // With `refuse`, Decode fails on data that TurboJPEG can only partly
    // decode (truncated or corrupt), instead of filling the rest with grey.
    void RefuseDamagedData(bool refuse) { m_refuseDamaged = refuse; }

    // LoadFile, then Decode.
    bool DecodeFile(const std::string& path, Size target, Bitmap& out, JpegInfo& info,
                    std::string& error, std::int64_t budget = kDefaultBitmapBudget);

private:
    bool DecodeCmyk(Size scaled, Bitmap& out, std::string& error);
    // Whether TurboJPEG's result `rc` is a failure; sets `error` and starts
    // a fresh handle when it is.
    bool Failed(int rc, std::string& error);
    int Flags() const;
    // A fresh TurboJPEG handle: some header errors leave the old one refusing
    // every later file.
    void Restart();

    void* m_handle = nullptr;
    bool m_refuseDamaged = false;
    std::vector<std::uint8_t> m_buffer;
    std::vector<std::uint8_t> m_cmyk; // scratch for CMYK pictures
};

class JpegEncoder {
public:
    JpegEncoder();
    ~JpegEncoder();
    JpegEncoder(const JpegEncoder&) = delete;
    JpegEncoder& operator=(const JpegEncoder&) = delete;

    // Compresses `image` at `quality` (1..100) with 4:2:0 chroma into `out`.
    // The alpha channel is dropped. The resolution goes into a JFIF header.
    bool Encode(const Bitmap& image, int quality, std::vector<std::uint8_t>& out,
                std::string& error);

private:
    void* m_handle = nullptr;
};

// The lossless operations on JPEG data; rotations are clockwise. Transpose
// mirrors along the diagonal from the top left, Transverse along the other.
enum class JpegTransform {
    Rotate90,
    Rotate180,
    Rotate270,
    FlipHorizontal,
    FlipVertical,
    Transpose,
    Transverse
};

// Turns or mirrors JPEG data without decoding its pixels, copying every
// marker section (EXIF among them). Where the picture is no whole number of
// MCUs the partial edge blocks are trimmed and `perfect` comes back false;
// without `allowTrim` such a picture is refused instead.
// Damaged data is refused rather than turned with grey in it, and so is a
// picture whose coefficient buffers (the source and the turned copy) would
// take more than `budget`.
bool TransformJpeg(const std::uint8_t* data, std::size_t size, JpegTransform op,
                   std::vector<std::uint8_t>& out, bool& perfect, std::string& error,
                   std::int64_t budget = kDefaultBitmapBudget, bool allowTrim = true);

// Puts the APP1 sections (EXIF, XMP) of the JPEG data `from` into the freshly
// encoded `into`, behind its SOI and JFIF header. Data that is no JPEG
// changes nothing.
void CopyMetadataSections(const std::vector<std::uint8_t>& from, std::vector<std::uint8_t>& into);

// Convenience wrappers with a decoder of their own.
bool ReadJpegInfo(const std::string& path, JpegInfo& info, std::string& error);
bool DecodeJpegFile(const std::string& path, Size target, Bitmap& out, std::string& error);
bool EncodeJpegFile(const Bitmap& image, int quality, const std::string& path, std::string& error);

} // namespace tivox
