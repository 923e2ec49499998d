#pragma once

#include "app/AppServices.h"
#include "platform/BundleInfo.h"
#include "platform/SoftwareUpdater.h"

namespace nettlecap {

/// Updates of the program through the system's updater. Where the bundle does not ask for
/// them, or the system has no updater, there never are any.
class AppUpdateController final : public AppUpdates {
public:
    AppUpdateController(const BundleInfo& bundle, const MakeSoftwareUpdater& makeUpdater);

    void synchronize() override;
    void checkForUpdates() override;

    bool canCheckForUpdates() const override { return *canCheckForUpdates_; }
    Subscription onChange(Task handler) const override {
        return canCheckForUpdates_.subscribe(std::move(handler));
    }

private:
    void refresh();

    Published<bool> canCheckForUpdates_{false};
    std::unique_ptr<SoftwareUpdater> updater_;  // not started before the first synchronization
    bool hasStarted_ = false;
    Subscription changes_;
};

}  // namespace nettlecap
