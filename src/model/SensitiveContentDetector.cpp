#include "model/SensitiveContentDetector.h"

#include "model/PublicIdentifiers.h"
#include "model/Text.h"
#include "model/Utf8.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace nettlecap {

namespace {

constexpr std::size_t fewestCardDigits = 13;
constexpr std::size_t mostCardDigits = 19;
constexpr std::size_t shortestSecret = 6;
constexpr std::size_t longestSecret = 256;
constexpr std::size_t shortestMixedSecret = 8;
constexpr std::size_t longestCode = 8;

constexpr std::array<std::string_view, 4> addressPrefixes = {"http://", "https://", "www.", "file://"};
constexpr std::array<std::string_view, 8> tokenPrefixes = {"sk-",   "sk_",   "ghp_", "github_pat_",
                                                           "xoxb-", "xoxp-", "akia", "eyj"};
constexpr std::string_view wrappers = "*`'\"()[]{}<>,;:!?";

bool isDecimalDigit(char32_t scalar) {
    if (scalar < 0x80) return scalar >= '0' && scalar <= '9';
    return u_isdigit(static_cast<UChar32>(scalar)) != 0;
}

/// Whether a digit may begin with this byte. The first ones beyond ASCII are the Arabic-Indic
/// ones from U+0660 on, so that no accented Latin letter is decoded.
bool mayBeDigit(char byte) {
    constexpr unsigned char leadOfU0660 = 0xD9;
    const auto value = static_cast<unsigned char>(byte);
    return value >= leadOfU0660 || (value >= '0' && value <= '9');
}

/// The value that Luhn counts with. Absent: the character has none, or no whole one.
std::optional<std::int64_t> wholeValue(std::string_view character) {
    std::size_t end = 0;
    const char32_t scalar = utf8::next(character, end);
    if (end != character.size()) return std::nullopt;
    if (scalar < 0x80)
        return isDecimalDigit(scalar) ? std::optional<std::int64_t>(scalar - '0') : std::nullopt;
    const double value = u_getNumericValue(static_cast<UChar32>(scalar));
    if (value == U_NO_NUMERIC_VALUE || value < 0 || value != std::floor(value)) return std::nullopt;
    return static_cast<std::int64_t>(value);
}

/// Whether the first character is.
bool isNumeric(std::string_view text) {
    std::size_t end = 0;
    const auto scalar = static_cast<UChar32>(utf8::next(text, end));
    return u_getIntPropertyValue(scalar, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

bool isCardNumber(std::string_view match) {
    std::string digits(match);
    std::erase_if(digits, [](char byte) { return byte == ' ' || byte == '-'; });
    const std::size_t count = text::characterCount(digits);
    return count >= fewestCardDigits && count <= mostCardDigits &&
           SensitiveContentDetector::passesLuhn(digits);
}

/// Behind the group of digits that begins at `place`.
std::size_t endOfGroup(std::string_view run, std::size_t place) {
    while (place < run.size()) {
        const std::size_t end = place;
        if (!isDecimalDigit(utf8::next(run, place))) return end;
    }
    return place;
}

/// Where (?<!\d)(?:\d[ -]?){12,18}\d(?!\d) stops matching when it begins with the group at
/// `start`: behind as many whole groups as make 13 to 19 digits, never within one.
std::optional<std::size_t> endOfMatch(std::string_view run, std::size_t start) {
    std::optional<std::size_t> end;
    std::size_t digits = 0;
    for (std::size_t place = start; place < run.size();) {
        const std::size_t separator = place;
        if (!isDecimalDigit(utf8::next(run, place))) {
            if (digits >= fewestCardDigits) end = separator;
        } else if (++digits > mostCardDigits) {
            return end;
        }
    }
    return digits >= fewestCardDigits ? run.size() : end;
}

/// Digits with at most one space or hyphen between two of them, as long as it goes.
struct DigitRun {
    std::size_t start = 0;
    std::size_t end = 0;
    std::size_t digits = 0;
    bool isOneGroup = true;  ///< no separator in it

    void add(std::size_t digitStart, std::size_t digitEnd) {
        isOneGroup = isOneGroup && (digits == 0 || digitStart == end);
        if (digits++ == 0) start = digitStart;
        end = digitEnd;
    }
    bool canGoOnBehind(std::size_t separatorStart) const { return digits > 0 && end == separatorStart; }

    bool holdsCardNumber(std::string_view text) const {
        if (digits < fewestCardDigits || (isOneGroup && digits > mostCardDigits)) return false;
        const std::string_view run = text.substr(start, end - start);
        for (std::size_t place = 0; place < run.size();) {
            const auto match = endOfMatch(run, place);
            if (match && isCardNumber(run.substr(place, *match - place))) return true;
            place = (match ? *match : endOfGroup(run, place)) + 1;  // and the separator
        }
        return false;
    }
};

/// Enough of the text to tell every prefix; no letter's lower case depends on what is further on.
std::string lowercasedStart(std::string_view text) {
    constexpr std::size_t scalars = 16;
    std::size_t end = 0;
    for (std::size_t n = 0; n < scalars && end < text.size(); ++n) utf8::next(text, end);
    return text::lowercased(text.substr(0, end));
}

template <std::size_t count>
bool startsWithAny(std::string_view text, const std::array<std::string_view, count>& prefixes) {
    return std::ranges::any_of(prefixes, [&](auto prefix) { return text.starts_with(prefix); });
}

std::string_view unwrapped(std::string_view text) {
    const auto start = text.find_first_not_of(wrappers);
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(wrappers) - start + 1);
}

/// What a text is made of, as far as its first blank.
struct CharacterClasses {
    std::size_t scalars = 0;
    bool blank = false;
    bool lowerCase = false;
    bool upperCase = false;
    bool digit = false;
    bool symbol = false;

    explicit CharacterClasses(std::string_view text) {
        for (std::size_t place = 0; place < text.size() && !blank; ++scalars) {
            const char32_t scalar = utf8::next(text, place);
            const std::uint32_t category = U_GET_GC_MASK(static_cast<UChar32>(scalar));
            blank = (category & (U_GC_Z_MASK | U_GC_C_MASK)) != 0 && text::isWhitespaceOrNewline(scalar);
            lowerCase |= (category & U_GC_LL_MASK) != 0;
            upperCase |= (category & (U_GC_LU_MASK | U_GC_LT_MASK)) != 0;
            digit |= (category & U_GC_ND_MASK) != 0;
            symbol |= (category & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) == 0;
        }
    }

    bool areMixed() const {
        return lowerCase + upperCase + digit + symbol >= 3 && digit && (upperCase || symbol);
    }
};

bool isAllNumeric(std::string_view text) {
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view character = text::firstCharacters(rest, 1);
        if (!isNumeric(character)) return false;
        rest.remove_prefix(character.size());
    }
    return true;
}

}  // namespace

std::optional<SensitiveContentKind> SensitiveContentDetector::classify(std::string_view text) {
    const std::string_view trimmed = text::trimmed(text);
    if (trimmed.empty()) return std::nullopt;
    if (containsValidPaymentCard(trimmed)) return SensitiveContentKind::paymentCard;
    if (resemblesSecret(trimmed)) return SensitiveContentKind::secret;
    return std::nullopt;
}

bool SensitiveContentDetector::containsValidPaymentCard(std::string_view text) {
    // A match is made of digits and single separators, and looks no further than the next
    // scalar for another digit. So the runs can be searched one by one, and few texts have one.
    DigitRun run;
    for (std::size_t place = 0; place < text.size();) {
        if (run.digits == 0 && !mayBeDigit(text[place])) {
            ++place;
            continue;
        }
        const std::size_t start = place;
        const char32_t scalar = utf8::next(text, place);
        if (isDecimalDigit(scalar)) {
            run.add(start, place);
        } else if ((scalar != ' ' && scalar != '-') || !run.canGoOnBehind(start)) {
            if (run.holdsCardNumber(text)) return true;
            run = {};
        }
    }
    return run.holdsCardNumber(text);
}

bool SensitiveContentDetector::passesLuhn(std::string_view digits) {
    // Which values are doubled shows only at the end, so both ways are added up.
    std::int64_t evenDoubled = 0;
    std::int64_t oddDoubled = 0;
    bool isOdd = false;
    bool isPositive = false;
    for (std::string_view rest = digits; !rest.empty();) {
        const std::string_view character = text::firstCharacters(rest, 1);
        rest.remove_prefix(character.size());
        const auto value = wholeValue(character);
        if (!value) continue;
        const std::int64_t doubled = *value >= 5 ? 2 * *value - 9 : 2 * *value;
        evenDoubled = (evenDoubled + (isOdd ? *value : doubled)) % 10;
        oddDoubled = (oddDoubled + (isOdd ? doubled : *value)) % 10;
        isOdd = !isOdd;
        isPositive |= *value > 0;
    }
    // The last value is not doubled: with an even count it stands at an odd place from the left.
    return isPositive && (isOdd ? oddDoubled : evenDoubled) == 0;
}

bool SensitiveContentDetector::isClearlyPublicIdentifier(std::string_view text) {
    if (startsWithAny(lowercasedStart(text), addressPrefixes)) return true;
    return identifiers::isEmail(text) || identifiers::isUUID(text) ||
           identifiers::isRepositoryPath(unwrapped(text));
}

bool SensitiveContentDetector::resemblesSecret(std::string_view text) {
    // Counting characters is dear, and so are the expressions: few texts come to that.
    const CharacterClasses classes(text);
    if (classes.blank || text.empty()) return false;
    const bool hasTokenPrefix = startsWithAny(lowercasedStart(text), tokenPrefixes);
    if (!classes.areMixed() && !hasTokenPrefix && !isNumeric(text)) return false;
    // Of no more scalars there are no more characters, and it is enough to know if they are few.
    const std::size_t limit = classes.scalars <= longestSecret ? longestCode : longestSecret;
    const std::size_t length = text::characterCount(text, limit + 1);
    if (length < shortestSecret || length > longestSecret) return false;
    if (isClearlyPublicIdentifier(text)) return false;
    if (hasTokenPrefix || (length <= longestCode && isAllNumeric(text))) return true;
    return length >= shortestMixedSecret && classes.areMixed() && !isAllNumeric(text);
}

}  // namespace nettlecap
