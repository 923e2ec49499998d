#pragma once

#include <cstdint>

namespace nettlecap {

struct PictureSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    bool operator==(const PictureSize&) const = default;
    std::uint64_t pixels() const { return std::uint64_t{width} * height; }
    bool fitsInto(PictureSize other) const { return width <= other.width && height <= other.height; }
};

}  // namespace nettlecap
