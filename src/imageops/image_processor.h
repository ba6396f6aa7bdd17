#pragma once
// Carries out the user's edits on photos. Holds the one colour state of the
// colour sliders (a 5 x 5 matrix plus gamma and sharpness), dispatches each
// operation by its code, records deferred edits in the photo and shows them
// on its working image. User-interface thread only.

#include <cstdint>
#include <functional>
#include <string>

#include "imageops/color_matrix.h"
#include "imageops/operation.h"
#include "photos/scaled_loader.h"
#include "platform/ui_text.h"

namespace tivox {

class CPendingEdits;
class CPhoto;
class IEditHost;

// The values of the colour tab: its five sliders as the processor takes them
// and its two check boxes.
struct ColorSettings {
    float brightness = 0.0f;
    float contrast = 1.0f;
    float sharpness = 0.0f;
    float gamma = 1.0f;
    float saturation = 1.0f;
    bool grayscale = false;
    bool negative = false;

    // Sets the value of a slider's code (opBrightness to opSaturation);
    // other codes change nothing.
    void Set(std::int32_t code, float value);
};

// The colour values recorded in a photo's pending edits.
ColorSettings ColorSettingsOf(const CPendingEdits& edits);

// Writes the scaled copies of photo files for a gallery: a resize operation
// with a folder in its text asks for a copy fitted into width x height in
// that folder and, with x and y above 0, one fitted into x x y in its
// "thumbs" subfolder, all copies of one photo from one decode. Keeps its
// decoder and buffers from one photo to the next: one object per thread; any
// thread.
class CScaledCopier {
public:
    // Decodes the photo once, at the smallest DCT scale that covers the
    // largest of the fitted boxes, and writes each copy as a JPEG of
    // `quality`; the smaller copy is resampled from the larger. False at the
    // first failure, with `error` naming the file and the cause.
    bool Write(const COperation& operation, const std::string& photoPath, int quality,
               UiText& error);

private:
    CScaledLoader m_loader;
    Resampler m_resampler;
    Bitmap m_large;
    Bitmap m_small;
};

class CImageProcessor {
public:
    CImageProcessor() { ResetColorState(); }
    virtual ~CImageProcessor() = default;

    // The full-screen window: photo list, screen and thumbnail sizes, JPEG
    // quality. Not owned.
    void SetWindow(IEditHost* window) { m_window = window; }

    // Changes the colour state for colour codes (slider value in `value`),
    // then stores `code` as the last operation, whatever the code.
    void SetOperation(std::int32_t code, float value = 0.0f);

    // The colour state of `settings` alone: the sliders in their order
    // (brightness, contrast, sharpness, gamma, saturation), then grayscale,
    // then negative, whatever the order the user set them in.
    void SetColor(const ColorSettings& settings);
    // Shows `settings` on photos as each change of the colour tab does:
    // `run` carries an operation to the photos, once to take each back to
    // its file and to neutral, so that steps never pile up, and once to show
    // the settings on it.
    void ShowColor(const ColorSettings& settings,
                   const std::function<void(const COperation&)>& run);

    // Carries out one operation on one photo; `batch` when the photo comes
    // from a walk over the list. 0, or -1 with the error text set.
    int Execute(const COperation& operation, CPhoto* photo, bool batch);

    // Turns or mirrors the photo's file without loss (codes 1 to 5).
    int LosslessTransform(std::int32_t code, CPhoto* photo);

    // Moves the photo's file to the desktop Trash (MoveToTrash) and drops the
    // photo from the list. In a batch the list
    // removes the entry at its walk position, else it looks the photo up.
    int DeletePhoto(CPhoto* photo, bool batch);

    // Shows the colour state on the working image (or, with `full`, on the
    // full image); records the values in the photo unless `full`.
    void ApplyColor(CPhoto* photo, bool full);
    // Copies the seven colour values into the photo's pending edits.
    void RecordColor(CPhoto* photo) const;
    void ResetColorState();
    // m_colorMatrix = m_colorMatrix x step (columns 0 to 3).
    void MultiplyMatrix(const ColorMatrix& step) { tivox::MultiplyMatrix(m_colorMatrix, step); }

    UiText GetErrorText() const { return m_errorText; }

    ColorMatrix m_colorMatrix;
    ColorSettings m_color; // the values the matrix was built from
    std::int32_t m_lastOperation = 0;

private:
    int Crop(const COperation& operation, CPhoto& photo);
    int Resize(const COperation& operation, CPhoto& photo);
    int Fail(UiText text);

    IEditHost* m_window = nullptr;
    UiText m_errorText;
};

} // namespace tivox
