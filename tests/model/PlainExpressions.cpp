#include "model/PlainExpressions.h"

#include "model/SensitiveContentDetector.h"

#include <unicode/regex.h>

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

bool isEmail(std::string_view text) { return isFound(R"(^[^\s@]+@[^\s@]+\.[^\s@]+$)", text); }

bool isUUID(std::string_view text) {
    return isFound("^[0-9a-f]{8}-[0-9a-f]{4}-[1-5][0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}$", text);
}

bool isRepositoryPath(std::string_view text) {
    return isFound("^(?:[a-z0-9._-]{1,100}/){1,6}[a-z0-9._-]{1,100}$", text);
}

}  // namespace nettlecap::plain
