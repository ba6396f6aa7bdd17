#pragma once
// The "Color" tab: five sliders (brightness, contrast, sharpness, gamma,
// saturation), "Grayscale", "Negative" and "Reset Color". Every drag step or
// page click sends all five positions and both flags, after a reset, so the
// chosen photos show exactly what the controls say. GUI thread only.

#include <QWidget>
#include <array>

class QCheckBox;
class QLabel;
class QSlider;

namespace tivox {

class CIconButton;
class CImageOpsDlg;

class CColorPage : public QWidget {
    Q_OBJECT
public:
    explicit CColorPage(CImageOpsDlg* dlg);

    // Every control of the page, labels included.
    void SetEnabled(bool enable);
    // Sliders to neutral, both boxes cleared; sends nothing, keeps the value text.
    void ResetControls();
    // Resets the colour state, then sends every control and applies it.
    void ApplyColorValues();

    // Controls, for tests: sliders in the order Brightness, Contrast,
    // Sharpness, Gamma, Saturation.
    QSlider* Slider(int index) const { return m_sliders[std::size_t(index)]; }
    QCheckBox* GrayscaleBox() const { return m_grayscaleBox; }
    QCheckBox* NegativeBox() const { return m_negativeBox; }
    QLabel* ValueText() const { return m_valueText; }
    CIconButton* ResetButton() const { return m_reset; }

private:
    void OnSliderAction(QSlider* slider, int action);
    void OnCheckBox();
    void OnResetColor();
    void ReadControls();

    CImageOpsDlg* m_dlg;
    std::array<QSlider*, 5> m_sliders{};
    QCheckBox* m_grayscaleBox = nullptr;
    QCheckBox* m_negativeBox = nullptr;
    QLabel* m_valueText = nullptr;
    CIconButton* m_reset = nullptr;
    bool m_negative = false;
    bool m_grayscale = false;
};

} // namespace tivox
