#include "model/ClipboardEntry.h"
#include "model/PlainExpressions.h"
#include "model/SensitiveContentDetector.h"
#include "model/Text.h"
#include "model/Utf8.h"

#include <cstdlib>

// Whatever is copied, the detector finds what its expressions would find on the whole
// text, and the rules for texts hold.

namespace {

using namespace nettlecap;

void require(bool holds) {
    if (!holds) std::abort();
}

constexpr std::string_view wrappers = "*`'\"()[]{}<>,;:!?";

std::string_view unwrapped(std::string_view content) {
    while (!content.empty() && wrappers.find(content.front()) != std::string_view::npos)
        content.remove_prefix(1);
    while (!content.empty() && wrappers.find(content.back()) != std::string_view::npos)
        content.remove_suffix(1);
    return content;
}

bool startsWithAddress(std::string_view content) {
    const std::string lower = text::lowercased(content);
    return lower.starts_with("http://") || lower.starts_with("https://") || lower.starts_with("www.") ||
           lower.starts_with("file://");
}

void checkAgainstPlainExpressions(std::string_view content) {
    require(SensitiveContentDetector::containsValidPaymentCard(content) ==
            plain::containsValidPaymentCard(content));
    require(SensitiveContentDetector::isClearlyPublicIdentifier(content) ==
            (startsWithAddress(content) || plain::isEmail(content) || plain::isUUID(content) ||
             plain::isRepositoryPath(unwrapped(content))));
}

void checkTexts(const std::string& content) {
    const std::string_view trimmed = text::trimmed(content);
    require(text::trimmed(trimmed) == trimmed);
    const std::string normalized = text::normalized(content);
    require(text::normalized(normalized) == normalized);
    const std::string folded = text::folded(content);
    require(text::folded(folded) == folded);

    const std::size_t count = text::characterCount(content);
    require(text::firstCharacters(content, count) == content);
    require(text::characterCount(content, 3) == std::min<std::size_t>(count, 3));
    require(count <= 5 || text::characterCount(text::firstCharacters(content, 5)) == 5);

    ClipboardEntry entry;
    entry.text = content;
    require(text::characterCount(entry.maskedDescription()) <= 14);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    static_cast<void>(SensitiveContentDetector::classify(bytes));
    static_cast<void>(SensitiveContentDetector::resemblesSecret(bytes));
    static_cast<void>(SensitiveContentDetector::passesLuhn(bytes));
    constexpr std::size_t shortEnough = 500;
    if (size <= shortEnough) checkAgainstPlainExpressions(bytes);
    checkTexts(utf8::wellFormed(bytes));
    return 0;
}
