#pragma once

#include "model/Text.h"

namespace nettlecap {

/// How much of a text the rows and their previews look at, so that a huge one costs no more
/// than a page.
struct ClipboardTextPreview {
    static constexpr std::size_t limit = 1200;  ///< characters

    static std::string limited(std::string_view text) { return text::limited(text, limit); }
};

}  // namespace nettlecap
