#pragma once
// Keeps the pixels of one large picture between uses. A fresh full-size
// buffer costs a page fault for every page on first touch and as much again
// when it is given back, several memory copies' worth for a 24 MP photo; a
// commit that takes the buffer of the one before skips both. One owner (the
// full-screen window, a batch command), one thread.

#include <memory>

#include "platform/bitmap.h"

namespace tivox {

class BitmapRecycler {
public:
    // The kept bitmap, its pixels undefined, or a new empty one.
    std::unique_ptr<Bitmap> Take();

    // Keeps `bitmap` for the next Take when it holds more memory than the one
    // kept now; the smaller of the two is freed.
    void Give(std::unique_ptr<Bitmap> bitmap);

    // Frees what is kept.
    void Clear() { m_kept.reset(); }

    std::size_t KeptBytes() const { return m_kept ? m_kept->Capacity() : 0; }

private:
    std::unique_ptr<Bitmap> m_kept;
};

} // namespace tivox
