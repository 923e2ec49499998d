#pragma once

#include "platform/SoftwareUpdater.h"
#include "platform/Time.h"
#include "platform/UserDefaults.h"

#include <QDBusConnection>

namespace nettlecap {

/// Asks PackageKit whether the distribution has a newer package, and leaves installing it to
/// the desktop's own programs. Looks by itself once a day at most, and then says nothing
/// where there is nothing.
class PackageKitUpdater final : public SoftwareUpdater {
public:
    struct Ports {
        Clock& clock;
        Scheduler& scheduler;
        UserDefaults& defaults;  ///< remembers the day of the last look
    };
    struct Buses {
        std::function<QDBusConnection()> system;  ///< asked for at the first look
        std::function<QDBusConnection()> session;
    };

    static constexpr Seconds shortDelay{300};  ///< a session that begins has enough to do
    static constexpr Seconds interval{24 * 60 * 60};
    static constexpr Seconds patience{600};  ///< for one look, the download of the lists included

    /// Null for a copy that no package brought. The ports must outlive it.
    static std::unique_ptr<SoftwareUpdater> make(const Ports& ports);

    PackageKitUpdater(const Ports& ports, Buses buses);
    ~PackageKitUpdater() override;

    bool canCheckForUpdates() const override { return *canCheckForUpdates_; }
    Subscription onCanCheckForUpdatesChange(Task handler) override {
        return canCheckForUpdates_.subscribe(std::move(handler));
    }

    void setAutomaticallyChecksForUpdates(bool isOn) override { isAutomatic_ = isOn; }
    void start() override { canCheckForUpdates_ = true; }
    void resetUpdateCycleAfterShortDelay() override;
    void checkForUpdates() override;

private:
    struct Look;
    using NewerVersion = Result<std::optional<std::string>>;  // absent: this one is the newest

    void lookIfDue();
    bool isDue() const;
    void look(bool isForUser);
    void listUpdates();
    void endLook(const NewerVersion& newer);
    void show(const NewerVersion& newer, bool isForUser);

    Ports ports_;
    Buses buses_;
    Published<bool> canCheckForUpdates_{false};
    bool isAutomatic_ = false;
    int cycle_ = 0;
    int looks_ = 0;
    std::unique_ptr<Look> look_;  // while there is one
    std::unique_ptr<class DesktopNotification> notification_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
