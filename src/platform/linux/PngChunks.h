#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// A look at a PNG (ISO/IEC 15948) before libpng gets it: asked by Qt, libpng prints its
/// complaints to the standard error output, and nobody can tell it not to.
namespace nettlecap::png {

inline constexpr std::size_t headerSize = 33;  ///< signature and first chunk

struct PixelSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// `start` is the whole PNG or its first bytes. Absent: its first chunk is no right header.
std::optional<PixelSize> sizeOf(std::string_view start);

/// Whether the chunks go on to the last one, each with its right checksum.
bool isUndamaged(std::string_view png);

}  // namespace nettlecap::png
