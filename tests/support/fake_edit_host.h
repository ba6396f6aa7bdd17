#pragma once
// The headless host that also records repaints, raises and the tiles the
// thumbnail worker reports.

#include <mutex>
#include <vector>

#include "photos/headless_host.h"

namespace tivox::test {

class FakeWindow : public HeadlessHost {
public:
    FakeWindow() { quality = 90; }
    void Invalidate() override { ++invalidations; }
    void InvalidateTile(int index) override {
        std::lock_guard lock(mutex);
        tiles.push_back(index);
    }
    void BringToTop() override { ++raised; }
    std::vector<int> Tiles() {
        std::lock_guard lock(mutex);
        return tiles;
    }

    int invalidations = 0;
    int raised = 0;

private:
    std::mutex mutex;
    std::vector<int> tiles;
};

} // namespace tivox::test
