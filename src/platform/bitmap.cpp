#include "platform/bitmap.h"

#include <cstring>

namespace tivox {

bool Bitmap::Reset(int width, int height, std::int64_t budget) {
    if (width <= 0 || height <= 0)
        return false;
    const std::int64_t bytes = std::int64_t(width) * std::int64_t(height) * 4;
    if (bytes > budget)
        return false;
    if (std::size_t(bytes) > m_capacity) {
        // 64-byte alignment suits every vector width the pixel loops use.
        const std::size_t rounded = (std::size_t(bytes) + 63) & ~std::size_t(63);
        auto* p = static_cast<std::uint8_t*>(std::aligned_alloc(64, rounded));
        if (!p)
            return false;
        m_pixels.reset(p);
        m_capacity = rounded;
    }
    m_width = width;
    m_height = height;
    return true;
}

bool Bitmap::CopyTo(Bitmap& out) const {
    if (IsEmpty()) {
        out.Release();
        return true;
    }
    if (!out.Reset(m_width, m_height, std::int64_t(ByteSize()) + 1))
        return false;
    std::memcpy(out.Data(), Data(), ByteSize());
    out.SetResolution(m_dpiX, m_dpiY);
    return true;
}

void Bitmap::Fill(std::uint32_t argb) {
    for (int y = 0; y < m_height; ++y) {
        auto* row = reinterpret_cast<std::uint32_t*>(Row(y));
        // Bytes B, G, R, A in memory are 0xAARRGGBB on a little-endian machine.
        for (int x = 0; x < m_width; ++x)
            row[x] = argb;
    }
}

void Bitmap::Release() {
    m_pixels.reset();
    m_capacity = 0;
    m_width = 0;
    m_height = 0;
}

std::uint32_t Bitmap::PixelAt(int x, int y) const {
    const std::uint8_t* p = Row(y) + std::size_t(x) * 4;
    return std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 |
           std::uint32_t(p[3]) << 24;
}

void Bitmap::SetPixel(int x, int y, std::uint32_t argb) {
    std::uint8_t* p = Row(y) + std::size_t(x) * 4;
    p[0] = std::uint8_t(argb);
    p[1] = std::uint8_t(argb >> 8);
    p[2] = std::uint8_t(argb >> 16);
    p[3] = std::uint8_t(argb >> 24);
}

} // namespace tivox
