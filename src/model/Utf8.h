#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Steps through UTF-8 scalar by scalar. Each byte that is part of no scalar reads as U+FFFD.
namespace nettlecap::utf8 {

constexpr char32_t replacement = 0xFFFD;

inline bool isASCII(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

bool isASCII(std::string_view text);
bool isWellFormed(std::string_view text);
/// With U+FFFD for each byte that is part of no scalar.
std::string wellFormed(std::string_view text);

char32_t nextBeyondASCII(std::string_view text, std::size_t& place);

/// The scalar at `place`, which moves behind it. `place` must be inside the text.
inline char32_t next(std::string_view text, std::size_t& place) {
    if (isASCII(text[place])) return static_cast<char32_t>(text[place++]);
    return nextBeyondASCII(text, place);
}

/// The scalar before `place`, which moves to its start. `place` must not be 0.
char32_t previous(std::string_view text, std::size_t& place);

}  // namespace nettlecap::utf8
