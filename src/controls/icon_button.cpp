#include "controls/icon_button.h"

#include <QEnterEvent>
#include <QImageReader>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

namespace tivox {
namespace {

// Where a picture beside a caption stands, and how far a pressed button's
// picture and caption move.
constexpr QPoint kImageOrigin{3, 3};
constexpr QPoint kPressOffset{1, 1};

QImage LoadPicture(const QString& path, int width, int height) {
    QImageReader reader(path);
    if (width > 0 && height > 0)
        reader.setScaledSize(QSize(width, height));
    QImage image = reader.read();
    if (image.isNull())
        return {};
    return image.convertToFormat(QImage::Format_ARGB32);
}

// The face under the mouse or pressed: each channel raised by the one amount
// that brings the lightest to 255, so that the hue stays.
QColor Lit(const QColor& face) {
    const int amount = 255 - std::max({face.red(), face.green(), face.blue()});
    return QColor(face.red() + amount, face.green() + amount, face.blue() + amount);
}

QColor Mix(const QColor& a, const QColor& b, int percentOfB) {
    const auto mix = [percentOfB](int x, int y) { return x + (y - x) * percentOfB / 100; };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

} // namespace

CIconButton::CIconButton(const QString& caption, QWidget* parent) : QPushButton(caption, parent) {
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
}

int CIconButton::SetIcon(const QString& path, int width, int height) {
    m_picture = LoadPicture(path, width, height);
    update();
    return m_picture.isNull() ? 1 : 0;
}

int CIconButton::SetBitmap(const QString& path, QRgb transparent) {
    if (SetIcon(path) != 0)
        return 1;
    const QRgb key = transparent & 0xFFFFFFu;
    for (int y = 0; y < m_picture.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(m_picture.scanLine(y));
        for (int x = 0; x < m_picture.width(); ++x)
            if ((row[x] & 0xFFFFFFu) == key)
                row[x] = 0;
    }
    return 0;
}

void CIconButton::SetTooltipText(const QString& text) {
    if (text.isEmpty())
        return;
    // A rich-text tip wraps its lines instead of running across the screen.
    setToolTip(QStringLiteral("<p style='max-width:400px'>%1</p>").arg(text.toHtmlEscaped()));
}

QSize CIconButton::sizeHint() const {
    const QSize textSize =
        text().isEmpty() ? QSize() : fontMetrics().size(Qt::TextShowMnemonic, text());
    const QSize picture = m_picture.size();
    int width = textSize.isEmpty() ? 0 : textSize.width() + 16;
    if (!picture.isEmpty())
        width += picture.width() + (textSize.isEmpty() ? 8 : kImageOrigin.x() + 4);
    if (isCheckable())
        width += CheckMarkSize() + kImageOrigin.x() + 2;
    const int height = std::max(picture.isEmpty() ? 0 : picture.height() + 8,
                                textSize.isEmpty() ? 0 : textSize.height() + 12);
    return {std::max(width, 24), std::max(height, 24)};
}

void CIconButton::enterEvent(QEnterEvent* event) {
    QPushButton::enterEvent(event);
    m_mouseOver = true;
    update();
}

void CIconButton::leaveEvent(QEvent* event) {
    QPushButton::leaveEvent(event);
    LeaveStep();
}

void CIconButton::focusOutEvent(QFocusEvent* event) {
    QPushButton::focusOutEvent(event);
    LeaveStep();
}

void CIconButton::changeEvent(QEvent* event) {
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::ActivationChange)
        if (!isEnabled() || !isActiveWindow())
            LeaveStep();
}

void CIconButton::LeaveStep() {
    if (m_mouseOver) {
        m_mouseOver = false;
        update();
    }
}

void CIconButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    m_pressed = isDown() || isChecked();
    QRect area = rect();
    DrawBackground(painter, area);
    DrawBorder(painter, area);
    if (isCheckable())
        area.setLeft(DrawCheckMark(painter, area));
    QRect captionArea = area;
    if (!m_picture.isNull())
        DrawPicture(painter, area, captionArea);
    if (!text().isEmpty())
        DrawCaption(painter, captionArea);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::ButtonText), 1, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(3, 3, -4, -4));
    }
}

void CIconButton::DrawBackground(QPainter& painter, const QRect& area) const {
    const QColor face = palette().color(QPalette::Button);
    QColor fill = face;
    if (isChecked())
        fill = Mix(face, palette().color(QPalette::Highlight), 30);
    else if (m_mouseOver || m_pressed)
        fill = Lit(face);
    painter.fillRect(area, fill);
}

void CIconButton::DrawBorder(QPainter& painter, const QRect& area) const {
    const QPalette& pal = palette();
    const QColor hilight = pal.color(QPalette::Light);
    const QColor shadow = pal.color(QPalette::Mid);
    const int l = area.left(), t = area.top(), r = area.right(), b = area.bottom();
    auto edge3d = [&](const QColor& topLeft, const QColor& bottomRight) {
        painter.setPen(topLeft);
        painter.drawLine(l, t, r, t);
        painter.drawLine(l, t, l, b);
        painter.setPen(bottomRight);
        painter.drawLine(l, b, r, b);
        painter.drawLine(r, t, r, b);
    };
    // Sunk when pressed, raised under the mouse, no edge at rest.
    if (m_pressed) {
        edge3d(shadow, hilight);
        if (isChecked()) {
            painter.setPen(pal.color(QPalette::Highlight));
            painter.drawRect(area.adjusted(1, 1, -2, -2));
        }
    } else if (m_mouseOver) {
        edge3d(hilight, shadow);
    }
}

int CIconButton::CheckMarkSize() const {
    return std::max(13, fontMetrics().height() - 2);
}

int CIconButton::DrawCheckMark(QPainter& painter, const QRect& area) const {
    const int size = CheckMarkSize();
    const QRect box(area.left() + kImageOrigin.x() + 1, area.top() + (area.height() - size) / 2,
                    size, size);
    const QPalette& pal = palette();
    const bool checked = isChecked();
    const QColor ink = isEnabled() ? pal.color(QPalette::Highlight) : pal.color(QPalette::Mid);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(checked ? ink : pal.color(QPalette::Dark), 1));
    painter.setBrush(checked ? ink : pal.color(QPalette::Base));
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    if (checked) {
        const QPointF tick[3] = {{box.left() + size * 0.22, box.top() + size * 0.52},
                                 {box.left() + size * 0.42, box.top() + size * 0.72},
                                 {box.left() + size * 0.78, box.top() + size * 0.30}};
        painter.setPen(QPen(pal.color(QPalette::HighlightedText), std::max(2.0, size / 7.0),
                            Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(tick, 3);
    }
    painter.restore();
    return box.right() + 1;
}

void CIconButton::DrawPicture(QPainter& painter, const QRect& area, QRect& captionArea) const {
    // Beside a caption the picture stands at the left, alone it is centred.
    QRect place(QPoint(0, 0), m_picture.size());
    if (text().isEmpty()) {
        place.moveCenter(area.center());
    } else {
        place.moveTo(area.left() + kImageOrigin.x(),
                     area.top() + (area.height() - m_picture.height()) / 2);
        captionArea.setLeft(place.right() + 1);
    }
    if (m_pressed && !isCheckable())
        place.translate(kPressOffset);
    if (isEnabled()) {
        painter.drawImage(place.topLeft(), m_picture);
        return;
    }
    QStyleOption option;
    option.initFrom(this);
    painter.drawPixmap(
        place.topLeft(),
        style()->generatedIconPixmap(QIcon::Disabled, QPixmap::fromImage(m_picture), &option));
}

void CIconButton::DrawCaption(QPainter& painter, const QRect& captionArea) const {
    QRect place = captionArea;
    if (m_pressed && !isCheckable())
        place.translate(kPressOffset);
    const int flags = int(Qt::AlignCenter | Qt::TextShowMnemonic);
    if (!isEnabled()) {
        // In relief: a light copy one pixel down and right under a shadowed one.
        painter.setPen(palette().color(QPalette::Light));
        painter.drawText(place.translated(1, 1), flags, text());
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawText(place, flags, text());
        return;
    }
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(place, flags, text());
}

} // namespace tivox
