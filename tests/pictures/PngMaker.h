#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace nettlecap::picture {

/// A PNG put together by hand: of any kind, in order or not.
struct PngMaker {
    int width = 50;
    int height = 40;
    int bits = 8;
    int colourType = 2;     ///< as in the file: 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6 RGB and alpha
    int filter = -1;        ///< of each row; -1: one after the other
    bool isSmooth = false;  ///< as photographs are
    std::vector<std::uint8_t> contents;  ///< of all rows; none: random ones
    std::string palette;                 ///< three bytes a colour
    std::string transparency;
    std::size_t pieceSize = 1 << 20;  ///< of the packed pixels in one chunk
    std::string between;              ///< chunks between those
    std::string before;               ///< and before the first of them

    std::vector<std::uint8_t> rows() const;  ///< as they are to be read
    std::string header() const;              ///< up to the first chunk's end
    std::string packed() const;
    std::string pixels() const;  ///< their chunks
    std::string bytes() const;

    std::size_t pixelBytes() const;
    std::size_t rowBytes() const;
};

/// As it would stand in a file. `above` may be all zeros.
std::vector<std::uint8_t> filtered(int filter, const std::vector<std::uint8_t>& row,
                                   const std::vector<std::uint8_t>& above, std::size_t pixelBytes);

}  // namespace nettlecap::picture
