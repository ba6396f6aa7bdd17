#include "photos/photo.h"

#include <unistd.h>

#include "exif/exif_update.h"
#include "photos/embedded_preview.h"
#include "photos/scaled_loader.h"
#include "platform/atomic_file.h"
#include "platform/bitmap_recycler.h"
#include "platform/jpeg_codec.h"
#include "platform/resampler.h"

namespace tivox {

namespace {

// Loads through the caller's loader, or a temporary one.
bool LoadWith(CScaledLoader* loader, const std::string& path, Size target, Bitmap& out,
              Size& source, std::string& error) {
    error.clear();
    if (loader)
        return loader->LoadInto(path, target, out, source, error);
    CScaledLoader own;
    return own.LoadInto(path, target, out, source, error);
}

} // namespace

std::unique_ptr<Bitmap> CPhoto::LoadScaled(Size target, CScaledLoader* loader) {
    auto image = std::make_unique<Bitmap>();
    // An unreadable file gives an empty picture, which draws nothing.
    LoadWith(loader, path, target, *image, sourceSize, readError);
    return image;
}

void CPhoto::StoreThumbnail(std::unique_ptr<Bitmap> image) {
    thumbnail = std::move(image);
    thumbBytes.store(thumbnail ? thumbnail->ByteSize() : 0, std::memory_order_release);
    thumbnailReady.store(1, std::memory_order_release);
}

Bitmap* CPhoto::MakeThumbnail(Size target) {
    auto image = LoadScaled(target);
    std::lock_guard lock(m_thumbLock);
    StoreThumbnail(std::move(image));
    return thumbnail.get();
}

bool CPhoto::MakeThumbnailIfMissing(Size target, CScaledLoader& loader) {
    {
        std::lock_guard lock(m_thumbLock);
        if (thumbnail)
            return false;
    }
    auto image = std::make_unique<Bitmap>();
    Size ignored;
    std::string error; // readError is the user-interface thread's
    LoadWith(&loader, path, target, *image, ignored, error);
    std::lock_guard lock(m_thumbLock);
    if (thumbnail)
        return false;
    StoreThumbnail(std::move(image));
    return true;
}

void CPhoto::DropThumbnail() {
    std::lock_guard lock(m_thumbLock);
    if (!thumbnail)
        return;
    thumbnailReady.store(0, std::memory_order_release);
    thumbnail.reset();
    thumbBytes.store(0, std::memory_order_release);
}

CPhoto::ThumbnailView CPhoto::ViewThumbnail() const {
    ThumbnailView view;
    view.m_hold = std::unique_lock(m_thumbLock);
    if (thumbnailReady.load(std::memory_order_acquire) && thumbnail) {
        view.image = thumbnail.get();
    } else if (preview) {
        view.image = preview.get();
        view.isPreview = true;
    }
    return view;
}

void CPhoto::LoadPreview() {
    if (previewTried)
        return;
    previewTried = true;
    auto image = std::make_unique<Bitmap>();
    if (ReadEmbeddedPreview(path, *image))
        preview = std::move(image);
}

void CPhoto::DropPreview() {
    preview.reset();
    previewTried = false;
}

void CPhoto::LoadScreenImage(Size target, CScaledLoader* loader) {
    // The old pixels make room for the new ones instead of a fresh buffer.
    auto image = screenImage ? std::move(screenImage) : std::make_unique<Bitmap>();
    LoadWith(loader, path, target, *image, sourceSize, readError);
    screenImage = std::move(image);
    screenSize = {screenImage->Width(), screenImage->Height()};
}

std::unique_ptr<Bitmap> CPhoto::OpenFullImage(BitmapRecycler* recycler, bool refuseDamaged) {
    auto image = recycler ? recycler->Take() : std::make_unique<Bitmap>();
    CScaledLoader loader;
    readError.clear();
    loader.LoadFull(path, *image, readError, refuseDamaged);
    return image;
}

Bitmap* CPhoto::LoadFullImage(BitmapRecycler* recycler) {
    DropFullImage(recycler);
    fullImage = OpenFullImage(recycler, true);
    return fullImage.get();
}

void CPhoto::DropFullImage(BitmapRecycler* recycler) {
    if (recycler)
        recycler->Give(std::move(fullImage));
    fullImage.reset();
}

void CPhoto::RebuildImages(Size thumbSize, Size screenBox, bool loadScreen) {
    CScaledLoader loader;
    auto thumb = LoadScaled(thumbSize, &loader);
    {
        std::lock_guard lock(m_thumbLock);
        StoreThumbnail(std::move(thumb));
    }
    screenImage.reset();
    if (loadScreen)
        LoadScreenImage(screenBox, &loader);
}

Bitmap* CPhoto::ThumbnailFromScreen(Size target) {
    DropThumbnail();
    std::unique_ptr<Bitmap> thumb;
    if (screenImage && !screenImage->IsEmpty()) {
        const Size fitted = FitInto({screenImage->Width(), screenImage->Height()}, target);
        thumb = ScaleImage(screenImage.get(), fitted.width, fitted.height);
    }
    // Without a working image the picture comes from the file.
    if (!thumb)
        thumb = LoadScaled(target);
    std::lock_guard lock(m_thumbLock);
    StoreThumbnail(std::move(thumb));
    return thumbnail.get();
}

Bitmap* CPhoto::ReplaceImage(std::unique_ptr<Bitmap> image, bool full) {
    if (!image)
        return nullptr;
    auto& slot = full ? fullImage : screenImage;
    slot = std::move(image);
    return slot.get();
}

Bitmap* CPhoto::FitToScreen(Bitmap* image, Size target, bool full) {
    if (full)
        return image;
    const Size fitted =
        image && !image->IsEmpty() ? FitInto({image->Width(), image->Height()}, target) : target;
    return ReplaceImage(ScaleImage(image, fitted.width, fitted.height), false);
}

bool CPhoto::SaveAsJpeg(int quality, BitmapRecycler* recycler, UiText* error) {
    std::string detail;
    std::vector<std::uint8_t> bytes;
    bool encoded = false;
    // The camera's metadata stays with the photo, its sizes and thumbnail
    // following the edits.
    if (fullImage && !fullImage->IsEmpty())
        encoded = EncodeEditedPhoto(*fullImage, quality, path, bytes, detail);
    DropFullImage(recycler);
    UiText failure{TIVOX_TR("Could not write %s"), {path}};
    const bool saved = encoded && WriteFileDurably(path, bytes.data(), bytes.size(), failure);
    if (!saved && error)
        *error = failure;
    return saved;
}

int CPhoto::IsLandscape() const {
    std::lock_guard lock(m_thumbLock);
    if (!thumbnail)
        return 1;
    return thumbnail->Width() >= thumbnail->Height() ? 1 : 0;
}

} // namespace tivox
