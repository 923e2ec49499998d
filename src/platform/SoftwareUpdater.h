#pragma once

#include "platform/Signal.h"

namespace nettlecap {

/// Brings newer versions of the program, with the system's own windows.
class SoftwareUpdater {
public:
    virtual ~SoftwareUpdater() = default;

    virtual bool canCheckForUpdates() const = 0;
    [[nodiscard]] virtual Subscription onCanCheckForUpdatesChange(Task handler) = 0;

    virtual void setAutomaticallyChecksForUpdates(bool isOn) = 0;
    virtual void start() = 0;  ///< once; nothing is asked of anybody before
    virtual void resetUpdateCycleAfterShortDelay() = 0;
    virtual void checkForUpdates() = 0;  ///< because the user wants to know: says so in any case
};

/// Null where the system has none for this copy of the program.
using MakeSoftwareUpdater = std::function<std::unique_ptr<SoftwareUpdater>()>;

}  // namespace nettlecap
