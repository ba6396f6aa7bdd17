#include "controls/path_label.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace tivox {

CPathLabel::CPathLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void CPathLabel::SetPath(const QString& path) {
    setText(path);
    setToolTip(path);
}

QRect CPathLabel::TextArea() const {
    // The room QLabel gives left-aligned text: the margin, and the indent
    // (half an "x" inside a frame) on the left.
    const int indented = indent() >= 0      ? indent()
                         : frameWidth() > 0 ? fontMetrics().horizontalAdvance(QLatin1Char('x')) / 2
                                            : 0;
    return contentsRect().adjusted(margin() + indented, margin(), -margin(), -margin());
}

QString CPathLabel::ShownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, TextArea().width());
}

QSize CPathLabel::minimumSizeHint() const {
    const QSize full = QLabel::minimumSizeHint();
    return {std::min(full.width(), 8 * fontMetrics().averageCharWidth()), full.height()};
}

void CPathLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawFrame(&painter);
    style()->drawItemText(&painter, TextArea(),
                          int(QStyle::visualAlignment(layoutDirection(), alignment())), palette(),
                          isEnabled(), ShownText(), foregroundRole());
}

} // namespace tivox
