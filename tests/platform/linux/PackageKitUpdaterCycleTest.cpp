#include "platform/linux/UpdaterOnABus.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

class PackageKitUpdaterCycleTest : public testing::Test, protected UpdaterOnABus {
protected:
    void SetUp() override { updater.start(); }
};

TEST_F(PackageKitUpdaterCycleTest, LooksByItselfFiveMinutesAfterTheReset) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_EQ(looksAfter(299s), 0);
    EXPECT_EQ(looksAfter(1s), 1);
}

TEST_F(PackageKitUpdaterCycleTest, LooksByItselfOnceADay) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();
    ASSERT_EQ(looksAfter(300s), 1);

    EXPECT_EQ(looksAfter(23h), 1);
    EXPECT_EQ(looksAfter(1h), 2);
    EXPECT_EQ(looksAfter(23h), 2);
}

TEST_F(PackageKitUpdaterCycleTest, ARestartDoesNotMakeItLookAgain) {
    updater.checkForUpdates();
    ASSERT_EQ(looksAfter(0s), 1);

    PackageKitUpdater restarted(ports(), buses());
    restarted.start();
    restarted.setAutomaticallyChecksForUpdates(true);
    restarted.resetUpdateCycleAfterShortDelay();
    time.advance(300s);

    EXPECT_TRUE(restarted.canCheckForUpdates());
}

TEST_F(PackageKitUpdaterCycleTest, LooksAtOnceWhereTheClockWasPutBack) {
    defaults.setData("Nettlecap.lastUpdateCheck",
                     Bytes(std::to_string(time.now().secondsSince2001 + 1'000'000)));
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_EQ(looksAfter(300s), 1);
}

TEST_F(PackageKitUpdaterCycleTest, NeverLooksByItselfWhereThatIsOff) {
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_EQ(looksAfter(48h), 0);
}

TEST_F(PackageKitUpdaterCycleTest, AnotherResetStartsTheDelayAnew) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();
    time.advance(200s);
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_EQ(looksAfter(299s), 0);
    EXPECT_EQ(looksAfter(1s), 1);
}

TEST_F(PackageKitUpdaterCycleTest, IsQuietByItselfUnlessThereIsSomethingNew) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();
    ASSERT_EQ(looksAfter(300s), 1);
    archive.refreshError = QStringLiteral("offline");
    ASSERT_EQ(looksAfter(24h), 2);

    archive.refreshError.clear();
    archive.updates = {QString(newer)};
    ASSERT_EQ(looksAfter(24h), 3);

    EXPECT_EQ(told(), "Atualização disponível|Nettlecap 0.2.0|");
}

}  // namespace
}  // namespace nettlecap
