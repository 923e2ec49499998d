#include "platform/Values.h"

namespace nettlecap {

namespace {

constexpr std::size_t uuidLength = 36;

constexpr bool isHyphenPlace(std::size_t place) {
    return place == 8 || place == 13 || place == 18 || place == 23;
}

std::optional<unsigned> hexDigit(char digit) {
    if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
    if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a' + 10);
    if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A' + 10);
    return std::nullopt;
}

}  // namespace

std::string Uuid::text() const {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    result.reserve(uuidLength);
    for (int shift = 124; shift >= 0; shift -= 4) {
        if (isHyphenPlace(result.size())) result += '-';
        const std::uint64_t half = shift >= 64 ? high : low;
        result += digits[(half >> (shift % 64)) & 0xF];
    }
    return result;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != uuidLength) return std::nullopt;
    Uuid result;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (isHyphenPlace(place)) {
            if (text[place] != '-') return std::nullopt;
            continue;
        }
        const auto digit = hexDigit(text[place]);
        if (!digit) return std::nullopt;
        result.high = result.high << 4 | result.low >> 60;
        result.low = result.low << 4 | *digit;
    }
    return result;
}

}  // namespace nettlecap
