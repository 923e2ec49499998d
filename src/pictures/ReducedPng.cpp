#include "pictures/ReducedPng.h"

#include "pictures/AreaAverage.h"

namespace nettlecap {
namespace {

std::uint32_t pixelOf(std::span<const std::uint8_t> samples, bool isOpaque) {
    const bool isGrey = samples.size() < 3;
    const std::uint32_t alpha = isOpaque ? 0xFFU : samples.back();
    const std::uint32_t red = samples[0];
    const std::uint32_t green = samples[isGrey ? 0 : 1];
    const std::uint32_t blue = samples[isGrey ? 0 : 2];
    return alpha << 24U | red << 16U | green << 8U | blue;
}

std::vector<std::uint32_t> pixelsOf(std::span<const std::uint8_t> samples, const PngRows& rows) {
    const std::size_t channels = rows.channels();
    std::vector<std::uint32_t> pixels;
    pixels.reserve(samples.size() / channels);
    for (std::size_t at = 0; at < samples.size(); at += channels)
        pixels.push_back(pixelOf(samples.subspan(at, channels), rows.isOpaque()));
    return pixels;
}

}  // namespace

std::optional<ReducedPicture> reducedPng(ByteSource source, const SizeChoice& choice) {
    PngRows rows(std::move(source));
    const auto format = rows.start();
    const auto size = format ? choice(*format) : std::nullopt;
    if (!size || size->pixels() == 0 || !size->fitsInto(format->size)) return std::nullopt;

    AreaAverage average({.from = format->size, .to = *size, .channels = rows.channels()});
    for (std::uint32_t row = 0; row < format->size.height; ++row) {
        const auto samples = rows.next();
        if (samples.empty()) return std::nullopt;
        average.add(samples);
    }
    if (!rows.finish()) return std::nullopt;
    return ReducedPicture{
        .size = *size, .isOpaque = rows.isOpaque(), .pixels = pixelsOf(average.result(), rows)};
}

}  // namespace nettlecap
