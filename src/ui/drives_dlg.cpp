#include "ui/drives_dlg.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "controls/icon_button.h"
#include "ui/qt_seams.h"

namespace tivox {
namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("CDrivesDlg", text);
}

} // namespace

QIcon DriveIcon(int imageIndex) {
    static const char* const kPictures[] = {
        ":/icons/drive_floppy.svg",    ":/icons/drive_hdd.svg", ":/icons/drive_cdrom.svg",
        ":/icons/drive_removable.svg", ":/icons/drive_ram.svg", ":/icons/drive_network.svg",
        ":/icons/drive_unknown.svg",
    };
    if (imageIndex < 0 || imageIndex > 6)
        imageIndex = 6;
    return QIcon(QString::fromLatin1(kPictures[imageIndex]));
}

CDrivesDlg::CDrivesDlg(DriveLister lister, QWidget* parent)
    : QDialog(parent), m_lister(std::move(lister)) {
    setWindowTitle(Tr("Drives"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(Tr("Please select your digital camera drive."), this));
    m_list = new QListWidget(this);
    m_list->setViewMode(QListView::ListMode);
    m_list->setIconSize(QSize(16, 16));
    m_list->setMinimumSize(360, 160);
    layout->addWidget(m_list);
    m_descriptionLabel = new QLabel(this);
    m_descriptionLabel->setMinimumHeight(3 * fontMetrics().height());
    m_descriptionLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_descriptionLabel->setWordWrap(true);
    layout->addWidget(m_descriptionLabel);

    auto* buttons = new QHBoxLayout;
    auto* refresh = new QPushButton(Tr("&Refresh"), this);
    refresh->setObjectName(QStringLiteral("refresh"));
    refresh->setAutoDefault(false);
    auto* box = new QDialogButtonBox(this);
    auto* ok = box->addButton(Tr("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("ok"));
    ok->setDefault(true);
    box->addButton(Tr("Cancel"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("cancel"));
    buttons->addWidget(refresh);
    buttons->addStretch();
    buttons->addWidget(box);
    layout->addLayout(buttons);

    connect(refresh, &QPushButton::clicked, this, &CDrivesDlg::OnRefresh);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemClicked, this, [this] { UpdateDescription(); });
    m_list->installEventFilter(this);
    FillList();
}

// A key is looked at before it moves the selection, so with the arrow keys
// the details follow one step behind, as a click shows the clicked drive.
bool CDrivesDlg::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress)
        UpdateDescription();
    return QDialog::eventFilter(watched, event);
}

void CDrivesDlg::FillList() {
    QtBusyIndicator busy;
    BusyScope scope(busy);
    m_drives = m_lister ? m_lister() : ListDrives();
    for (const CDriveInfo& drive : m_drives)
        new QListWidgetItem(DriveIcon(DriveImageIndex(drive)),
                            QString::fromStdString(GetListText(drive)), m_list);
}

void CDrivesDlg::UpdateDescription() {
    const int row = m_list->currentRow();
    m_selected = m_list->currentItem() ? row : -1;
    if (m_selected < 0 || m_selected >= int(m_drives.size()))
        return;
    m_description =
        QString::fromStdString(m_drives[std::size_t(m_selected)].GetDescription(CoreTranslator()));
    m_descriptionLabel->setText(m_description);
}

void CDrivesDlg::OnRefresh() {
    m_list->clear();
    FillList();
}

const CDriveInfo* CDrivesDlg::GetSelectedDrive() const {
    if (m_selected < 0 || m_selected >= int(m_drives.size()))
        return nullptr;
    return &m_drives[std::size_t(m_selected)];
}

} // namespace tivox
