#pragma once
// A strip with a background colour of its own: the coloured lines of the
// main dialog.

#include <QColor>
#include <QWidget>

namespace tivox {

class CColorStatic : public QWidget {
    Q_OBJECT
public:
    explicit CColorStatic(QWidget* parent = nullptr);

    // Stores the colour and repaints at once.
    void SetBackColor(const QColor& color);
    QColor BackColor() const { return m_backColor; }
    void SetTextColor(const QColor& color) { m_textColor = color; }

    QSize sizeHint() const override { return {40, 8}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_backColor;
    QColor m_textColor{Qt::black};
};

} // namespace tivox
