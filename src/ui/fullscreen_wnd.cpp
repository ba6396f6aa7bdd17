#include "ui/fullscreen_wnd.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QScreen>

#include "app/crop_rect.h"
#include "app/fullscreen_paging.h"
#include "app/fullscreen_status.h"
#include "imageops/operation.h"
#include "imageops/red_eye_fixer.h"
#include "imageops/selection_pass.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/jpeg_codec.h"
#include "ui/image_ops_dlg.h"
#include "ui/qt_seams.h"

#include "../../resources/cursors/crop.xpm"
#include "../../resources/cursors/move.xpm"
#include "../../resources/cursors/red_eye.xpm"
#include "../../resources/cursors/select.xpm"

namespace tivox {
namespace {

constexpr QRgb kBlack = 0xFF000000;
const QColor kVeil = QColor::fromRgba(0x78FFFFFF); // white at alpha 120
// A light blue: pure blue on black is hard to read (contrast 2.4:1); this
// one reaches 6.6:1.
const QColor kStatusColor = QColor::fromRgba(0xFF5A8CFF);
const QColor kRed = QColor::fromRgba(0xFFFF0000);
const QColor kGreen = QColor::fromRgba(0xFF00FF00);
const QColor kBlue = QColor::fromRgba(0xFF0000FF);
const QColor kGray = QColor::fromRgba(0xFF808080);

// The pen of a photo's marker, or none.
bool MarkerPen(const CPhoto& photo, QPen& pen) {
    switch (photo.marker) {
    case 1:
        pen = QPen(kRed, 2.0);
        return true;
    case 2:
        pen = QPen(kGreen, 2.0);
        return true;
    case 3:
        pen = QPen(kBlue, 2.0);
        return true;
    default:
        return false;
    }
}

// A bitmap as a QImage over the same bytes: painting never copies a picture.
QImage Wrap(const Bitmap& bitmap) {
    return QImage(bitmap.Data(), bitmap.Width(), bitmap.Height(), bitmap.Stride(),
                  QImage::Format_ARGB32);
}

QRect ToQRect(const Rect& r) {
    return QRect(r.x, r.y, r.width, r.height);
}

// A tile from its origin to origin + size - 1, as invalidation takes it.
QRect TileArea(const Rect& r) {
    return QRect(r.x, r.y, r.width - 1, r.height - 1);
}

Point ToPoint(const QPoint& p) {
    return {p.x(), p.y()};
}

} // namespace

CFullScreenWnd::CFullScreenWnd(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint),
      m_qtPrompt(std::make_unique<QtPrompt>(this)), m_qtBusy(std::make_unique<QtBusyIndicator>()) {
    m_prompt = m_qtPrompt.get();
    m_busy = m_qtBusy.get();
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
    m_thumbBuffer = QImage();
    m_screenBuffer = QImage();
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
    const Size thumb = m_layout.GetThumbSize();
    const Size screen = m_layout.GetScreenSize();
    m_thumbBuffer = QImage(thumb.width, thumb.height, QImage::Format_ARGB32);
    m_screenBuffer = QImage(screen.width, screen.height, QImage::Format_ARGB32);
}

void CFullScreenWnd::SetPhotoList(CPhotoList* list) {
    list->SetScreenSize(m_layout.GetScreenSize());
    m_photoList = list;
    m_pageStart = 0;
    m_currentIndex = 0;
    update();
}

void CFullScreenWnd::DestroyWindow() {
    if (m_photoList) {
        // The worker ends between two photos; Clear joins it before any photo
        // goes, so none is freed under it.
        m_photoList->stopRequested.store(1);
        m_photoList->StopWorker(200);
        m_photoList->Clear();
    }
    m_thumbBuffer = QImage();
    m_screenBuffer = QImage();
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

Bitmap* CFullScreenWnd::CurrentScreenImage() {
    CPhoto* photo = GetCurrentPhoto();
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

// ---- Painting ----

void CFullScreenWnd::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    // Every repaint wipes what it covers first: the background is black.
    painter.fillRect(event->rect(), QColor::fromRgba(kBlack));
    if (m_singlePhoto) {
        PaintSinglePhoto(painter);
    } else {
        PaintTiles(painter, event->rect());
    }
}

void CFullScreenWnd::PaintTiles(QPainter& painter, const QRect& clip) {
    if (!m_photoList) {
        return;
    }
    const int count = m_photoList->Count();
    const Size tiles = m_layout.GetTileCount();
    const Size thumbSize = m_layout.GetThumbSize();
    const Size tileSize = m_layout.GetTileSize();
    const CPhoto* hovered = nullptr;
    int index = m_pageStart;
    for (int row = 0; row < tiles.height && index < count; ++row) {
        for (int column = 0; column < tiles.width && index < count; ++column, ++index) {
            const Point origin = m_layout.GetThumbOrigin(column, row);
            const Rect tile = m_layout.GetTileRectAt(origin);
            // Tiles outside the repaint are not looked at.
            if (!ToQRect(tile).intersects(clip)) {
                continue;
            }
            const CPhoto* photo = m_photoList->PhotoAt(index);
            if (!photo) {
                continue;
            }
            if (photo->thumbnailReady.load(std::memory_order_acquire) == 0) {
                painter.setPen(QPen(kGray, 1.0));
                painter.setBrush(Qt::NoBrush);
                const int x = origin.x, y = origin.y;
                const int w = thumbSize.width, h = thumbSize.height;
                painter.drawRect(x, y, w, h);
                painter.drawLine(x, y, x + w, y + h);
                painter.drawLine(x, y + h, x + w, y);
                continue;
            }
            const Bitmap* thumb = photo->thumbnail.get();
            const int w = thumb ? thumb->Width() : 0;
            const int h = thumb ? thumb->Height() : 0;
            const Point offset = m_layout.GetCenterOffset(w, h);
            const bool hover = m_mousePos.x >= tile.x && m_mousePos.x < tile.x + tile.width &&
                               m_mousePos.y >= tile.y && m_mousePos.y < tile.y + tile.height;
            if (hover) {
                hovered = photo;
                m_thumbBuffer.fill(kBlack);
                QPainter buffer(&m_thumbBuffer);
                if (w > 0 && h > 0) {
                    buffer.drawImage(offset.x, offset.y, Wrap(*thumb));
                }
                buffer.fillRect(0, 0, thumbSize.width, thumbSize.height, kVeil);
                buffer.end();
                painter.drawImage(origin.x, origin.y, m_thumbBuffer);
            } else if (w > 0 && h > 0) {
                painter.drawImage(origin.x + offset.x, origin.y + offset.y, Wrap(*thumb));
            }
            QPen pen;
            if (MarkerPen(*photo, pen)) {
                painter.setPen(pen);
                painter.setBrush(Qt::NoBrush);
                painter.drawRect(origin.x - 2, origin.y - 2, tileSize.width - 4,
                                 tileSize.height - 4);
            }
        }
    }
    if (ToQRect(m_layout.GetStatusRect()).intersects(clip)) {
        m_statusText.clear();
        if (hovered) {
            PaintStatusText(painter, *hovered);
        }
    }
}

void CFullScreenWnd::PaintStatusText(QPainter& painter, const CPhoto& photo) {
    m_statusText = QString::fromStdString(StatusTextOf(photo.path));
    const Rect bar = m_layout.GetStatusRect();
    QFont font(QStringLiteral("Arial"));
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(12.0);
    painter.setFont(font);
    painter.setPen(kStatusColor);
    painter.drawText(QRect(10, bar.y + 5, bar.width - 10, bar.height - 5),
                     Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, m_statusText);
}

void CFullScreenWnd::PaintSinglePhoto(QPainter& painter) {
    if (!m_photoList) {
        return;
    }
    CPhoto* photo = m_photoList->PhotoAt(m_currentIndex);
    if (!photo) {
        return;
    }
    if (!photo->screenImage) {
        m_photoList->LoadScreenImageAt(m_currentIndex);
        if (photo->edits.HasPending()) {
            photo->ApplyEdits(editAll, *this, false);
        }
    }
    const Bitmap* image = photo->screenImage.get();
    if (image && !image->IsEmpty()) {
        const int x = (m_screenWidth - image->Width()) >> 1;
        const int y = (m_screenHeight - image->Height()) >> 1;
        const std::int32_t group = m_tools.Group();
        if (group == ModeCrop || group == ModeCropPlaced) {
            // The crop overlay: the rectangle keeps its colours, the rest of
            // the screen, black borders included, lies under the veil.
            const Rect c = m_tools.CropRect();
            const int W = m_screenWidth, H = m_screenHeight;
            m_screenBuffer.fill(kBlack);
            QPainter buffer(&m_screenBuffer);
            buffer.drawImage(x, y, Wrap(*image));
            buffer.fillRect(0, 0, c.x, H, kVeil);
            buffer.fillRect(c.x + c.width, 0, W - c.x - c.width, H, kVeil);
            buffer.fillRect(c.x, 0, c.width, c.y, kVeil);
            buffer.fillRect(c.x, c.y + c.height, c.width, H - c.y - c.height, kVeil);
            buffer.end();
            painter.drawImage(0, 0, m_screenBuffer);
        } else {
            painter.drawImage(x, y, Wrap(*image));
        }
    }
    QPen pen;
    if (MarkerPen(*photo, pen)) {
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(20, 20, 10, 10);
    }
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
    update();
}

void CFullScreenWnd::PreviousPage() {
    const int count = m_photoList ? m_photoList->Count() : 0;
    m_pageStart = PreviousPageStart(m_pageStart, m_layout.GetTilesPerPage(), count);
    update();
}

void CFullScreenWnd::NextPhoto() {
    const int count = m_photoList ? m_photoList->Count() : 0;
    m_currentIndex = NextPhotoIndex(m_currentIndex, count);
    update();
}

void CFullScreenWnd::PreviousPhoto() {
    const int count = m_photoList ? m_photoList->Count() : 0;
    m_currentIndex = PreviousPhotoIndex(m_currentIndex, count);
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
    if (!photo || !photo->screenImage || photo->screenSize.width <= 0 ||
        photo->screenSize.height <= 0) {
        return;
    }
    // The working image lies centred; the full-image point is scaled from
    // the size the working image was loaded at.
    const Size shown = photo->screenSize;
    const Size full = photo->sourceSize;
    const int mx = (m_screenWidth - shown.width) >> 1;
    const int my = (m_screenHeight - shown.height) >> 1;
    const Point onImage{point.x - mx, point.y - my};
    const Point onFull{std::int32_t(std::int64_t(full.width) * onImage.x / shown.width),
                       std::int32_t(std::int64_t(full.height) * onImage.y / shown.height)};
    photo->edits.AddRedEyePoint(onFull);
    CRedEyeFixer fixer(kRedEyeRadiusClick);
    fixer.SetImage(photo->screenImage.get());
    fixer.Fix(onImage.x, onImage.y);
    update();
}

void CFullScreenWnd::SyncToolPages() {
    if (!m_imageOpsDlg) {
        return;
    }
    for (int page = 1; page <= 3; ++page) {
        m_imageOpsDlg->EnablePage(page, m_singlePhoto);
    }
}

IStepProgress& CFullScreenWnd::StepProgress() {
    if (!m_stepProgress) {
        if (!m_qtStepProgress) {
            m_qtStepProgress = std::make_unique<QtStepProgress>(this);
        }
        return *m_qtStepProgress;
    }
    return *m_stepProgress;
}

namespace {

int CountPending(const CPhotoList& list) {
    int count = 0;
    for (int i = 0; i < list.Count(); ++i) {
        const CPhoto* photo = list.PhotoAt(i);
        count += photo && photo->edits.HasPending() ? 1 : 0;
    }
    return count;
}

} // namespace

// Commit and Discard let events run between two photos, for the progress.
// Its dialog keeps the user's input from every other window meanwhile; the
// list is still looked up anew for each photo.
bool CFullScreenWnd::CommitChanges() {
    if (!m_photoList) {
        return true;
    }
    BusyScope busy(*m_busy);
    const int total = CountPending(*m_photoList);
    StepScope steps(StepProgress(), total, {TIVOX_TR("Writing the changes into the photos"), {}});
    std::vector<UiText> failures;
    int done = 0;
    for (int i = 0; m_photoList && i < m_photoList->Count(); ++i) {
        CPhoto* photo = m_photoList->PhotoAt(i);
        if (!photo || !photo->edits.HasPending()) {
            continue;
        }
        const bool colorPending = photo->edits.colorPending != 0;
        photo->ApplyEdits(editAll, *this, true);
        if (colorPending && m_imageOpsDlg) {
            m_imageOpsDlg->ResetColorControls();
            m_imageOpsDlg->ResetProcessor();
        }
        if (!photo->fullImage || photo->fullImage->IsEmpty()) {
            // Unreadable or damaged: nothing is written, and the pictures
            // show the file as it stays.
            failures.push_back(ReadErrorText(photo->path, photo->readError));
            photo->DropFullImage(&m_recycler);
            photo->RebuildImages(GetThumbSize(), GetScreenSize(), photo->screenImage != nullptr);
        } else {
            UiText cause;
            if (photo->SaveAsJpeg(GetJpegQuality(), &m_recycler, &cause) == 0) {
                failures.push_back(cause);
            }
        }
        photo->edits.Clear();
        if (!steps.Step(++done) && done < total) {
            break; // the photos after this one keep their edits
        }
    }
    steps.End();
    busy.End();
    ReportFailures(failures, *m_prompt, CoreTranslator());
    return done == total && failures.empty();
}

// Closing used to drop uncommitted edits without a word; a person's work is
// not thrown away unasked, so every way out (Esc, a second opening, the main
// window's Exit or commands) asks first.
bool CFullScreenWnd::ConfirmLeaving() {
    const int pending = m_photoList ? CountPending(*m_photoList) : 0;
    if (pending == 0) {
        return true;
    }
    const UiText question = pending == 1
                                ? UiText{TIVOX_TR("1 photo has changes that are not committed.\n"
                                                  "Commit them before leaving? No discards them."),
                                         {}}
                                : UiText{TIVOX_TR("%s photos have changes that are not committed.\n"
                                                  "Commit them before leaving? No discards them."),
                                         {std::to_string(pending)}};
    switch (m_prompt->Ask(question, PromptIcon::Question, PromptButtons::YesNoCancel,
                          PromptAnswer::Cancel,
                          UiText{TIVOX_TR("Leave Full Screen Editing"), {}})) {
    case PromptAnswer::Yes:
        return CommitChanges();
    case PromptAnswer::No:
        return true;
    default:
        return false;
    }
}

void CFullScreenWnd::DiscardChanges() {
    if (!m_photoList) {
        return;
    }
    // Rebuilding thumbnails from the files takes a moment.
    BusyScope busy(*m_busy);
    const int total = CountPending(*m_photoList);
    StepScope steps(StepProgress(), total, {TIVOX_TR("Discarding the changes"), {}});
    int done = 0;
    for (int i = 0; m_photoList && i < m_photoList->Count(); ++i) {
        CPhoto* photo = m_photoList->PhotoAt(i);
        if (!photo) {
            continue;
        }
        if (photo->edits.colorPending && m_imageOpsDlg) {
            m_imageOpsDlg->ResetColorControls();
        }
        if (!photo->edits.HasPending()) {
            continue;
        }
        if (m_imageOpsDlg) {
            m_imageOpsDlg->ResetProcessor();
        }
        photo->edits.Clear();
        photo->DropFullImage(&m_recycler);
        photo->DropScreenImage();
        photo->DropThumbnail();
        // The next single view loads the working image from the file again.
        photo->RebuildImages(GetThumbSize(), GetScreenSize(), false);
        photo->thumbnailReady.store(1, std::memory_order_release);
        if (!steps.Step(++done) && done < total) {
            break;
        }
    }
    update();
}

} // namespace tivox
