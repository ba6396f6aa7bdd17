#include "ui/fullscreen_painter.h"

#include <QPainter>

#include "app/fullscreen/fullscreen_status.h"
#include "photos/photo.h"
#include "platform/resampler.h"
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

// The off-screen picture of `size`, made at the first frame that needs it and
// kept after: never one per frame.
QImage& Buffer(QImage& buffer, Size size) {
    if (buffer.width() != size.width || buffer.height() != size.height) {
        buffer = QImage(size.width, size.height, QImage::Format_ARGB32);
    }
    return buffer;
}

void PaintStatusText(QPainter& painter, const Rect& bar, const QString& text) {
    QFont font(QStringLiteral("Arial"));
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(12.0);
    painter.setFont(font);
    painter.setPen(kStatusColor);
    painter.drawText(QRect(10, bar.y + 5, bar.width - 10, bar.height - 5),
                     Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, text);
}

} // namespace

PaintedFrame CFullScreenPainter::Paint(QPainter& painter, const QRect& clip,
                                       const FullScreenFrame& frame) {
    PaintedFrame painted;
    // Every repaint wipes what it covers first: the background is black.
    painter.fillRect(clip, QColor::fromRgba(kBlack));
    if (frame.singlePhoto) {
        PaintSinglePhoto(painter, frame, painted);
    } else {
        PaintTiles(painter, clip, frame, painted);
    }
    return painted;
}

void CFullScreenPainter::Release() {
    m_thumbBuffer = QImage();
    m_screenBuffer = QImage();
}

void CFullScreenPainter::PaintTiles(QPainter& painter, const QRect& clip,
                                    const FullScreenFrame& frame, PaintedFrame& painted) {
    if (!frame.photoAt) {
        return;
    }
    const CTileLayout& layout = frame.layout;
    const Size tiles = layout.GetTileCount();
    const Size thumbSize = layout.GetThumbSize();
    const Size tileSize = layout.GetTileSize();
    const Point mouse = frame.mousePos;
    const CPhoto* hovered = nullptr;
    int index = frame.pageStart;
    for (int row = 0; row < tiles.height; ++row) {
        for (int column = 0; column < tiles.width; ++column, ++index) {
            const Point origin = layout.GetThumbOrigin(column, row);
            const Rect tile = layout.GetTileRectAt(origin);
            // Tiles outside the repaint are not looked at.
            if (!ToQRect(tile).intersects(clip)) {
                continue;
            }
            const CPhoto* photo = frame.photoAt(index);
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
            const Point offset = layout.GetCenterOffset(w, h);
            const bool hover = mouse.x >= tile.x && mouse.x < tile.x + tile.width &&
                               mouse.y >= tile.y && mouse.y < tile.y + tile.height;
            if (hover) {
                hovered = photo;
                QImage& composed = Buffer(m_thumbBuffer, thumbSize);
                composed.fill(kBlack);
                QPainter buffer(&composed);
                if (w > 0 && h > 0) {
                    draw(buffer, offset.x, offset.y);
                }
                buffer.fillRect(0, 0, thumbSize.width, thumbSize.height, kVeil);
                buffer.end();
                painter.drawImage(origin.x, origin.y, composed);
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
    if (ToQRect(layout.GetStatusRect()).intersects(clip)) {
        painted.statusText.emplace();
        if (hovered) {
            *painted.statusText = QString::fromStdString(StatusTextOf(hovered->path));
            PaintStatusText(painter, layout.GetStatusRect(), *painted.statusText);
        }
    }
}

void CFullScreenPainter::PaintSinglePhoto(QPainter& painter, const FullScreenFrame& frame,
                                          PaintedFrame& painted) {
    const CPhoto* photo = frame.photoAt ? frame.photoAt(frame.currentIndex) : nullptr;
    if (!photo) {
        return;
    }
    const Size screen = frame.layout.GetScreenSize();
    if (!photo->screenImage) {
        painted.screenImageMissing = true;
        const CPhoto::ThumbnailView view = photo->ViewThumbnail();
        if (view.image && !view.image->IsEmpty()) {
            const Size fitted = FitInto({view.image->Width(), view.image->Height()}, screen);
            painter.drawImage(QRect((screen.width - fitted.width) >> 1,
                                    (screen.height - fitted.height) >> 1, fitted.width,
                                    fitted.height),
                              Wrap(*view.image));
        }
    }
    const Bitmap* image = photo->screenImage.get();
    if (image && !image->IsEmpty()) {
        const int x = (screen.width - image->Width()) >> 1;
        const int y = (screen.height - image->Height()) >> 1;
        if (frame.cropVeil) {
            // The rectangle keeps its colours; the rest of the screen, black
            // borders included, lies under the veil.
            const Rect c = frame.cropRect;
            const int W = screen.width, H = screen.height;
            QImage& composed = Buffer(m_screenBuffer, screen);
            composed.fill(kBlack);
            QPainter buffer(&composed);
            buffer.drawImage(x, y, Wrap(*image));
            buffer.fillRect(0, 0, c.x, H, kVeil);
            buffer.fillRect(c.x + c.width, 0, W - c.x - c.width, H, kVeil);
            buffer.fillRect(c.x, 0, c.width, c.y, kVeil);
            buffer.fillRect(c.x, c.y + c.height, c.width, H - c.y - c.height, kVeil);
            buffer.end();
            painter.drawImage(0, 0, composed);
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
