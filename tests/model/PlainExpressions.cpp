#include "model/PlainExpressions.h"

#include "model/SensitiveContentDetector.h"
#include "model/Text.h"
#include "model/Utf8.h"

#include <unicode/brkiter.h>
#include <unicode/regex.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>
#include <string>

namespace nettlecap::plain {

namespace {

void check(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
}

bool isFound(const char* pattern, std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const auto input = icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
    icu::RegexMatcher matcher(icu::UnicodeString::fromUTF8(pattern), input, UREGEX_CASE_INSENSITIVE, status);
    const bool found = matcher.find(status);
    check(status);
    return found;
}

bool isAllNumeric(std::string_view text) {
    while (!text.empty()) {
        std::size_t place = 0;
        const auto scalar = static_cast<UChar32>(utf8::next(text, place));
        if (u_getIntPropertyValue(scalar, UCHAR_NUMERIC_TYPE) == U_NT_NONE) return false;
        text.remove_prefix(text::firstCharacters(text, 1).size());
    }
    return true;
}

bool holds(std::string_view text, std::uint32_t categories) {
    for (std::size_t place = 0; place < text.size();)
        if ((U_GET_GC_MASK(static_cast<UChar32>(utf8::next(text, place))) & categories) != 0) return true;
    return false;
}

bool hasBlank(std::string_view text) {
    for (std::size_t place = 0; place < text.size();)
        if (text::isWhitespaceOrNewline(utf8::next(text, place))) return true;
    return false;
}

}  // namespace

bool containsValidPaymentCard(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const auto input = icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
    icu::RegexMatcher matcher(R"((?<!\d)(?:\d[ -]?){12,18}\d(?!\d))", input, 0, status);
    while (matcher.find(status)) {
        std::string match;
        matcher.group(status).toUTF8String(match);
        if (SensitiveContentDetector::passesLuhn(match)) return true;
    }
    check(status);
    return false;
}

std::vector<std::size_t> characterEnds(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    UText input = UTEXT_INITIALIZER;
    utext_openUTF8(&input, text.data(), static_cast<std::int64_t>(text.size()), &status);
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    characters->setText(&input, status);
    check(status);
    std::vector<std::size_t> ends;
    for (std::int32_t end = characters->next(); end != icu::BreakIterator::DONE; end = characters->next())
        ends.push_back(static_cast<std::size_t>(end));
    utext_close(&input);
    return ends;
}

bool isEmail(std::string_view text) { return isFound(R"(^[^\s@]+@[^\s@]+\.[^\s@]+$)", text); }

bool isUUID(std::string_view text) {
    return isFound("^[0-9a-f]{8}-[0-9a-f]{4}-[1-5][0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}$", text);
}

bool isRepositoryPath(std::string_view text) {
    return isFound("^(?:[a-z0-9._-]{1,100}/){1,6}[a-z0-9._-]{1,100}$", text);
}

bool resemblesSecret(std::string_view text) {
    constexpr std::array<std::string_view, 8> prefixes = {"sk-",   "sk_",   "ghp_", "github_pat_",
                                                          "xoxb-", "xoxp-", "akia", "eyj"};
    constexpr std::uint32_t capitals = U_GC_LU_MASK | U_GC_LT_MASK;
    constexpr std::uint32_t symbols = ~(U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK);
    const std::size_t length = text::characterCount(text);
    if (length < 6 || length > 256 || hasBlank(text)) return false;
    if (SensitiveContentDetector::isClearlyPublicIdentifier(text)) return false;
    const std::string lower = text::lowercased(text);
    if (std::ranges::any_of(prefixes, [&](auto prefix) { return lower.starts_with(prefix); })) return true;
    if (isAllNumeric(text)) return length <= 8;
    const int kinds =
        holds(text, U_GC_LL_MASK) + holds(text, capitals) + holds(text, U_GC_ND_MASK) + holds(text, symbols);
    return length >= 8 && kinds >= 3 && holds(text, U_GC_ND_MASK) &&
           (holds(text, capitals) || holds(text, symbols));
}

}  // namespace nettlecap::plain
