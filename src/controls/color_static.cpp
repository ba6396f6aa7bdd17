#include "controls/color_static.h"

#include <QPainter>

namespace tivox {

CColorStatic::CColorStatic(QWidget* parent)
    : QWidget(parent), m_backColor(palette().color(QPalette::Button)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CColorStatic::SetBackColor(const QColor& color) {
    m_backColor = color;
    repaint();
}

void CColorStatic::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), m_backColor);
}

} // namespace tivox
