#pragma once

#include "platform/fake/FakeTime.h"
#include "platform/fake/FakeUserDefaults.h"
#include "platform/linux/PackageKitMock.h"
#include "platform/linux/PackageKitUpdater.h"
#include "platform/linux/QtApplication.h"

namespace nettlecap {

constexpr const char* newer = "nettlecap;0.2.0;amd64;debian";  ///< a package identifier

/// An updater on a bus with a package service and a desktop that shows notices.
struct UpdaterOnABus {
    PackageKitUpdater::Ports ports() { return {.clock = time, .scheduler = time, .defaults = defaults}; }
    PackageKitUpdater::Buses buses() {
        return {.system = [this] { return ours; }, .session = [this] { return ours; }};
    }
    bool runUntil(const std::function<bool()>& condition) {
        return runMainLoopUntil([&] {
            time.advance(Seconds(0));
            return condition();
        });
    }
    /// What the user is told, once the look is over.
    std::string told() {
        if (!runUntil([this] { return updater.canCheckForUpdates(); })) return "(still looking)";
        if (!runUntil([this] { return !notifications.shown().empty(); })) return "(nothing)";
        return notifications.shown().join('\n').toStdString();
    }
    /// How many looks there were after that much time.
    qsizetype looksAfter(Seconds passed) {
        time.advance(passed);
        runUntil([this] { return updater.canCheckForUpdates(); });
        return archive.askedFor.count(QStringLiteral("RefreshCache"));
    }

    PrivateBus bus;
    QDBusConnection theirs = bus.connect(QStringLiteral("theirs"));
    QDBusConnection ours = bus.connect(QStringLiteral("ours"));
    MockArchive archive;
    std::unique_ptr<MockPackageKit> service = std::make_unique<MockPackageKit>(theirs, archive);
    MockNotifications notifications{theirs};
    FakeTime time;
    FakeUserDefaults defaults;
    PackageKitUpdater updater{ports(), buses()};
};

}  // namespace nettlecap
