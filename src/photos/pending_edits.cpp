#include "photos/pending_edits.h"

namespace tivox {

void CPendingEdits::SetBrightness(float value) {
    brightness = value;
    colorPending = 1;
}

void CPendingEdits::SetContrast(float value) {
    contrast = value;
    colorPending = 1;
}

void CPendingEdits::SetSharpness(float value) {
    sharpness = value;
    colorPending = 1;
}

void CPendingEdits::SetGamma(float value) {
    gamma = value;
    colorPending = 1;
}

void CPendingEdits::SetSaturation(float value) {
    saturation = value;
    colorPending = 1;
}

void CPendingEdits::SetGrayscale(std::int32_t value) {
    grayscale = value;
    colorPending = 1;
}

void CPendingEdits::SetNegative(std::int32_t value) {
    negative = value;
    colorPending = 1;
}

void CPendingEdits::SetCrop(const Rect& rect) {
    cropRect = rect;
    cropPending = 1;
}

void CPendingEdits::SetDenoise(std::int32_t level) {
    denoiseLevel = level;
    denoisePending = 1;
}

void CPendingEdits::AddRedEyePoint(const Point& point) {
    redEyePoints.push_back(point);
    redEyePending = 1;
}

void CPendingEdits::SetResize(const Size& size) {
    resizeSize = size;
    resizePending = 1;
}

bool CPendingEdits::HasPending() const {
    return colorPending || cropPending || denoisePending || redEyePending || resizePending;
}

void CPendingEdits::Clear() {
    colorPending = cropPending = denoisePending = redEyePending = resizePending = 0;
    brightness = contrast = sharpness = gamma = saturation = 0;
    grayscale = negative = 0;
    denoiseLevel = 0;
    redEyePoints.clear();
    redEyePoints.shrink_to_fit();
}

} // namespace tivox
