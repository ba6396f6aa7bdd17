#pragma once
// The program's one button: a push button or check box that draws itself,
// flat until the mouse is over it, with an optional picture beside its
// caption and a tool tip. Every button of the dialogs is one of these.

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QPushButton>
#include <QRgb>
#include <array>

namespace tivox {

class CIconButton : public QPushButton {
    Q_OBJECT
public:
    // Colour slots, in the order the look settings name them.
    enum ColorIndex {
        kBackIn = 0, // pressed or under the mouse
        kForeIn = 1,
        kBackOut = 2, // at rest
        kForeOut = 3,
        kBackFocus = 4,
        kForeFocus = 5,
    };
    // What the second picture (the one shown at rest) is made of.
    enum SecondPicture { kNoSecond = 0, kGrayCopy = -2, kDarkCopy = -3 };

    explicit CIconButton(const QString& caption = {}, QWidget* parent = nullptr);

    // Loads the picture for the active state from `path` at width x height (0
    // means the picture's own size) and, by `second`, a copy for the state at
    // rest. 0 on success, 1 when the picture cannot be loaded: the button then
    // shows its caption only.
    int SetIcon(const QString& path, int width = 0, int height = 0, int second = kNoSecond);
    // Two pictures of their own: the second shows at rest.
    int SetIcons(const QString& path, int width, int height, const QString& restPath, int restWidth,
                 int restHeight);
    // A picture whose pixels of `transparent` become see-through. 0 on
    // success, 1 when it cannot be loaded.
    int SetBitmap(const QString& path, QRgb transparent, int second = kNoSecond);

    // Shifts the three channels of one colour slot by one common amount, cut
    // so that the hue stays and no channel leaves 0..255. 0 on success, 3 for
    // a bad index, 5 for an offset outside -255..255.
    int OffsetColor(int index, int offset, bool repaint = true);
    // Sets one colour slot; 3 for a bad index.
    int SetColor(int index, const QColor& color, bool repaint = true);
    int SetDrawFlatFocus(bool drawFlatFocus, bool repaint = true);
    void SetTooltipText(const QString& text, bool activate = true);
    int EnableBalloonTooltip();
    void SetCheckBox(bool isCheckBox);
    void SetFlat(bool flat);

    QColor Color(int index) const { return m_colors[std::size_t(index)]; }
    bool IsMouseOver() const { return m_mouseOver; }
    bool IsCheckBox() const { return m_isCheckBox; }
    bool HasPicture() const { return !m_pictures[0].isNull(); }
    // The picture that the next paint shows: the one at rest or the active one.
    const QImage& CurrentPicture() const;

    static QColor FromColorRef(quint32 colorRef);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

    // The drawing steps, in the order they run.
    virtual void OnDrawBackground(QPainter& painter, QRect& area);
    virtual void OnDrawBorder(QPainter& painter, const QRect& area);
    // The box of a check box, ticked when checked, at the left of `area`.
    // Returns where the picture and the caption may begin.
    virtual int DrawCheckMark(QPainter& painter, const QRect& area);
    virtual void DrawIcon(QPainter& painter, const QRect& area, QRect& captionArea);
    virtual void DrawBitmap(QPainter& painter, const QRect& area, QRect& captionArea);
    virtual void DrawCaption(QPainter& painter, const QRect& captionArea);

private:
    void LeaveStep();
    // Places the current picture and leaves the rest of the area to the caption.
    QRect PicturePlace(const QImage& picture, const QRect& area, QRect& captionArea) const;
    void MakeSecond(int second);
    int CheckMarkSize() const;

    bool m_flat = true;
    bool m_mouseOver = false;
    bool m_alwaysTrack = true;
    bool m_pressed = false;
    bool m_isCheckBox = false;
    bool m_isBitmap = false; // the pictures came from SetBitmap
    bool m_drawFlatFocus = false;
    bool m_showDisabledBitmap = true;
    bool m_balloon = false;
    QPoint m_imageOrigin{3, 3};
    QPoint m_pressOffset{1, 1};
    std::array<QColor, 6> m_colors;
    std::array<QImage, 2> m_pictures; // active, at rest (may be null)
};

} // namespace tivox
