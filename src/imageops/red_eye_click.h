#pragma once
// A click of the red-eye tool on the photo shown alone. UI thread only.

#include "platform/geometry.h"

namespace tivox {

class CPhoto;

// The working image lies centred on a screen of size `screen`. The click at
// the screen point `click` is recorded in the photo's pending edits as a
// point of the full image, and the working image is corrected around it at
// once. False, with nothing done, when the photo has no working image.
bool RedEyeClick(CPhoto& photo, Size screen, Point click);

} // namespace tivox
