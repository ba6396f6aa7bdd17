#pragma once
// A 32-bit picture in memory: bytes B, G, R, A per pixel, not premultiplied
// (the layout of QImage::Format_ARGB32, so the GUI shows it without a copy).
// Creation is fallible: a picture above the memory budget is refused before
// anything is allocated. Any thread may use a Bitmap it owns.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace tivox {

// Largest pixel buffer one bitmap may take (safety change: huge headers are
// refused cleanly instead of exhausting memory).
inline constexpr std::int64_t kDefaultBitmapBudget = std::int64_t{1} << 30;

class Bitmap {
public:
    Bitmap() = default;
    Bitmap(Bitmap&&) noexcept = default;
    Bitmap& operator=(Bitmap&&) noexcept = default;
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;

    // Makes this bitmap width x height with undefined pixels. Reuses the
    // present buffer when it is large enough, so hot paths avoid the cost of
    // a fresh allocation. False (and the bitmap unchanged) when a side is not
    // positive, the size exceeds the budget or memory is short.
    bool Reset(int width, int height, std::int64_t budget = kDefaultBitmapBudget);

    // A deep copy into `out`; false when memory is short.
    bool CopyTo(Bitmap& out) const;

    // Fills every pixel with one BGRA value given as 0xAARRGGBB.
    void Fill(std::uint32_t argb);

    // Frees the pixels; the bitmap becomes empty.
    void Release();

    bool IsEmpty() const { return m_width <= 0 || m_height <= 0; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int Stride() const { return m_width * 4; }
    std::size_t ByteSize() const { return std::size_t(Stride()) * std::size_t(m_height); }
    // Bytes allocated, which Reset reuses for any picture that fits.
    std::size_t Capacity() const { return m_capacity; }

    std::uint8_t* Data() { return m_pixels.get(); }
    const std::uint8_t* Data() const { return m_pixels.get(); }
    std::uint8_t* Row(int y) { return m_pixels.get() + std::size_t(y) * std::size_t(Stride()); }
    const std::uint8_t* Row(int y) const {
        return m_pixels.get() + std::size_t(y) * std::size_t(Stride());
    }
    // The pixel at (x, y) as 0xAARRGGBB.
    std::uint32_t PixelAt(int x, int y) const;
    void SetPixel(int x, int y, std::uint32_t argb);

    // Resolution in dots per inch travels with the picture.
    float DpiX() const { return m_dpiX; }
    float DpiY() const { return m_dpiY; }
    void SetResolution(float dpiX, float dpiY) {
        m_dpiX = dpiX;
        m_dpiY = dpiY;
    }

private:
    struct FreeDeleter {
        void operator()(std::uint8_t* p) const { std::free(p); }
    };
    std::unique_ptr<std::uint8_t, FreeDeleter> m_pixels;
    std::size_t m_capacity = 0;
    int m_width = 0;
    int m_height = 0;
    float m_dpiX = 96.0f;
    float m_dpiY = 96.0f;
};

} // namespace tivox
