#include "ui/tab_photo.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include "app/fullscreen/tool_resize.h"
#include "app/fullscreen/tool_state.h"
#include "app/main_dialog/settings.h"
#include "controls/icon_button.h"
#include "imageops/operation.h"
#include "photos/photo.h"
#include "ui/fullscreen_wnd.h"
#include "ui/image_ops_dlg.h"
#include "ui/tab_fields.h"

namespace tivox {
namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("CPhotoPage", text);
}

constexpr std::uint32_t kResizeLower = 1;
constexpr std::uint32_t kResizeUpper = 50000;

// The six print sizes: caption in cm, caption in inches, tool. The ratios
// are those of the inch sizes; 10x15 and 20x30 share one tool.
struct PrintSize {
    const char* metric;
    const char* inch;
    std::int32_t mode;
};
constexpr PrintSize kPrintSizes[6] = {
    {"7x10", "3x4", ModeCrop7x10},     {"9x13", "3.5x5", ModeCrop9x13},
    {"10x15", "4x6", ModeCrop10x15},   {"13x18", "5x7", ModeCrop13x18},
    {"18x24", "7x9.5", ModeCrop18x24}, {"20x30", "8x12", ModeCrop10x15},
};

CIconButton* MakeButton(QWidget* parent, const QString& caption, const char* icon = nullptr) {
    auto* button = new CIconButton(caption, parent);
    if (icon) {
        button->SetIcon(QString::fromLatin1(icon), 24, 24);
    }
    return button;
}

} // namespace

CPhotoPage::CPhotoPage(CImageOpsDlg* dlg) : m_dlg(dlg) {
    auto* grid = new QGridLayout(this);
    for (int i = 0; i < 6; ++i) {
        m_buttons[std::size_t(i)] = MakeButton(this, QString::fromLatin1(kPrintSizes[i].metric));
        const std::int32_t mode = kPrintSizes[i].mode;
        connect(m_buttons[std::size_t(i)], &QPushButton::clicked, this,
                [this, mode] { SelectTool(mode); });
    }
    m_buttons[6] = MakeButton(this, Tr("Free\nCrop"));
    m_buttons[7] = MakeButton(this, Tr("Unit:\ncm"));
    m_buttons[8] = MakeButton(this, Tr("Denoise"), ":/imageops/denoise.svg");
    m_buttons[9] = MakeButton(this, Tr("Red Eyes\nReduction"), ":/imageops/red_eye.svg");
    m_buttons[10] = MakeButton(this, Tr("Resize"), ":/imageops/resize.svg");
    for (int i = 0; i < 8; ++i) {
        grid->addWidget(m_buttons[std::size_t(i)], i / 4, i % 4);
    }
    grid->addWidget(m_buttons[8], 2, 0, 1, 2);
    grid->addWidget(m_buttons[9], 2, 2, 1, 2);
    connect(m_buttons[6], &QPushButton::clicked, this, [this] { SelectTool(ModeCropFree); });
    connect(m_buttons[7], &QPushButton::clicked, this, &CPhotoPage::OnUnit);
    connect(m_buttons[8], &QPushButton::clicked, this, &CPhotoPage::OnDenoise);
    connect(m_buttons[9], &QPushButton::clicked, this, [this] { SelectTool(ModeRedEye); });
    connect(m_buttons[10], &QPushButton::clicked, this, &CPhotoPage::OnResize);

    auto* sizeRow = new QHBoxLayout;
    m_widthEdit = MakeNumberField(this, m_resizeWidth);
    m_heightEdit = MakeNumberField(this, m_resizeHeight);
    sizeRow->addWidget(m_widthEdit);
    sizeRow->addWidget(new QLabel(QStringLiteral("x"), this));
    sizeRow->addWidget(m_heightEdit);
    sizeRow->addStretch();
    grid->addLayout(sizeRow, 3, 0, 1, 2);
    grid->addWidget(m_buttons[10], 3, 2, 2, 2);
    m_keepAspectBox = new QCheckBox(Tr("Keep Aspect Ratio"), this);
    m_keepAspectBox->setChecked(m_keepAspect);
    grid->addWidget(m_keepAspectBox, 4, 0, 1, 2);
    grid->setRowStretch(5, 1);

    // Only the field the user types in leads: textEdited is not raised when
    // the other field is set from here.
    connect(m_widthEdit, &QLineEdit::textEdited, this, [this] {
        if (m_keepAspect) {
            HeightFromWidth();
        }
    });
    connect(m_heightEdit, &QLineEdit::textEdited, this, [this] {
        if (m_keepAspect) {
            WidthFromHeight();
        }
    });
    connect(m_keepAspectBox, &QCheckBox::clicked, this, &CPhotoPage::OnKeepAspect);

    const CSettings* settings = m_dlg->GetSettings();
    ShowUnit(settings ? settings->m_metricUnits : m_metric);
}

void CPhotoPage::SetEnabled(bool enable) {
    for (QWidget* child : findChildren<QWidget*>()) {
        child->setEnabled(enable);
    }
}

void CPhotoPage::ShowUnit(std::uint32_t metric) {
    for (int i = 0; i < 6; ++i) {
        m_buttons[std::size_t(i)]->setText(
            QString::fromLatin1(metric ? kPrintSizes[i].metric : kPrintSizes[i].inch));
    }
    m_buttons[7]->setText(metric ? Tr("Unit:\ncm") : Tr("Unit:\ninch"));
}

void CPhotoPage::OnUnit() {
    // The unit travels with the settings file; only captions change.
    CSettings* settings = m_dlg->GetSettings();
    std::uint32_t& metric = settings ? settings->m_metricUnits : m_metric;
    metric = metric ? 0 : 1;
    ShowUnit(metric);
}

void CPhotoPage::SelectTool(std::int32_t mode) {
    m_dlg->SelectTool(mode);
    // Out of the way, so that the photo lies free for the mouse.
    m_dlg->OnOK();
}

void CPhotoPage::OnDenoise() {
    CFullScreenWnd* window = m_dlg->Window();
    BusyScope busy(window->Busy());
    m_dlg->ApplyOperation(COperation::Denoise());
    window->Invalidate();
}

void CPhotoPage::ReadControls() {
    IPrompt& prompt = m_dlg->Window()->Prompt();
    // A refused field stops the read; the rest keep their values.
    if (ReadNumberField(m_widthEdit, kResizeLower, kResizeUpper, m_resizeWidth, prompt) &&
        ReadNumberField(m_heightEdit, kResizeLower, kResizeUpper, m_resizeHeight, prompt)) {
        m_keepAspect = m_keepAspectBox->isChecked();
    }
}

void CPhotoPage::OnResize() {
    CFullScreenWnd* window = m_dlg->Window();
    BusyScope busy(window->Busy());
    ReadControls(); // a refused field goes out as the read left it
    m_dlg->ApplyOperation(COperation::Resize(int(m_resizeWidth), int(m_resizeHeight)));
    window->Invalidate();
}

void CPhotoPage::OnKeepAspect() {
    ReadControls();
    if (m_keepAspect) {
        HeightFromWidth();
    }
}

void CPhotoPage::HeightFromWidth() {
    const Bitmap* image = m_dlg->Window()->CurrentScreenImage();
    if (!image || image->IsEmpty()) {
        return;
    }
    const Bitmap& shown = *image;
    const int width = m_widthEdit->text().trimmed().toInt();
    m_heightEdit->setText(
        QString::number(tivox::HeightFromWidth(width, {shown.Width(), shown.Height()})));
}

void CPhotoPage::WidthFromHeight() {
    const Bitmap* image = m_dlg->Window()->CurrentScreenImage();
    if (!image || image->IsEmpty()) {
        return;
    }
    const Bitmap& shown = *image;
    const int height = m_heightEdit->text().trimmed().toInt();
    m_widthEdit->setText(
        QString::number(tivox::WidthFromHeight(height, {shown.Width(), shown.Height()})));
}

} // namespace tivox
