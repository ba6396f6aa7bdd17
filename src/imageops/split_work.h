#pragma once
// Whole-picture passes over big pictures run in two halves at once: a helper
// thread takes one, the caller the other. The halves never write the same
// bytes, so the result is the same as from one walk.

#include <cstddef>
#include <thread>
#include <utility>

#include "imageops/photo_pool.h"
#include "imageops/pixel_path.h"

namespace tivox {

// From this many pixels on a second thread pays: below it, starting the
// thread costs more than it saves.
inline constexpr std::size_t kSplitPixels = std::size_t(1) << 19;

// True when a pass over this many pixels runs in two halves. The plain path
// never does: it stays the one-thread definition the fast path is held to.
// Nor does a worker of a photo pool, whose siblings keep the other cores busy.
inline bool SplitInTwo(std::size_t pixels, PixelPath path) {
    return path == PixelPath::Best && pixels >= kSplitPixels &&
           std::thread::hardware_concurrency() > 1 && !SharesCoresWithPool();
}

// Runs first on a helper thread and second here; back when both are done.
template <class First, class Second> void RunBoth(First&& first, Second&& second) {
    std::jthread helper(std::forward<First>(first));
    second();
}

} // namespace tivox
