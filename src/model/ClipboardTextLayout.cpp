#include "model/ClipboardTextLayout.h"

#include "model/Text.h"
#include "model/Utf8.h"

namespace nettlecap {

namespace {

constexpr std::size_t sampleCharacters = 256;
constexpr double tolerance = 1;  // point

/// A line break is the start of a character wherever it stands, but for the line feed of
/// a CR LF, whose carriage return is one.
bool containsLineBreak(std::string_view text) {
    for (std::size_t place = 0; place < text.size();) {
        const char32_t scalar = utf8::next(text, place);
        if ((scalar >= '\n' && scalar <= '\r') || scalar == 0x85 || scalar == 0x2028 || scalar == 0x2029)
            return true;
    }
    return false;
}

}  // namespace

bool ClipboardTextLayout::isTruncated(std::string_view text, double availableWidth,
                                      const TextMeasure& measure) {
    if (availableWidth <= 0) return false;
    const double limit = availableWidth + tolerance;
    const std::string_view sample = text::firstCharacters(text, sampleCharacters);
    if (sample.size() < text.size() && measure.width(sample) > limit) return true;
    return containsLineBreak(text) || measure.width(text) > limit;
}

}  // namespace nettlecap
