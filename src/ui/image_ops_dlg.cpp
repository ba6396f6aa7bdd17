#include "ui/image_ops_dlg.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/icon_button.h"
#include "gallery/gallery_folder.h"
#include "imageops/selection_pass.h"
#include "ui/fullscreen_wnd.h"
#include "ui/qt_seams.h"
#include "ui/tab_basic.h"
#include "ui/tab_color.h"
#include "ui/tab_photo.h"
#include "ui/tab_web.h"

namespace tivox {
namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("CImageOpsDlg", text);
}

const char* const kMarkerIcons[3] = {":/imageops/marker_red.svg", ":/imageops/marker_green.svg",
                                     ":/imageops/marker_blue.svg"};

CIconButton* MakeBox(QWidget* parent, const QString& caption, const char* icon) {
    auto* box = new CIconButton(caption, parent);
    box->setCheckable(true);
    box->SetIcon(QString::fromLatin1(icon), 16, 16);
    return box;
}

// Whether a control of this window keeps a key of the full-screen window for
// itself. A click into the window leaves the focus on a tab, a button or a
// box, and the person goes on paging and marking: the keys go on to the
// photos. Only text fields keep what typing needs, and sliders their arrows.
bool KeepsKey(const QObject* control, int key) {
    const bool arrow =
        key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
    if (qobject_cast<const QLineEdit*>(control)) {
        return key != Qt::Key_PageUp && key != Qt::Key_PageDown;
    }
    return arrow && qobject_cast<const QSlider*>(control);
}

bool IsFullScreenKey(int key) {
    switch (key) {
    case Qt::Key_Space:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_R:
    case Qt::Key_G:
    case Qt::Key_B:
        return true;
    default:
        return false;
    }
}

// The top left corner for a window of `frame` size at `wanted`, moved in
// just enough to lie wholly inside `area` (its top left when it cannot fit).
QPoint KeptInside(const QPoint& wanted, const QSize& frame, const QRect& area) {
    const int x = std::max(area.left(), std::min(wanted.x(), area.right() + 1 - frame.width()));
    const int y = std::max(area.top(), std::min(wanted.y(), area.bottom() + 1 - frame.height()));
    return {x, y};
}

} // namespace

void CImageOpsTab::CreatePages(CBasicPage* basic, CColorPage* color, CPhotoPage* photo,
                               CWebPage* web) {
    m_basic = basic;
    m_color = color;
    m_photo = photo;
    m_web = web;
    addTab(basic, QCoreApplication::translate("CImageOpsDlg", "Basic"));
    addTab(color, QCoreApplication::translate("CImageOpsDlg", "Color"));
    addTab(photo, QCoreApplication::translate("CImageOpsDlg", "Photo"));
    addTab(web, QCoreApplication::translate("CImageOpsDlg", "Web"));
    setCurrentIndex(0);
}

void CImageOpsTab::EnablePage(int page, bool enable) {
    // The tabs stay selectable; a disabled page shows its controls greyed.
    switch (page) {
    case 1:
        m_color->SetEnabled(enable);
        break;
    case 2:
        m_photo->SetEnabled(enable);
        break;
    case 3:
        m_web->SetEnabled(enable);
        break;
    default:
        break;
    }
}

CImageOpsDlg::CImageOpsDlg(CFullScreenWnd* window)
    : QDialog(window, Qt::Tool | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      m_window(window) {
    m_processor.SetWindow(window);
    setWindowTitle(Tr("Image Operations"));
    BuildLayout();
    installEventFilter(this);
    for (QWidget* control : findChildren<QWidget*>()) {
        control->installEventFilter(this);
    }
    // "Select Marker:" starts at the window's marker of this moment.
    OnSelectMarker(window->CurrentMarker());
    WriteScope();
}

CImageOpsDlg::~CImageOpsDlg() = default;

void CImageOpsDlg::ShowAt(const QPoint& globalPos, const QRect& screen) {
    m_screen = screen;
    adjustSize();
    move(KeptInside(globalPos, frameGeometry().size(), m_screen));
    show();
    raise();
}

void CImageOpsDlg::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    // The window manager's frame becomes known only after the first showing,
    // and the window may have grown: move in again until the frame fits.
    const QRect frame = frameGeometry();
    if (!m_screen.isEmpty() && !m_screen.contains(frame)) {
        move(KeptInside(frame.topLeft(), frame.size(), m_screen));
    }
}

void CImageOpsDlg::OnOK() {
    hide();
    if (m_window->isVisible()) {
        m_window->BringToTop();
    }
}

bool CImageOpsDlg::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (plain && IsFullScreenKey(key->key()) && !KeepsKey(watched, key->key())) {
            QCoreApplication::sendEvent(m_window, event);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void CImageOpsDlg::BuildLayout() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    m_tab = new CImageOpsTab(this);
    m_tab->CreatePages(new CBasicPage(this), new CColorPage(this), new CPhotoPage(this),
                       new CWebPage(this));
    layout->addWidget(m_tab);

    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(Tr("Select Marker:"), this), 0, 0);
    auto* selectRow = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        m_select[std::size_t(i)] = MakeBox(this, {}, kMarkerIcons[i]);
        selectRow->addWidget(m_select[std::size_t(i)]);
        connect(m_select[std::size_t(i)], &QPushButton::clicked, this,
                [this, i] { OnSelectMarker(i + 1); });
    }
    selectRow->addStretch();
    grid->addLayout(selectRow, 0, 1, 1, 2);

    grid->addWidget(new QLabel(Tr("Process:"), this), 1, 0, Qt::AlignTop);
    auto* scopeColumn = new QVBoxLayout;
    m_processCurrent = MakeBox(this, Tr("Current"), ":/imageops/process_current.svg");
    m_processAll = MakeBox(this, Tr("All"), ":/imageops/process_all.svg");
    scopeColumn->addWidget(m_processCurrent);
    scopeColumn->addWidget(m_processAll);
    grid->addLayout(scopeColumn, 1, 1);
    connect(m_processCurrent, &QPushButton::clicked, this, &CImageOpsDlg::OnProcessCurrent);
    connect(m_processAll, &QPushButton::clicked, this, &CImageOpsDlg::OnProcessAll);
    auto* colorRow = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        m_process[std::size_t(i)] = MakeBox(this, {}, kMarkerIcons[i]);
        colorRow->addWidget(m_process[std::size_t(i)]);
        connect(m_process[std::size_t(i)], &QPushButton::clicked, this,
                [this, i] { OnProcessColor(i + 1); });
    }
    colorRow->addStretch();
    grid->addLayout(colorRow, 1, 2, Qt::AlignVCenter);

    grid->addWidget(new QLabel(Tr("Changes:"), this), 2, 0);
    auto* changes = new QHBoxLayout;
    m_discard = new CIconButton(Tr("&Discard"), this);
    m_commit = new CIconButton(Tr("&Commit"), this);
    changes->addWidget(m_discard);
    changes->addWidget(m_commit);
    grid->addLayout(changes, 2, 1, 1, 2);
    layout->addLayout(grid);
    connect(m_discard, &QPushButton::clicked, this, [this] { m_window->DiscardChanges(); });
    connect(m_commit, &QPushButton::clicked, this, [this] { m_window->CommitChanges(); });
}

void CImageOpsDlg::ReadScope() {
    m_scope.current = m_processCurrent->isChecked();
    m_scope.all = m_processAll->isChecked();
    m_scope.red = m_process[0]->isChecked();
    m_scope.green = m_process[1]->isChecked();
    m_scope.blue = m_process[2]->isChecked();
}

void CImageOpsDlg::WriteScope() {
    m_processCurrent->setChecked(m_scope.current);
    m_processAll->setChecked(m_scope.all);
    m_process[0]->setChecked(m_scope.red);
    m_process[1]->setChecked(m_scope.green);
    m_process[2]->setChecked(m_scope.blue);
}

void CImageOpsDlg::OnProcessCurrent() {
    ReadScope();
    if (ClickProcessCurrent(m_scope)) {
        WriteScope();
    }
}

void CImageOpsDlg::OnProcessAll() {
    ReadScope();
    if (ClickProcessAll(m_scope)) {
        WriteScope();
    }
}

void CImageOpsDlg::OnProcessColor(int marker) {
    ReadScope();
    if (ClickProcessColor(m_scope, marker)) {
        WriteScope();
    }
}

void CImageOpsDlg::OnSelectMarker(int marker) {
    for (int i = 0; i < 3; ++i) {
        m_select[std::size_t(i)]->setChecked(i + 1 == marker);
    }
    m_window->SetCurrentMarker(marker);
}

void CImageOpsDlg::ApplyOperation(const COperation& operation) {
    ReadScope();
    tivox::ApplyOperation(operation, m_scope, m_processor, *m_window, m_window->Prompt(),
                          m_window->StepProgress(), CoreTranslator());
}

void CImageOpsDlg::ShowColor(const ColorSettings& settings) {
    m_processor.ShowColor(settings,
                          [this](const COperation& operation) { ApplyOperation(operation); });
}

void CImageOpsDlg::SelectTool(std::int32_t mode) {
    m_window->SetMode(mode);
    m_window->Invalidate();
}

std::string CImageOpsDlg::GetGalleryFolder() const {
    IFullScreenOwner* owner = m_window->GetMainDlg();
    if (!owner) {
        return {};
    }
    return GalleryFolderFor(owner->GetGalleryFolder(), owner->GetPhotoFolderPath());
}

CSettings* CImageOpsDlg::GetSettings() const {
    IFullScreenOwner* owner = m_window->GetMainDlg();
    return owner ? &owner->GetSettings() : nullptr;
}

ProcessScope CImageOpsDlg::Scope() {
    ReadScope();
    return m_scope;
}

bool CImageOpsDlg::IsProcessCurrent() {
    ReadScope();
    return m_scope.current;
}

void CImageOpsDlg::ResetProcessor() {
    m_processor.ResetColorState();
}

void CImageOpsDlg::ResetColorControls() {
    m_tab->m_color->ResetControls();
}

} // namespace tivox
