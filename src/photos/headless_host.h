#pragma once
// The full-screen window's part for work without a window: tivox-batch, the
// commit's workers, the benchmarks and the tests. Its sizes, quality, list
// and current photo are set by its owner; there is nothing to repaint or
// raise. One owner, one thread (the thumbnail worker may call
// InvalidateTile, which does nothing).

#include "photos/edit_host.h"
#include "platform/bitmap_recycler.h"

namespace tivox {

class HeadlessHost : public IEditHost {
public:
    HeadlessHost() = default;
    HeadlessHost(const HeadlessHost&) = delete;
    HeadlessHost& operator=(const HeadlessHost&) = delete;

    Size GetScreenSize() const override { return screen; }
    Size GetThumbSize() const override { return thumb; }
    int GetJpegQuality() const override { return quality; }
    CPhotoList* GetPhotoList() override { return list; }
    void Invalidate() override {}
    void InvalidateTile(int) override {}
    void BringToTop() override {}
    CPhoto* GetCurrentPhoto() override { return current; }
    BitmapRecycler* GetBitmapRecycler() override { return keepsBuffers ? &buffers : nullptr; }
    bool ShowsPreviews() const override { return showsPreviews; }

    Size screen{1024, 768};
    Size thumb{120, 88};
    int quality = 80;
    // False when only files are written: edits are then just recorded until
    // the commit, and no thumbnail follows it.
    bool showsPreviews = true;
    CPhotoList* list = nullptr; // not owned
    CPhoto* current = nullptr;  // not owned
    // Whether full-size buffers pass from one photo to the next, in `buffers`.
    bool keepsBuffers = false;
    BitmapRecycler buffers;
};

} // namespace tivox
