#pragma once

#include "pictures/PictureSize.h"

#include <cstddef>
#include <span>
#include <vector>

namespace nettlecap {

/// Reduces a picture while its rows come in, from the top down: each pixel of the result is
/// the mean of the area that it covers, exactly, pixels that it covers in part counting in part.
class AreaAverage {
public:
    /// Neither side may grow. A picture has less than 2^32 pixels, of some channels each.
    struct Task {
        PictureSize from;
        PictureSize to;
        std::size_t channels = 1;
    };

    explicit AreaAverage(Task task);

    void add(std::span<const std::uint8_t> row);
    /// Channel by channel and pixel by pixel; as far as the rows have come.
    const std::vector<std::uint8_t>& result() const { return result_; }

private:
    void addWhole(std::span<const std::uint8_t> row);
    void addPart(std::span<const std::uint8_t> row, std::uint32_t weight);
    void gatherWholes();
    void finishLine();
    template <std::size_t channels>
    void appendLine();

    Task task_;
    // Sums of the line in the making: of rows that are whole in it, and of all, in parts of a row.
    std::vector<std::uint16_t> wholes_;
    int wholeRows_ = 0;
    std::vector<std::uint32_t> columns_;
    std::uint32_t missing_;  ///< of that line's height, in parts of a row
    std::vector<std::uint8_t> result_;
};

}  // namespace nettlecap
