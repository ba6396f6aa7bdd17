#include "imageops/image_processor.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <unistd.h>
#include <vector>

#include "imageops/apply_edits.h"
#include "imageops/convolution.h"
#include "imageops/crop_image.h"
#include "imageops/lossless_transform.h"
#include "photos/edit_host.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "photos/scaled_loader.h"
#include "platform/bitmap.h"
#include "platform/jpeg_codec.h"
#include "platform/resampler.h"
#include "platform/trash.h"

namespace tivox {

void CImageProcessor::ResetColorState() {
    m_colorMatrix = ColorMatrix::Identity();
    m_color = {};
}

void ColorSettings::Set(std::int32_t code, float value) {
    switch (code) {
    case opBrightness:
        brightness = value;
        break;
    case opContrast:
        contrast = value;
        break;
    case opSharpness:
        sharpness = value;
        break;
    case opGamma:
        gamma = value;
        break;
    case opSaturation:
        saturation = value;
        break;
    default:
        break;
    }
}

ColorSettings ColorSettingsOf(const CPendingEdits& edits) {
    return {edits.brightness, edits.contrast,       edits.sharpness,    edits.gamma,
            edits.saturation, edits.grayscale != 0, edits.negative != 0};
}

void CImageProcessor::SetColor(const ColorSettings& settings) {
    ResetColorState();
    SetOperation(opBrightness, settings.brightness);
    SetOperation(opContrast, settings.contrast);
    SetOperation(opSharpness, settings.sharpness);
    SetOperation(opGamma, settings.gamma);
    SetOperation(opSaturation, settings.saturation);
    if (settings.grayscale)
        SetOperation(opGrayscale);
    if (settings.negative)
        SetOperation(opNegative);
}

void CImageProcessor::ShowColor(const ColorSettings& settings,
                                const std::function<void(const COperation&)>& run) {
    // With the reset as the last operation, applying reloads the working image.
    SetOperation(opResetColor);
    run(COperation::Plain(opApplyColor));
    SetColor(settings);
    run(COperation::Plain(opApplyColor));
}

void CImageProcessor::SetOperation(std::int32_t code, float value) {
    m_color.Set(code, value);
    switch (code) {
    case opBrightness:
        MultiplyMatrix(BrightnessMatrix(value));
        break;
    case opContrast:
        MultiplyMatrix(ContrastMatrix(value));
        break;
    case opSaturation:
        MultiplyMatrix(SaturationMatrix(value));
        break;
    case opGrayscale:
        m_color.grayscale = !m_color.grayscale;
        MultiplyMatrix(GrayscaleMatrix());
        break;
    case opNegative:
        m_color.negative = !m_color.negative;
        MultiplyMatrix(NegativeMatrix());
        break;
    case opResetColor:
        ResetColorState();
        break;
    default:
        break;
    }
    m_lastOperation = code;
}

void CImageProcessor::RecordColor(CPhoto* photo) const {
    if (!photo)
        return;
    CPendingEdits& e = photo->edits;
    e.SetBrightness(m_color.brightness);
    e.SetContrast(m_color.contrast);
    e.SetSharpness(m_color.sharpness);
    e.SetGamma(m_color.gamma);
    e.SetSaturation(m_color.saturation);
    e.SetGrayscale(m_color.grayscale);
    e.SetNegative(m_color.negative);
}

void CImageProcessor::ApplyColor(CPhoto* photo, bool full) {
    if (!photo)
        return;
    Bitmap* image = full ? photo->fullImage.get() : photo->screenImage.get();
    if (!full && m_window && !m_window->ShowsPreviews())
        image = nullptr; // nobody looks: the values are only recorded
    if (!image) {
        // A photo that was never shown only gets the values recorded.
        if (!full)
            RecordColor(photo);
        return;
    }
    if (m_lastOperation == opResetColor) {
        // Slider steps never pile up: the working image starts from the file.
        if (m_window)
            photo->LoadScreenImage(m_window->GetScreenSize());
        ResetColorState();
        if (!full)
            RecordColor(photo);
        return;
    }
    if (!full)
        RecordColor(photo);
    if (m_color.sharpness == 0.0f) {
        ApplyColorMatrix(*image, m_colorMatrix, m_color.gamma);
        return;
    }
    // The colour goes row by row into the sharpening walk, each row just
    // before it is read: one trip through the picture's memory, not two.
    const ColorTransform colour(m_colorMatrix, m_color.gamma);
    const auto width = std::size_t(image->Width());
    if (!Sharpen(*image, SharpenStrength(m_color.sharpness), PixelPath::Best,
                 [&](std::uint8_t* row) { colour.Apply(row, width); }))
        ApplyColorMatrix(*image, m_colorMatrix, m_color.gamma); // the colour without sharpening
}

int CImageProcessor::Fail(UiText text) {
    m_errorText = std::move(text);
    return -1;
}

int CImageProcessor::Execute(const COperation& operation, CPhoto* photo, bool batch) {
    if (!photo)
        return 0;
    switch (operation.code) {
    case opRotateLeft:
    case opRotateRight:
    case opRotate180:
    case opMirrorHorizontal:
    case opMirrorVertical:
        return LosslessTransform(operation.code, photo);
    case opDenoise:
        photo->edits.SetDenoise(1);
        if (m_window)
            ApplyEdits(*photo, editAll, *m_window, false);
        return 0;
    case opCrop:
        return Crop(operation, *photo);
    case opResize:
        return Resize(operation, *photo);
    case opDelete:
        return DeletePhoto(photo, batch);
    case opResetColor:
        SetOperation(opResetColor);
        ApplyColor(photo, false);
        return 0;
    case opApplyColor:
        ApplyColor(photo, false);
        return 0;
    default:
        return 0;
    }
}

int CImageProcessor::Crop(const COperation& operation, CPhoto& photo) {
    const Rect rect{operation.x, operation.y, operation.width, operation.height};
    if (rect.width <= 0 || rect.height <= 0)
        return Fail({TIVOX_TR("The crop rectangle is empty."), {}});
    if (photo.screenImage && m_window) {
        // Refuse a rectangle that would cut nothing out of the picture.
        const Size image{photo.screenImage->Width(), photo.screenImage->Height()};
        const Size screen = m_window->GetScreenSize();
        const Rect cut =
            ClipToImage(ScreenRectToImage(image, FitInto(image, screen), screen, rect), image);
        if (cut.width <= 0 || cut.height <= 0)
            return Fail({TIVOX_TR("The crop rectangle lies outside the picture."), {}});
    }
    photo.edits.SetCrop(rect);
    if (m_window)
        ApplyEdits(photo, editCrop, *m_window, false);
    SetOperation(opCrop);
    ApplyColor(&photo, false);
    return 0;
}

int CImageProcessor::Resize(const COperation& operation, CPhoto& photo) {
    const std::int64_t bytes = std::int64_t(operation.width) * std::int64_t(operation.height) * 4;
    if (operation.width <= 0 || operation.height <= 0 || bytes > kDefaultBitmapBudget)
        return Fail({TIVOX_TR("A picture of %s x %s pixels is too large or empty."),
                     {std::to_string(operation.width), std::to_string(operation.height)}});
    photo.edits.SetResize(Size{operation.width, operation.height});
    if (m_window)
        ApplyEdits(photo, editResize, *m_window, false);
    return 0;
}

namespace {

// One scaled copy of a photo: the box it is fitted into and its file.
struct ScaledCopyTarget {
    Size box;
    std::string path;
};

} // namespace

bool CScaledCopier::Write(const COperation& operation, const std::string& photoPath, int quality,
                          UiText& error) {
    const auto slash = photoPath.rfind('/');
    if (slash == std::string::npos || slash + 1 >= photoPath.size() || operation.text.empty()) {
        error = {TIVOX_TR("ResizePhoto: filename error"), {}};
        return false;
    }
    std::string folder = operation.text;
    if (folder.back() != '/')
        folder += '/';
    const std::string name = photoPath.substr(slash + 1);
    // The thumbnail last: a gallery's pages list the thumbnails, so a photo
    // whose large picture failed stays out of them.
    std::vector<ScaledCopyTarget> targets{{{operation.width, operation.height}, folder + name}};
    if (operation.x > 0 && operation.y > 0)
        targets.push_back({{operation.x, operation.y}, folder + "thumbs/" + name});

    // The file as it is on disc, without any of the recorded edits, fitted
    // into each box (FitInto): a 4:3 photo fills a 4:3 size, an upright one
    // keeps its shape instead of being squeezed. One decode covers the box
    // that holds them all; the copies come from its fitted picture.
    Size cover;
    for (const ScaledCopyTarget& t : targets)
        cover = {std::max(cover.width, t.box.width), std::max(cover.height, t.box.height)};
    std::string cause;
    Size source;
    if (!m_loader.LoadInto(photoPath, cover, m_large, source, cause) || m_large.IsEmpty()) {
        error = ReadErrorText(photoPath, cause);
        return false;
    }
    // The sizes are fitted from the photo's own (upright) size, as a decode
    // per box would fit them: fitting the large copy again could round one
    // pixel off.
    const Size large{m_large.Width(), m_large.Height()};
    for (const ScaledCopyTarget& t : targets) {
        const Size fitted = FitInto(source, t.box);
        const Bitmap* copy = &m_large;
        if (fitted != large) {
            if (!m_resampler.Scale(m_large, fitted.width, fitted.height, m_small)) {
                error = ReadErrorText(photoPath, "out of memory for the scaled picture");
                return false;
            }
            copy = &m_small;
        }
        if (!EncodeJpegFile(*copy, quality, t.path, cause)) {
            error = {TIVOX_TR("Could not write %s: %s"), {t.path, cause}};
            return false;
        }
    }
    return true;
}

int CImageProcessor::LosslessTransform(std::int32_t code, CPhoto* photo) {
    if (!photo || !m_window)
        return 0;
    // As a text, so that the window translates it before the file goes in.
    UiText error;
    if (LosslessTransformPhoto(code, *photo, *m_window, error))
        return 0;
    return Fail(std::move(error));
}

int CImageProcessor::DeletePhoto(CPhoto* photo, bool batch) {
    if (!photo)
        return 0;
    int result = 0;
    // Into the desktop Trash, from where a file manager brings it back.
    std::string trashed;
    UiText error;
    if (!MoveToTrash(photo->path, trashed, error)) {
        result = Fail(error);
        if (m_window)
            m_window->BringToTop();
    } else if (CPhotoList* list = m_window ? m_window->GetPhotoList() : nullptr) {
        // In a walk the list's cursor has moved on already; removing the
        // entry behind it keeps the walk going.
        if (batch)
            list->RemoveCurrent();
        else
            list->Remove(photo);
    }
    if (m_window)
        m_window->Invalidate();
    return result;
}

} // namespace tivox
