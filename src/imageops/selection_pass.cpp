#include "imageops/selection_pass.h"

#include "imageops/image_processor.h"
#include "photos/edit_host.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/user_seams.h"

namespace tivox {

int ApplyOperation(const COperation& operation, const ProcessScope& scope,
                   CImageProcessor& processor, IEditHost& window, IPrompt& prompt) {
    int failures = 0;
    auto report = [&] {
        ++failures;
        prompt.Ask(processor.GetErrorText(), PromptIcon::Warning, PromptButtons::Ok,
                   PromptAnswer::Ok, UiText{TIVOX_TR("Error"), {}});
    };
    if (scope.current) {
        if (CPhoto* photo = window.GetCurrentPhoto())
            if (processor.Execute(operation, photo, false) != 0)
                report();
    } else if (CPhotoList* list = window.GetPhotoList()) {
        list->ResetCursor();
        while (!list->AtEnd()) {
            CPhoto* photo = list->NextPhoto();
            if (photo && scope.Chooses(photo->marker) &&
                processor.Execute(operation, photo, true) != 0)
                report();
        }
    }
    window.Invalidate();
    return failures;
}

} // namespace tivox
