#pragma once
// Reads a photo file fitted into a box: the smallest DCT scale that still
// covers the fitted size, then the resampler. Keeps its decoder, its decode
// buffer and its resampler between calls, so a loop over a folder allocates
// only the results. One object per thread.
//
// Every picture comes back upright: a JPEG whose EXIF Orientation says the
// camera stored it turned or mirrored is stood up after the scaled decode, so
// thumbnails, the screen image, a commit's full picture and the gallery show
// it as every other viewer does, and all sizes here are the upright ones.
//
// Besides JPEG it reads binary PPM and PAM files (recognised by their first
// bytes), which the batch front end uses for exact pixel checks.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/bitmap.h"
#include "platform/geometry.h"
#include "platform/jpeg_codec.h"
#include "platform/resampler.h"

namespace tivox {

class CScaledLoader {
public:
    // Decodes `path` upright and fitted into `target` (FitInto) into `out`,
    // reusing its buffer. `source` gets the file's upright picture size. A file that cannot be
    // read leaves `out` empty and `source` 0 x 0, and the result is false
    // with `error` set.
    bool LoadInto(const std::string& path, Size target, Bitmap& out, Size& source,
                  std::string& error);

    // The whole picture upright at full resolution, decoded straight into
    // `out` (for a picture stored upright), whose buffer is reused when it is
    // large enough. With `refuseDamaged`
    // truncated or corrupt data fails instead of coming back partly grey.
    bool LoadFull(const std::string& path, Bitmap& out, std::string& error,
                  bool refuseDamaged = false);

private:
    // Fills `decoded`, still as stored, at the smallest scale that covers
    // `target` fitted to the upright picture; an empty target means full
    // size. `source` is the upright size, `orientation` the file's.
    bool DecodeCovering(const std::string& path, Size target, Bitmap& decoded, Size& source,
                        int& orientation, std::string& error);

    JpegDecoder m_decoder;
    Bitmap m_decoded;
    Bitmap m_stored; // the scaled picture before it is stood upright
    Resampler m_resampler;
};

} // namespace tivox
