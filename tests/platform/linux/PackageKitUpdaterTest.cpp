#include "platform/linux/PackageKitUpdater.h"

#include "platform/fake/FakeTime.h"
#include "platform/fake/FakeUserDefaults.h"
#include "platform/linux/Environment.h"
#include "platform/linux/PackageKitMock.h"
#include "platform/linux/QtApplication.h"
#include "platform/linux/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr const char* newer = "nettlecap;0.2.0;amd64;debian";
constexpr Seconds second{1};

class PackageKitUpdaterTest : public testing::Test {
protected:
    void SetUp() override { updater.start(); }

    PackageKitUpdater::Ports ports() { return {.clock = time, .scheduler = time, .defaults = defaults}; }
    PackageKitUpdater::Buses buses() {
        return {.system = [this] { return ours; }, .session = [this] { return ours; }};
    }
    bool runUntil(const std::function<bool()>& condition) {
        return runMainLoopUntil([&] {
            time.advance(0s);
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

TEST_F(PackageKitUpdaterTest, CannotCheckBeforeItIsStarted) {
    PackageKitUpdater fresh(ports(), buses());
    EXPECT_FALSE(fresh.canCheckForUpdates());

    int changes = 0;
    const auto subscription = fresh.onCanCheckForUpdatesChange([&] { ++changes; });
    fresh.start();

    EXPECT_TRUE(fresh.canCheckForUpdates());
    EXPECT_EQ(changes, 1);
}

TEST_F(PackageKitUpdaterTest, TellsTheUserOfANewerVersion) {
    archive.updates = {QStringLiteral("other;9;all;debian"), QString(newer)};

    updater.checkForUpdates();

    EXPECT_EQ(told(), "Atualização disponível|Nettlecap 0.2.0|default,Instalar,button,Instalar");
    EXPECT_EQ(archive.askedFor, (QStringList{"RefreshCache", "GetUpdates"}));
    EXPECT_TRUE(archive.hints.contains("interactive=false"));
}

TEST_F(PackageKitUpdaterTest, TellsTheUserThatThereIsNone) {
    archive.updates = {QStringLiteral("nettlecap-other;9;all;debian"), QStringLiteral("nettlecap")};

    updater.checkForUpdates();

    EXPECT_EQ(told(), "O Nettlecap está atualizado||");
}

TEST_F(PackageKitUpdaterTest, TellsTheUserWhatWentWrongInTheSystemsWords) {
    archive.error = QStringLiteral("Cannot reach <the> archive");

    updater.checkForUpdates();

    EXPECT_EQ(told(), "Não foi possível buscar atualizações|Cannot reach &lt;the&gt; archive|");
    EXPECT_TRUE(updater.canCheckForUpdates());
}

TEST_F(PackageKitUpdaterTest, CannotCheckWhileItLooks) {
    archive.answers = false;
    updater.checkForUpdates();
    ASSERT_TRUE(runUntil([&] { return archive.askedFor.size() == 1; }));
    EXPECT_FALSE(updater.canCheckForUpdates());

    updater.checkForUpdates();
    time.advance(PackageKitUpdater::patience - second);
    EXPECT_FALSE(updater.canCheckForUpdates());

    time.advance(second);
    EXPECT_TRUE(updater.canCheckForUpdates());
    EXPECT_EQ(told(), "Não foi possível buscar atualizações|Connection timed out|");
    EXPECT_TRUE(runUntil([&] { return archive.askedFor.contains("Cancel"); }));
    EXPECT_EQ(archive.askedFor, (QStringList{"RefreshCache", "Cancel"}));
}

TEST_F(PackageKitUpdaterTest, SurvivesTheEndOfTheService) {
    archive.answers = false;
    updater.checkForUpdates();
    ASSERT_TRUE(runUntil([&] { return archive.askedFor.size() == 1; }));

    service.reset();

    EXPECT_EQ(told(), "Não foi possível buscar atualizações||");
}

TEST_F(PackageKitUpdaterTest, SurvivesWithoutTheService) {
    service.reset();

    updater.checkForUpdates();

    EXPECT_EQ(told().rfind("Não foi possível buscar atualizações|", 0), 0U);
}

TEST_F(PackageKitUpdaterTest, SurvivesWithoutABus) {
    bus.stop();

    updater.checkForUpdates();

    EXPECT_TRUE(runUntil([this] { return updater.canCheckForUpdates(); }));
}

TEST_F(PackageKitUpdaterTest, MayGoAwayWhileItLooks) {
    archive.answers = false;
    auto shortLived = std::make_unique<PackageKitUpdater>(ports(), buses());
    shortLived->start();
    shortLived->checkForUpdates();
    ASSERT_TRUE(runUntil([&] { return archive.askedFor.size() == 1; }));

    shortLived.reset();

    EXPECT_TRUE(runUntil([&] { return archive.askedFor.contains("Cancel"); }));
    time.advance(PackageKitUpdater::patience);
}

TEST_F(PackageKitUpdaterTest, LooksByItselfFiveMinutesAfterTheReset) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_EQ(looksAfter(299s), 0);
    EXPECT_EQ(looksAfter(1s), 1);
}

TEST_F(PackageKitUpdaterTest, LooksByItselfOnceADay) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();
    ASSERT_EQ(looksAfter(300s), 1);

    EXPECT_EQ(looksAfter(23h), 1);
    EXPECT_EQ(looksAfter(1h), 2);
    EXPECT_EQ(looksAfter(23h), 2);
}

TEST_F(PackageKitUpdaterTest, ARestartDoesNotMakeItLookAgain) {
    updater.checkForUpdates();
    ASSERT_EQ(looksAfter(0s), 1);

    PackageKitUpdater restarted(ports(), buses());
    restarted.start();
    restarted.setAutomaticallyChecksForUpdates(true);
    restarted.resetUpdateCycleAfterShortDelay();
    time.advance(300s);

    EXPECT_TRUE(restarted.canCheckForUpdates());
}

TEST_F(PackageKitUpdaterTest, LooksAtOnceWhereTheClockWasPutBack) {
    defaults.setData("Nettlecap.lastUpdateCheck",
                     Bytes(std::to_string(time.now().secondsSince2001 + 1'000'000)));
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_EQ(looksAfter(300s), 1);
}

TEST_F(PackageKitUpdaterTest, NeverLooksByItselfWhereThatIsOff) {
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_EQ(looksAfter(48h), 0);
}

TEST_F(PackageKitUpdaterTest, AnotherResetStartsTheDelayAnew) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();
    time.advance(200s);
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_EQ(looksAfter(299s), 0);
    EXPECT_EQ(looksAfter(1s), 1);
}

TEST_F(PackageKitUpdaterTest, IsQuietByItselfUnlessThereIsSomethingNew) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();
    ASSERT_EQ(looksAfter(300s), 1);
    archive.error = QStringLiteral("offline");
    ASSERT_EQ(looksAfter(24h), 2);

    archive.error.clear();
    archive.updates = {QString(newer)};
    ASSERT_EQ(looksAfter(24h), 3);

    EXPECT_EQ(told(), "Atualização disponível|Nettlecap 0.2.0|default,Instalar,button,Instalar");
}

TEST_F(PackageKitUpdaterTest, TheButtonOpensWhatTheDesktopHasForUpdates) {
    TemporaryFolder bin;
    const Path told = bin.path() / "told";
    std::ofstream(bin.path() / "gpk-update-viewer") << "#!/bin/sh\n: > '" << told.string() << "'\n";
    fs::permissions(bin.path() / "gpk-update-viewer", fs::perms(0755));
    const Environment path("PATH", bin.path());
    archive.updates = {QString(newer)};
    updater.checkForUpdates();
    ASSERT_TRUE(runUntil([this] { return !notifications.shown().empty(); }));

    // The answer to the notice may still be on its way.
    EXPECT_TRUE(runUntil([&] {
        notifications.press();
        return fs::exists(told);
    }));
}

TEST(PackageKitUpdaterMakeTest, ACopyThatNoPackageBroughtHasNone) {
    FakeTime time;
    FakeUserDefaults defaults;

    EXPECT_EQ(PackageKitUpdater::make({.clock = time, .scheduler = time, .defaults = defaults}), nullptr);
}

}  // namespace
}  // namespace nettlecap
