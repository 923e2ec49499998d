#pragma once

#include "platform/Time.h"

#include <atomic>
#include <gtest/gtest.h>

namespace nettlecap {

class BackgroundWorkHarness {
public:
    virtual ~BackgroundWorkHarness() = default;

    virtual BackgroundWork& background() = 0;
    virtual bool runUntil(const std::function<bool()>& condition) = 0;  ///< false: long past the time for it
};

/// What every BackgroundWork does. Instantiate it with a function that makes the harness.
class BackgroundWorkContract : public testing::TestWithParam<std::unique_ptr<BackgroundWorkHarness> (*)()> {
protected:
    std::unique_ptr<BackgroundWorkHarness> harness = GetParam()();
    BackgroundWork& background = harness->background();
};

TEST_P(BackgroundWorkContract, RunsTheTaskAfterItsJob) {
    std::string done;
    background.run([&done]() -> Task {
        done += "job ";
        return [&done] { done += "task"; };
    });

    ASSERT_TRUE(harness->runUntil([&] { return done.ends_with("task"); }));
    EXPECT_EQ(done, "job task");
}

TEST_P(BackgroundWorkContract, NeverRunsATaskWithinTheCall) {
    bool ran = false;
    background.run([&ran]() -> Task { return [&ran] { ran = true; }; });
    EXPECT_FALSE(ran);

    EXPECT_TRUE(harness->runUntil([&] { return ran; }));
}

TEST_P(BackgroundWorkContract, AJobMayBringNoTask) {
    std::atomic<bool> ran = false;
    background.run([&ran]() -> Task {
        ran = true;
        return nullptr;
    });

    EXPECT_TRUE(harness->runUntil([&] { return ran.load(); }));
}

TEST_P(BackgroundWorkContract, RunsEveryJob) {
    int tasks = 0;
    for (int i = 0; i < 100; ++i) background.run([&tasks]() -> Task { return [&tasks] { ++tasks; }; });

    EXPECT_TRUE(harness->runUntil([&] { return tasks == 100; }));
}

TEST_P(BackgroundWorkContract, ATaskMayGiveTheNextJob) {
    std::string done;
    background.run([&]() -> Task {
        return [&] {
            done += "one ";
            background.run([&done]() -> Task { return [&done] { done += "two"; }; });
        };
    });

    ASSERT_TRUE(harness->runUntil([&] { return done.ends_with("two"); }));
    EXPECT_EQ(done, "one two");
}

TEST_P(BackgroundWorkContract, FreesWhatAJobHolds) {
    auto held = std::make_shared<int>(1);
    background.run([held]() -> Task { return [held] {}; });

    EXPECT_TRUE(harness->runUntil([&] { return held.use_count() == 1; }));
}

}  // namespace nettlecap
