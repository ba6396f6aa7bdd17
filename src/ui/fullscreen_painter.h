#pragma once
// Paints one frame of Full Screen Editing from a plain description of it:
// the tiles of a page, the hovered one under a white veil, marker frames,
// crossed boxes for photos without a picture yet and the hovered path on the
// status bar; or one photo centred on the screen with its marker square and
// the veil around a crop rectangle. It knows no window: it paints into any
// QPainter and hands back what the frame found missing.
//
// Threads: the GUI thread. Thumbnails are read under their photo's lock, as
// the worker may drop them meanwhile.

#include <QImage>
#include <QRect>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

#include "app/fullscreen/tile_layout.h"
#include "platform/geometry.h"

class QPainter;

namespace tivox {

class CPhoto;

// What one frame shows.
struct FullScreenFrame {
    CTileLayout layout;
    // The photo at a list index; null past the end of the list or without one.
    std::function<const CPhoto*(int)> photoAt;
    std::int32_t pageStart = 0;
    Point mousePos{-1, -1}; // the tile under it is hovered
    bool singlePhoto = false;
    std::int32_t currentIndex = 0; // the photo of the single view
    // The single view veils everything but this rectangle.
    bool cropVeil = false;
    Rect cropRect;
};

// What the window learns from a painted frame.
struct PaintedFrame {
    // Set when the frame covered the status bar: the text shown there, empty
    // when no photo is hovered.
    std::optional<QString> statusText;
    // The single view's photo has no picture of screen size yet; its
    // thumbnail, enlarged, stood in.
    bool screenImageMissing = false;
};

class CFullScreenPainter {
public:
    // Paints what of `frame` lies within `clip`, on black.
    PaintedFrame Paint(QPainter& painter, const QRect& clip, const FullScreenFrame& frame);
    // Frees the off-screen pictures; the next frame that needs one makes it.
    void Release();

private:
    void PaintTiles(QPainter& painter, const QRect& clip, const FullScreenFrame& frame,
                    PaintedFrame& painted);
    void PaintSinglePhoto(QPainter& painter, const FullScreenFrame& frame, PaintedFrame& painted);

    // The hovered tile and the crop overlay are composed off the screen, in
    // pictures kept from one frame to the next.
    QImage m_thumbBuffer;
    QImage m_screenBuffer;
};

} // namespace tivox
