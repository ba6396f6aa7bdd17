#pragma once
// The "Basic" tab: rotations, mirrors and deleting, which change the photo
// files at once and are the only operations of tile mode. GUI thread only.

#include <QWidget>

namespace tivox {

class CIconButton;
class CImageOpsDlg;

class CBasicPage : public QWidget {
    Q_OBJECT
public:
    explicit CBasicPage(CImageOpsDlg* dlg);

    // Asks whether the chosen photos go to the Trash, saying how many and
    // which colours ("Move 3 photos (red, blue) to the Trash?", No first),
    // and moves them on Yes. Nothing is asked when no photo is chosen.
    void OnDelete();

    // Buttons by order: Left 90°, Right 90°, 180°, Horizontal, Vertical, Delete.
    CIconButton* Button(int index) const { return m_buttons[index]; }

private:
    CImageOpsDlg* m_dlg;
    CIconButton* m_buttons[6] = {};
};

} // namespace tivox
