#pragma once

#include "app/AppPreferences.h"
#include "platform/Signal.h"

namespace nettlecap {

/// The fields that the parts of the application model share.
struct AppState {
    Published<AppPreferences> preferences;
    Published<bool> isMonitoring{true};
    /// For the popover's status line; only ever replaced by the next one.
    Published<std::optional<std::string>> statusMessage{std::nullopt};
    Published<bool> launchAtLoginRequiresApproval{false};
    std::optional<Uuid> navigationEntryID;  ///< where hot-key navigation stands
    Signal<> popoverShouldClose;            ///< whoever owns the popover listens
};

}  // namespace nettlecap
