#pragma once

#include "platform/Images.h"

namespace nettlecap {

struct ClipboardTextLayout {
    /// Whether a row of `availableWidth` points must show the text as cut off.
    static bool isTruncated(std::string_view text, double availableWidth, const TextMeasure& measure);
};

}  // namespace nettlecap
