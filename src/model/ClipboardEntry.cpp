#include "model/ClipboardEntry.h"

#include "model/Text.h"

#include <algorithm>

namespace nettlecap {

namespace {

constexpr std::string_view bullet = "•";
constexpr std::size_t shownCharacters = 2;
constexpr std::size_t fewestBullets = 6;
constexpr std::size_t mostBullets = 12;
constexpr std::size_t bulletsForNothing = 8;

/// More characters than a mask can tell apart. Twice as many, because a line feed that
/// becomes a space may merge with the combining mark behind it.
constexpr std::size_t enough = 2 * (shownCharacters + mostBullets) + 2;

std::string bullets(std::size_t count) {
    std::string result;
    for (std::size_t n = 0; n < count; ++n) result += bullet;
    return result;
}

}  // namespace

std::string ClipboardEntry::maskedDescription() const {
    const std::string_view trimmed = text::trimmed(text ? std::string_view(*text) : std::string_view());
    if (trimmed.empty()) return bullets(bulletsForNothing);

    std::string line(text::firstCharacters(trimmed, enough));
    std::ranges::replace(line, '\n', ' ');
    const std::string_view shown = text::firstCharacters(line, shownCharacters);
    const std::size_t count = text::characterCount(line, shownCharacters + mostBullets);
    const std::size_t hidden = count - std::min(count, shownCharacters);
    return std::string(shown) + bullets(std::clamp(hidden, fewestBullets, mostBullets));
}

std::string ClipboardEntry::searchableText(bool protectingSensitiveContent) const {
    const bool hidesText = protectingSensitiveContent && sensitiveKind;
    if (hidesText || !text) return sourceApplication.value_or("");
    return sourceApplication ? *text + ' ' + *sourceApplication : *text;
}

}  // namespace nettlecap
