#include "app/fullscreen/tool_state.h"

namespace tivox {

std::int32_t GetModeGroup(std::int32_t mode) {
    return mode >= ModeCrop7x10 && mode <= ModeCropFree ? ModeCrop : mode;
}

float CropAspectOf(std::int32_t mode) {
    switch (mode) {
    case ModeCrop7x10:
        return 0.75f;
    case ModeCrop9x13:
        return 0.7f;
    case ModeCrop10x15:
        return 2.0f / 3.0f;
    case ModeCrop13x18:
        return 5.0f / 7.0f;
    case ModeCrop18x24:
        return 14.0f / 19.0f;
    default:
        return 0.0f;
    }
}

ToolCursor CToolState::SetMode(std::int32_t mode, const PortraitQuery& isPortrait) {
    m_previousMode = m_mode;
    m_mode = mode;
    ToolCursor cursor = ToolCursor::Unchanged;
    if (mode == ModeSelect) {
        cursor = ToolCursor::Select;
    } else if (mode >= ModeCrop7x10 && mode <= ModeCropFree) {
        m_cropAspect = CropAspectOf(mode);
    } else if (mode == ModeCropPlaced) {
        cursor = ToolCursor::Move;
    } else if (mode == ModeRedEye) {
        cursor = ToolCursor::RedEye;
    }
    if (GetModeGroup(mode) == ModeCrop) {
        cursor = ToolCursor::Crop;
        m_cropRect = {};
        // The print is turned for an upright photo now, and only now: steps
        // to other photos inside the tool keep the ratio.
        const bool portrait = isPortrait && isPortrait();
        if (portrait && m_cropAspect != 0.0f) {
            m_cropAspect = 1.0f / m_cropAspect;
        }
    }
    return cursor;
}

ToolExit CToolState::LeaveTool(const PortraitQuery& isPortrait, ToolCursor& cursor,
                               ToolExit inSelect) {
    cursor = ToolCursor::Unchanged;
    if (Group() == ModeCrop) {
        cursor = SetMode(ModeSelect, isPortrait);
        return ToolExit::LeftDrawing;
    }
    if (m_mode == ModeCropPlaced) {
        cursor = SetMode(m_previousMode, isPortrait);
        return ToolExit::BackToDrawing;
    }
    if (m_mode == ModeRedEye) {
        cursor = SetMode(ModeSelect, isPortrait);
        // Esc only leaves the tool; a right click goes on to the tool window.
        return inSelect == ToolExit::CloseWindow ? ToolExit::LeftRedEye : inSelect;
    }
    return inSelect;
}

void CToolState::Reset() {
    m_mode = ModeSelect;
    m_previousMode = ModeSelect;
    m_cropAspect = 0.0f;
    m_cropRect = {};
}

} // namespace tivox
