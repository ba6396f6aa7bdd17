#include "app/main_dialog/main_dialog_fields.h"

#include "acquire/folder_paths.h"
#include "app/main_dialog/settings.h"

namespace tivox {

MainDialogFields DefaultMainDialogFields() {
    MainDialogFields fields;
    fields.m_baseFolder = DefaultBaseFolder();
    fields.m_galleryFolder = DefaultGalleryFolder();
    return fields;
}

void FieldsFromSettings(const CSettings& settings, MainDialogFields& fields) {
    fields.m_cameraDrive = settings.m_cameraDrive;
    fields.m_baseFolder = settings.m_baseFolder;
    fields.m_photoFolder = settings.m_photoFolder;
    fields.m_galleryFolder = settings.m_galleryFolder;
    fields.m_renamingRule = settings.m_renamingRule;
    fields.m_tilesX = settings.m_tilesX;
    fields.m_tilesY = settings.m_tilesY;
    fields.m_statusBarHeight = settings.m_statusBarHeight;
    fields.m_createBackup = settings.m_createBackup ? 1 : 0;
    fields.m_jpegQuality = settings.m_jpegQuality;
    fields.m_thumbnailMemory = settings.m_thumbnailMemory;
    fields.m_turnUpright = settings.m_turnUpright ? 1 : 0;
    fields.m_showStatusBar = fields.m_statusBarHeight > 0 ? 1 : 0;
}

void FieldsToSettings(const MainDialogFields& fields, CSettings& settings) {
    settings.m_cameraDrive = fields.m_cameraDrive;
    settings.m_baseFolder = fields.m_baseFolder;
    settings.m_photoFolder = fields.m_photoFolder;
    settings.m_galleryFolder = fields.m_galleryFolder;
    settings.m_renamingRule = fields.m_renamingRule;
    settings.m_tilesX = fields.m_tilesX;
    settings.m_tilesY = fields.m_tilesY;
    settings.m_statusBarHeight = fields.m_statusBarHeight;
    settings.m_createBackup = std::uint32_t(fields.m_createBackup);
    settings.m_jpegQuality = fields.m_jpegQuality;
    settings.m_thumbnailMemory = fields.m_thumbnailMemory;
    settings.m_turnUpright = std::uint32_t(fields.m_turnUpright);
}

} // namespace tivox
