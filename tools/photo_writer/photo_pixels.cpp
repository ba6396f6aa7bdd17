#include "photo_writer/photo_pixels.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/jpeg_codec.h"

namespace tivox::test {

namespace {

struct Shape {
    float cx, cy, rx, ry;
    float r, g, b;
};

std::uint32_t Next(std::uint32_t& state) {
    state = state * 1664525u + 1013904223u;
    return state >> 8;
}

float Unit(std::uint32_t& state) {
    return float(Next(state) & 0xFFFF) / 65535.0f;
}

std::uint8_t Clamp8(float v) {
    return std::uint8_t(std::clamp(v, 0.0f, 255.0f));
}

} // namespace

bool PhotoBitmap(int width, int height, std::uint32_t seed, Bitmap& out) {
    if (!out.Reset(width, height))
        return false;
    std::uint32_t state = seed * 2654435761u + 1;
    std::vector<Shape> shapes(12);
    for (auto& s : shapes) {
        s = {Unit(state) * float(width),
             Unit(state) * float(height),
             (0.05f + 0.25f * Unit(state)) * float(width),
             (0.05f + 0.25f * Unit(state)) * float(height),
             255 * Unit(state),
             255 * Unit(state),
             255 * Unit(state)};
    }
    const float fx = 0.05f + 0.2f * Unit(state), fy = 0.05f + 0.2f * Unit(state);
    // Texture of leaves or fabric: a product of two waves, tabulated.
    std::vector<float> waveX(static_cast<std::size_t>(width));
    for (int x = 0; x < width; ++x)
        waveX[std::size_t(x)] = 12.0f * std::sin(float(x) * fx);
    std::vector<const Shape*> onRow;
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = out.Row(y);
        const float v = float(y) / float(height);
        const float waveY = std::sin(float(y) * fy);
        onRow.clear();
        for (const auto& s : shapes)
            if (std::fabs(float(y) - s.cy) < s.ry)
                onRow.push_back(&s);
        for (int x = 0; x < width; ++x) {
            const float u = float(x) / float(width);
            // Sky above, ground below.
            float r = 90 + 80 * v, g = 140 + 40 * u, b = 230 - 120 * v;
            for (const Shape* s : onRow) {
                const float dx = (float(x) - s->cx) / s->rx, dy = (float(y) - s->cy) / s->ry;
                const float d = dx * dx + dy * dy;
                if (d < 1.0f) {
                    const float shade = 1.0f - 0.4f * d;
                    r = s->r * shade;
                    g = s->g * shade;
                    b = s->b * shade;
                }
            }
            const float t = waveX[std::size_t(x)] * waveY;
            const float n = float(int(Next(state) & 15) - 8);
            row[4 * x + 0] = Clamp8(b + t + n);
            row[4 * x + 1] = Clamp8(g + t + n);
            row[4 * x + 2] = Clamp8(r + t + n);
            row[4 * x + 3] = 255;
        }
    }
    return true;
}

bool WritePhotoJpeg(const std::string& path, int width, int height, std::uint32_t seed,
                    int quality) {
    Bitmap pixels;
    std::string error;
    return PhotoBitmap(width, height, seed, pixels) && EncodeJpegFile(pixels, quality, path, error);
}

double Psnr(const Bitmap& a, const Bitmap& b) {
    double sum = 0;
    for (int y = 0; y < a.Height(); ++y) {
        const std::uint8_t* p = a.Row(y);
        const std::uint8_t* q = b.Row(y);
        for (int x = 0; x < a.Width() * 4; ++x) {
            if (x % 4 == 3)
                continue;
            const double d = double(p[x]) - double(q[x]);
            sum += d * d;
        }
    }
    const double mse = sum / (3.0 * a.Width() * a.Height());
    return mse == 0 ? 99.0 : 10.0 * std::log10(255.0 * 255.0 / mse);
}

} // namespace tivox::test
