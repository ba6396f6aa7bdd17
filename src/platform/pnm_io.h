#pragma once
// Binary PPM (P6) and PAM (P7) pictures: the exact pixels of a bitmap, for
// checks that a lossy JPEG would blur. PPM drops alpha; PAM keeps it.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/bitmap.h"

namespace tivox {

// True when the data starts like a binary PGM, PPM or PAM file.
bool LooksLikePnm(const std::uint8_t* data, std::size_t size);

// Reads P5 (grey), P6 (RGB) or P7 (GRAYSCALE, RGB, RGB_ALPHA, with or without
// _ALPHA) with a maximum value of 255 into `out`. The bitmap budget applies.
bool ReadPnm(const std::uint8_t* data, std::size_t size, Bitmap& out, std::string& error);
bool ReadPnmFile(const std::string& path, Bitmap& out, std::string& error);

// P6 without alpha, or P7 RGB_ALPHA with it.
void EncodePnm(const Bitmap& image, bool withAlpha, std::vector<std::uint8_t>& out);
// Chooses by the name: ".pam" writes P7, anything else P6.
bool WritePnmFile(const Bitmap& image, const std::string& path, std::string& error);

// True when `path` ends in ".ppm" or ".pam" (any case).
bool IsPnmName(const std::string& path);

} // namespace tivox
