#include "app/AppUpdateController.h"

namespace nettlecap {

AppUpdateController::AppUpdateController(const BundleInfo& bundle, const MakeSoftwareUpdater& makeUpdater) {
    if (bundle.flag("NettlecapUpdatesEnabled") != true) return;
    if (makeUpdater) updater_ = makeUpdater();
    if (!updater_) return;
    changes_ = updater_->onCanCheckForUpdatesChange([this] { refresh(); });
    refresh();
}

void AppUpdateController::synchronize() {
    if (!updater_) return;
    updater_->setAutomaticallyChecksForUpdates(true);
    if (!std::exchange(hasStarted_, true)) updater_->start();
    updater_->resetUpdateCycleAfterShortDelay();
    refresh();
}

void AppUpdateController::checkForUpdates() {
    if (updater_) updater_->checkForUpdates();
}

void AppUpdateController::refresh() {
    const bool canCheck = updater_->canCheckForUpdates();
    if (canCheck != *canCheckForUpdates_) canCheckForUpdates_ = canCheck;
}

}  // namespace nettlecap
