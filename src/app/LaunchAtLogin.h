#pragma once

#include "app/AppServices.h"
#include "platform/BundleInfo.h"
#include "platform/Files.h"
#include "platform/LoginItem.h"
#include "platform/Time.h"

namespace nettlecap {

/// Registers the program with the system as the preference wants it. A failure never changes
/// the preference, and the user's own word in the system's settings is never overruled.
class LaunchAtLogin final : public LoginItemSync {
public:
    struct Ports {
        LoginItem& loginItem;
        const BundleInfo& bundle;
        FileSystem& files;
        const Clock& clock;
    };

    explicit LaunchAtLogin(Ports ports) : ports_(ports) {}

    /// Leaves a diagnostics file whatever came of it.
    void syncLaunchAtLogin(AppState& state, bool showStatus) override;
    void openSystemSettings() override { ports_.loginItem.openSystemSettings(); }

private:
    /// What is absent was no failure.
    using Error = std::optional<std::string>;

    Error switchOff(AppState& state, bool showStatus);
    Error switchOn(AppState& state, bool showStatus);
    Error registerItem(AppState& state, bool showStatus);
    void writeLaunchAtLoginDiagnostics(bool desired, const Error& error);

    Ports ports_;
};

}  // namespace nettlecap
