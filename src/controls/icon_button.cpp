#include "controls/icon_button.h"

#include <QApplication>
#include <QEnterEvent>
#include <QImageReader>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

namespace tivox {
namespace {

QImage LoadPicture(const QString& path, int width, int height) {
    QImageReader reader(path);
    if (width > 0 && height > 0)
        reader.setScaledSize(QSize(width, height));
    QImage image = reader.read();
    if (image.isNull())
        return {};
    return image.convertToFormat(QImage::Format_ARGB32);
}

QImage GrayCopy(const QImage& source) {
    QImage copy = source.copy();
    for (int y = 0; y < copy.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(copy.scanLine(y));
        for (int x = 0; x < copy.width(); ++x) {
            const int gray = qGray(row[x]);
            row[x] = qRgba(gray, gray, gray, qAlpha(row[x]));
        }
    }
    return copy;
}

QImage DarkCopy(const QImage& source) {
    QImage copy = source.copy();
    for (int y = 0; y < copy.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(copy.scanLine(y));
        for (int x = 0; x < copy.width(); ++x)
            row[x] = qRgba(qRed(row[x]) * 3 / 4, qGreen(row[x]) * 3 / 4, qBlue(row[x]) * 3 / 4,
                           qAlpha(row[x]));
    }
    return copy;
}

// The picture's shape in one colour: the relief of a disabled bitmap.
QImage Silhouette(const QImage& source, const QColor& color) {
    QImage copy(source.size(), QImage::Format_ARGB32);
    for (int y = 0; y < copy.height(); ++y) {
        const auto* in = reinterpret_cast<const QRgb*>(source.constScanLine(y));
        auto* out = reinterpret_cast<QRgb*>(copy.scanLine(y));
        for (int x = 0; x < copy.width(); ++x)
            out[x] = qRgba(color.red(), color.green(), color.blue(), qAlpha(in[x]));
    }
    return copy;
}

QColor Mix(const QColor& a, const QColor& b, int percentOfB) {
    const auto mix = [percentOfB](int x, int y) { return x + (y - x) * percentOfB / 100; };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

} // namespace

CIconButton::CIconButton(const QString& caption, QWidget* parent) : QPushButton(caption, parent) {
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
    const QColor face = palette().color(QPalette::Button);
    const QColor text = palette().color(QPalette::ButtonText);
    for (int i = 0; i < 6; i += 2) {
        m_colors[std::size_t(i)] = face;
        m_colors[std::size_t(i + 1)] = text;
    }
}

QColor CIconButton::FromColorRef(quint32 colorRef) {
    return QColor(int(colorRef & 0xFF), int((colorRef >> 8) & 0xFF), int((colorRef >> 16) & 0xFF));
}

int CIconButton::SetIcon(const QString& path, int width, int height, int second) {
    m_pictures = {};
    m_isBitmap = false;
    m_pictures[0] = LoadPicture(path, width, height);
    if (m_pictures[0].isNull()) {
        update();
        return 1;
    }
    MakeSecond(second);
    update();
    return 0;
}

int CIconButton::SetIcons(const QString& path, int width, int height, const QString& restPath,
                          int restWidth, int restHeight) {
    if (SetIcon(path, width, height) != 0)
        return 1;
    m_pictures[1] = LoadPicture(restPath, restWidth, restHeight);
    return m_pictures[1].isNull() ? 1 : 0;
}

int CIconButton::SetBitmap(const QString& path, QRgb transparent, int second) {
    m_pictures = {};
    QImage image = LoadPicture(path, 0, 0);
    if (image.isNull()) {
        update();
        return 1;
    }
    // Every pixel of the transparent colour becomes see-through.
    const QRgb key = transparent & 0xFFFFFFu;
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if ((row[x] & 0xFFFFFFu) == key)
                row[x] = 0;
    }
    m_pictures[0] = image;
    m_isBitmap = true;
    MakeSecond(second);
    update();
    return 0;
}

void CIconButton::MakeSecond(int second) {
    if (second == kGrayCopy)
        m_pictures[1] = GrayCopy(m_pictures[0]);
    else if (second == kDarkCopy)
        m_pictures[1] = DarkCopy(m_pictures[0]);
}

int CIconButton::OffsetColor(int index, int offset, bool repaint) {
    if (index < 0 || index > 5)
        return 3;
    if (offset < -255 || offset > 255)
        return 5;
    QColor& color = m_colors[std::size_t(index)];
    const int r = color.red(), g = color.green(), b = color.blue();
    int amount = 0;
    if (offset > 0)
        amount = std::min({offset, 255 - r, 255 - g, 255 - b});
    else
        amount = -std::min({-offset, r, g, b});
    color.setRgb(r + amount, g + amount, b + amount);
    if (repaint)
        update();
    return 0;
}

int CIconButton::SetColor(int index, const QColor& color, bool repaint) {
    if (index < 0 || index > 5)
        return 3;
    m_colors[std::size_t(index)] = color;
    if (repaint)
        update();
    return 0;
}

int CIconButton::SetDrawFlatFocus(bool drawFlatFocus, bool repaint) {
    m_drawFlatFocus = drawFlatFocus;
    if (repaint)
        update();
    return 0;
}

void CIconButton::SetTooltipText(const QString& text, bool activate) {
    if (text.isEmpty())
        return;
    if (!activate) {
        setToolTip({});
        return;
    }
    // A rich-text tip wraps its lines, as a balloon does, instead of running
    // across the screen.
    setToolTip(m_balloon
                   ? QStringLiteral("<p style='max-width:400px'>%1</p>").arg(text.toHtmlEscaped())
                   : text);
}

int CIconButton::EnableBalloonTooltip() {
    m_balloon = true;
    return 0;
}

void CIconButton::SetCheckBox(bool isCheckBox) {
    m_isCheckBox = isCheckBox;
    setCheckable(isCheckBox);
}

void CIconButton::SetFlat(bool flat) {
    m_flat = flat;
    update();
}

const QImage& CIconButton::CurrentPicture() const {
    const bool active = m_isCheckBox ? isChecked() : (isDown() || m_mouseOver);
    if (!active && !m_pictures[1].isNull())
        return m_pictures[1];
    return m_pictures[0];
}

QSize CIconButton::sizeHint() const {
    const QSize textSize =
        text().isEmpty() ? QSize() : fontMetrics().size(Qt::TextShowMnemonic, text());
    const QSize picture = m_pictures[0].size();
    int width = textSize.isEmpty() ? 0 : textSize.width() + 16;
    if (!picture.isEmpty())
        width += picture.width() + (textSize.isEmpty() ? 8 : m_imageOrigin.x() + 4);
    if (m_isCheckBox)
        width += CheckMarkSize() + m_imageOrigin.x() + 2;
    const int height = std::max(picture.isEmpty() ? 0 : picture.height() + 8,
                                textSize.isEmpty() ? 0 : textSize.height() + 12);
    return {std::max(width, 24), std::max(height, 24)};
}

void CIconButton::enterEvent(QEnterEvent* event) {
    QPushButton::enterEvent(event);
    if (m_flat && (m_alwaysTrack || QApplication::activeWindow())) {
        m_mouseOver = true;
        update();
    }
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

// Quick clicks arrive as double clicks; each is a click of its own.
void CIconButton::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void CIconButton::LeaveStep() {
    if (m_flat && m_mouseOver) {
        m_mouseOver = false;
        update();
    }
}

void CIconButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    m_pressed = isDown() || (m_isCheckBox && isChecked());
    QRect area = rect();
    OnDrawBackground(painter, area);
    OnDrawBorder(painter, area);
    if (m_isCheckBox)
        area.setLeft(DrawCheckMark(painter, area));
    QRect captionArea = area;
    if (HasPicture()) {
        if (m_isBitmap)
            DrawBitmap(painter, area, captionArea);
        else
            DrawIcon(painter, area, captionArea);
    }
    if (!text().isEmpty())
        DrawCaption(painter, captionArea);
    if (hasFocus() && (!m_flat || m_drawFlatFocus)) {
        QPen pen(palette().color(QPalette::ButtonText), 1, Qt::DotLine);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(3, 3, -4, -4));
    }
}

void CIconButton::OnDrawBackground(QPainter& painter, QRect& area) {
    if (!m_flat && (hasFocus() || isDefault())) {
        painter.setPen(Qt::black);
        painter.drawRect(area.adjusted(0, 0, -1, -1));
        area.adjust(1, 1, -1, -1);
    }
    QColor fill = m_colors[kBackOut];
    if (m_isCheckBox && isChecked())
        fill = Mix(m_colors[kBackOut], palette().color(QPalette::Highlight), 30);
    else if (m_mouseOver || m_pressed)
        fill = m_colors[kBackIn];
    else if (hasFocus())
        fill = m_colors[kBackFocus];
    painter.fillRect(area, fill);
}

void CIconButton::OnDrawBorder(QPainter& painter, const QRect& area) {
    const QPalette& pal = palette();
    const QColor hilight = pal.color(QPalette::Light);
    const QColor light = pal.color(QPalette::Midlight);
    const QColor shadow = pal.color(QPalette::Mid);
    const QColor dark = pal.color(QPalette::Dark);
    const int l = area.left(), t = area.top(), r = area.right(), b = area.bottom();
    auto edge3d = [&](const QColor& topLeft, const QColor& bottomRight) {
        painter.setPen(topLeft);
        painter.drawLine(l, t, r, t);
        painter.drawLine(l, t, l, b);
        painter.setPen(bottomRight);
        painter.drawLine(l, b, r, b);
        painter.drawLine(r, t, r, b);
    };
    if (m_pressed) {
        if (m_flat) {
            edge3d(shadow, hilight);
        } else {
            painter.setPen(shadow);
            painter.drawRect(area.adjusted(0, 0, -1, -1));
        }
        if (m_isCheckBox && isChecked()) {
            painter.setPen(pal.color(QPalette::Highlight));
            painter.drawRect(area.adjusted(1, 1, -2, -2));
        }
        return;
    }
    if (m_flat && !m_mouseOver)
        return;
    if (m_flat) {
        edge3d(hilight, shadow);
        return;
    }
    // The raised edge: highlight and light at top left, dark shadow and shadow
    // at bottom right.
    edge3d(hilight, dark);
    painter.setPen(light);
    painter.drawLine(l + 1, t + 1, r - 1, t + 1);
    painter.drawLine(l + 1, t + 1, l + 1, b - 1);
    painter.setPen(shadow);
    painter.drawLine(l + 1, b - 1, r - 1, b - 1);
    painter.drawLine(r - 1, t + 1, r - 1, b - 1);
}

int CIconButton::CheckMarkSize() const {
    return std::max(13, fontMetrics().height() - 2);
}

int CIconButton::DrawCheckMark(QPainter& painter, const QRect& area) {
    const int size = CheckMarkSize();
    const QRect box(area.left() + m_imageOrigin.x() + 1, area.top() + (area.height() - size) / 2,
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

QRect CIconButton::PicturePlace(const QImage& picture, const QRect& area,
                                QRect& captionArea) const {
    QRect place(QPoint(0, 0), picture.size());
    if (text().isEmpty()) {
        place.moveCenter(area.center());
    } else {
        place.moveTo(area.left() + m_imageOrigin.x(),
                     area.top() + (area.height() - picture.height()) / 2);
        captionArea.setLeft(place.right() + 1);
    }
    if (m_pressed && !m_isCheckBox)
        place.translate(m_pressOffset);
    return place;
}

void CIconButton::DrawIcon(QPainter& painter, const QRect& area, QRect& captionArea) {
    const QImage& picture = CurrentPicture();
    const QRect place = PicturePlace(picture, area, captionArea);
    if (isEnabled()) {
        painter.drawImage(place.topLeft(), picture);
        return;
    }
    QStyleOption option;
    option.initFrom(this);
    const QPixmap disabled =
        style()->generatedIconPixmap(QIcon::Disabled, QPixmap::fromImage(picture), &option);
    painter.drawPixmap(place.topLeft(), disabled);
}

void CIconButton::DrawBitmap(QPainter& painter, const QRect& area, QRect& captionArea) {
    const QImage& picture = CurrentPicture();
    const QRect place = PicturePlace(picture, area, captionArea);
    if (isEnabled()) {
        painter.drawImage(place.topLeft(), picture);
        return;
    }
    if (!m_showDisabledBitmap)
        return;
    painter.drawImage(place.topLeft() + QPoint(1, 1),
                      Silhouette(picture, palette().color(QPalette::Light)));
    painter.drawImage(place.topLeft(), Silhouette(picture, palette().color(QPalette::Mid)));
}

void CIconButton::DrawCaption(QPainter& painter, const QRect& captionArea) {
    QRect place = captionArea;
    if (m_pressed && !m_isCheckBox)
        place.translate(m_pressOffset);
    const int flags = int(Qt::AlignCenter | Qt::TextShowMnemonic);
    if (!isEnabled()) {
        painter.setPen(palette().color(QPalette::Light));
        painter.drawText(place.translated(1, 1), flags, text());
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawText(place, flags, text());
        return;
    }
    QColor color = m_colors[kForeOut];
    if (m_pressed || m_mouseOver)
        color = m_colors[kForeIn];
    else if (hasFocus())
        color = m_colors[kForeFocus];
    painter.setPen(color);
    painter.drawText(place, flags, text());
}

} // namespace tivox
