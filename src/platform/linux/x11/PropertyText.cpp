#include "platform/linux/x11/PropertyText.h"

#include <cstring>
#include <unordered_set>

namespace nettlecap::propertyText {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr std::size_t unit = sizeof(std::uint32_t);

struct Sequence {
    std::size_t length;  ///< of an ill-formed one: its maximal part
    bool wellFormed;
};

/// Of well-formed sequences: what follows the lead (Unicode, table 3-7).
struct Followers {
    std::size_t count;
    unsigned char firstLow;
    unsigned char firstHigh;
};

std::optional<Followers> followers(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return Followers{1, 0x80, 0xBF};
    if (lead == 0xE0) return Followers{2, 0xA0, 0xBF};
    if (lead == 0xED) return Followers{2, 0x80, 0x9F};
    if (lead >= 0xE1 && lead <= 0xEF) return Followers{2, 0x80, 0xBF};
    if (lead == 0xF0) return Followers{3, 0x90, 0xBF};
    if (lead >= 0xF1 && lead <= 0xF3) return Followers{3, 0x80, 0xBF};
    if (lead == 0xF4) return Followers{3, 0x80, 0x8F};
    return std::nullopt;
}

/// Of what begins with a byte beyond ASCII.
Sequence sequenceAt(std::string_view rest) {
    const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(rest[place]); };
    const auto expected = followers(byte(0));
    if (!expected) return {1, false};
    for (std::size_t place = 1; place <= expected->count; ++place) {
        const unsigned char low = place == 1 ? expected->firstLow : 0x80;
        const unsigned char high = place == 1 ? expected->firstHigh : 0xBF;
        if (place >= rest.size() || byte(place) < low || byte(place) > high) return {place, false};
    }
    return {expected->count + 1, true};
}

std::size_t asciiLength(std::string_view text) {
    std::size_t length = 0;
    std::uint64_t eight = 0;
    for (; length + sizeof eight <= text.size(); length += sizeof eight) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        if ((eight & 0x8080'8080'8080'8080U) != 0) break;
    }
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) ++length;
    return length;
}

}  // namespace

std::string validUtf8(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    while (!bytes.empty()) {
        std::size_t good = asciiLength(bytes);
        Sequence next{0, true};
        while (good < bytes.size() && next.wellFormed) {
            next = sequenceAt(bytes.substr(good));
            if (next.wellFormed) good += next.length + asciiLength(bytes.substr(good + next.length));
        }
        result += bytes.substr(0, good);
        bytes.remove_prefix(good);
        if (next.wellFormed) continue;
        result += replacement;
        bytes.remove_prefix(next.length);
    }
    return result;
}

std::string utf8FromLatin1(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80) {
            result += character;
        } else {
            result += static_cast<char>(0xC0U | (byte >> 6U));
            result += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return result;
}

std::optional<std::string> latin1FromUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size(); ++place) {
        const auto lead = static_cast<unsigned char>(text[place]);
        if (lead < 0x80) {
            result += text[place];
            continue;
        }
        const bool isLatin1 = lead == 0xC2 || lead == 0xC3;
        if (!isLatin1 || !sequenceAt(text.substr(place)).wellFormed) return std::nullopt;
        const auto second = static_cast<unsigned char>(text[++place]);
        result += static_cast<char>(((lead & 0x03U) << 6U) | (second & 0x3FU));
    }
    return result;
}

std::vector<std::uint32_t> atoms(std::string_view bytes, unsigned format) {
    std::vector<std::uint32_t> result;
    if (format != 32) return result;
    std::unordered_set<std::uint32_t> seen;
    for (; bytes.size() >= unit; bytes.remove_prefix(unit)) {
        std::uint32_t atom = 0;
        std::memcpy(&atom, bytes.data(), unit);
        if (atom != 0 && seen.insert(atom).second) result.push_back(atom);
    }
    return result;
}

}  // namespace nettlecap::propertyText
