#pragma once
// The rule that ties the "Process:" boxes of the Image Operations window:
// "Current", "All" and the three colours exclude each other, the colours
// being free among themselves. Every click first takes the boxes as the user
// left them (read into the scope); the answer says whether they changed and
// must be shown again. UI thread only.

#include <cstdint>

#include "imageops/selection_pass.h"

namespace tivox {

// A click on "Current" or "All".
bool ClickProcessCurrent(ProcessScope& scope);
bool ClickProcessAll(ProcessScope& scope);
// A click on the colour box of `marker` (1 red, 2 green, 3 blue).
bool ClickProcessColor(ProcessScope& scope, std::int32_t marker);

} // namespace tivox
