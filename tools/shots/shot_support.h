#pragma once
// Shared by the two documentation screenshot programs.

#include <QApplication>
#include <QPixmap>
#include <QString>
#include <QWidget>
#include <cstdio>

namespace tivox::shots {

// Lets pending layout and paint events run, so a grab shows the final state.
inline void Settle() {
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents();
}

// Grabs the widget into a PNG file and says what it did.
inline bool SaveGrab(QWidget& widget, const QString& path) {
    Settle();
    const bool saved = widget.grab().save(path);
    std::printf("%s %s\n", saved ? "wrote" : "could not write", qPrintable(path));
    return saved;
}

} // namespace tivox::shots
