#pragma once
// What a photo remembers of the edits made in the preview and not yet written
// to its file. A plain record: it knows nothing of pixels. UI thread only.

#include <cstdint>
#include <vector>

#include "platform/geometry.h"

namespace tivox {

class CPendingEdits {
public:
    CPendingEdits() = default;
    virtual ~CPendingEdits() = default;
    CPendingEdits(const CPendingEdits&) = default;
    CPendingEdits& operator=(const CPendingEdits&) = default;

    // Each setter stores its value and marks its kind as pending, also when
    // the value is neutral.
    void SetBrightness(float value);
    void SetContrast(float value);
    void SetSharpness(float value);
    void SetGamma(float value);
    void SetSaturation(float value);
    void SetGrayscale(std::int32_t value);
    void SetNegative(std::int32_t value);
    void SetCrop(const Rect& rect);
    void SetDenoise(std::int32_t level);
    void AddRedEyePoint(const Point& point); // points add up, in click order
    void SetResize(const Size& size);

    bool HasPending() const;
    // Empties the record. cropRect and resizeSize keep their values; their
    // flags decide whether they count.
    void Clear();

    std::int32_t colorPending = 0;
    std::int32_t cropPending = 0;
    std::int32_t denoisePending = 0;
    std::int32_t redEyePending = 0;
    std::int32_t resizePending = 0;
    float brightness = 0;
    float contrast = 0;
    float sharpness = 0;
    float gamma = 0;
    float saturation = 0;
    std::int32_t grayscale = 0;
    std::int32_t negative = 0;
    Rect cropRect; // screen pixels, on the working image
    std::int32_t denoiseLevel = 0;
    std::vector<Point> redEyePoints; // full-image pixels
    Size resizeSize;
};

} // namespace tivox
