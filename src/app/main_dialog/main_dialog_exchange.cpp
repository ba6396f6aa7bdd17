#include "app/main_dialog/main_dialog_exchange.h"

#include <cctype>
#include <cstdint>

namespace tivox {
namespace {

// A decimal unsigned 32-bit number with optional blanks around it.
bool ParseUnsigned(const std::string& text, std::uint32_t& value) {
    std::size_t i = 0;
    while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i])))
        ++i;
    std::size_t end = text.size();
    while (end > i && std::isspace(static_cast<unsigned char>(text[end - 1])))
        --end;
    if (i == end)
        return false;
    std::uint64_t v = 0;
    for (; i < end; ++i) {
        if (!std::isdigit(static_cast<unsigned char>(text[i])))
            return false;
        v = v * 10 + std::uint64_t(text[i] - '0');
        if (v > UINT32_MAX)
            return false;
    }
    value = std::uint32_t(v);
    return true;
}

bool ReadNumber(std::uint32_t& field, DlgItem item, unsigned lower, unsigned upper,
                IDialogControls& controls, IPrompt& prompt) {
    std::uint32_t value = 0;
    const bool parsed = ParseUnsigned(controls.GetItemText(item), value);
    if (parsed)
        field = value;
    if (parsed && value >= lower && value <= upper)
        return true;
    prompt.Ask(RangeMessage(lower, upper), PromptIcon::Warning, PromptButtons::Ok,
               PromptAnswer::Ok);
    controls.FocusItem(item);
    return false;
}

} // namespace

UiText RangeMessage(unsigned lower, unsigned upper) {
    return {TIVOX_TR("Please enter an integer between %s and %s."),
            {std::to_string(lower), std::to_string(upper)}};
}

bool ReadControls(MainDialogFields& fields, IDialogControls& controls, IPrompt& prompt) {
    fields.m_cameraDrive = controls.GetItemText(DlgItem::CameraDrive);
    fields.m_baseFolder = controls.GetItemText(DlgItem::BaseFolder);
    fields.m_photoFolder = controls.GetItemText(DlgItem::PhotoFolder);
    fields.m_renamingRule = controls.GetItemText(DlgItem::RenamingRule);
    if (!ReadNumber(fields.m_tilesX, DlgItem::TilesX, 2, 10, controls, prompt))
        return false;
    if (!ReadNumber(fields.m_tilesY, DlgItem::TilesY, 2, 10, controls, prompt))
        return false;
    fields.m_showStatusBar = controls.GetItemCheck(DlgItem::ShowStatusBar) ? 1 : 0;
    fields.m_exifTag = controls.GetItemText(DlgItem::ExifTag);
    fields.m_galleryFolder = controls.GetItemText(DlgItem::GalleryFolder);
    fields.m_createBackup = controls.GetItemCheck(DlgItem::CreateBackup) ? 1 : 0;
    fields.m_turnUpright = controls.GetItemCheck(DlgItem::TurnUpright) ? 1 : 0;
    if (!ReadNumber(fields.m_jpegQuality, DlgItem::JpegQuality, 0, 100, controls, prompt))
        return false;
    // Below 64 MiB a few 4K pages would not fit; above 16 GiB is no budget.
    return ReadNumber(fields.m_thumbnailMemory, DlgItem::ThumbnailMemory, 64, 16384, controls,
                      prompt);
}

void WriteControls(const MainDialogFields& fields, IDialogControls& controls) {
    controls.SetItemText(DlgItem::CameraDrive, fields.m_cameraDrive);
    controls.SetItemText(DlgItem::BaseFolder, fields.m_baseFolder);
    controls.SetItemText(DlgItem::PhotoFolder, fields.m_photoFolder);
    controls.SetItemText(DlgItem::RenamingRule, fields.m_renamingRule);
    controls.SetItemText(DlgItem::TilesX, std::to_string(fields.m_tilesX));
    controls.SetItemText(DlgItem::TilesY, std::to_string(fields.m_tilesY));
    controls.SetItemCheck(DlgItem::ShowStatusBar, fields.m_showStatusBar != 0);
    controls.SetItemText(DlgItem::ExifTag, fields.m_exifTag);
    controls.SetItemText(DlgItem::GalleryFolder, fields.m_galleryFolder);
    controls.SetItemCheck(DlgItem::CreateBackup, fields.m_createBackup != 0);
    controls.SetItemCheck(DlgItem::TurnUpright, fields.m_turnUpright != 0);
    controls.SetItemText(DlgItem::JpegQuality, std::to_string(fields.m_jpegQuality));
    controls.SetItemText(DlgItem::ThumbnailMemory, std::to_string(fields.m_thumbnailMemory));
}

} // namespace tivox
