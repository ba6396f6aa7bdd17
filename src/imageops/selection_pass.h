#pragma once
// The walk that hands one operation to the processor for each photo the
// "Process:" boxes choose: the current photo alone, or every photo of the
// list that "All" or its colour marker picks. The Image Operations window
// and the gallery command both run it. User-interface thread only.

#include "imageops/operation.h"

namespace tivox {

class CImageProcessor;
class IEditHost;
class IPrompt;

// The state of the "Process:" check boxes.
struct ProcessScope {
    bool current = true;
    bool all = false;
    bool red = false;
    bool green = false;
    bool blue = false;

    // Whether a photo with this marker (0 none, 1 red, 2 green, 3 blue) is
    // chosen in a walk over the list.
    bool Chooses(int marker) const {
        return all || (red && marker == 1) || (green && marker == 2) || (blue && marker == 3);
    }
};

// Runs `operation` on the chosen photos. Each failure is shown at once with
// the processor's error text, caption "Error", and the walk goes on. Last the
// window is repainted. Gives the number of failures.
int ApplyOperation(const COperation& operation, const ProcessScope& scope,
                   CImageProcessor& processor, IEditHost& window, IPrompt& prompt);

} // namespace tivox
