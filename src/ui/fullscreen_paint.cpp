// How the full-screen window paints a frame: the tiles of a page with their
// veil, marker frames, placeholders and the status text, or one photo with
// the crop overlay.

#include <QPaintEvent>
#include <QPainter>

#include "app/fullscreen/fullscreen_status.h"
#include "imageops/operation.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/resampler.h"
#include "ui/fullscreen_wnd.h"
#include "ui/qt_geometry.h"

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

} // namespace

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
            // Held while drawing: the worker may drop thumbnails meanwhile.
            const CPhoto::ThumbnailView view = photo->ViewThumbnail();
            if (!view.image) {
                painter.setPen(QPen(kGray, 1.0));
                painter.setBrush(Qt::NoBrush);
                const int x = origin.x, y = origin.y;
                const int w = thumbSize.width, h = thumbSize.height;
                painter.drawRect(x, y, w, h);
                painter.drawLine(x, y, x + w, y + h);
                painter.drawLine(x, y + h, x + w, y);
                continue;
            }
            const Bitmap* thumb = view.image;
            // The camera's small picture stands in, scaled up to the box.
            const Size drawn = view.isPreview && !thumb->IsEmpty()
                                   ? FitInto({thumb->Width(), thumb->Height()}, thumbSize)
                                   : Size{thumb->Width(), thumb->Height()};
            const int w = drawn.width;
            const int h = drawn.height;
            auto draw = [&](QPainter& on, int x, int y) {
                if (view.isPreview) {
                    on.setRenderHint(QPainter::SmoothPixmapTransform);
                }
                on.drawImage(QRect(x, y, w, h), Wrap(*thumb));
            };
            const Point offset = m_layout.GetCenterOffset(w, h);
            const bool hover = m_mousePos.x >= tile.x && m_mousePos.x < tile.x + tile.width &&
                               m_mousePos.y >= tile.y && m_mousePos.y < tile.y + tile.height;
            if (hover) {
                hovered = photo;
                m_thumbBuffer.fill(kBlack);
                QPainter buffer(&m_thumbBuffer);
                if (w > 0 && h > 0) {
                    draw(buffer, offset.x, offset.y);
                }
                buffer.fillRect(0, 0, thumbSize.width, thumbSize.height, kVeil);
                buffer.end();
                painter.drawImage(origin.x, origin.y, m_thumbBuffer);
            } else if (w > 0 && h > 0) {
                draw(painter, origin.x + offset.x, origin.y + offset.y);
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
        RequestScreenImage(*photo);
        const CPhoto::ThumbnailView view = photo->ViewThumbnail();
        if (view.image && !view.image->IsEmpty()) {
            const Size fitted =
                FitInto({view.image->Width(), view.image->Height()}, m_layout.GetScreenSize());
            painter.drawImage(QRect((m_screenWidth - fitted.width) >> 1,
                                    (m_screenHeight - fitted.height) >> 1, fitted.width,
                                    fitted.height),
                              Wrap(*view.image));
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

} // namespace tivox
