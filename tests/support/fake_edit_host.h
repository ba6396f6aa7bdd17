#pragma once
// A window double: records repaints and the tiles the worker reports.

#include <mutex>
#include <vector>

#include "photos/edit_host.h"

namespace tivox::test {

class FakeHost : public IEditHost {
public:
    Size GetScreenSize() const override { return screen; }
    Size GetThumbSize() const override { return thumb; }
    int GetJpegQuality() const override { return 90; }
    CPhotoList* GetPhotoList() override { return nullptr; }
    void Invalidate() override { ++invalidated; }
    void InvalidateTile(int index) override {
        std::lock_guard lock(mutex);
        tiles.push_back(index);
    }
    void BringToTop() override {}
    std::vector<int> Tiles() {
        std::lock_guard lock(mutex);
        return tiles;
    }

    Size screen{200, 150};
    Size thumb{40, 30};
    int invalidated = 0;

private:
    std::mutex mutex;
    std::vector<int> tiles;
};

} // namespace tivox::test
