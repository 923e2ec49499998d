#include "model/Expression.h"

#include <unicode/regex.h>

#include <cstdio>
#include <cstdlib>

namespace nettlecap {

namespace {

void abortOnFailure(UErrorCode status) {
    if (U_SUCCESS(status)) return;
    std::fprintf(stderr, "nettlecap: regular expression: %s\n", u_errorName(status));
    std::abort();
}

/// ICU searches UTF-16 several times as fast as UTF-8.
icu::UnicodeString utf16(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

}  // namespace

/// The matcher is kept, because making one costs more than searching a short text.
struct Expression::Compiled {
    std::unique_ptr<const icu::RegexPattern> pattern;
    std::unique_ptr<icu::RegexMatcher> matcher;
};

Expression::Expression(std::string_view pattern, Case letters) {
    UErrorCode status = U_ZERO_ERROR;
    UParseError where{};
    const std::uint32_t flags = letters == Case::insensitive ? UREGEX_CASE_INSENSITIVE : 0;
    std::unique_ptr<const icu::RegexPattern> compiled(
        icu::RegexPattern::compile(utf16(pattern), flags, where, status));
    abortOnFailure(status);
    std::unique_ptr<icu::RegexMatcher> matcher(compiled->matcher(status));
    abortOnFailure(status);
    compiled_ = std::make_unique<const Compiled>(Compiled{std::move(compiled), std::move(matcher)});
}

Expression::~Expression() = default;

bool Expression::isFoundIn(std::string_view text) const {
    bool found = false;
    forEachMatch(text, [&](std::string_view) {
        found = true;
        return false;
    });
    return found;
}

void Expression::forEachMatch(std::string_view text,
                              const std::function<bool(std::string_view)>& visit) const {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString input = utf16(text);
    icu::RegexMatcher& matcher = *compiled_->matcher;
    matcher.reset(input);
    while (matcher.find(status) && U_SUCCESS(status)) {
        std::string match;
        matcher.group(status).toUTF8String(match);
        if (!visit(match)) break;
    }
    abortOnFailure(status);
}

}  // namespace nettlecap
