#pragma once
// The "Photo" tab: the print-size crop tools with captions in cm or inches,
// "Free\nCrop", the unit, "Denoise", "Red Eyes\nReduction" and "Resize" with
// its two fields, which keep the proportions of the picture on the screen
// while "Keep Aspect Ratio" is checked. GUI thread only.

#include <QWidget>
#include <array>
#include <cstdint>

class QCheckBox;
class QLineEdit;

namespace tivox {

class CIconButton;
class CImageOpsDlg;

class CPhotoPage : public QWidget {
    Q_OBJECT
public:
    explicit CPhotoPage(CImageOpsDlg* dlg);

    void SetEnabled(bool enable);
    // Captions of the print sizes and the unit button: cm unless `metric` is 0.
    void ShowUnit(std::uint32_t metric);
    void OnUnit();
    void OnDenoise();
    void OnResize();
    void HeightFromWidth();
    void WidthFromHeight();

    // Buttons 1 to 11 in the order of the page (index 0 to 10).
    CIconButton* Button(int index) const { return m_buttons[std::size_t(index)]; }
    QLineEdit* WidthField() const { return m_widthEdit; }
    QLineEdit* HeightField() const { return m_heightEdit; }
    QCheckBox* KeepAspectBox() const { return m_keepAspectBox; }
    std::uint32_t ResizeWidth() const { return m_resizeWidth; }
    std::uint32_t ResizeHeight() const { return m_resizeHeight; }

private:
    void ReadControls();
    void OnKeepAspect();
    void SelectTool(std::int32_t mode);

    CImageOpsDlg* m_dlg;
    std::array<CIconButton*, 11> m_buttons{};
    QLineEdit* m_widthEdit = nullptr;
    QLineEdit* m_heightEdit = nullptr;
    QCheckBox* m_keepAspectBox = nullptr;
    std::uint32_t m_resizeWidth = 400;
    std::uint32_t m_resizeHeight = 300;
    bool m_keepAspect = true;
    std::uint32_t m_metric = 1; // when there are no settings to keep it
};

} // namespace tivox
