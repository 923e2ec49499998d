#pragma once

#include "pictures/PngRows.h"

#include <vector>

namespace nettlecap {

/// Pixels row by row, each as 0xAARRGGBB, the colours multiplied with alpha.
struct ReducedPicture {
    PictureSize size;
    bool isOpaque = true;
    std::vector<std::uint32_t> pixels;
};

/// Asked for the size wanted of a picture; absent: it is not wanted at all.
using SizeChoice = std::function<std::optional<PictureSize>(const PngFormat&)>;

/// Decodes a PNG and reduces it meanwhile, so that it is never in memory as a whole. Absent: the
/// picture is not to be reduced, is interlaced, or is damaged; a decoder that takes such pictures
/// has to be asked then.
std::optional<ReducedPicture> reducedPng(ByteSource source, const SizeChoice& choice);

}  // namespace nettlecap
