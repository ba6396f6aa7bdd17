#include "photos/embedded_preview.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <turbojpeg.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

#include "exif/exif_reader.h"

namespace tivox {

namespace {

// A preview is a few kilobytes of a small picture; anything bigger is not
// worth holding for a tile.
constexpr int kMaxPreviewSide = 1024;

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

bool DecodeSmallJpeg(const std::uint8_t* data, int size, Bitmap& out) {
    std::unique_ptr<void, int (*)(tjhandle)> handle(tjInitDecompress(), tjDestroy);
    if (!handle)
        return false;
    int width = 0, height = 0, sub = 0, colorspace = 0;
    auto* bytes = const_cast<unsigned char*>(data); // TurboJPEG 2.1 takes non-const
    if (tjDecompressHeader3(handle.get(), bytes, static_cast<unsigned long>(size), &width, &height,
                            &sub, &colorspace) != 0 ||
        width <= 0 || height <= 0 || width > kMaxPreviewSide || height > kMaxPreviewSide ||
        colorspace == TJCS_CMYK || colorspace == TJCS_YCCK)
        return false;
    Bitmap image;
    if (!image.Reset(width, height))
        return false;
    if (tjDecompress2(handle.get(), bytes, static_cast<unsigned long>(size), image.Data(), width,
                      image.Stride(), height, TJPF_BGRA, 0) != 0)
        return false;
    // TurboJPEG leaves the fourth byte as it likes; the picture is opaque.
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = image.Row(y);
        for (int x = 0; x < width; ++x)
            row[4 * x + 3] = 0xFF;
    }
    out = std::move(image);
    return true;
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
    return DecodeSmallJpeg(record.ThumbnailData, record.ThumbnailSize, out);
}

} // namespace tivox
