#pragma once
// Test photos for the tests of the processor, the replay of edits and the
// selection pass, beside the shared window double and scripted user.

#include <string>
#include <vector>

#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/jpeg_codec.h"
#include "support/fake_edit_host.h"
#include "support/scripted_prompt.h"
#include "photo_writer/test_jpeg.h"

namespace tivox::test {

// Writes a noisy JPEG of that size and gives its path.
inline std::string WritePhoto(const TempDir& dir, const std::string& name, int w, int h,
                              std::uint32_t seed = 1) {
    TestJpegOptions o = Picture(w, h, Pattern::Noise);
    o.seed = seed;
    o.quality = 90;
    WriteFile(dir.File(name), MakeJpeg(o));
    return dir.File(name);
}

// The file decoded at full size.
inline Bitmap Decoded(const std::string& path) {
    Bitmap b;
    std::string error;
    DecodeJpegFile(path, Size{0, 0}, b, error);
    return b;
}

} // namespace tivox::test
