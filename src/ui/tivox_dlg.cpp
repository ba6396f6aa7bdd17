#include "ui/tivox_dlg.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/color_static.h"
#include "controls/hyper_link_static.h"
#include "controls/icon_button.h"
#include "controls/path_label.h"
#include "exif/exif_tags.h"
#include "ui/about_dlg.h"
#include "ui/drives_dlg.h"

namespace tivox {
namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("CTivoxDlg", text);
}

QString Q(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

// The bound controls, reached by their role.
class CTivoxDlg::Controls final : public IDialogControls {
public:
    explicit Controls(CTivoxDlg& dlg) : m_dlg(dlg) {}

    std::string GetItemText(DlgItem item) const override {
        switch (item) {
        case DlgItem::CameraDrive:
            return m_dlg.m_driveLabel->text().toStdString();
        case DlgItem::ExifTag:
            return m_dlg.m_exifTag->currentText().toStdString();
        default:
            return m_dlg.Edit(item) ? m_dlg.Edit(item)->text().toStdString() : std::string();
        }
    }
    void SetItemText(DlgItem item, const std::string& text) override {
        switch (item) {
        case DlgItem::CameraDrive:
            m_dlg.ShowCameraDrive(Q(text));
            break;
        case DlgItem::ExifTag:
            m_dlg.m_exifTag->setEditText(Q(text));
            break;
        default:
            if (QLineEdit* edit = m_dlg.Edit(item))
                edit->setText(Q(text));
        }
    }
    bool GetItemCheck(DlgItem item) const override { return Box(item) && Box(item)->isChecked(); }
    void SetItemCheck(DlgItem item, bool checked) override {
        if (CIconButton* box = Box(item))
            box->setChecked(checked);
    }
    void FocusItem(DlgItem item) override {
        if (QLineEdit* edit = m_dlg.Edit(item)) {
            edit->setFocus();
            edit->selectAll();
        }
    }

private:
    CIconButton* Box(DlgItem item) const {
        if (item == DlgItem::ShowStatusBar)
            return m_dlg.m_showStatusBar;
        if (item == DlgItem::CreateBackup)
            return m_dlg.m_createBackup;
        if (item == DlgItem::TurnUpright)
            return m_dlg.m_turnUpright;
        return nullptr;
    }
    CTivoxDlg& m_dlg;
};

class CTivoxDlg::PromptRelay final : public IPrompt {
public:
    PromptAnswer Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                     PromptAnswer defaultAnswer, const UiText& title) override {
        return target->Ask(text, icon, buttons, defaultAnswer, title);
    }
    IPrompt* target = nullptr;
};

class CTivoxDlg::PickerRelay final : public IFolderPicker {
public:
    bool PickFolder(const UiText& title, const std::string& start, std::string& chosen) override {
        return target->PickFolder(title, start, chosen);
    }
    IFolderPicker* target = nullptr;
};

CTivoxDlg::CTivoxDlg(QWidget* parent, std::string settingsPath)
    : QDialog(parent), m_controls(std::make_unique<Controls>(*this)),
      m_promptRelay(std::make_unique<PromptRelay>()),
      m_pickerRelay(std::make_unique<PickerRelay>()),
      m_commands(*m_controls, *m_promptRelay, *m_pickerRelay), m_qtPrompt(this), m_qtPicker(this),
      m_settingsPath(std::move(settingsPath)) {
    m_promptRelay->target = &m_qtPrompt;
    m_pickerRelay->target = &m_qtPicker;
    m_commands.m_translate = CoreTranslator();
    m_commands.LoadSettings(m_settingsPath);
    setWindowIcon(QIcon(QStringLiteral(":/icons/tivoxplus.svg")));
    BuildLayout();
    OnInitDialog();
}

CTivoxDlg::~CTivoxDlg() {
    StoreSettings();
}

void CTivoxDlg::SetPrompt(IPrompt* prompt) {
    m_promptRelay->target = prompt ? prompt : &m_qtPrompt;
    m_link->SetPrompt(prompt);
}

void CTivoxDlg::SetFolderPicker(IFolderPicker* picker) {
    m_pickerRelay->target = picker ? picker : &m_qtPicker;
}

void CTivoxDlg::SetFullScreenHooks(std::function<void()> open, std::function<bool()> mayLeave,
                                   std::function<void()> close) {
    m_openFullScreen = std::move(open);
    m_mayLeaveFullScreen = std::move(mayLeave);
    m_closeFullScreen = std::move(close);
}

bool CTivoxDlg::MayLeaveFullScreen() {
    return !m_mayLeaveFullScreen || m_mayLeaveFullScreen();
}

CIconButton* CTivoxDlg::MakeButton(const QString& caption, const char* name) {
    auto* button = new CIconButton(caption, this);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

CIconButton* CTivoxDlg::Button(const char* name) const {
    return findChild<CIconButton*>(QString::fromLatin1(name));
}

QLineEdit* CTivoxDlg::Edit(DlgItem item) const {
    switch (item) {
    case DlgItem::BaseFolder:
        return m_baseFolder;
    case DlgItem::PhotoFolder:
        return m_photoFolder;
    case DlgItem::RenamingRule:
        return m_renamingRule;
    case DlgItem::TilesX:
        return m_tilesX;
    case DlgItem::TilesY:
        return m_tilesY;
    case DlgItem::GalleryFolder:
        return m_galleryFolder;
    case DlgItem::JpegQuality:
        return m_quality;
    case DlgItem::ThumbnailMemory:
        return m_thumbMemory;
    default:
        return nullptr;
    }
}

void CTivoxDlg::BuildLayout() {
    setWindowTitle(QStringLiteral("TivoxPlus"));
    auto* grid = new QGridLayout(this);
    grid->setColumnStretch(1, 1);
    int row = 0;
    auto label = [this](const char* text) { return new QLabel(Tr(text), this); };
    auto line = [&](int index) {
        m_lines[index] = new CColorStatic(this);
        m_lines[index]->setFixedHeight(8);
        grid->addWidget(m_lines[index], row++, 0, 1, 4);
    };
    auto folderButton = [&](const char* name, const char* tip) {
        CIconButton* button = MakeButton({}, name);
        button->SetIcon(QStringLiteral(":/icons/folder.svg"), 16, 16);
        button->SetTooltipText(Tr(tip));
        return button;
    };

    // The camera drive.
    grid->addWidget(label("Digital Camera Drive:"), row, 0);
    m_driveLabel = new CPathLabel(this);
    m_driveLabel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    m_driveLabel->setMinimumWidth(160);
    grid->addWidget(m_driveLabel, row, 1);
    CIconButton* drive = MakeButton(Tr("Select Digital &Camera Drive"), "selectDrive");
    drive->SetIcon(QStringLiteral(":/icons/camera.svg"), 32, 32);
    grid->addWidget(drive, row++, 2, 1, 2);
    line(0);

    // The folders.
    grid->addWidget(label("Base Folder:"), row, 0);
    m_baseFolder = new QLineEdit(this);
    grid->addWidget(m_baseFolder, row, 1, 1, 2);
    CIconButton* base = folderButton(
        "baseFolder", "Select the base folder, which contains the photo folder. As its name "
                      "implies, the photo folder contains the photos.");
    grid->addWidget(base, row++, 3);

    grid->addWidget(label("Photo Folder:"), row, 0);
    m_photoFolder = new QLineEdit(this);
    grid->addWidget(m_photoFolder, row, 1);
    CIconButton* date = MakeButton(Tr("Current &Date"), "currentDate");
    grid->addWidget(date, row, 2);
    CIconButton* photo = folderButton(
        "photoFolder", "The photo folder receives the photos from the digital camera. The "
                       "photos inside are displayed when switching to full screen editing.");
    grid->addWidget(photo, row++, 3);

    grid->addWidget(label("HTML Gallery Base Folder:"), row, 0);
    m_galleryFolder = new QLineEdit(this);
    grid->addWidget(m_galleryFolder, row, 1, 1, 2);
    CIconButton* gallery = folderButton(
        "galleryFolder", "Folder containing HTML galleries. The subfolder names correspond to "
                         "the photo folders inside the base folder.");
    grid->addWidget(gallery, row++, 3);

    // Backup and restore.
    auto* backupRow = new QHBoxLayout;
    m_createBackup = MakeButton(Tr("Create Backup from Photo Folder"), "createBackup");
    m_createBackup->setCheckable(true);
    m_createBackup->SetIcon(QStringLiteral(":/icons/backup.svg"), 32, 32);
    CIconButton* restore = MakeButton(Tr("&Restore from Backup Folder"), "restore");
    restore->SetIcon(QStringLiteral(":/icons/restore.svg"), 32, 32);
    backupRow->addWidget(m_createBackup);
    backupRow->addWidget(restore);
    backupRow->addStretch();
    grid->addLayout(backupRow, row++, 0, 1, 4);

    // The renaming rule.
    grid->addWidget(label("Renaming Rule:"), row, 0);
    m_renamingRule = new QLineEdit(this);
    grid->addWidget(m_renamingRule, row++, 1, 1, 3);
    grid->addWidget(label("EXIF Tag:"), row, 0);
    m_exifTag = new QComboBox(this);
    m_exifTag->setEditable(true);
    m_exifTag->setInsertPolicy(QComboBox::NoInsert);
    for (const char* token : RuleTokensDialogOrder())
        m_exifTag->addItem(QString::fromLatin1(token));
    grid->addWidget(m_exifTag, row, 1);
    CIconButton* addTag = MakeButton(Tr("&Renaming Rule"), "addRuleTag");
    addTag->SetIcon(QStringLiteral(":/icons/arrow_right.svg"), 16, 16);
    grid->addWidget(addTag, row++, 2, 1, 2);

    // Get Photos and its progress.
    auto* getRow = new QHBoxLayout;
    CIconButton* get = MakeButton(Tr("&Get Photos"), "getPhotos");
    get->SetIcon(QStringLiteral(":/icons/get_photos.svg"), 80, 32);
    m_turnUpright = MakeButton(Tr("Turn photos upright"), "turnUpright");
    m_turnUpright->setCheckable(true);
    m_turnUpright->SetTooltipText(
        Tr("As they are copied, photos are turned upright without loss, as their EXIF "
           "orientation says. A photo that cannot be turned without losing an edge is copied "
           "as it is. The camera card is never changed."));
    m_progress = new QProgressBar(this);
    m_progress->setTextVisible(false);
    m_progress->setRange(0, 100);
    m_progress->setValue(0);
    getRow->addWidget(get);
    getRow->addWidget(m_turnUpright);
    getRow->addWidget(m_progress, 1);
    grid->addLayout(getRow, row++, 0, 1, 4);
    line(1);

    // Full-screen settings.
    auto* tilesRow = new QHBoxLayout;
    tilesRow->addWidget(label("Number of Tiles    X:"));
    m_tilesX = new QLineEdit(this);
    m_tilesY = new QLineEdit(this);
    for (QLineEdit* edit : {m_tilesX, m_tilesY}) {
        edit->setAlignment(Qt::AlignCenter);
        edit->setFixedWidth(48);
    }
    tilesRow->addWidget(m_tilesX);
    tilesRow->addWidget(label("Y:"));
    tilesRow->addWidget(m_tilesY);
    tilesRow->addSpacing(24);
    tilesRow->addWidget(label("Thumbnail Memory (MiB):"));
    m_thumbMemory = new QLineEdit(this);
    m_thumbMemory->setObjectName(QStringLiteral("thumbnailMemory"));
    m_thumbMemory->setAlignment(Qt::AlignRight);
    m_thumbMemory->setFixedWidth(64);
    tilesRow->addWidget(m_thumbMemory);
    tilesRow->addStretch();
    grid->addLayout(tilesRow, row++, 0, 1, 4);
    m_showStatusBar = MakeButton(Tr("Show &Statusbar in Full Screen Editing"), "showStatusBar");
    m_showStatusBar->setCheckable(true);
    grid->addWidget(m_showStatusBar, row++, 0, 1, 4, Qt::AlignLeft);

    auto* qualityRow = new QHBoxLayout;
    qualityRow->addWidget(label("JPEG Quality:"));
    m_slider = new QSlider(Qt::Horizontal, this);
    m_quality = new QLineEdit(this);
    m_quality->setAlignment(Qt::AlignRight);
    m_quality->setFixedWidth(48);
    qualityRow->addWidget(m_slider, 1);
    qualityRow->addWidget(m_quality);
    grid->addLayout(qualityRow, row++, 0, 1, 4);

    CIconButton* fullScreen = MakeButton(Tr("&Full Screen\nEditing"), "fullScreen");
    fullScreen->SetBitmap(QStringLiteral(":/icons/fullscreen.svg"), qRgb(0x7F, 0x7F, 0x7F));
    grid->addWidget(fullScreen, row++, 0, 1, 4);
    line(2);

    // The link and Exit.
    auto* bottom = new QHBoxLayout;
    m_link = new CHyperLinkStatic(Tr("TivoxPlus Web Site"), this);
    bottom->addWidget(m_link);
    bottom->addStretch();
    CIconButton* exit = MakeButton(Tr("E&xit"), "exit");
    exit->SetIcon(QStringLiteral(":/icons/exit.svg"));
    exit->setDefault(true);
    bottom->addWidget(exit);
    grid->addLayout(bottom, row++, 0, 1, 4);

    connect(drive, &QPushButton::clicked, this, &CTivoxDlg::OnSelectCameraDrive);
    connect(base, &QPushButton::clicked, this, &CTivoxDlg::OnSelectBaseFolder);
    connect(photo, &QPushButton::clicked, this, &CTivoxDlg::OnSelectPhotoFolder);
    connect(gallery, &QPushButton::clicked, this, &CTivoxDlg::OnSelectGalleryFolder);
    connect(date, &QPushButton::clicked, this, &CTivoxDlg::OnCurrentDate);
    connect(addTag, &QPushButton::clicked, this, &CTivoxDlg::OnAddRuleTag);
    connect(m_showStatusBar, &QPushButton::clicked, this, &CTivoxDlg::OnToggleStatusBar);
    connect(m_slider, &QSlider::valueChanged, this, &CTivoxDlg::OnHScroll);
    connect(fullScreen, &QPushButton::clicked, this, &CTivoxDlg::OnFullScreen);
    connect(get, &QPushButton::clicked, this, &CTivoxDlg::OnGetPhotos);
    connect(restore, &QPushButton::clicked, this, &CTivoxDlg::OnRestore);
    connect(exit, &QPushButton::clicked, this, &CTivoxDlg::accept);
    auto* about = new QShortcut(QKeySequence(QKeySequence::HelpContents), this);
    connect(about, &QShortcut::activated, this, &CTivoxDlg::OnAbout);
}

void CTivoxDlg::OnInitDialog() {
    m_commands.UpdateData(false);
    // Placing the slider is no movement by the user: the edit keeps its text.
    const QSignalBlocker quiet(m_slider);
    m_slider->setRange(0, 100);
    m_slider->setValue(int(m_commands.Fields().m_jpegQuality));
    m_link->SetURL(Tr("https://tivoxplus.example.org/"));
    m_lines[0]->SetBackColor(QColor(255, 0, 0));
    m_lines[1]->SetBackColor(QColor(0, 255, 0));
    m_lines[2]->SetBackColor(QColor(0, 0, 255));
}

void CTivoxDlg::ShowCameraDrive(const QString& drive) {
    // Every write of the controls comes here: a window the user narrowed
    // grows again only for another path.
    if (drive == m_driveLabel->text())
        return;
    m_driveLabel->SetPath(drive);
    // A window that opens later is laid out for the path. An open one grows
    // for a longer path as far as the screen allows; beyond that the label
    // elides the path's middle.
    const int missing = m_driveLabel->sizeHint().width() - m_driveLabel->width();
    if (!isVisible() || missing <= 0)
        return;
    int wanted = width() + missing;
    if (const QScreen* shown = screen())
        wanted = std::min(wanted,
                          shown->availableGeometry().width() - (frameGeometry().width() - width()));
    if (wanted > width())
        resize(wanted, height());
}

void CTivoxDlg::OnHScroll(int position) {
    m_quality->setText(QString::number(position));
}

void CTivoxDlg::OnSelectCameraDrive() {
    CDrivesDlg drives(m_driveLister, this);
    if (drives.exec() != QDialog::Accepted)
        return;
    const CDriveInfo* drive = drives.GetSelectedDrive();
    if (!drive)
        return;
    m_commands.TakeCameraDrive(drive->GetDriveName(), drive->m_type == kDriveRemovable);
}

void CTivoxDlg::OnFullScreen() {
    if (!m_commands.OnFullScreen())
        return;
    if (m_openFullScreen)
        m_openFullScreen();
}

template <typename Command> void CTivoxDlg::RunBusy(Command command) {
    if (m_busy || !MayLeaveFullScreen())
        return;
    if (m_closeFullScreen)
        m_closeFullScreen();
    m_busy = true;
    QtProgressSink progress(m_progress);
    QtBusyIndicator busy;
    command(progress, busy);
    m_busy = false;
}

void CTivoxDlg::OnGetPhotos() {
    RunBusy([this](IProgressSink& progress, IBusyIndicator& busy) {
        m_commands.OnGetPhotos(progress, busy);
    });
}

void CTivoxDlg::OnRestore() {
    RunBusy([this](IProgressSink& progress, IBusyIndicator& busy) {
        m_commands.OnRestore(progress, busy);
    });
}

void CTivoxDlg::OnAbout() {
    CAboutDlg about(this);
    about.exec();
}

void CTivoxDlg::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addAction(Tr("&About Tivox..."), this, &CTivoxDlg::OnAbout);
    menu.exec(event->globalPos());
}

void CTivoxDlg::accept() {
    if (m_busy || !m_commands.OnOK() || !MayLeaveFullScreen())
        return;
    QDialog::accept();
}

void CTivoxDlg::closeEvent(QCloseEvent* event) {
    // Closing works like Exit: the dialog stays after a refused read.
    if (m_busy || !m_commands.OnOK() || !MayLeaveFullScreen()) {
        event->ignore();
        return;
    }
    event->accept();
    QDialog::accept();
}

void CTivoxDlg::done(int result) {
    if (m_closeFullScreen)
        m_closeFullScreen();
    StoreSettings();
    QDialog::done(result);
}

void CTivoxDlg::StoreSettings() {
    if (m_stored)
        return;
    m_stored = true;
    m_commands.StoreSettings(m_settingsPath);
}

} // namespace tivox
