#pragma once
// Cutting a rectangle out of a picture, and the mapping of a rectangle drawn
// on the screen to the rectangle of the picture that it covers.

#include <memory>

#include "platform/bitmap.h"
#include "platform/geometry.h"

namespace tivox {

// A new width x height bitmap holding the source's pixels from (x, y) on,
// owned by the caller. Parts of the rectangle beyond the source stay
// transparent black, and a null or empty source leaves the whole bitmap so.
// Null when a side is not positive, the size is above the budget or memory
// is short.
std::unique_ptr<Bitmap> CropImage(const Bitmap* source, int x, int y, int width, int height);

// The same into `out`, whose buffer is reused when large enough.
bool CropInto(const Bitmap& source, const Rect& rect, Bitmap& out);

// The rectangle of a picture of size `image` that `rect` covers when the
// picture is shown centred on a screen of size `screen` at the size `fitted`
// (the picture's size fitted into the screen). Every value is rounded to the
// nearest pixel on its own, so the result has the rounded size of `rect`.
Rect ScreenRectToImage(Size image, Size fitted, Size screen, const Rect& rect);

// `rect` limited to a picture of size `image`; empty (width or height 0)
// when they do not overlap.
Rect ClipToImage(const Rect& rect, Size image);

} // namespace tivox
