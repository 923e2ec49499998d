#include "platform/linux/PngChunks.h"

#include <algorithm>
#include <zlib.h>

namespace nettlecap::png {
namespace {

constexpr std::size_t signatureSize = 8;
constexpr std::size_t wordSize = 4;  // length, type and checksum are one each

std::uint32_t wordAt(std::string_view bytes, std::size_t offset) {
    std::uint32_t word = 0;
    for (const char byte : bytes.substr(offset, wordSize))
        word = word << 8U | static_cast<unsigned char>(byte);
    return word;
}

struct Chunk {
    std::string_view type;
    std::string_view data;
    bool isRight = false;  ///< by its checksum
};

/// Takes the next chunk off. Absent: there is no whole one.
std::optional<Chunk> next(std::string_view& rest) {
    if (rest.size() < 3 * wordSize) return std::nullopt;
    const std::size_t length = wordAt(rest, 0);
    if (length > rest.size() - 3 * wordSize) return std::nullopt;
    const auto checked = rest.substr(wordSize, wordSize + length);
    const auto sum = crc32_z(0, reinterpret_cast<const Bytef*>(checked.data()), checked.size());
    const Chunk chunk{.type = checked.substr(0, wordSize),
                      .data = checked.substr(wordSize),
                      .isRight = sum == wordAt(rest, 2 * wordSize + length)};
    rest.remove_prefix(3 * wordSize + length);
    return chunk;
}

std::string_view afterSignature(std::string_view png) {
    return png.substr(std::min(signatureSize, png.size()));
}

}  // namespace

std::optional<PixelSize> sizeOf(std::string_view start) {
    auto rest = afterSignature(start.substr(0, headerSize));
    const auto header = next(rest);
    if (!header || header->type != "IHDR" || !header->isRight || !rest.empty()) return std::nullopt;
    return PixelSize{.width = wordAt(header->data, 0), .height = wordAt(header->data, wordSize)};
}

bool isUndamaged(std::string_view png) {
    auto rest = afterSignature(png);
    while (const auto chunk = next(rest)) {
        if (!chunk->isRight) return false;
        if (chunk->type == "IEND") return true;
    }
    return false;
}

}  // namespace nettlecap::png
