// How the full-screen window answers keys and the mouse: the event handlers
// and the commands they lead to (marking, paging, the change of view, the
// crop rectangle and red eye), with the tool cursors.

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include "app/fullscreen/crop_rect.h"
#include "app/fullscreen/fullscreen_paging.h"
#include "imageops/operation.h"
#include "imageops/red_eye_click.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "ui/fullscreen_wnd.h"
#include "ui/image_ops_dlg.h"
#include "ui/qt_geometry.h"

namespace tivox {

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
