#pragma once
// The values of the gallery form (the Web tab): title, picture sizes and
// tile numbers, with their defaults and limits. The form's owner checks the
// limits when it reads its controls; the command takes the values as given.

#include <cstdint>
#include <string>

namespace tivox {

struct GalleryLimit {
    std::uint32_t lower;
    std::uint32_t upper;
    bool Holds(std::uint32_t value) const { return value >= lower && value <= upper; }
};

inline constexpr GalleryLimit kGalleryPhotoSizeLimit{2, 50000};
inline constexpr GalleryLimit kGalleryThumbSizeLimit{2, 500};
inline constexpr GalleryLimit kGalleryPhotoTilesLimit{1, 10};
inline constexpr GalleryLimit kGalleryThumbTilesLimit{1, 100};

struct GalleryForm {
    std::string m_title; // written into the pages byte for byte
    std::uint32_t m_photoWidth = 800;
    std::uint32_t m_photoHeight = 600;
    std::uint32_t m_thumbWidth = 200;
    std::uint32_t m_thumbHeight = 150;
    std::uint32_t m_photoTilesX = 1;
    std::uint32_t m_photoTilesY = 1;
    std::uint32_t m_thumbTilesX = 4;
    std::uint32_t m_thumbTilesY = 4;

    // True when every number lies within its limits.
    bool WithinLimits() const {
        return kGalleryPhotoSizeLimit.Holds(m_photoWidth) &&
               kGalleryPhotoSizeLimit.Holds(m_photoHeight) &&
               kGalleryThumbSizeLimit.Holds(m_thumbWidth) &&
               kGalleryThumbSizeLimit.Holds(m_thumbHeight) &&
               kGalleryPhotoTilesLimit.Holds(m_photoTilesX) &&
               kGalleryPhotoTilesLimit.Holds(m_photoTilesY) &&
               kGalleryThumbTilesLimit.Holds(m_thumbTilesX) &&
               kGalleryThumbTilesLimit.Holds(m_thumbTilesY);
    }
};

} // namespace tivox
