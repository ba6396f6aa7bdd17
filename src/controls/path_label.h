#pragma once
// A label for a path that may be longer than the room it gets: the middle
// gives way to "…" so that both the start and the name at the end stay
// readable, and the tool tip holds the whole path. text() is always the
// whole path, so whoever reads the label gets the real value.

#include <QLabel>

namespace tivox {

class CPathLabel : public QLabel {
    Q_OBJECT
public:
    explicit CPathLabel(QWidget* parent = nullptr);

    // Sets the text and the tool tip.
    void SetPath(const QString& path);
    // The text as the label paints it at its present width.
    QString ShownText() const;

    // As short as a few letters: a long path must not widen the window.
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect TextArea() const;
};

} // namespace tivox
