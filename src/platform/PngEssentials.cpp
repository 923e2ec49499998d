#include "platform/PngEssentials.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace nettlecap {
namespace {

constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
constexpr std::size_t wordSize = 4;  // length, type and checksum are one each
constexpr std::string_view pixels = "IDAT";

/// Each comes once in a right picture, but for the pixels.
constexpr std::array<std::string_view, 10> essentials = {"IHDR", "PLTE", "tRNS", "gAMA", "cHRM",
                                                         "sRGB", "iCCP", "pHYs", pixels, "IEND"};

std::size_t chunkSize(std::string_view rest) {
    std::uint32_t length = 0;
    for (const char byte : rest.substr(0, wordSize)) length = length << 8U | static_cast<unsigned char>(byte);
    return std::min(rest.size(), 3 * wordSize + std::size_t{length});
}

}  // namespace

std::string pngEssentials(std::string_view png) {
    if (!png.starts_with(signature)) return {};
    std::string kept(signature);
    kept.reserve(png.size());
    std::array<bool, essentials.size()> seen{};
    for (auto rest = png.substr(signature.size()); !rest.empty();) {
        const auto chunk = rest.substr(0, chunkSize(rest));
        rest.remove_prefix(chunk.size());
        const auto type = chunk.substr(std::min(wordSize, chunk.size()), wordSize);
        const auto* const found = std::find(essentials.begin(), essentials.end(), type);
        if (found == essentials.end()) continue;
        bool& isSeen = seen[static_cast<std::size_t>(found - essentials.begin())];
        if (!isSeen || type == pixels) kept += chunk;
        isSeen = true;
        if (type == essentials.back()) break;
    }
    return kept;
}

}  // namespace nettlecap
