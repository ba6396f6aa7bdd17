#include "ui/fullscreen_wnd.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>

#include "app/fullscreen/crop_rect.h"
#include "app/fullscreen/fullscreen_paging.h"
#include "imageops/apply_edits.h"
#include "imageops/operation.h"
#include "imageops/red_eye_click.h"
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

bool CFullScreenWnd::CurrentIsPortrait() {
    const CPhoto* photo = GetCurrentPhoto();
    return photo && photo->IsPortrait();
}

void CFullScreenWnd::ApplyCursor(ToolCursor cursor) {
    switch (cursor) {
    case ToolCursor::Unchanged:
        return;
    case ToolCursor::Select:
        setCursor(m_selectCursor);
        break;
    case ToolCursor::Crop:
        setCursor(m_cropCursor);
        break;
    case ToolCursor::Move:
        setCursor(m_moveCursor);
        break;
    case ToolCursor::RedEye:
        setCursor(m_redEyeCursor);
        break;
    }
    m_cursorShape = cursor;
}

void CFullScreenWnd::InvalidateEdges(const RectEdges& e) {
    update(QRect(e.left, e.top, e.right - e.left, e.bottom - e.top));
}

// ---- Keyboard ----

void CFullScreenWnd::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape: {
        ToolCursor cursor = ToolCursor::Unchanged;
        const ToolExit exit = m_tools.OnEscape([this] { return CurrentIsPortrait(); }, cursor);
        ApplyCursor(cursor);
        if (exit == ToolExit::LeftDrawing) {
            update();
        } else if (exit == ToolExit::CloseWindow && ConfirmLeaving()) {
            DestroyWindow();
        }
        break;
    }
    case Qt::Key_Space:
        ToggleMark();
        break;
    // Right steps backward and Left forward.
    case Qt::Key_PageUp:
    case Qt::Key_Up:
    case Qt::Key_Right:
        StepBackward();
        break;
    case Qt::Key_PageDown:
    case Qt::Key_Down:
    case Qt::Key_Left:
        StepForward();
        break;
    case Qt::Key_R:
        m_currentMarker = 1;
        break;
    case Qt::Key_G:
        m_currentMarker = 2;
        break;
    case Qt::Key_B:
        m_currentMarker = 3;
        break;
    default:
        QWidget::keyPressEvent(event);
        break;
    }
}

// ---- Mouse ----

void CFullScreenWnd::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return; // the right button acts through the context menu event
    }
    const Point point = ToPoint(event->position().toPoint());
    switch (m_tools.Group()) {
    case ModeSelect:
        ToggleMark();
        break;
    case ModeCrop:
        m_tools.BeginCrop(point);
        update();
        break;
    case ModeRedEye:
        FixRedEye(point);
        break;
    default:
        break;
    }
}

void CFullScreenWnd::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const Point point = ToPoint(event->position().toPoint());
    const std::int32_t group = m_tools.Group();
    if (group == ModeCrop) {
        UpdateCropRect(point);
        SetMode(ModeCropPlaced);
    } else if (group == ModeCropPlaced && RectContains(m_tools.CropRect(), point)) {
        AskForCrop();
    }
}

void CFullScreenWnd::mouseDoubleClickEvent(QMouseEvent* event) {
    // Replaces the second press of a double click, as the platform does.
    if (event->button() == Qt::LeftButton && m_tools.Mode() == ModeSelect) {
        ChangeView();
    }
}

void CFullScreenWnd::mouseMoveEvent(QMouseEvent* event) {
    const Point point = ToPoint(event->position().toPoint());
    const bool leftHeld = (event->buttons() & Qt::LeftButton) != 0;
    if (!m_singlePhoto) {
        const HoverChange change = m_hover.Move(point, m_layout);
        if (change.changed) {
            if (change.repaintOld) {
                InvalidateEdges(change.oldCell);
            }
            InvalidateEdges(change.newCell);
            if (change.repaintStatus) {
                InvalidateEdges(m_layout.GetStatusBounds());
            }
        }
    } else if (leftHeld && m_tools.Group() == ModeCrop) {
        UpdateCropRect(point);
    } else if (leftHeld && m_tools.Group() == ModeCropPlaced &&
               RectContains(m_tools.CropRect(), point)) {
        const Bitmap* image = CurrentScreenImage();
        if (!image) {
            return; // the position is not taken either
        }
        const Point delta{point.x - m_mousePos.x, point.y - m_mousePos.y};
        m_tools.SetCropRect(DraggedCropRect(m_tools.CropRect(), delta, GetScreenSize(),
                                            {image->Width(), image->Height()}));
        update();
    }
    m_mousePos = point;
}

void CFullScreenWnd::contextMenuEvent(QContextMenuEvent* event) {
    ToolCursor cursor = ToolCursor::Unchanged;
    const ToolExit exit = m_tools.OnContextMenu([this] { return CurrentIsPortrait(); }, cursor);
    ApplyCursor(cursor);
    if (exit == ToolExit::LeftDrawing) {
        update();
        return;
    }
    if (exit == ToolExit::BackToDrawing) {
        return;
    }
    ShowImageOpsDlg(event->globalPos());
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

// ---- Commands ----

void CFullScreenWnd::ShowImageOpsDlg(const QPoint& globalPos) {
    if (!m_imageOpsDlg) {
        m_imageOpsDlg = std::make_unique<CImageOpsDlg>(this);
    }
    m_imageOpsDlg->ShowAt(globalPos, QRect(mapToGlobal(QPoint(0, 0)), size()));
    SyncToolPages();
}

void CFullScreenWnd::SetMode(std::int32_t mode) {
    ApplyCursor(m_tools.SetMode(mode, [this] { return CurrentIsPortrait(); }));
}

void CFullScreenWnd::ToggleMark() {
    if (!m_photoList) {
        return;
    }
    const int index =
        m_singlePhoto ? m_currentIndex : m_layout.GetIndexAt(m_mousePos) + m_pageStart;
    CPhoto* photo = m_photoList->PhotoAt(index);
    if (!photo) {
        return;
    }
    photo->marker = ToggledMarker(photo->marker, m_currentMarker);
    if (m_singlePhoto) {
        update(QRect(19, 19, 12, 12));
    } else {
        update(TileArea(m_layout.GetTileRectAt(m_mousePos)));
    }
}

void CFullScreenWnd::StepForward() {
    if (m_singlePhoto) {
        NextPhoto();
    } else {
        NextPage();
    }
}

void CFullScreenWnd::StepBackward() {
    if (m_singlePhoto) {
        PreviousPhoto();
    } else {
        PreviousPage();
    }
}

void CFullScreenWnd::NextPage() {
    const int count = m_photoList ? m_photoList->Count() : 0;
    m_pageStart = NextPageStart(m_pageStart, m_layout.GetTilesPerPage(), count);
    ShowRangeToList();
    update();
}

void CFullScreenWnd::PreviousPage() {
    const int count = m_photoList ? m_photoList->Count() : 0;
    m_pageStart = PreviousPageStart(m_pageStart, m_layout.GetTilesPerPage(), count);
    ShowRangeToList();
    update();
}

void CFullScreenWnd::NextPhoto() {
    const int count = m_photoList ? m_photoList->Count() : 0;
    m_currentIndex = NextPhotoIndex(m_currentIndex, count);
    ShowRangeToList();
    update();
}

void CFullScreenWnd::PreviousPhoto() {
    const int count = m_photoList ? m_photoList->Count() : 0;
    m_currentIndex = PreviousPhotoIndex(m_currentIndex, count);
    ShowRangeToList();
    update();
}

void CFullScreenWnd::ChangeView() {
    // The first click of the double click toggled the mark; this takes it back.
    ToggleMark();
    m_singlePhoto = !m_singlePhoto;
    if (m_singlePhoto) {
        m_currentIndex = m_layout.GetIndexAt(m_mousePos) + m_pageStart;
    } else {
        m_pageStart = PageStartOf(m_currentIndex, m_layout.GetTilesPerPage());
    }
    ShowRangeToList();
    SyncToolPages();
    if (m_imageOpsDlg && !m_imageOpsDlg->isVisible()) {
        BringToTop();
    }
    update();
}

void CFullScreenWnd::UpdateCropRect(Point point) {
    update(ToQRect(m_tools.CropRect()).normalized());
    const Bitmap* image = CurrentScreenImage();
    if (!image) {
        return;
    }
    const Rect r = UpdatedCropRect(m_tools.CropAnchor(), point, m_tools.CropAspect(),
                                   GetScreenSize(), {image->Width(), image->Height()});
    m_tools.SetCropRect(r);
    update(ToQRect(r).normalized());
}

void CFullScreenWnd::AskForCrop() {
    const PromptAnswer answer =
        m_prompt->Ask(UiText{TIVOX_TR("Really crop the image(s)?"), {}}, PromptIcon::Question,
                      PromptButtons::YesNo, PromptAnswer::Yes, UiText{TIVOX_TR("Crop"), {}});
    if (answer == PromptAnswer::Yes && m_imageOpsDlg) {
        BusyScope busy(*m_busy);
        const Rect& r = m_tools.CropRect();
        m_imageOpsDlg->ApplyOperation(COperation::Crop(r.x, r.y, r.width, r.height));
    }
    SetMode(ModeSelect);
    update();
}

void CFullScreenWnd::FixRedEye(Point point) {
    CPhoto* photo = GetCurrentPhoto();
    // The working image lies centred on the whole window.
    if (photo && CurrentScreenImage() &&
        RedEyeClick(*photo, {m_screenWidth, m_screenHeight}, point)) {
        update();
    }
}

void CFullScreenWnd::SyncToolPages() {
    if (!m_imageOpsDlg) {
        return;
    }
    for (int page = 1; page <= 3; ++page) {
        m_imageOpsDlg->EnablePage(page, m_singlePhoto);
    }
}

} // namespace tivox
