// Serialises TiffIfd trees. Each directory is written where the output
// stands, its out-of-line values, children, thumbnail and successor behind
// it; offsets are patched once the target's place is known.

#include "photo_writer/tiff_builder.h"

#include <algorithm>
#include <cstring>

namespace tivox::test {

namespace {

template <typename T> std::vector<std::uint8_t> HostBytes(const std::vector<T>& values) {
    std::vector<std::uint8_t> bytes;
    for (T v : values) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &v, sizeof(T));
        for (std::size_t i = 0; i < sizeof(T); ++i)
            bytes.push_back(std::uint8_t(bits >> (8 * i)));
    }
    return bytes;
}

class TiffWriter {
public:
    explicit TiffWriter(ByteOrder order) : order_(order) {}

    std::vector<std::uint8_t> out;

    void Put16(std::size_t at, std::uint32_t v) {
        if (order_ == ByteOrder::Big) {
            out[at] = std::uint8_t(v >> 8);
            out[at + 1] = std::uint8_t(v);
        } else {
            out[at] = std::uint8_t(v);
            out[at + 1] = std::uint8_t(v >> 8);
        }
    }
    void Put32(std::size_t at, std::uint32_t v) {
        for (int i = 0; i < 4; ++i) {
            const int shift = order_ == ByteOrder::Big ? 24 - 8 * i : 8 * i;
            out[at + std::size_t(i)] = std::uint8_t(v >> shift);
        }
    }

    std::size_t WriteIfd(const TiffIfd& ifd) {
        const auto& entries = ifd.Entries();
        const std::size_t pos = out.size();
        out.resize(pos + 2 + 12 * entries.size() + 4, 0);
        Put16(pos, ifd.CountOverride().value_or(std::uint16_t(entries.size())));
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const TiffIfd::Entry& e = entries[i];
            const std::size_t at = pos + 2 + 12 * i;
            Put16(at, e.tag);
            Put16(at + 2, e.format);
            Put32(at + 4, e.count);
            if (e.rawOffset) {
                Put32(at + 8, *e.rawOffset);
            } else if (!e.child && !e.thumbnailOffset) {
                const std::vector<std::uint8_t> bytes = FileBytes(e);
                if (bytes.size() <= 4) {
                    std::copy(bytes.begin(), bytes.end(), out.begin() + long(at + 8));
                } else {
                    if (out.size() % 2)
                        out.push_back(0);
                    // Offsets count from the byte order mark, which is out[0].
                    Put32(at + 8, std::uint32_t(out.size()));
                    out.insert(out.end(), bytes.begin(), bytes.end());
                }
            }
        }
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const TiffIfd::Entry& e = entries[i];
            const std::size_t at = pos + 2 + 12 * i;
            if (e.child) {
                Put32(at + 8, std::uint32_t(WriteIfd(*e.child)));
            } else if (e.thumbnailOffset) {
                Put32(at + 8, std::uint32_t(out.size()));
                out.insert(out.end(), e.thumbnailBytes.begin(), e.thumbnailBytes.end());
            }
        }
        const std::size_t link = pos + 2 + 12 * entries.size();
        if (ifd.LinkOverride())
            Put32(link, *ifd.LinkOverride());
        else if (ifd.NextIfd())
            Put32(link, std::uint32_t(WriteIfd(*ifd.NextIfd())));
        return pos;
    }

private:
    std::vector<std::uint8_t> FileBytes(const TiffIfd::Entry& e) const {
        std::vector<std::uint8_t> bytes = e.hostBytes;
        if (e.raw || order_ == ByteOrder::Little || e.unit == 1)
            return bytes;
        const auto unit = std::size_t(e.unit);
        for (std::size_t i = 0; i + unit <= bytes.size(); i += unit)
            for (std::size_t a = i, b = i + unit - 1; a < b; ++a, --b)
                std::swap(bytes[a], bytes[b]);
        return bytes;
    }

    ByteOrder order_;
};

} // namespace

TiffIfd::TiffIfd() = default;
TiffIfd::~TiffIfd() = default;
TiffIfd::TiffIfd(TiffIfd&&) noexcept = default;
TiffIfd& TiffIfd::operator=(TiffIfd&&) noexcept = default;

TiffIfd::TiffIfd(const TiffIfd& other)
    : entries_(other.entries_),
      next_(other.next_ ? std::make_unique<TiffIfd>(*other.next_) : nullptr),
      rawLink_(other.rawLink_), countField_(other.countField_) {}

TiffIfd& TiffIfd::operator=(const TiffIfd& other) {
    if (this != &other) {
        TiffIfd copy(other);
        *this = std::move(copy);
    }
    return *this;
}

const std::vector<TiffIfd::Entry>& TiffIfd::Entries() const {
    return entries_;
}

namespace {

TiffIfd::Entry MakeEntry(std::uint16_t tag, std::uint16_t format, std::uint32_t count,
                         std::vector<std::uint8_t> bytes, int unit) {
    TiffIfd::Entry e;
    e.tag = tag;
    e.format = format;
    e.count = count;
    e.hostBytes = std::move(bytes);
    e.unit = unit;
    return e;
}

} // namespace

TiffIfd& TiffIfd::Byte(std::uint16_t tag, std::vector<std::uint8_t> values) {
    const auto n = std::uint32_t(values.size());
    entries_.push_back(MakeEntry(tag, kByte, n, std::move(values), 1));
    return *this;
}

TiffIfd& TiffIfd::Ascii(std::uint16_t tag, const std::string& text) {
    std::vector<std::uint8_t> bytes(text.begin(), text.end());
    bytes.push_back(0);
    const auto n = std::uint32_t(bytes.size());
    entries_.push_back(MakeEntry(tag, kAscii, n, std::move(bytes), 1));
    return *this;
}

TiffIfd& TiffIfd::Short(std::uint16_t tag, std::vector<std::uint16_t> values) {
    entries_.push_back(MakeEntry(tag, kShort, std::uint32_t(values.size()), HostBytes(values), 2));
    return *this;
}

TiffIfd& TiffIfd::Long(std::uint16_t tag, std::vector<std::uint32_t> values) {
    entries_.push_back(MakeEntry(tag, kLong, std::uint32_t(values.size()), HostBytes(values), 4));
    return *this;
}

TiffIfd& TiffIfd::Rational(std::uint16_t tag, std::uint32_t numerator, std::uint32_t denominator) {
    entries_.push_back(
        MakeEntry(tag, kRational, 1, HostBytes<std::uint32_t>({numerator, denominator}), 4));
    return *this;
}

TiffIfd& TiffIfd::SByte(std::uint16_t tag, std::vector<std::int8_t> values) {
    entries_.push_back(MakeEntry(tag, kSByte, std::uint32_t(values.size()), HostBytes(values), 1));
    return *this;
}

TiffIfd& TiffIfd::Undefined(std::uint16_t tag, std::vector<std::uint8_t> bytes) {
    const auto n = std::uint32_t(bytes.size());
    entries_.push_back(MakeEntry(tag, kUndefined, n, std::move(bytes), 1));
    return *this;
}

TiffIfd& TiffIfd::SShort(std::uint16_t tag, std::vector<std::int16_t> values) {
    entries_.push_back(MakeEntry(tag, kSShort, std::uint32_t(values.size()), HostBytes(values), 2));
    return *this;
}

TiffIfd& TiffIfd::SLong(std::uint16_t tag, std::vector<std::int32_t> values) {
    entries_.push_back(MakeEntry(tag, kSLong, std::uint32_t(values.size()), HostBytes(values), 4));
    return *this;
}

TiffIfd& TiffIfd::SRational(std::uint16_t tag, std::int32_t numerator, std::int32_t denominator) {
    entries_.push_back(
        MakeEntry(tag, kSRational, 1, HostBytes<std::int32_t>({numerator, denominator}), 4));
    return *this;
}

TiffIfd& TiffIfd::Float(std::uint16_t tag, float value) {
    entries_.push_back(MakeEntry(tag, kFloat, 1, HostBytes<float>({value}), 4));
    return *this;
}

TiffIfd& TiffIfd::Double(std::uint16_t tag, double value) {
    entries_.push_back(MakeEntry(tag, kDouble, 1, HostBytes<double>({value}), 8));
    return *this;
}

TiffIfd& TiffIfd::Raw(std::uint16_t tag, std::uint16_t format, std::uint32_t count,
                      std::vector<std::uint8_t> fileBytes) {
    Entry e = MakeEntry(tag, format, count, std::move(fileBytes), 1);
    e.raw = true;
    entries_.push_back(std::move(e));
    return *this;
}

TiffIfd& TiffIfd::RawOffset(std::uint16_t tag, std::uint16_t format, std::uint32_t count,
                            std::uint32_t offset) {
    Entry e = MakeEntry(tag, format, count, {}, 1);
    e.rawOffset = offset;
    entries_.push_back(std::move(e));
    return *this;
}

TiffIfd& TiffIfd::Sub(std::uint16_t tag, TiffIfd child) {
    Entry e = MakeEntry(tag, kLong, 1, {}, 4);
    e.child = std::make_shared<TiffIfd>(std::move(child));
    entries_.push_back(std::move(e));
    return *this;
}

TiffIfd& TiffIfd::Thumbnail(std::vector<std::uint8_t> bytes) {
    const auto size = std::uint32_t(bytes.size());
    Entry offset = MakeEntry(0x0201, kLong, 1, {}, 4);
    offset.thumbnailOffset = true;
    offset.thumbnailBytes = std::move(bytes);
    entries_.push_back(std::move(offset));
    return Long(0x0202, {size});
}

TiffIfd& TiffIfd::Next(TiffIfd next) {
    next_ = std::make_unique<TiffIfd>(std::move(next));
    return *this;
}

TiffIfd& TiffIfd::RawLink(std::uint32_t link) {
    rawLink_ = link;
    return *this;
}

TiffIfd& TiffIfd::CountField(std::uint16_t count) {
    countField_ = count;
    return *this;
}

std::vector<std::uint8_t> BuildTiff(const TiffIfd& first, ByteOrder order) {
    TiffWriter writer(order);
    writer.out.resize(8);
    const char mark = order == ByteOrder::Big ? 'M' : 'I';
    writer.out[0] = std::uint8_t(mark);
    writer.out[1] = std::uint8_t(mark);
    writer.Put16(2, 42);
    writer.Put32(4, 8);
    writer.WriteIfd(first);
    return writer.out;
}

std::vector<std::uint8_t> ExifPayload(const TiffIfd& first, ByteOrder order) {
    std::vector<std::uint8_t> payload = {'E', 'x', 'i', 'f', 0, 0};
    const std::vector<std::uint8_t> tiff = BuildTiff(first, order);
    payload.insert(payload.end(), tiff.begin(), tiff.end());
    return payload;
}

} // namespace tivox::test
