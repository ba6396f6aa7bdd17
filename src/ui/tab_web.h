#pragma once
// The "Web" tab: the gallery form (title, picture sizes, tiles) and the
// "Create Gallery" button, which runs the gallery command over the photos
// that the "Process:" boxes choose. GUI thread only.

#include <QWidget>
#include <array>

#include "gallery/gallery_command.h"
#include "gallery/gallery_form.h"

class QLineEdit;

namespace tivox {

class CIconButton;
class CImageOpsDlg;

class CWebPage : public QWidget {
    Q_OBJECT
public:
    explicit CWebPage(CImageOpsDlg* dlg);

    void SetEnabled(bool enable);
    // Reads the form; false at the first refused number, after its message.
    bool ReadControls();
    GalleryReport OnCreateGallery();

    const GalleryForm& Form() const { return m_form; }
    QLineEdit* TitleField() const { return m_titleEdit; }
    // Numbers in the order photo X, Y, thumbnail X, Y, photo tiles X, Y,
    // thumbnail tiles X, Y.
    QLineEdit* NumberField(int index) const { return m_numbers[std::size_t(index)]; }
    CIconButton* CreateButton() const { return m_create; }

private:
    CImageOpsDlg* m_dlg;
    GalleryForm m_form;
    QLineEdit* m_titleEdit = nullptr;
    std::array<QLineEdit*, 8> m_numbers{};
    CIconButton* m_create = nullptr;
};

} // namespace tivox
