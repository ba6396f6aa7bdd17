#pragma once
// The program's one button: a push button or check box (setCheckable) that
// draws itself, flat until the mouse is over it, with an optional picture
// beside its caption and a tool tip. Every button of the dialogs is one of
// these. Under the mouse or pressed its face is as light as its colour
// allows; with the keyboard focus it shows a dotted frame.

#include <QImage>
#include <QPushButton>
#include <QRgb>

namespace tivox {

class CIconButton : public QPushButton {
    Q_OBJECT
public:
    explicit CIconButton(const QString& caption = {}, QWidget* parent = nullptr);

    // Loads the picture from `path` at width x height (0 means the picture's
    // own size). 0 on success, 1 when the picture cannot be loaded: the button
    // then shows its caption only.
    int SetIcon(const QString& path, int width = 0, int height = 0);
    // The same at the picture's own size, with every pixel of `transparent`
    // made see-through.
    int SetBitmap(const QString& path, QRgb transparent);
    // A tool tip whose lines wrap at 400 pixels; an empty text changes nothing.
    void SetTooltipText(const QString& text);

    const QImage& Picture() const { return m_picture; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void LeaveStep();
    // The drawing steps, in the order they run.
    void DrawBackground(QPainter& painter, const QRect& area) const;
    void DrawBorder(QPainter& painter, const QRect& area) const;
    // The box of a check box, ticked when checked, at the left of `area`.
    // Returns where the picture and the caption may begin.
    int DrawCheckMark(QPainter& painter, const QRect& area) const;
    // Draws the picture and leaves the rest of the area to the caption.
    void DrawPicture(QPainter& painter, const QRect& area, QRect& captionArea) const;
    void DrawCaption(QPainter& painter, const QRect& captionArea) const;
    int CheckMarkSize() const;

    bool m_mouseOver = false;
    bool m_pressed = false; // of the paint in progress
    QImage m_picture;
};

} // namespace tivox
