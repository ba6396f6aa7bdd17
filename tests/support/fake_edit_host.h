#pragma once
// A window double: hands out its sizes, list and current photo, and records
// repaints, raises and the tiles the thumbnail worker reports.

#include <mutex>
#include <vector>

#include "photos/edit_host.h"

namespace tivox::test {

class FakeWindow : public IEditHost {
public:
    Size GetScreenSize() const override { return screen; }
    Size GetThumbSize() const override { return thumb; }
    int GetJpegQuality() const override { return 90; }
    CPhotoList* GetPhotoList() override { return list; }
    void Invalidate() override { ++invalidations; }
    void InvalidateTile(int index) override {
        std::lock_guard lock(mutex);
        tiles.push_back(index);
    }
    void BringToTop() override { ++raised; }
    CPhoto* GetCurrentPhoto() override { return current; }
    BitmapRecycler* GetBitmapRecycler() override { return recycler; }
    std::vector<int> Tiles() {
        std::lock_guard lock(mutex);
        return tiles;
    }

    Size screen{1024, 768};
    Size thumb{120, 88};
    CPhotoList* list = nullptr;
    CPhoto* current = nullptr;
    BitmapRecycler* recycler = nullptr;
    int invalidations = 0;
    int raised = 0;

private:
    std::mutex mutex;
    std::vector<int> tiles;
};

} // namespace tivox::test
