#pragma once
// A small writer of TIFF structures as they stand inside an EXIF APP1
// section: directories of any tag, format and count, in either byte order,
// with sub-directories, linked directories, thumbnails and deliberately broken
// fields. Values are given in host form and written in the chosen byte order
// (FLOAT and DOUBLE too, as a real writer does).

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tivox::test {

enum class ByteOrder { Little, Big }; // "II", "MM"

// TIFF field types.
enum TiffFormat : std::uint16_t {
    kNone = 0,
    kByte = 1,
    kAscii = 2,
    kShort = 3,
    kLong = 4,
    kRational = 5,
    kSByte = 6,
    kUndefined = 7,
    kSShort = 8,
    kSLong = 9,
    kSRational = 10,
    kFloat = 11,
    kDouble = 12,
};

class TiffIfd {
public:
    TiffIfd();
    ~TiffIfd();
    TiffIfd(const TiffIfd& other);
    TiffIfd& operator=(const TiffIfd& other);
    TiffIfd(TiffIfd&&) noexcept;
    TiffIfd& operator=(TiffIfd&&) noexcept;

    // Entries are written in the order they are added.
    TiffIfd& Byte(std::uint16_t tag, std::vector<std::uint8_t> values);
    TiffIfd& Ascii(std::uint16_t tag, const std::string& text); // adds the zero byte
    TiffIfd& Short(std::uint16_t tag, std::vector<std::uint16_t> values);
    TiffIfd& Long(std::uint16_t tag, std::vector<std::uint32_t> values);
    TiffIfd& Rational(std::uint16_t tag, std::uint32_t numerator, std::uint32_t denominator);
    TiffIfd& SByte(std::uint16_t tag, std::vector<std::int8_t> values);
    TiffIfd& Undefined(std::uint16_t tag, std::vector<std::uint8_t> bytes);
    TiffIfd& SShort(std::uint16_t tag, std::vector<std::int16_t> values);
    TiffIfd& SLong(std::uint16_t tag, std::vector<std::int32_t> values);
    TiffIfd& SRational(std::uint16_t tag, std::int32_t numerator, std::int32_t denominator);
    TiffIfd& Float(std::uint16_t tag, float value);
    TiffIfd& Double(std::uint16_t tag, double value);

    // An entry whose value bytes are taken as they are (no byte swapping) and
    // whose count is given freely, so that it may disagree with the bytes.
    TiffIfd& Raw(std::uint16_t tag, std::uint16_t format, std::uint32_t count,
                 std::vector<std::uint8_t> fileBytes);
    // An entry whose value field holds this literal offset (written in the
    // file's byte order), pointing wherever the test wants.
    TiffIfd& RawOffset(std::uint16_t tag, std::uint16_t format, std::uint32_t count,
                       std::uint32_t offset);

    // A LONG entry pointing to a child directory (0x8769 Exif, 0xA005 Interop).
    TiffIfd& Sub(std::uint16_t tag, TiffIfd child);
    // Tags 0x0201 and 0x0202 in this directory, the bytes placed behind it.
    TiffIfd& Thumbnail(std::vector<std::uint8_t> bytes);
    // The next directory in the chain (the link behind the last entry).
    TiffIfd& Next(TiffIfd next);
    // A literal link behind the last entry instead of a real next directory.
    TiffIfd& RawLink(std::uint32_t link);
    // A literal entry count instead of the real one.
    TiffIfd& CountField(std::uint16_t count);

    struct Entry;
    const std::vector<Entry>& Entries() const;
    const TiffIfd* NextIfd() const { return next_.get(); }
    std::optional<std::uint32_t> LinkOverride() const { return rawLink_; }
    std::optional<std::uint16_t> CountOverride() const { return countField_; }

private:
    std::vector<Entry> entries_;
    std::unique_ptr<TiffIfd> next_;
    std::optional<std::uint32_t> rawLink_;
    std::optional<std::uint16_t> countField_;
};

struct TiffIfd::Entry {
    std::uint16_t tag = 0;
    std::uint16_t format = 0;
    std::uint32_t count = 0;
    std::vector<std::uint8_t> hostBytes; // values in little-endian host form
    int unit = 1;                        // size of a unit to swap for big-endian
    bool raw = false;                    // hostBytes go out as they are
    std::optional<std::uint32_t> rawOffset;
    std::shared_ptr<TiffIfd> child;           // sub-directory entries
    bool thumbnailOffset = false;             // value is patched to the thumbnail
    std::vector<std::uint8_t> thumbnailBytes; // on the offset entry
};

// The TIFF bytes, starting with the byte order mark; the first directory
// stands at offset 8.
std::vector<std::uint8_t> BuildTiff(const TiffIfd& first, ByteOrder order = ByteOrder::Little);
// "Exif\0\0" followed by the TIFF bytes: the payload of an EXIF APP1 section.
std::vector<std::uint8_t> ExifPayload(const TiffIfd& first, ByteOrder order = ByteOrder::Little);

} // namespace tivox::test
