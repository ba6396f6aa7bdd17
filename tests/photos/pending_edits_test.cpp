#include <gtest/gtest.h>

#include <functional>

#include "photos/pending_edits.h"

namespace tivox {
namespace {

// A neutral value still asks for a commit: the user did set it.
TEST(PendingEdits, AnySetterMakesItPendingUntilClear) {
    const std::function<void(CPendingEdits&)> setters[] = {
        [](CPendingEdits& e) { e.SetBrightness(0); },
        [](CPendingEdits& e) { e.SetContrast(1); },
        [](CPendingEdits& e) { e.SetSharpness(0); },
        [](CPendingEdits& e) { e.SetGamma(1); },
        [](CPendingEdits& e) { e.SetSaturation(1); },
        [](CPendingEdits& e) { e.SetGrayscale(0); },
        [](CPendingEdits& e) { e.SetNegative(0); },
        [](CPendingEdits& e) { e.SetCrop({}); },
        [](CPendingEdits& e) { e.SetDenoise(1); },
        [](CPendingEdits& e) { e.AddRedEyePoint({}); },
        [](CPendingEdits& e) { e.SetResize({}); },
    };
    for (const auto& set : setters) {
        CPendingEdits e;
        set(e);
        EXPECT_TRUE(e.HasPending());
        e.Clear();
        EXPECT_FALSE(e.HasPending());
    }
}

// Clear keeps the last rectangle and size for the dialogs to offer again.
TEST(PendingEdits, ClearKeepsRectanglesButDropsValuesAndPoints) {
    CPendingEdits e;
    e.SetCrop({5, 6, 70, 80});
    e.SetResize({640, 480});
    e.AddRedEyePoint({10, 20});
    e.AddRedEyePoint({30, 40});
    e.SetGamma(1.5f);
    e.Clear();
    EXPECT_EQ(e.cropRect, (Rect{5, 6, 70, 80}));
    EXPECT_EQ(e.resizeSize, (Size{640, 480}));
    EXPECT_TRUE(e.redEyePoints.empty());
    EXPECT_EQ(e.gamma, 0.0f);
}

} // namespace
} // namespace tivox
