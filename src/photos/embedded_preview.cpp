#include "photos/embedded_preview.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <utility>

#include "exif/exif_reader.h"
#include "platform/jpeg_codec.h"
#include "platform/orientation.h"

namespace tivox {

namespace {

// A preview is a few kilobytes of a small picture; anything bigger is not
// worth holding for a tile.
constexpr int kMaxPreviewSide = 1024;

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

bool DecodeSmallJpeg(const std::uint8_t* data, int size, Bitmap& out) {
    JpegDecoder decoder;
    decoder.LoadBytes(data, std::size_t(size));
    JpegInfo info;
    std::string error;
    return decoder.ReadHeader(info, error) && info.width <= kMaxPreviewSide &&
           info.height <= kMaxPreviewSide && decoder.Decode({0, 0}, out, info, error);
}

} // namespace

bool ReadEmbeddedPreview(const std::string& path, Bitmap& out) {
    // Non-blocking, and regular files only: a FIFO under a photo's name must
    // not stall the window.
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return false;
    std::unique_ptr<std::FILE, FileCloser> file(::fdopen(fd, "rb"));
    struct stat st {};
    if (!file) {
        ::close(fd);
        return false;
    }
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode))
        return false;
    ExifRecord record{};
    CExifReader reader(&record);
    // The reader stops at the start of the scan: only the head is read.
    reader.ReadSections(file.get());
    if (!record.ThumbnailData || record.ThumbnailSize <= 0)
        return false;
    // The camera stores the small picture as it stores the photo; the tag
    // stands both upright.
    const int orientation = ValidOrientation(record.Orientation);
    if (orientation == 1)
        return DecodeSmallJpeg(record.ThumbnailData, record.ThumbnailSize, out);
    Bitmap stored, upright;
    if (!DecodeSmallJpeg(record.ThumbnailData, record.ThumbnailSize, stored) ||
        !OrientBitmap(stored, orientation, upright))
        return false;
    out = std::move(upright);
    return true;
}

} // namespace tivox
