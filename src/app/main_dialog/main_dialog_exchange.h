#pragma once
// Reading the main dialog's controls into its fields and writing them back.
// The controls are reached through IDialogControls, so that the rules (the
// binding order, the range checks, what a failed read leaves behind) hold the
// same for the Qt window and for tests without a window.

#include <string>

#include "app/main_dialog/main_dialog_fields.h"
#include "platform/user_seams.h"

namespace tivox {

// The bound controls, in binding order.
enum class DlgItem {
    CameraDrive,
    BaseFolder,
    PhotoFolder,
    RenamingRule,
    TilesX,
    TilesY,
    ShowStatusBar,
    ExifTag,
    GalleryFolder,
    CreateBackup,
    TurnUpright,
    JpegQuality,
    ThumbnailMemory,
};

class IDialogControls {
public:
    virtual ~IDialogControls() = default;
    virtual std::string GetItemText(DlgItem item) const = 0;
    virtual void SetItemText(DlgItem item, const std::string& text) = 0;
    virtual bool GetItemCheck(DlgItem item) const = 0;
    virtual void SetItemCheck(DlgItem item, bool checked) = 0;
    // Puts the keyboard focus on a control whose value was refused.
    virtual void FocusItem(DlgItem item) = 0;
};

// Reads every control into `fields` in binding order. At the first refused
// number the range message goes to `prompt` and the read stops: fields bound
// before it hold their new values, fields behind it keep the old ones. A
// number outside its limits is stored before it is refused; a text that is no
// number leaves its field as it was.
bool ReadControls(MainDialogFields& fields, IDialogControls& controls, IPrompt& prompt);

// Puts every field into its control, unchecked.
void WriteControls(const MainDialogFields& fields, IDialogControls& controls);

// The message for a number outside [lower, upper], or no number at all.
UiText RangeMessage(unsigned lower, unsigned upper);

} // namespace tivox
