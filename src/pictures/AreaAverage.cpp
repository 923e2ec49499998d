#include "pictures/AreaAverage.h"

#include <algorithm>
#include <array>
#include <cassert>

// A row of the picture counts as `to.height` parts, so that a line of the result is made of
// `from.height` parts, both whole numbers; and the same with columns.

namespace nettlecap {
namespace {

template <std::size_t channels>
std::array<std::uint64_t, channels> sumOf(std::span<const std::uint32_t> samples) {
    std::array<std::uint64_t, channels> sums{};
    for (std::size_t at = 0; at < samples.size(); at += channels)
        for (std::size_t channel = 0; channel < channels; ++channel) sums[channel] += samples[at + channel];
    return sums;
}

}  // namespace

AreaAverage::AreaAverage(Task task)
    : task_(task), wholes_(task.from.width * task.channels), columns_(wholes_.size()),
      missing_(task.from.height) {
    assert(task.to.fitsInto(task.from) && task.to.pixels() > 0);
    result_.reserve(task.to.pixels() * task.channels);
}

void AreaAverage::add(std::span<const std::uint8_t> row) {
    for (std::uint32_t left = task_.to.height; left > 0;) {
        const std::uint32_t weight = std::min(left, missing_);
        if (weight == task_.to.height)
            addWhole(row);
        else
            addPart(row, weight);
        left -= weight;
        missing_ -= weight;
        if (missing_ == 0) finishLine();
    }
}

/// Most rows are whole, and sums of sixteen bits are the quickest: they are multiplied once.
void AreaAverage::addWhole(std::span<const std::uint8_t> row) {
    constexpr int most = 0xFFFF / 0xFF;
    if (wholeRows_ == most) gatherWholes();
    ++wholeRows_;
    std::uint16_t* const sums = wholes_.data();
    const std::size_t count = std::min(row.size(), wholes_.size());
    for (std::size_t at = 0; at < count; ++at) sums[at] = static_cast<std::uint16_t>(sums[at] + row[at]);
}

void AreaAverage::gatherWholes() {
    for (std::size_t at = 0; at < columns_.size(); ++at) columns_[at] += wholes_[at] * task_.to.height;
    std::fill(wholes_.begin(), wholes_.end(), 0);
    wholeRows_ = 0;
}

void AreaAverage::addPart(std::span<const std::uint8_t> row, std::uint32_t weight) {
    std::uint32_t* const sums = columns_.data();
    const std::size_t count = std::min(row.size(), columns_.size());
    for (std::size_t at = 0; at < count; ++at) sums[at] += row[at] * weight;
}

void AreaAverage::finishLine() {
    gatherWholes();
    switch (task_.channels) {
    case 1: appendLine<1>(); break;
    case 2: appendLine<2>(); break;
    case 3: appendLine<3>(); break;
    default: appendLine<4>();
    }
    std::fill(columns_.begin(), columns_.end(), 0);
    missing_ = task_.from.height;
}

/// A pixel of it is the columns that begin within it, without what of the first lies before it,
/// and with what of the next one lies within it.
template <std::size_t channels>
void AreaAverage::appendLine() {
    const std::uint64_t parts = task_.from.pixels();
    const std::uint32_t width = task_.to.width;
    std::uint64_t begin = 0;  // of the pixel, in parts of a column
    for (std::uint32_t pixel = 0; pixel < width; ++pixel) {
        const std::uint64_t end = begin + task_.from.width;
        const std::size_t first = begin / width * channels;
        const std::size_t next = end / width * channels;
        auto sums = sumOf<channels>(std::span(columns_).subspan(first, next - first));
        for (std::size_t channel = 0; channel < channels; ++channel) {
            std::uint64_t sum = sums[channel] * width - begin % width * columns_[first + channel];
            if (next < columns_.size()) sum += end % width * columns_[next + channel];
            result_.push_back(static_cast<std::uint8_t>((sum + parts / 2) / parts));
        }
        begin = end;
    }
}

}  // namespace nettlecap
