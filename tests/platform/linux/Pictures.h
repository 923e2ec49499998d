#pragma once

#include "platform/Values.h"

/// Pictures to decode, good ones and hostile ones.
namespace nettlecap::picture {

struct Size {
    int width = 0;
    int height = 0;
};

/// Of many colours, as Qt writes it: "png", "tiff", "jpeg", "webp", "bmp".
Bytes inFormat(const char* format, Size size);
/// Two frames of 8x8, red and then blue.
Bytes animatedGif();
Bytes gif();  ///< 64x48, of many colours

/// A PNG whose header claims this size and whose contents are nearly nothing.
Bytes pngClaiming(Size size);
/// A grey TIFF whose directory comes before its pixels.
Bytes tiffWithPixelsLast(Size size);

Bytes beginning(const Bytes& picture, double part);  ///< cut off after that part
Bytes flipped(const Bytes& picture, std::size_t position);

/// The colour of the first pixel, as "#rrggbb", and the size, as "8x8".
std::string firstColour(const Bytes& picture);
std::string sizeText(const Bytes& picture);

}  // namespace nettlecap::picture
