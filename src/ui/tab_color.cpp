#include "ui/tab_color.h"

#include <QAbstractSlider>
#include <QCheckBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <cstdio>

#include "controls/icon_button.h"
#include "imageops/operation.h"
#include "ui/image_ops_dlg.h"

namespace tivox {
namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("CColorPage", text);
}

struct SliderRange {
    const char* label;
    int lower;
    int upper;
    int neutral;
    std::int32_t code;
};

constexpr SliderRange kSliders[5] = {
    {QT_TRANSLATE_NOOP("CColorPage", "Brightness"), -60, 60, 0, opBrightness},
    {QT_TRANSLATE_NOOP("CColorPage", "Contrast"), 60, 300, 100, opContrast},
    {QT_TRANSLATE_NOOP("CColorPage", "Sharpness"), 0, 100, 0, opSharpness},
    {QT_TRANSLATE_NOOP("CColorPage", "Gamma"), 10, 200, 100, opGamma},
    {QT_TRANSLATE_NOOP("CColorPage", "Saturation"), 0, 300, 100, opSaturation},
};

// Positions become values by the float 0.01.
constexpr float kSliderFactor = 0.01f;

} // namespace

CColorPage::CColorPage(CImageOpsDlg* dlg) : m_dlg(dlg) {
    auto* grid = new QGridLayout(this);
    for (int i = 0; i < 5; ++i) {
        const SliderRange& range = kSliders[i];
        grid->addWidget(new QLabel(Tr(range.label), this), i, 0);
        auto* slider = new QSlider(Qt::Horizontal, this);
        slider->setRange(range.lower, range.upper);
        slider->setPageStep(10);
        slider->setValue(range.neutral);
        grid->addWidget(slider, i, 1, 1, 2);
        m_sliders[std::size_t(i)] = slider;
        connect(slider, &QAbstractSlider::actionTriggered, this,
                [this, slider](int action) { OnSliderAction(slider, action); });
    }
    m_grayscaleBox = new QCheckBox(Tr("Grayscale"), this);
    m_negativeBox = new QCheckBox(Tr("Negative"), this);
    m_valueText = new QLabel(QStringLiteral("0.0"), this);
    m_valueText->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(m_grayscaleBox, 5, 0);
    grid->addWidget(m_negativeBox, 5, 1);
    grid->addWidget(m_valueText, 5, 2);
    m_reset = new CIconButton(Tr("Reset Color"), this);
    grid->addWidget(m_reset, 6, 0, 1, 3);
    grid->setRowStretch(7, 1);
    connect(m_grayscaleBox, &QCheckBox::clicked, this, &CColorPage::OnCheckBox);
    connect(m_negativeBox, &QCheckBox::clicked, this, &CColorPage::OnCheckBox);
    connect(m_reset, &QPushButton::clicked, this, &CColorPage::OnResetColor);
    ResetControls();
}

void CColorPage::SetEnabled(bool enable) {
    for (QWidget* child : findChildren<QWidget*>()) {
        child->setEnabled(enable);
    }
}

void CColorPage::ResetControls() {
    for (int i = 0; i < 5; ++i) {
        m_sliders[std::size_t(i)]->setValue(kSliders[i].neutral);
    }
    m_negative = false;
    m_grayscale = false;
    m_negativeBox->setChecked(false);
    m_grayscaleBox->setChecked(false);
}

void CColorPage::ReadControls() {
    m_negative = m_negativeBox->isChecked();
    m_grayscale = m_grayscaleBox->isChecked();
}

void CColorPage::ApplyColorValues() {
    ColorSettings settings;
    for (int i = 0; i < 5; ++i) {
        // During a drag the position runs ahead of the value.
        const int position = m_sliders[std::size_t(i)]->sliderPosition();
        settings.Set(kSliders[i].code, float(position) * kSliderFactor);
    }
    settings.grayscale = m_grayscale;
    settings.negative = m_negative;
    m_dlg->ShowColor(settings);
}

void CColorPage::OnSliderAction(QSlider* slider, int action) {
    // Dragging the thumb and page clicks act; the arrow keys only move it.
    if (action != QAbstractSlider::SliderMove && action != QAbstractSlider::SliderPageStepAdd &&
        action != QAbstractSlider::SliderPageStepSub) {
        return;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%2.1f",
                  double(float(slider->sliderPosition()) * kSliderFactor));
    m_valueText->setText(QString::fromLatin1(text));
    ReadControls();
    ApplyColorValues();
}

void CColorPage::OnCheckBox() {
    ReadControls();
    ApplyColorValues();
}

void CColorPage::OnResetColor() {
    m_dlg->ApplyCode(opResetColor);
    ResetControls();
}

} // namespace tivox
