#include "platform/linux/NotifierHost.h"

#include "platform/linux/QtApplication.h"
#include "platform/linux/TrayWatcher.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// A desktop that shows icons of the new kind, or does later, or no more.
class NotifierHostTest : public testing::Test {
protected:
    void wait() {
        host = std::make_unique<NotifierHost>();
        changes = host->onChange([this] { told += *host->isThere() ? "there " : "gone "; });
    }
    bool waitUntilTold(const std::string& all) {
        return runMainLoopUntil([&] { return told.size() >= all.size(); }) && told == all;
    }

    std::unique_ptr<NotifierHost> host;
    Subscription changes;
    std::string told;
};

TEST_F(NotifierHostTest, OneThatIsThereIsToldOnceTheMainLoopRuns) {
    const TrayWatcher watcher(true);

    wait();
    EXPECT_EQ(host->isThere(), std::nullopt);

    EXPECT_TRUE(waitUntilTold("there "));
}

TEST_F(NotifierHostTest, WhereThereIsNoneThatIsToldToo) {
    wait();

    EXPECT_TRUE(waitUntilTold("gone "));
}

TEST_F(NotifierHostTest, OneMayComeLaterWithItsWatcher) {
    wait();
    ASSERT_TRUE(waitUntilTold("gone "));

    const TrayWatcher watcher(true);

    EXPECT_TRUE(waitUntilTold("gone there "));
}

TEST_F(NotifierHostTest, AWatcherAloneShowsNothing) {
    TrayWatcher watcher(false);
    wait();
    ASSERT_TRUE(waitUntilTold("gone "));

    watcher.addHost();
    EXPECT_TRUE(waitUntilTold("gone there "));

    watcher.removeHost();
    EXPECT_TRUE(waitUntilTold("gone there gone "));
}

TEST_F(NotifierHostTest, OneMayGoWithItsWatcherAndAnotherCome) {
    auto watcher = std::make_unique<TrayWatcher>(true);
    wait();
    ASSERT_TRUE(waitUntilTold("there "));

    watcher.reset();
    EXPECT_TRUE(waitUntilTold("there gone "));

    watcher = std::make_unique<TrayWatcher>(true);
    EXPECT_TRUE(waitUntilTold("there gone there "));
}

TEST_F(NotifierHostTest, WhatIsAsNowIsNotToldAgain) {
    TrayWatcher watcher(true);
    wait();
    ASSERT_TRUE(waitUntilTold("there "));

    watcher.addHost();
    ASSERT_TRUE(runMainLoopUntil([&] { return watcher.timesAsked() == 2; }));
    watcher.removeHost();

    EXPECT_TRUE(waitUntilTold("there gone "));
}

}  // namespace
}  // namespace nettlecap
