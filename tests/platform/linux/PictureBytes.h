#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What pictures are put together from.
namespace nettlecap::picture {

std::string bigEndian(std::size_t word);  ///< four bytes
std::string littleEndian(std::size_t number, int byteCount);
std::string repeated(std::string_view piece, std::size_t count);

/// What inflates to that many bytes of a kind, in zlib's format.
std::string deflated(char byte, std::size_t count);
std::string deflatedZeros(std::size_t count);
std::string pngChunk(const std::string& typeAndData);
/// All zeros: black, or transparent. The kind is what its header says after the size: the bits of
/// a sample, the type of colour, and at last whether it is interlaced.
std::string pngOfZeros(std::size_t width, std::size_t height, const std::string& kind,
                       std::size_t packedSize);

struct TiffField {
    std::uint16_t tag = 0;
    std::size_t value = 0;
};

/// A little-endian TIFF of one directory, whose fields are single numbers of 32 bits, in the
/// order of their tags; then the pixels, at `tiffPixelsAt`.
std::string tiff(const std::vector<TiffField>& fields, std::string_view pixels,
                 std::size_t nextDirectory = 0);
std::size_t tiffPixelsAt(std::size_t fieldCount);

}  // namespace nettlecap::picture
