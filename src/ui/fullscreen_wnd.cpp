#include "ui/fullscreen_wnd.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QScreen>

#include "imageops/apply_edits.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "ui/image_ops_dlg.h"
#include "ui/qt_geometry.h"
#include "ui/qt_seams.h"

#include "../../resources/cursors/crop.xpm"
#include "../../resources/cursors/move.xpm"
#include "../../resources/cursors/red_eye.xpm"
#include "../../resources/cursors/select.xpm"

namespace tivox {

CFullScreenWnd::CFullScreenWnd(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint),
      m_qtPrompt(std::make_unique<QtPrompt>(this)), m_qtBusy(std::make_unique<QtBusyIndicator>()),
      m_qtStepProgress(std::make_unique<QtStepProgress>(this)) {
    m_prompt = m_qtPrompt.get();
    m_busy = m_qtBusy.get();
    m_stepProgress = m_qtStepProgress.get();
    setWindowTitle(QStringLiteral("Tivox Full Screen"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    ResetState();
}

CFullScreenWnd::~CFullScreenWnd() {
    if (m_created) {
        DestroyWindow();
    }
}

void CFullScreenWnd::SetPrompt(IPrompt* prompt) {
    m_prompt = prompt ? prompt : m_qtPrompt.get();
}

void CFullScreenWnd::SetBusyIndicator(IBusyIndicator* busy) {
    m_busy = busy ? busy : m_qtBusy.get();
}

void CFullScreenWnd::SetStepProgress(IStepProgress* progress) {
    m_stepProgress = progress ? progress : m_qtStepProgress.get();
}

void CFullScreenWnd::ResetState() {
    m_singlePhoto = false;
    m_tools.Reset();
    m_photoList = nullptr;
    m_pageStart = 0;
}

void CFullScreenWnd::Create(QScreen* screen) {
    if (!screen) {
        screen = QGuiApplication::primaryScreen();
    }
    Create(screen ? screen->geometry() : QRect(0, 0, 1024, 768));
    // Over panels and docks as well.
    setWindowState(windowState() | Qt::WindowFullScreen);
}

void CFullScreenWnd::Create(const QRect& area) {
    m_cropCursor = QCursor(QPixmap(crop_xpm), 16, 14);
    m_selectCursor = QCursor(QPixmap(select_xpm), 1, 1);
    m_moveCursor = QCursor(QPixmap(move_xpm), 16, 14);
    m_redEyeCursor = QCursor(QPixmap(red_eye_xpm), 15, 15);
    ApplyCursor(ToolCursor::Select);

    m_screenWidth = area.width();
    m_screenHeight = area.height();
    m_layout.SetScreenSize({m_screenWidth, m_screenHeight});
    m_layout.Recalculate();

    m_hover.Reset();
    m_mousePos = {-1, -1};
    m_currentMarker = 1;
    m_painter.Release();
    m_recycler.Clear();
    m_imageOpsDlg.reset();
    m_statusText.clear();

    setGeometry(area);
    m_created = true;
    show();
    raise();
    activateWindow();
}

void CFullScreenWnd::Configure(std::uint32_t tilesX, std::uint32_t tilesY,
                               std::uint32_t statusHeight) {
    m_layout.SetTileCount({std::int32_t(tilesX), std::int32_t(tilesY)});
    m_layout.SetStatusHeight(std::int32_t(statusHeight));
    m_layout.Recalculate();
}

void CFullScreenWnd::SetPhotoList(CPhotoList* list) {
    list->SetScreenSize(m_layout.GetScreenSize());
    m_photoList = list;
    m_pageStart = 0;
    m_currentIndex = 0;
    ShowRangeToList();
    update();
}

void CFullScreenWnd::OpenFolder(CPhotoList& list, const std::string& folder,
                                std::size_t thumbnailBudget) {
    list.SetThumbnailSize(GetThumbSize());
    list.SetWindow(this);
    list.SetThumbnailBudget(thumbnailBudget);
    list.Open(folder);
    SetPhotoList(&list);
}

void CFullScreenWnd::ShowRangeToList() {
    if (!m_photoList) {
        return;
    }
    // Only the photo shown keeps its full-screen picture, and those whose
    // pending edits it shows: paging through a folder must not hold them all.
    for (int i = 0; i < m_photoList->Count(); ++i) {
        CPhoto* photo = m_photoList->PhotoAt(i);
        if (photo->screenImage && !photo->edits.HasPending() &&
            (!m_singlePhoto || i != m_currentIndex)) {
            photo->DropScreenImage();
        }
    }
    if (m_singlePhoto) {
        m_photoList->SetVisibleRange(m_currentIndex, 1);
        if (const CPhoto* photo = m_photoList->PhotoAt(m_currentIndex)) {
            RequestScreenImage(*photo);
        }
    } else {
        m_screenMaker.Cancel();
        m_screenRequested.clear();
        m_photoList->SetVisibleRange(m_pageStart, m_layout.GetTilesPerPage());
    }
}

void CFullScreenWnd::DestroyWindow() {
    if (m_photoList) {
        // The worker ends between two photos; Clear joins it before any photo
        // goes, so none is freed under it.
        m_photoList->stopRequested.store(1);
        m_photoList->StopWorker(200);
        m_photoList->Clear();
    }
    m_screenMaker.Cancel();
    m_screenRequested.clear();
    m_painter.Release();
    m_recycler.Clear();
    m_imageOpsDlg.reset();
    ResetState();
    m_created = false;
    hide();
}

int CFullScreenWnd::GetJpegQuality() const {
    return m_mainDlg ? m_mainDlg->GetJpegQuality() : 80;
}

void CFullScreenWnd::InvalidateTile(int index) {
    // Called on the worker thread: the repaint belongs to the GUI thread. A
    // posted call to a window that is gone is dropped by Qt.
    QMetaObject::invokeMethod(
        this, [this, index] { OnTileReady(index); }, Qt::QueuedConnection);
}

void CFullScreenWnd::OnTileReady(int index) {
    if (m_singlePhoto || index < m_pageStart || index >= m_pageStart + m_layout.GetTilesPerPage()) {
        return;
    }
    update(TileArea(m_layout.GetTileRect(index - m_pageStart)));
}

void CFullScreenWnd::BringToTop() {
    raise();
    activateWindow();
}

CPhoto* CFullScreenWnd::GetCurrentPhoto() {
    if (!m_photoList) {
        m_prompt->Ask(UiText{TIVOX_TR("Photo Cache not initialized"), {}}, PromptIcon::Stop,
                      PromptButtons::Ok, PromptAnswer::Ok, UiText{TIVOX_TR("Error"), {}});
        return nullptr;
    }
    const int index =
        m_singlePhoto ? m_currentIndex : m_layout.GetIndexAt(m_mousePos) + m_pageStart;
    return m_photoList->PhotoAt(index);
}

void CFullScreenWnd::Invalidate() {
    m_screenMaker.Cancel();
    m_screenRequested.clear();
    update();
}

void CFullScreenWnd::WorkProgress::Begin(int total, const UiText& title) {
    // The workers change photos that the single view's picture would be
    // installed in: none comes in until they are done.
    ++m_depth;
    m_window.m_screenMaker.Cancel();
    m_window.m_screenRequested.clear();
    m_window.m_stepProgress->Begin(total, title);
}

void CFullScreenWnd::WorkProgress::End() {
    m_window.m_stepProgress->End();
    if (--m_depth == 0) {
        m_window.update(); // which asks again for a picture still missing
    }
}

void CFullScreenWnd::RequestScreenImage(const CPhoto& photo) {
    if (photo.screenImage || m_screenRequested == photo.path || m_workProgress.Running()) {
        return;
    }
    m_screenRequested = photo.path;
    m_screenMaker.Request(photo.path, m_layout.GetScreenSize());
}

void CFullScreenWnd::InstallScreenImage() {
    ScreenImage made;
    if (m_screenMaker.Take(made)) {
        InstallScreenImage(std::move(made));
    }
}

void CFullScreenWnd::InstallScreenImage(ScreenImage made) {
    if (m_workProgress.Running()) {
        return;
    }
    m_screenRequested.clear();
    CPhoto* photo = m_photoList && m_singlePhoto ? m_photoList->PhotoAt(m_currentIndex) : nullptr;
    if (!photo || photo->path != made.path || photo->screenImage) {
        return;
    }
    photo->screenSize = {made.image->Width(), made.image->Height()};
    photo->screenImage = std::move(made.image);
    photo->sourceSize = made.source;
    photo->readError = made.error;
    if (photo->edits.HasPending()) {
        // The edits are replayed from the file, as the tools show them.
        BusyScope busy(*m_busy);
        ApplyEdits(*photo, editAll, *this, false);
    }
    update();
}

Bitmap* CFullScreenWnd::CurrentScreenImage() {
    CPhoto* photo = GetCurrentPhoto();
    if (photo && !photo->screenImage && m_singlePhoto && !m_workProgress.Running()) {
        // A tool used before the picture arrived works on the picture, not
        // on the thumbnail standing in: wait for it rather than lose the click.
        BusyScope busy(*m_busy);
        RequestScreenImage(*photo);
        ScreenImage made;
        if (m_screenMaker.Wait(made)) {
            InstallScreenImage(std::move(made));
        }
    }
    if (!photo || !photo->screenImage) {
        return nullptr;
    }
    return photo->screenImage.get();
}

void CFullScreenWnd::paintEvent(QPaintEvent* event) {
    const std::int32_t group = m_tools.Group();
    const FullScreenFrame frame{
        .layout = m_layout,
        .photoAt = [list = m_photoList](int index) -> const CPhoto* {
            return list ? list->PhotoAt(index) : nullptr;
        },
        .pageStart = m_pageStart,
        .mousePos = m_mousePos,
        .singlePhoto = m_singlePhoto,
        .currentIndex = m_currentIndex,
        .cropVeil = group == ModeCrop || group == ModeCropPlaced,
        .cropRect = m_tools.CropRect(),
    };
    QPainter painter(this);
    const PaintedFrame painted = m_painter.Paint(painter, event->rect(), frame);
    if (painted.statusText) {
        m_statusText = *painted.statusText;
    }
    if (painted.screenImageMissing) {
        RequestScreenImage(*m_photoList->PhotoAt(m_currentIndex));
    }
}

void CFullScreenWnd::closeEvent(QCloseEvent* event) {
    if (m_created && !ConfirmLeaving()) {
        event->ignore();
        return;
    }
    if (m_created) {
        DestroyWindow();
    }
    QWidget::closeEvent(event);
}

} // namespace tivox
