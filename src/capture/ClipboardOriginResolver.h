#pragma once

#include "capture/PasteboardTypes.h"
#include "model/SourceNames.h"

namespace nettlecap {

/// A key press or a click that may have made the next copy.
struct LocalCopyGesture {
    std::string sourceApplication;  ///< never empty
    Uptime uptime{};

    bool operator==(const LocalCopyGesture&) const = default;
};

/// Another application that was in front, and when it was seen there.
struct RecentExternalApplication {
    std::optional<std::string> localizedName;
    std::optional<std::string> bundleIdentifier;
    Uptime uptime{};

    bool operator==(const RecentExternalApplication&) const = default;
};

/// Decides whom a copy is credited to. A gesture credits one change and no more, whether
/// it was still fresh or not.
struct ClipboardOriginResolver {
    static constexpr Seconds localCopyValidity{2.0};
    static constexpr auto& legacyUnidentifiedSources = sourceName::legacyUnidentified;
    /// What the browser leaves beside every copy, so that it is known when it is not in front.
    static constexpr std::array<std::string_view, 3> safariPasteboardMarkers = {
        "com.apple.webarchive",
        "Apple Web Archive pasteboard type",
        "com.apple.WebKit.custom-pasteboard-data",
    };

    /// The fresh gesture's application, else the inferred one, else "Outro dispositivo".
    std::string consumeSource(Uptime uptime, std::optional<std::string> inferredLocalSource);

    /// The name of an application in front; its identifier where the name is blank.
    static std::optional<std::string>
    activeApplicationSource(const std::optional<std::string>& localizedName,
                            const std::optional<std::string>& bundleIdentifier);
    /// The application's name when it is the browser and the copy bears one of its markers.
    static std::optional<std::string>
    inferredLocalSource(const std::optional<std::string>& frontmostApplication,
                        const std::optional<std::string>& bundleIdentifier,
                        const PasteboardTypes& pasteboardTypes);

    std::optional<LocalCopyGesture> pendingLocalCopy;

    bool operator==(const ClipboardOriginResolver&) const = default;
};

}  // namespace nettlecap
