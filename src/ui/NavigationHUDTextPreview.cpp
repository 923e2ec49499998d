#include "ui/NavigationHUDTextPreview.h"

#include "model/Utf8.h"

#include <algorithm>

namespace nettlecap {

namespace {

constexpr std::size_t mostCharactersUnexpanded = 180;
constexpr std::size_t charactersOfRow = 58;

bool isLineBreak(char32_t scalar) {
    return (scalar >= 0x0A && scalar <= 0x0D) || scalar == 0x85 || scalar == 0x2028 || scalar == 0x2029;
}

/// None of them ever joins the character before it, but for the line feed of a CR LF.
bool containsLineBreak(std::string_view text) {
    for (std::size_t place = 0; place < text.size();)
        if (isLineBreak(utf8::next(text, place))) return true;
    return false;
}

std::size_t findLoneLineFeed(std::string_view text, std::size_t from) {
    std::size_t place = text.find('\n', from);
    while (place != std::string_view::npos && place > 0 && text[place - 1] == '\r')
        place = text.find('\n', place + 1);
    return std::min(place, text.size());
}

std::int64_t rowsOf(std::string_view line) {
    constexpr std::size_t enough = NavigationHUDTextPreview::mostLines * charactersOfRow;
    const std::size_t length = text::characterCount(line, enough);
    return std::max<std::int64_t>(
        1, static_cast<std::int64_t>((length + charactersOfRow - 1) / charactersOfRow));
}

}  // namespace

NavigationHUDTextPresentation NavigationHUDTextPreview::presentation(const ClipboardEntry& entry,
                                                                     bool protectingSensitiveContent) {
    if (protectingSensitiveContent && entry.sensitiveKind)
        return {
            .text = entry.maskedDescription(), .usesExpandedLayout = false, .visibleLineLimit = fewestLines};
    const std::string_view raw = entry.text ? std::string_view(*entry.text) : std::string_view();
    std::string display(text::trimmed(limited(raw)));
    if (display.empty()) display = "Texto vazio";
    const std::int64_t lines = visibleLineLimit(display);
    return {.text = std::move(display),
            .usesExpandedLayout = shouldUseExpandedLayout(raw),
            .visibleLineLimit = lines};
}

bool NavigationHUDTextPreview::shouldUseExpandedLayout(std::string_view text) {
    return text::characterCount(text, mostCharactersUnexpanded + 1) > mostCharactersUnexpanded ||
           containsLineBreak(text);
}

std::int64_t NavigationHUDTextPreview::visibleLineLimit(std::string_view text) {
    std::int64_t rows = 0;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = findLoneLineFeed(text, start);
        rows += rowsOf(text.substr(start, end - start));
        if (rows >= mostLines) return mostLines;
        start = end + 1;
    }
    return std::max(rows, fewestLines);
}

}  // namespace nettlecap
