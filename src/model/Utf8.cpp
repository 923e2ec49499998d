#include "model/Utf8.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace nettlecap::utf8 {

namespace {

constexpr std::string_view replacementBytes = "\xEF\xBF\xBD";
constexpr std::size_t longestSequence = 4;

std::uint32_t bits(char byte) { return static_cast<unsigned char>(byte); }

bool isTrail(char byte) { return (bits(byte) & 0xC0U) == 0x80U; }

/// A sequence of length 0 is ill-formed.
struct Sequence {
    char32_t scalar = replacement;
    std::size_t length = 0;
};

std::size_t lengthAfter(char lead) {
    const std::uint32_t byte = bits(lead);
    if (byte < 0x80) return 1;
    if (byte >= 0xC2 && byte <= 0xDF) return 2;
    if (byte >= 0xE0 && byte <= 0xEF) return 3;
    if (byte >= 0xF0 && byte <= 0xF4) return 4;
    return 0;
}

Sequence sequenceAt(std::string_view text, std::size_t place) {
    static constexpr std::array<char32_t, longestSequence + 1> smallest = {0, 0, 0x80, 0x800, 0x10000};
    const std::size_t length = lengthAfter(text[place]);
    if (length <= 1) return {.scalar = bits(text[place]), .length = length};
    if (text.size() - place < length) return {};
    char32_t scalar = bits(text[place]) & (0xFFU >> (length + 1));
    for (const char byte : text.substr(place + 1, length - 1)) {
        if (!isTrail(byte)) return {};
        scalar = scalar << 6U | (bits(byte) & 0x3FU);
    }
    const bool isSurrogate = scalar >= 0xD800 && scalar <= 0xDFFF;
    if (scalar < smallest[length] || scalar > 0x10FFFF || isSurrogate) return {};
    return {.scalar = scalar, .length = length};
}

/// The first byte beyond ASCII from `place` on, or the end; whole words at a time.
std::size_t endOfASCII(std::string_view text, std::size_t place) {
    constexpr std::uint64_t highBits = 0x8080'8080'8080'8080U;
    for (; place + sizeof(std::uint64_t) <= text.size(); place += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + place, sizeof word);
        if ((word & highBits) != 0) break;
    }
    while (place < text.size() && isASCII(text[place])) ++place;
    return place;
}

}  // namespace

bool isASCII(std::string_view text) { return endOfASCII(text, 0) == text.size(); }

bool isWellFormed(std::string_view text) {
    for (std::size_t place = endOfASCII(text, 0); place < text.size(); place = endOfASCII(text, place)) {
        const std::size_t length = sequenceAt(text, place).length;
        if (length == 0) return false;
        place += length;
    }
    return true;
}

std::string wellFormed(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size();) {
        const std::size_t length = sequenceAt(text, place).length;
        result += length == 0 ? replacementBytes : text.substr(place, length);
        place += length == 0 ? 1 : length;
    }
    return result;
}

char32_t nextBeyondASCII(std::string_view text, std::size_t& place) {
    // Nearly every letter beyond ASCII: these leads leave nothing to check but the trails.
    const std::uint32_t lead = bits(text[place]);
    const std::size_t left = text.size() - place;
    if (lead >= 0xC2 && lead <= 0xDF && left >= 2 && isTrail(text[place + 1])) {
        const std::uint32_t trail = bits(text[place + 1]) & 0x3FU;
        place += 2;
        return (lead & 0x1FU) << 6U | trail;
    }
    if (lead >= 0xE1 && lead <= 0xEC && left >= 3 && isTrail(text[place + 1]) && isTrail(text[place + 2])) {
        const std::uint32_t trails = (bits(text[place + 1]) & 0x3FU) << 6U | (bits(text[place + 2]) & 0x3FU);
        place += 3;
        return (lead & 0x0FU) << 12U | trails;
    }
    const Sequence sequence = sequenceAt(text, place);
    place += sequence.length == 0 ? 1 : sequence.length;
    return sequence.length == 0 ? replacement : sequence.scalar;
}

char32_t previous(std::string_view text, std::size_t& place) {
    for (std::size_t length = 1; length <= longestSequence && length <= place; ++length) {
        const Sequence sequence = sequenceAt(text, place - length);
        if (sequence.length != length) continue;
        place -= length;
        return sequence.scalar;
    }
    --place;
    return replacement;
}

}  // namespace nettlecap::utf8
