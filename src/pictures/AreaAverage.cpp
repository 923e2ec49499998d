#include "pictures/AreaAverage.h"

#include <algorithm>
#include <array>
#include <cassert>

// A row of the picture counts as `to.height` parts, so that a line of the result is made of
// `from.height` parts, both whole numbers; and the same with columns.

namespace nettlecap {

AreaAverage::AreaAverage(Task task)
    : task_(task), columns_(task.from.width * task.channels), missing_(task.from.height) {
    assert(task.to.fitsInto(task.from) && task.to.pixels() > 0);
    result_.reserve(task.to.pixels() * task.channels);
}

void AreaAverage::add(std::span<const std::uint8_t> row) {
    for (std::uint32_t left = task_.to.height; left > 0;) {
        const std::uint32_t weight = std::min(left, missing_);
        addPart(row, weight);
        left -= weight;
        missing_ -= weight;
        if (missing_ == 0) finishLine();
    }
}

void AreaAverage::addPart(std::span<const std::uint8_t> row, std::uint32_t weight) {
    const std::size_t count = std::min(row.size(), columns_.size());
    for (std::size_t at = 0; at < count; ++at) columns_[at] += row[at] * weight;
}

void AreaAverage::finishLine() {
    constexpr std::size_t mostChannels = 4;
    const std::uint64_t parts = task_.from.pixels();
    std::array<std::uint64_t, mostChannels> sums{};
    std::uint32_t missing = task_.from.width;
    for (std::size_t at = 0; at < columns_.size(); at += task_.channels)
        for (std::uint32_t left = task_.to.width; left > 0;) {
            const std::uint32_t weight = std::min(left, missing);
            for (std::size_t channel = 0; channel < task_.channels; ++channel)
                sums[channel] += std::uint64_t{weight} * columns_[at + channel];
            left -= weight;
            missing -= weight;
            if (missing > 0) continue;
            for (std::size_t channel = 0; channel < task_.channels; ++channel)
                result_.push_back(static_cast<std::uint8_t>((sums[channel] + parts / 2) / parts));
            sums = {};
            missing = task_.from.width;
        }
    std::fill(columns_.begin(), columns_.end(), 0);
    missing_ = task_.from.height;
}

}  // namespace nettlecap
