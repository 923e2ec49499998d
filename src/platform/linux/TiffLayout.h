#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// A look at a TIFF before its decoder: libtiff unpacks the samples of a whole strip at once, of
/// which a pixel may have 65,535, and so 200 bytes could take all of the memory.
namespace nettlecap::tiff {

/// What its pixels take in memory, all of them and the largest piece that is unpacked at once,
/// in bytes. Absent: it has no right directory.
std::optional<std::uint64_t> unpackedSize(std::string_view tiff);

}  // namespace nettlecap::tiff
