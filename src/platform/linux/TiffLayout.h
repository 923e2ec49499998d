#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// A look at a TIFF before its decoder: libtiff unpacks the samples of a whole strip at once, of
/// which a pixel may have 65,535, and so 200 bytes could take all of the memory. The library is
/// loaded by the first call of either function.
namespace nettlecap::tiff {

/// Whoever uses libtiff from now on, as Qt's plugin does, it writes no more of what it thinks of a
/// file to the standard error.
void silence();

/// What its pixels take in memory, all of them and the largest piece that is unpacked at once,
/// in bytes. Absent: it has no right directory.
std::optional<std::uint64_t> unpackedSize(std::string_view tiff);

}  // namespace nettlecap::tiff
