#pragma once
// The EXIF Orientation values 1 to 8 as the eight ways a stored picture is
// turned or mirrored to stand upright, and the pixel and lossless operations
// that do it. Any thread.

#include <optional>

#include "platform/bitmap.h"
#include "platform/geometry.h"
#include "platform/jpeg_codec.h"

namespace tivox {

// 1 as stored, 2 mirrored left-right, 3 half turn, 4 mirrored top-bottom,
// 5 mirrored along the diagonal from top left, 6 turn right, 7 mirrored along
// the other diagonal, 8 turn left. Anything else reads as 1.
int ValidOrientation(int orientation);

// Whether making the picture upright swaps its width and height.
bool SwapsSides(int orientation);

// The size of the picture once upright.
Size UprightSize(Size stored, int orientation);

// Where the stored pixel `p` of a `stored` picture lands once upright.
Point UprightPoint(Point p, Size stored, int orientation);
// The inverse: which stored pixel shows at `shown` of the upright picture.
Point StoredPoint(Point shown, Size stored, int orientation);

// The orientation that does `first` and then `then` in one step.
int ComposeOrientations(int first, int then);

// The one lossless operation that stands the stored picture upright; none
// for 1.
std::optional<JpegTransform> UprightTransform(int orientation);
// The orientation that a lossless operation amounts to.
int OrientationOf(JpegTransform op);

// `in` upright into `out` (which may not be `in`). False when memory is
// short; `out` is then empty.
bool OrientBitmap(const Bitmap& in, int orientation, Bitmap& out);

} // namespace tivox
