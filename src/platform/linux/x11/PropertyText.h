#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What bytes in other programs' properties mean. Nothing in them is trusted.
namespace nettlecap::propertyText {

/// The same text in well-formed UTF-8: one U+FFFD for each maximal part of an ill-formed
/// sequence (Unicode 3.9, U+FFFD substitution). U+0000 and U+FEFF are characters like others.
std::string validUtf8(std::string_view bytes);

/// ICCCM's STRING is ISO Latin-1, whatever the locale.
std::string utf8FromLatin1(std::string_view bytes);
/// Absent where a character has no place in Latin-1.
std::optional<std::string> latin1FromUtf8(std::string_view text);

/// A list of atoms: 32-bit units in the machine's order, whatever else says `format`. Zeros
/// are left out, repetitions too, and a rest that is no whole unit.
std::vector<std::uint32_t> atoms(std::string_view bytes, unsigned format);

}  // namespace nettlecap::propertyText
