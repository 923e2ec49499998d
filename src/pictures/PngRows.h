#pragma once

#include "pictures/PictureSize.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace nettlecap {

/// Fills what it is given from the front with the next bytes of a file, and says how many
/// there were; none is its end.
using ByteSource = std::function<std::size_t(std::span<std::uint8_t>)>;

/// What stands in the file.
struct PngFormat {
    PictureSize size;
    unsigned bits = 8;  ///< of a sample
    bool hasColourOrAlpha = true;
    bool hasTransparentColour = false;  ///< one of its own, apart from the palette
};

/// The rows of a PNG, from the top down, one of which is in memory at a time. What is no part of
/// its pixels is leapt over.
class PngRows {
public:
    explicit PngRows(ByteSource source);
    ~PngRows();
    PngRows(const PngRows&) = delete;
    PngRows& operator=(const PngRows&) = delete;

    /// Reads up to the pixels. Absent: damaged, or interlaced, which has no rows one after the other.
    std::optional<PngFormat> start();
    /// Of a pixel as it is given: grey or red, green and blue, and alpha where there is any, with
    /// which the others are multiplied then.
    std::size_t channels() const;
    bool isOpaque() const;
    /// Once for each row, eight bits a sample; valid until the next call. Empty: damaged.
    std::span<const std::uint8_t> next();
    /// After the last row: whether what follows is in order, too.
    bool finish();

private:
    struct Decoder;
    std::unique_ptr<Decoder> decoder_;
};

}  // namespace nettlecap
