// How the full-screen window paints: it describes its frame to the painter
// and acts on what the painter found missing.

#include <QPaintEvent>
#include <QPainter>

#include "photos/photo.h"
#include "photos/photo_list.h"
#include "ui/fullscreen_wnd.h"

namespace tivox {

void CFullScreenWnd::paintEvent(QPaintEvent* event) {
    const std::int32_t group = m_tools.Group();
    const FullScreenFrame frame{
        .layout = m_layout,
        .photoAt = [list = m_photoList](int index) -> const CPhoto* {
            return list ? list->PhotoAt(index) : nullptr;
        },
        .pageStart = m_pageStart,
        .mousePos = m_mousePos,
        .singlePhoto = m_singlePhoto,
        .currentIndex = m_currentIndex,
        .cropVeil = group == ModeCrop || group == ModeCropPlaced,
        .cropRect = m_tools.CropRect(),
    };
    QPainter painter(this);
    const PaintedFrame painted = m_painter.Paint(painter, event->rect(), frame);
    if (painted.statusText) {
        m_statusText = *painted.statusText;
    }
    if (painted.screenImageMissing) {
        RequestScreenImage(*m_photoList->PhotoAt(m_currentIndex));
    }
}

} // namespace tivox
