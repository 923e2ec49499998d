#pragma once

#include "model/ClipboardEntry.h"
#include "model/Text.h"

namespace nettlecap {

/// How much of a text the rows and their previews look at, so that a huge one costs no more
/// than a page.
struct ClipboardTextPreview {
    static constexpr std::size_t limit = 1200;  ///< characters

    static std::string limited(std::string_view text) { return text::limited(text, limit); }
    static std::string onOneLine(std::string_view text) { return text::onOneLine(limited(text)); }

    static bool isMasked(const ClipboardEntry& entry, bool protectingSensitiveContent) {
        return protectingSensitiveContent && entry.sensitiveKind;
    }
    /// What stands for the entry where there is one line for it.
    static std::string summary(const ClipboardEntry& entry, bool protectingSensitiveContent);
};

}  // namespace nettlecap
