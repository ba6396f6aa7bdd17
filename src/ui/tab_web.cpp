#include "ui/tab_web.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "controls/icon_button.h"
#include "ui/fullscreen_wnd.h"
#include "ui/image_ops_dlg.h"
#include "ui/qt_seams.h"
#include "ui/tab_fields.h"

namespace tivox {
namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("CWebPage", text);
}

// One group of the form: rows "Photos" and "Thumbnails", columns "X" and "Y".
QGroupBox* MakeGroup(QWidget* parent, const QString& title, QLineEdit* fields[4]) {
    auto* group = new QGroupBox(title, parent);
    auto* grid = new QGridLayout(group);
    grid->addWidget(new QLabel(QStringLiteral("X"), group), 0, 1, Qt::AlignCenter);
    grid->addWidget(new QLabel(QStringLiteral("Y"), group), 0, 2, Qt::AlignCenter);
    grid->addWidget(new QLabel(Tr("Photos"), group), 1, 0);
    grid->addWidget(new QLabel(Tr("Thumbnails"), group), 2, 0);
    for (int i = 0; i < 4; ++i) {
        fields[i]->setParent(group);
        grid->addWidget(fields[i], 1 + i / 2, 1 + i % 2);
    }
    return group;
}

} // namespace

CWebPage::CWebPage(CImageOpsDlg* dlg) : m_dlg(dlg) {
    auto* layout = new QVBoxLayout(this);
    auto* titleRow = new QHBoxLayout;
    titleRow->addWidget(new QLabel(Tr("Title"), this));
    m_titleEdit = new QLineEdit(QString::fromStdString(m_form.m_title), this);
    titleRow->addWidget(m_titleEdit);
    layout->addLayout(titleRow);

    const std::uint32_t values[8] = {
        m_form.m_photoWidth,  m_form.m_photoHeight, m_form.m_thumbWidth,  m_form.m_thumbHeight,
        m_form.m_photoTilesX, m_form.m_photoTilesY, m_form.m_thumbTilesX, m_form.m_thumbTilesY};
    for (int i = 0; i < 8; ++i) {
        m_numbers[std::size_t(i)] = MakeNumberField(this, values[i]);
    }
    layout->addWidget(MakeGroup(this, Tr("Resolution"), &m_numbers[0]));
    layout->addWidget(MakeGroup(this, Tr("Tiles"), &m_numbers[4]));
    m_create = new CIconButton(Tr("Create Gallery"), this);
    layout->addWidget(m_create);
    layout->addStretch();
    connect(m_create, &QPushButton::clicked, this, [this] { OnCreateGallery(); });
}

void CWebPage::SetEnabled(bool enable) {
    for (QWidget* child : findChildren<QWidget*>()) {
        child->setEnabled(enable);
    }
}

bool CWebPage::ReadControls() {
    IPrompt& prompt = m_dlg->Window()->Prompt();
    m_form.m_title = m_titleEdit->text().toStdString();
    std::uint32_t* fields[8] = {&m_form.m_photoWidth,  &m_form.m_photoHeight, &m_form.m_thumbWidth,
                                &m_form.m_thumbHeight, &m_form.m_photoTilesX, &m_form.m_photoTilesY,
                                &m_form.m_thumbTilesX, &m_form.m_thumbTilesY};
    const GalleryLimit limits[8] = {kGalleryPhotoSizeLimit,  kGalleryPhotoSizeLimit,
                                    kGalleryThumbSizeLimit,  kGalleryThumbSizeLimit,
                                    kGalleryPhotoTilesLimit, kGalleryPhotoTilesLimit,
                                    kGalleryThumbTilesLimit, kGalleryThumbTilesLimit};
    for (int i = 0; i < 8; ++i) {
        if (!ReadNumberField(m_numbers[std::size_t(i)], limits[i].lower, limits[i].upper,
                             *fields[i], prompt)) {
            return false;
        }
    }
    return true;
}

GalleryReport CWebPage::OnCreateGallery() {
    CFullScreenWnd* window = m_dlg->Window();
    CGalleryCommand command(window->Prompt(), window->Busy(), window->StepProgress(),
                            CoreTranslator());
    IFullScreenOwner* owner = window->GetMainDlg();
    if (owner) {
        command.m_galleryFolder = owner->GetGalleryFolder();
        command.m_photoFolder = owner->GetPhotoFolderPath();
    }
    command.m_processCurrent = m_dlg->IsProcessCurrent();
    command.m_form = m_form;
    command.m_readControls = [this, &command] {
        ReadControls();
        command.m_form = m_form;
    };
    // Both pictures of each photo come from one decode, on both cores; the
    // command tells the failures at its end.
    const GalleryReport report = command.OnCreateGallery(m_dlg->Scope(), *window);
    window->Invalidate();
    return report;
}

} // namespace tivox
