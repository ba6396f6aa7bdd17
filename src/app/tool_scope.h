#pragma once
// The "Process:" boxes of the Image Operations window and the rule that ties
// them: "Current", "All" and the three colours exclude each other, the colours
// being free among themselves. Every click first takes the boxes as the user
// left them; the answer says whether they must be written back. UI thread only.

#include <cstdint>

namespace tivox {

struct ProcessScope {
    bool current = true;
    bool all = false;
    bool red = false;
    bool green = false;
    bool blue = false;

    // A click on "Current" or "All", already read into the fields. True when
    // the other boxes changed and must be shown.
    bool ClickedCurrent();
    bool ClickedAll();
    // A click on the colour box of `marker` (1 red, 2 green, 3 blue).
    bool ClickedColor(std::int32_t marker);

    // Whether a photo with `marker` is chosen by a walk over the list
    // ("Current" is not a walk; the caller takes the current photo instead).
    bool Chooses(std::int32_t marker) const {
        return all || (red && marker == 1) || (green && marker == 2) || (blue && marker == 3);
    }
};

} // namespace tivox
