#pragma once
// The plain record of one photo's EXIF and frame values. It starts as zero
// bytes: a tag the file lacks leaves its field at zero or empty.

#include <cstdint>

namespace tivox {

struct ExifRecord {
    char Version[5];
    char CameraMake[32];
    char CameraModel[40];
    char DateTime[20];
    std::int32_t Height;
    std::int32_t Width;
    std::int32_t Orientation;
    std::int32_t IsColor;
    std::int32_t Process;
    std::int32_t FlashUsed;
    float FocalLength;
    float ExposureTime;
    float ApertureFNumber;
    float Distance;
    float CCDWidth;
    float ExposureBias;
    std::int32_t Whitebalance;
    std::int32_t MeteringMode;
    std::int32_t ExposureProgram;
    std::int32_t ISOequivalent;
    std::int32_t CompressionLevel;
    float FocalplaneXRes;
    float FocalplaneYRes;
    float FocalplaneUnits;
    float Xresolution;
    float Yresolution;
    float ResolutionUnit;
    float Brightness;
    char Comments[1000];
    const std::uint8_t* ThumbnailData; // points into the reader's EXIF section block
    std::int32_t ThumbnailSize;
    bool IsExif;
};

} // namespace tivox
