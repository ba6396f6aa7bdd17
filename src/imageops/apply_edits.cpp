#include "imageops/apply_edits.h"

#include <cstdint>
#include <memory>
#include <utility>

#include "imageops/crop_image.h"
#include "imageops/denoise_filter.h"
#include "imageops/image_processor.h"
#include "imageops/operation.h"
#include "imageops/red_eye_fixer.h"
#include "photos/edit_host.h"
#include "photos/photo.h"
#include "platform/bitmap_recycler.h"
#include "platform/resampler.h"

namespace tivox {

namespace {

// A point of the full image on the working image, which shows the whole
// picture at the size of its last load.
Point ToWorkingImage(const Point& p, Size working, Size source) {
    return Point{int(std::int64_t(p.x) * working.width / source.width),
                 int(std::int64_t(p.y) * working.height / source.height)};
}

} // namespace

Bitmap* ApplyEdits(CPhoto& photo, int mask, IEditHost& host, bool full) {
    const Size screen = host.GetScreenSize();
    BitmapRecycler* recycler = host.GetBitmapRecycler();
    const CPendingEdits& edits = photo.edits;
    auto wanted = [mask](int bit) { return (mask & bit) != 0; };
    if (!full && !host.ShowsPreviews())
        return photo.screenImage.get();

    // 1. Start.
    Bitmap* current = nullptr;
    if (full) {
        current = photo.LoadFullImage(recycler);
    } else {
        if (mask == editAll)
            photo.LoadScreenImage(screen);
        current = photo.screenImage.get();
    }
    if (current && current->IsEmpty())
        current = nullptr; // an unreadable file: nothing to work on

    // A pass's new picture becomes the full image, or is fitted to the
    // screen as the new working image. A failed step keeps the earlier one.
    auto install = [&](std::unique_ptr<Bitmap> made) -> Bitmap* {
        if (!made)
            return current;
        if (full) {
            std::unique_ptr<Bitmap> old = std::move(photo.fullImage);
            Bitmap* replaced = photo.ReplaceImage(std::move(made), true);
            if (recycler)
                recycler->Give(std::move(old));
            return replaced;
        }
        Bitmap* fitted = photo.FitToScreen(made.get(), screen, false);
        return fitted ? fitted : current;
    };

    // 2. Denoise, always on full-size pixels, so that the preview shows
    // what the file will get.
    if (wanted(editDenoise) && edits.denoisePending) {
        const CDenoiseFilter filter;
        if (full) {
            // The full image is replaced by its filtered self; filtering in
            // place spares a second full-size buffer.
            if (current)
                filter.FilterInPlace(*current);
        } else {
            std::unique_ptr<Bitmap> source = photo.OpenFullImage(recycler);
            if (!source->IsEmpty() && filter.FilterInPlace(*source)) {
                if (Bitmap* fitted = photo.FitToScreen(source.get(), screen, false))
                    current = fitted;
            }
            if (recycler)
                recycler->Give(std::move(source));
        }
    }

    // 3. Red eye, at each recorded point in click order.
    if (current && wanted(editRedEye) && edits.redEyePending && !edits.redEyePoints.empty()) {
        CRedEyeFixer fixer(full ? kRedEyeRadiusFull : kRedEyeRadiusPreview);
        fixer.SetImage(current);
        for (const Point& p : edits.redEyePoints) {
            if (full) {
                fixer.Fix(p.x, p.y);
            } else if (photo.sourceSize.width > 0 && photo.sourceSize.height > 0) {
                const Point q = ToWorkingImage(p, photo.screenSize, photo.sourceSize);
                fixer.Fix(q.x, q.y);
            }
        }
    }

    // 4. Crop, by the rectangle drawn on the screen, read against the
    // picture as the screen would show it. A rectangle beyond the picture
    // is cut back to it; one that misses it leaves the picture as it is.
    if (current && wanted(editCrop) && edits.cropPending) {
        const Size image{current->Width(), current->Height()};
        const Rect cut = ClipToImage(
            ScreenRectToImage(image, FitInto(image, screen), screen, edits.cropRect), image);
        if (cut.width > 0 && cut.height > 0)
            current = install(CropImage(current, cut.x, cut.y, cut.width, cut.height));
    }

    // 5. Resize to exactly the recorded size.
    if (current && wanted(editResize) && edits.resizePending)
        current = install(ScaleImage(current, edits.resizeSize.width, edits.resizeSize.height));

    // 6. Colour, gamma and sharpening, on a processor of its own that gets
    // the recorded values.
    if (wanted(editColor) && edits.colorPending) {
        CImageProcessor processor;
        processor.SetWindow(&host);
        processor.SetColor(ColorSettingsOf(edits));
        processor.ApplyColor(&photo, full);
    }

    // 7. The thumbnail follows a commit. A photo that was never shown has no
    // working image to make it from, so one is made from the edited full
    // image for the moment and dropped again. A file that could not be read
    // is not committed; its pictures (and readError) stay as they are.
    if (full && photo.fullImage && !photo.fullImage->IsEmpty() && host.ShowsPreviews()) {
        if (photo.screenImage) {
            photo.ThumbnailFromScreen(host.GetThumbSize());
        } else {
            photo.FitToScreen(photo.fullImage.get(), screen, false);
            photo.ThumbnailFromScreen(host.GetThumbSize());
            photo.DropScreenImage();
        }
    }
    return full ? photo.fullImage.get() : photo.screenImage.get();
}

} // namespace tivox
