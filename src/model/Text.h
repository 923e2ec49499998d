#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What the system means by characters, blanks and equal texts. All texts are UTF-8; a
/// character is what a reader takes for one (a grapheme cluster).
namespace nettlecap::text {

/// Space separators (Zs), U+0009 to U+000D, U+0085, U+2028, U+2029 and U+200B.
bool isWhitespaceOrNewline(char32_t scalar);

/// Without whitespace and newlines at both ends, by Unicode scalar; a view into `text`.
std::string_view trimmed(std::string_view text);
/// The form in which contents are compared: LF line ends, NFC, trimmed.
std::string normalized(std::string_view text);
/// Every line feed a space, inside CR LF too, then trimmed.
std::string onOneLine(std::string_view text);

std::size_t characterCount(std::string_view text);
/// Counts no further than `limit`, so that a long text costs no more than a short one.
std::size_t characterCount(std::string_view text, std::size_t limit);
/// The first `count` characters, or all; a view into `text`.
std::string_view firstCharacters(std::string_view text, std::size_t count);
/// A text of more than `limit` characters: the first `limit`, trimmed, and "...".
std::string limited(std::string_view text, std::size_t limit);

/// Lower case in the root locale, letter for letter: "ß" stays "ß".
std::string lowercased(std::string_view text);
/// Canonically composed and fully case-folded in the root locale: what search compares.
std::string folded(std::string_view text);

}  // namespace nettlecap::text
