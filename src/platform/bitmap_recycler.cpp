#include "platform/bitmap_recycler.h"

namespace tivox {

std::unique_ptr<Bitmap> BitmapRecycler::Take() {
    if (m_kept)
        return std::move(m_kept);
    return std::make_unique<Bitmap>();
}

void BitmapRecycler::Give(std::unique_ptr<Bitmap> bitmap) {
    if (bitmap && bitmap->Capacity() > KeptBytes())
        m_kept = std::move(bitmap);
}

} // namespace tivox
