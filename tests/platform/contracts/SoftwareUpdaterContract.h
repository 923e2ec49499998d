#pragma once

#include "platform/SoftwareUpdater.h"

#include <gtest/gtest.h>
#include <memory>

namespace nettlecap {

/// An updater to be tested, not started yet, and the user whom it tells.
class SoftwareUpdaterHarness {
public:
    virtual ~SoftwareUpdaterHarness() = default;

    virtual SoftwareUpdater& updater() = 0;
    virtual void waitForCheck() = 0;  ///< until what the user asked for has come to its end
    virtual int answers() = 0;        ///< that the user was given
};

/// What every SoftwareUpdater does. Instantiate it with a function that makes the harness.
class SoftwareUpdaterContract : public testing::TestWithParam<std::unique_ptr<SoftwareUpdaterHarness> (*)()> {
protected:
    std::unique_ptr<SoftwareUpdaterHarness> harness = GetParam()();
    SoftwareUpdater& updater = harness->updater();
};

TEST_P(SoftwareUpdaterContract, CannotCheckBeforeItIsStarted) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_FALSE(updater.canCheckForUpdates());
}

TEST_P(SoftwareUpdaterContract, TellsThatItCanCheckOnceItIsStarted) {
    int changes = 0;
    const auto subscription = updater.onCanCheckForUpdatesChange([&] {
        ++changes;
        EXPECT_TRUE(updater.canCheckForUpdates());
    });

    updater.start();

    EXPECT_EQ(changes, 1);
}

TEST_P(SoftwareUpdaterContract, TellsNobodyWhoNoLongerListens) {
    int changes = 0;
    auto subscription = updater.onCanCheckForUpdatesChange([&] { ++changes; });
    subscription.reset();

    updater.start();

    EXPECT_EQ(changes, 0);
}

TEST_P(SoftwareUpdaterContract, AnswersTheUserEachTime) {
    updater.start();
    for (int times = 1; times <= 2; ++times) {
        updater.checkForUpdates();
        harness->waitForCheck();

        EXPECT_EQ(harness->answers(), times);
    }
}

TEST_P(SoftwareUpdaterContract, CanCheckAgainAfterwards) {
    updater.start();

    updater.checkForUpdates();
    harness->waitForCheck();

    EXPECT_TRUE(updater.canCheckForUpdates());
}

TEST_P(SoftwareUpdaterContract, SaysNothingThatNobodyAskedForAtTheStart) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.start();
    updater.resetUpdateCycleAfterShortDelay();

    EXPECT_EQ(harness->answers(), 0);
    EXPECT_TRUE(updater.canCheckForUpdates());
}

}  // namespace nettlecap
