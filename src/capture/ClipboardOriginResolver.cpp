#include "capture/ClipboardOriginResolver.h"

#include "model/Text.h"

namespace nettlecap {

namespace {

bool isSafari(const std::optional<std::string>& name, const std::optional<std::string>& bundleIdentifier) {
    if (bundleIdentifier == "com.apple.Safari") return true;
    if (bundleIdentifier && bundleIdentifier->starts_with("com.apple.SafariTechnologyPreview")) return true;
    return name && text::folded(*name).find(text::folded("Safari")) != std::string::npos;
}

}  // namespace

std::string ClipboardOriginResolver::consumeSource(Uptime uptime,
                                                   std::optional<std::string> inferredLocalSource) {
    const auto gesture = std::exchange(pendingLocalCopy, std::nullopt);
    if (gesture) {
        const Seconds age = uptime - gesture->uptime;
        if (age >= Seconds::zero() && age <= localCopyValidity) return gesture->sourceApplication;
    }
    return std::move(inferredLocalSource).value_or(std::string(sourceName::otherDevice));
}

std::optional<std::string>
ClipboardOriginResolver::activeApplicationSource(const std::optional<std::string>& localizedName,
                                                 const std::optional<std::string>& bundleIdentifier) {
    if (localizedName) {
        const std::string_view name = text::trimmed(*localizedName);
        if (!name.empty()) return std::string(name);
    }
    if (bundleIdentifier && !bundleIdentifier->empty()) return bundleIdentifier;
    return std::nullopt;
}

std::optional<std::string>
ClipboardOriginResolver::inferredLocalSource(const std::optional<std::string>& frontmostApplication,
                                             const std::optional<std::string>& bundleIdentifier,
                                             const PasteboardTypes& pasteboardTypes) {
    if (!isSafari(frontmostApplication, bundleIdentifier)) return std::nullopt;
    if (!sharesMember(pasteboardTypes, safariPasteboardMarkers)) return std::nullopt;
    return frontmostApplication.value_or("Safari");
}

}  // namespace nettlecap
