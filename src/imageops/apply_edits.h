#pragma once
// The replay of a photo's pending edits, in one fixed order (denoise, red
// eye, crop, resize, colour with gamma and sharpening) whatever the order the
// user asked for them in.

namespace tivox {

class Bitmap;
class CPhoto;
class IEditHost;

// Replays the edits of `mask` (EditMask bits) on the photo's working image,
// which an editAll reloads from the file first, or with `full` on its full
// image, decoded anew; a commit's thumbnail follows when the host shows
// previews. Gives the picture edited: null (or empty) when the file could
// not be read. A host that shows no previews leaves the working image alone.
Bitmap* ApplyEdits(CPhoto& photo, int mask, IEditHost& host, bool full);

} // namespace tivox
