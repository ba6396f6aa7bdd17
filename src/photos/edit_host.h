#pragma once
// What photos and image operations need of the full-screen window. The window
// implements it; HeadlessHost (headless_host.h) stands in where there is
// none. Called on the user-interface thread only, except InvalidateTile,
// which the thumbnail worker calls (the window posts it on to its own
// thread).

#include "platform/geometry.h"

namespace tivox {

class BitmapRecycler;
class CPhoto;
class CPhotoList;

class IEditHost {
public:
    virtual ~IEditHost() = default;
    virtual Size GetScreenSize() const = 0; // box that working images are fitted to
    virtual Size GetThumbSize() const = 0;  // box that thumbnails are made to
    virtual int GetJpegQuality() const = 0; // quality of saved photos
    virtual CPhotoList* GetPhotoList() = 0; // the open list, or null
    virtual void Invalidate() = 0;          // repaint the whole window
    virtual void InvalidateTile(int index) = 0;
    virtual void BringToTop() = 0; // raise the window over the tool window
    // The photo that "Current" means: the one shown alone, or in tile mode
    // the one under the mouse; null when there is none.
    virtual CPhoto* GetCurrentPhoto() { return nullptr; }
    // Where full-size pictures leave their buffers for the next one; null
    // when the host keeps none.
    virtual BitmapRecycler* GetBitmapRecycler() { return nullptr; }
    // Whether anybody looks at the working image and the thumbnail. A host
    // that only writes files (the batch) says no, and edits are then just
    // recorded until the commit.
    virtual bool ShowsPreviews() const { return true; }
};

} // namespace tivox
