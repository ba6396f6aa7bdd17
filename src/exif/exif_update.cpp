#include "exif/exif_update.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <mutex>

#include "platform/atomic_file.h"
#include "platform/orientation.h"
#include "platform/resampler.h"

// exiv2 0.27 still hands out std::auto_ptr.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>

namespace tivox {

namespace {

// Where the sections of JPEG data before the picture end: whether they hold
// an APP1 section with EXIF data (most writes of files without any skip the
// parser this way), and the offset of the scan header (0 when not found).
struct JpegHead {
    bool hasExif = false;
    std::size_t scanStart = 0;
};

JpegHead WalkHead(const std::vector<std::uint8_t>& jpeg) {
    JpegHead head;
    std::size_t pos = 2;
    if (jpeg.size() < 4 || jpeg[0] != 0xFF || jpeg[1] != 0xD8)
        return head;
    while (pos + 4 <= jpeg.size() && jpeg[pos] == 0xFF) {
        const std::uint8_t marker = jpeg[pos + 1];
        if (marker == 0xFF) {
            ++pos;
            continue;
        }
        if (marker == 0xDA)
            head.scanStart = pos;
        if (marker == 0xDA || marker == 0xD9)
            return head;
        const std::size_t length = std::size_t(jpeg[pos + 2]) << 8 | jpeg[pos + 3];
        if (marker == 0xE1 && length >= 8 && pos + 10 <= jpeg.size() &&
            std::memcmp(&jpeg[pos + 4], "Exif\0\0", 6) == 0)
            head.hasExif = true;
        pos += 2 + length;
    }
    return head;
}

// A scan of one grey block and the end marker: what the metadata writer is
// given in place of the picture data, which it would only copy, megabytes of
// it, several times.
// Enough for the metadata of nearly every camera's photos: EXIF data fits one
// 64 KiB section, and only long XMP packets or preview images go beyond.
constexpr std::size_t kMetadataHead = std::size_t(256) << 10;

constexpr std::uint8_t kStandInScan[] = {0xFF, 0xDA, 0x00, 0x08, 0x01, 0x01,
                                         0x00, 0x00, 0x3F, 0x00, 0xFF, 0xD9};

// An integer tag that is there already gets `value`, in its own type where
// the value fits (the standard allows SHORT or LONG for the sizes).
void UpdateNumber(Exiv2::ExifData& exif, const char* key, std::uint32_t value) {
    const auto pos = exif.findKey(Exiv2::ExifKey(key));
    if (pos == exif.end())
        return;
    if (pos->typeId() == Exiv2::unsignedShort && value <= 0xFFFF)
        *pos = std::uint16_t(value);
    else
        *pos = value;
}

bool UpdateXmp(Exiv2::XmpData& xmp, const char* key, std::uint32_t value) {
    const auto pos = xmp.findKey(Exiv2::XmpKey(key));
    if (pos == xmp.end())
        return false;
    pos->setValue(std::to_string(value));
    return true;
}

// TurboJPEG's JFIF header does not belong into an EXIF thumbnail.
void DropJfifHeader(std::vector<std::uint8_t>& jpeg) {
    if (jpeg.size() > 6 && jpeg[2] == 0xFF && jpeg[3] == 0xE0) {
        const std::size_t end = 4 + (std::size_t(jpeg[4]) << 8 | jpeg[5]);
        if (end <= jpeg.size())
            jpeg.erase(jpeg.begin() + 2, jpeg.begin() + long(end));
    }
}

// `source` shrunk by a whole factor k to at least twice `target` on each
// side, each pixel the mean of up to 4 x 4 samples spread evenly over its
// k x k block. The resampler's kernel would read every pixel of a 24 MP photo
// for each of a thumbnail's few, and even reading each pixel once costs more
// than the rest of the thumbnail; the samples touch about a twentieth of the
// picture, and the resampler finishes from a small picture.
const Bitmap* BoxShrink(const Bitmap& source, Size target, Bitmap& out) {
    const int k =
        std::min(source.Width() / (2 * target.width), source.Height() / (2 * target.height));
    if (k < 2 || !out.Reset(source.Width() / k, source.Height() / k))
        return &source;
    const int n = std::min(k, 4);
    int offsets[4];
    for (int i = 0; i < n; ++i)
        offsets[i] = (2 * i + 1) * k / (2 * n);
    std::vector<std::uint32_t> sums(std::size_t(out.Width()) * 3);
    const std::uint32_t area = std::uint32_t(n * n);
    for (int oy = 0; oy < out.Height(); ++oy) {
        std::fill(sums.begin(), sums.end(), 0u);
        for (int j = 0; j < n; ++j) {
            const std::uint8_t* row = source.Row(oy * k + offsets[j]);
            for (int ox = 0; ox < out.Width(); ++ox) {
                std::uint32_t b = 0, g = 0, r = 0;
                for (int i = 0; i < n; ++i) {
                    const std::uint8_t* p = row + 4 * std::size_t(ox * k + offsets[i]);
                    b += p[0];
                    g += p[1];
                    r += p[2];
                }
                sums[3 * std::size_t(ox)] += b;
                sums[3 * std::size_t(ox) + 1] += g;
                sums[3 * std::size_t(ox) + 2] += r;
            }
        }
        std::uint8_t* q = out.Row(oy);
        for (int ox = 0; ox < out.Width(); ++ox, q += 4) {
            q[0] = std::uint8_t(sums[3 * std::size_t(ox)] / area);
            q[1] = std::uint8_t(sums[3 * std::size_t(ox) + 1] / area);
            q[2] = std::uint8_t(sums[3 * std::size_t(ox) + 2] / area);
            q[3] = 0xFF;
        }
    }
    return &out;
}

// The new thumbnail's JPEG bytes and size, from the picture or by turning
// the old one. False when none can be made.
bool MakeThumbnail(const Exiv2::DataBuf& old, bool oldIsJpeg, const PictureChange& change,
                   std::vector<std::uint8_t>& out, Size& size) {
    std::string error;
    if (change.picture && !change.picture->IsEmpty()) {
        const Size source{change.picture->Width(), change.picture->Height()};
        size = FitInto(source, {std::min(kExifThumbnailSide, source.width),
                                std::min(kExifThumbnailSide, source.height)});
        Bitmap shrunk;
        const auto small =
            ScaleImage(BoxShrink(*change.picture, size, shrunk), size.width, size.height);
        JpegEncoder encoder;
        if (!small || !encoder.Encode(*small, 85, out, error))
            return false;
        DropJfifHeader(out);
        return true;
    }
    bool perfect = false;
    return change.turn && oldIsJpeg &&
           TransformJpeg(old.pData_, std::size_t(old.size_), *change.turn, out, perfect, error);
}

void RebuildThumbnail(Exiv2::ExifData& exif, const PictureChange& change) {
    // Neither a new picture nor a turn: the pixels did not move (only the
    // Orientation changes), and the old thumbnail still shows them.
    if (!change.picture && !change.turn)
        return;
    Exiv2::ExifThumb thumb(exif);
    // Some cameras call a JPEG thumbnail uncompressed; the bytes tell.
    Exiv2::DataBuf old;
    const auto format = exif.findKey(Exiv2::ExifKey("Exif.Thumbnail.JPEGInterchangeFormat"));
    if (format != exif.end())
        old = format->dataArea();
    if (old.size_ <= 0)
        old = thumb.copy();
    if (old.size_ <= 0)
        return;
    const bool oldIsJpeg = std::strcmp(thumb.mimeType(), "image/jpeg") == 0;
    const bool oldHoldsJpeg = old.size_ > 2 && old.pData_[0] == 0xFF && old.pData_[1] == 0xD8;
    const auto width = exif.findKey(Exiv2::ExifKey("Exif.Thumbnail.ImageWidth"));
    const auto length = exif.findKey(Exiv2::ExifKey("Exif.Thumbnail.ImageLength"));
    Size oldSize{width != exif.end() ? int(width->toLong()) : 0,
                 length != exif.end() ? int(length->toLong()) : 0};
    std::vector<std::uint8_t> bytes;
    Size size = oldSize;
    if (!MakeThumbnail(old, oldHoldsJpeg, change, bytes, size)) {
        thumb.erase();
        return;
    }
    if (!change.picture && change.turn && SwapsSides(OrientationOf(*change.turn)))
        size = {oldSize.height, oldSize.width};
    if (oldIsJpeg) {
        thumb.setJpegThumbnail(bytes.data(), long(bytes.size()));
    } else {
        // A thumbnail in TIFF strips leaves its strip tags behind it; the
        // resolution the directory needs stays.
        const auto resolution = [&exif](const char* key) {
            const auto pos = exif.findKey(Exiv2::ExifKey(key));
            const Exiv2::Rational r =
                pos != exif.end() ? pos->toRational() : Exiv2::Rational{72, 1};
            return r.first > 0 && r.second > 0 ? Exiv2::URational(r.first, r.second)
                                               : Exiv2::URational{72, 1};
        };
        const Exiv2::URational xres = resolution("Exif.Thumbnail.XResolution");
        const Exiv2::URational yres = resolution("Exif.Thumbnail.YResolution");
        const auto unit = exif.findKey(Exiv2::ExifKey("Exif.Thumbnail.ResolutionUnit"));
        const auto unitValue = std::uint16_t(unit != exif.end() ? unit->toLong() : 2);
        thumb.erase();
        thumb.setJpegThumbnail(bytes.data(), long(bytes.size()), xres, yres, unitValue);
    }
    UpdateNumber(exif, "Exif.Thumbnail.ImageWidth", std::uint32_t(size.width));
    UpdateNumber(exif, "Exif.Thumbnail.ImageLength", std::uint32_t(size.height));
}

// UpdateExifToPicture on whole JPEG data, or on a head with a stand-in scan.
bool UpdateExifOf(std::vector<std::uint8_t>& jpeg, const PictureChange& change,
                  std::string& error) {
    static std::once_flag setUp;
    std::call_once(setUp, [] {
        // Failures travel back as our result; the library must not print.
        Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
        Exiv2::XmpParser::initialize();
    });
    try {
        auto image = Exiv2::ImageFactory::open(jpeg.data(), long(jpeg.size()));
        image->readMetadata();
        Exiv2::ExifData& exif = image->exifData();
        if (exif.empty())
            return true;
        const auto width = std::uint32_t(image->pixelWidth());
        const auto height = std::uint32_t(image->pixelHeight());
        UpdateNumber(exif, "Exif.Photo.PixelXDimension", width);
        UpdateNumber(exif, "Exif.Photo.PixelYDimension", height);
        UpdateNumber(exif, "Exif.Image.ImageWidth", width);
        UpdateNumber(exif, "Exif.Image.ImageLength", height);
        if (change.orientation >= 1 && change.orientation <= 8)
            UpdateNumber(exif, "Exif.Image.Orientation", std::uint32_t(change.orientation));
        RebuildThumbnail(exif, change);

        // The XMP packet stays byte for byte unless it repeats a value that changed.
        Exiv2::XmpData& xmp = image->xmpData();
        bool xmpChanged = UpdateXmp(xmp, "Xmp.exif.PixelXDimension", width);
        xmpChanged = UpdateXmp(xmp, "Xmp.exif.PixelYDimension", height) || xmpChanged;
        if (change.orientation >= 1 && change.orientation <= 8)
            xmpChanged =
                UpdateXmp(xmp, "Xmp.tiff.Orientation", std::uint32_t(change.orientation)) ||
                xmpChanged;
        image->writeXmpFromPacket(!xmpChanged);

        image->writeMetadata();
        Exiv2::BasicIo& io = image->io();
        if (io.open() != 0) {
            error = "cannot read the updated metadata";
            return false;
        }
        std::vector<std::uint8_t> out(io.size());
        const long got = io.read(out.data(), long(out.size()));
        io.close();
        if (got != long(out.size())) {
            error = "cannot read the updated metadata";
            return false;
        }
        jpeg.swap(out);
        return true;
    } catch (const std::exception& e) {
        error = std::string("EXIF data not updated: ") + e.what();
        return false;
    }
}

} // namespace

bool UpdateExifToPicture(std::vector<std::uint8_t>& jpeg, const PictureChange& change,
                         std::string& error) {
    const JpegHead head = WalkHead(jpeg);
    if (!head.hasExif)
        return true;
    if (head.scanStart > 0) {
        std::vector<std::uint8_t> updated;
        updated.reserve(head.scanStart + 65536);
        updated.assign(jpeg.begin(), jpeg.begin() + long(head.scanStart));
        updated.insert(updated.end(), std::begin(kStandInScan), std::end(kStandInScan));
        if (!UpdateExifOf(updated, change, error))
            return false;
        // The new sections, then the real scan in place of the stand-in.
        const std::size_t standIn = sizeof kStandInScan;
        if (updated.size() >= standIn &&
            std::equal(std::begin(kStandInScan), std::end(kStandInScan),
                       updated.end() - long(standIn))) {
            updated.resize(updated.size() - standIn);
            updated.insert(updated.end(), jpeg.begin() + long(head.scanStart), jpeg.end());
            jpeg.swap(updated);
            return true;
        }
    }
    return UpdateExifOf(jpeg, change, error);
}

bool EncodeEditedPhoto(const Bitmap& picture, int quality, const std::string& photoPath,
                       std::vector<std::uint8_t>& jpeg, std::string& error) {
    if (!JpegEncoder().Encode(picture, quality, jpeg, error))
        return false;
    // The photo's metadata sections, from its head alone when they end there.
    std::vector<std::uint8_t> original;
    std::string ignored;
    bool read = ReadFileStart(photoPath, kMetadataHead, original, ignored);
    if (read && WalkHead(original).scanStart == 0)
        read = ReadWholeFile(photoPath, original, ignored);
    if (read) {
        CopyMetadataSections(original, jpeg);
        UpdateExifToPicture(jpeg, {&picture, {}, 1}, ignored);
    }
    return true;
}

} // namespace tivox

#pragma GCC diagnostic pop
