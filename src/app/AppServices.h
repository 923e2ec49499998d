#pragma once

#include "app/AppState.h"

namespace nettlecap {

/// Updates of the program itself.
class AppUpdates {
public:
    virtual ~AppUpdates() = default;

    virtual void synchronize() = 0;      ///< after the start
    virtual void checkForUpdates() = 0;  ///< because the user wants to know

    virtual bool canCheckForUpdates() const = 0;
    virtual Subscription onChange(Task handler) const = 0;
};

/// The start of the program with the session.
class LoginItemSync {
public:
    virtual ~LoginItemSync() = default;

    /// Brings the system in line with the preference and the state in line with the system;
    /// with `showStatus` a message tells what came of it.
    virtual void syncLaunchAtLogin(AppState& state, bool showStatus) = 0;
    /// Where the user allows programs to start with the session.
    virtual void openSystemSettings() = 0;
};

}  // namespace nettlecap
