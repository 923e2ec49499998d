#include "capture/ClipboardPayloadResolver.h"

#include "model/Text.h"

namespace nettlecap {

namespace {

constexpr std::array<std::string_view, 6> officeApplications = {
    "microsoft word", "microsoft excel", "microsoft powerpoint", "pages", "numbers", "keynote"};

}  // namespace

bool ClipboardPayloadResolver::shouldCaptureTextFirst(const std::optional<std::string>& text,
                                                      const std::optional<std::string>& sourceApplication,
                                                      const PasteboardTypes& pasteboardTypes) {
    if (!text || text->empty()) return false;
    const std::string source = text::lowercased(sourceApplication.value_or(""));
    const bool isOffice = std::ranges::any_of(officeApplications, [&](std::string_view application) {
        return source.find(application) != std::string::npos;
    });
    return isOffice || !sharesMember(pasteboardTypes, rasterImageTypes);
}

}  // namespace nettlecap
