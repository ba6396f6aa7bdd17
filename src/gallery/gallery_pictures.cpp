#include "gallery/gallery_pictures.h"

#include <algorithm>
#include <optional>

#include "imageops/image_processor.h"
#include "imageops/operation.h"
#include "photos/edit_host.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/user_seams.h"

namespace tivox {

std::vector<std::string> ChosenPhotoFiles(const ProcessScope& scope, IEditHost& window) {
    std::vector<std::string> files;
    if (scope.current) {
        if (const CPhoto* photo = window.GetCurrentPhoto())
            files.push_back(photo->path);
    } else if (const CPhotoList* list = window.GetPhotoList()) {
        for (int i = 0; i < list->Count(); ++i)
            if (const CPhoto* photo = list->PhotoAt(i); photo && scope.Chooses(photo->marker))
                files.push_back(photo->path);
    }
    return files;
}

PassResult WriteGalleryPictures(const std::vector<std::string>& photos, const COperation& copies,
                                int quality, IStepProgress& progress, int threads) {
    const int count = int(photos.size());
    // A worker touches only its own copier and its own photo's error.
    std::vector<CScaledCopier> copiers(std::size_t(std::max(1, threads)));
    std::vector<std::optional<UiText>> errors(photos.size());
    PassResult result;
    {
        StepScope steps(progress, count, {TIVOX_TR("Writing the gallery pictures"), {}});
        PhotoPool pool(
            count,
            [&](int item, int worker) {
                UiText error;
                if (!copiers[std::size_t(worker)].Write(copies, photos[std::size_t(item)], quality,
                                                        error))
                    errors[std::size_t(item)] = std::move(error);
            },
            threads);
        // As for the other work on the pool: cancelled when a photo was left
        // out.
        result.cancelled = CollectSteps(pool, steps, count, [](int) {}) < count;
    }
    for (std::optional<UiText>& error : errors)
        if (error)
            result.failures.push_back(std::move(*error));
    return result;
}

} // namespace tivox
