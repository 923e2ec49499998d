#pragma once

#include "model/ClipboardEntry.h"
#include "model/Text.h"
#include "ui/NavigationHUDTextPresentation.h"

namespace nettlecap {

/// Shapes a text for the card. However long it is, no more than a page of it is looked at.
struct NavigationHUDTextPreview {
    static constexpr std::size_t limit = 3000;  ///< characters
    static constexpr std::int64_t fewestLines = 4;
    static constexpr std::int64_t mostLines = 9;

    static NavigationHUDTextPresentation presentation(const ClipboardEntry& entry,
                                                      bool protectingSensitiveContent);
    /// More than 180 characters, or any line break.
    static bool shouldUseExpandedLayout(std::string_view text);
    /// The rows that the text needs at 58 characters each, from 4 to 9. A line feed ends a
    /// row, but not one behind a carriage return, which is one character with it.
    static std::int64_t visibleLineLimit(std::string_view text);
    static std::string limited(std::string_view text) { return text::limited(text, limit); }
};

}  // namespace nettlecap
