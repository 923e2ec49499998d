#pragma once

#include "platform/Time.h"

#include <gtest/gtest.h>
#include <vector>

namespace nettlecap {

/// A main loop to be tested, with its clock.
class SchedulerHarness {
public:
    virtual ~SchedulerHarness() = default;

    virtual Clock& clock() = 0;
    virtual Scheduler& scheduler() = 0;
    virtual bool runUntil(const std::function<bool()>& condition) = 0;  ///< false: long past the time for it
};

/// What every Scheduler and Clock do. Instantiate it with a function that makes the harness.
class SchedulerContract : public testing::TestWithParam<std::unique_ptr<SchedulerHarness> (*)()> {
protected:
    Task log(std::string what) {
        return [this, what = std::move(what)] { done += what; };
    }

    std::unique_ptr<SchedulerHarness> harness = GetParam()();
    Scheduler& scheduler = harness->scheduler();
    Clock& clock = harness->clock();
    std::string done;
};

TEST_P(SchedulerContract, RunsWhatIsPostedInTheOrderGiven) {
    scheduler.post(log("a"));
    scheduler.post(log("b"));
    scheduler.post(log("c"));

    ASSERT_TRUE(harness->runUntil([&] { return done.size() == 3; }));
    EXPECT_EQ(done, "abc");
}

TEST_P(SchedulerContract, NeverRunsWhatIsPostedWithinTheCall) {
    scheduler.post([&] {
        scheduler.post(log("inner"));
        done += "outer ";
    });
    EXPECT_EQ(done, "");

    ASSERT_TRUE(harness->runUntil([&] { return done.ends_with("inner"); }));
    EXPECT_EQ(done, "outer inner");
}

TEST_P(SchedulerContract, NeverRunsWhatIsDueAtOnceWithinTheCall) {
    scheduler.after(Seconds(0), log("zero "));
    scheduler.after(Seconds(-1), log("past"));
    EXPECT_EQ(done, "");

    ASSERT_TRUE(harness->runUntil([&] { return done.size() == 9; }));
    EXPECT_EQ(done, "zero past");
}

TEST_P(SchedulerContract, RunsATaskNotBeforeItsTime) {
    const Uptime start = clock.uptime();
    std::optional<Uptime> ran;
    scheduler.after(Seconds(0.02), [&] { ran = clock.uptime(); });

    ASSERT_TRUE(harness->runUntil([&] { return ran.has_value(); }));
    EXPECT_GE(*ran - start, Seconds(0.02));
}

TEST_P(SchedulerContract, RunsATaskNotBeforeATimeFinerThanAMillisecond) {
    const Uptime start = clock.uptime();
    std::optional<Uptime> ran;
    scheduler.after(Seconds(0.0025), [&] { ran = clock.uptime(); });

    ASSERT_TRUE(harness->runUntil([&] { return ran.has_value(); }));
    EXPECT_GE(*ran - start, Seconds(0.0025));
}

TEST_P(SchedulerContract, RunsWhatIsDueEarlierFirst) {
    scheduler.after(Seconds(0.2), log("late"));
    scheduler.after(Seconds(0.001), log("early "));

    ASSERT_TRUE(harness->runUntil([&] { return done.ends_with("late"); }));
    EXPECT_EQ(done, "early late");
}

TEST_P(SchedulerContract, RunsTasksOfOneDelayInTheOrderGiven) {
    for (const char* what : {"a", "b", "c", "d", "e", "f", "g", "h"})
        scheduler.after(Seconds(0.01), log(what));

    ASSERT_TRUE(harness->runUntil([&] { return done.size() == 8; }));
    EXPECT_EQ(done, "abcdefgh");
}

TEST_P(SchedulerContract, RepeatsATaskWithItsIntervalBetween) {
    const Uptime start = clock.uptime();
    std::vector<Uptime> runs;
    const auto repeating = scheduler.every(Seconds(0.01), [&] { runs.push_back(clock.uptime()); });
    EXPECT_TRUE(runs.empty());

    ASSERT_TRUE(harness->runUntil([&] { return runs.size() >= 3; }));
    EXPECT_GE(runs[0] - start, Seconds(0.01));
    EXPECT_GE(runs[2] - start, Seconds(0.03));
}

TEST_P(SchedulerContract, RepeatsUntilTheSubscriptionEnds) {
    int runs = 0;
    bool later = false;
    auto repeating = scheduler.every(Seconds(0.002), [&] { ++runs; });
    ASSERT_TRUE(harness->runUntil([&] { return runs >= 2; }));

    repeating.reset();
    const int before = runs;
    scheduler.after(Seconds(0.02), [&] { later = true; });

    ASSERT_TRUE(harness->runUntil([&] { return later; }));
    EXPECT_EQ(runs, before);
}

TEST_P(SchedulerContract, ARepeatedTaskMayEndItselfAndStillUseItsCaptures) {
    bool later = false;
    Subscription repeating;
    repeating = scheduler.every(Seconds(0.002), [&, text = std::string(1000, 'x')] {
        repeating.reset();
        done += text;
    });
    scheduler.after(Seconds(0.02), [&] { later = true; });

    ASSERT_TRUE(harness->runUntil([&] { return later; }));
    EXPECT_EQ(done.size(), 1000U);
}

TEST_P(SchedulerContract, EndingARepetitionFreesWhatItsTaskHolds) {
    auto held = std::make_shared<int>(1);
    auto repeating = scheduler.every(Seconds(0.002), [held] {});

    repeating.reset();

    EXPECT_EQ(held.use_count(), 1);
}

TEST_P(SchedulerContract, UptimeNeverGoesBack) {
    Uptime last = clock.uptime();
    int runs = 0;
    bool wentBack = false;
    const auto repeating = scheduler.every(Seconds(0.001), [&] {
        const Uptime now = clock.uptime();
        wentBack = wentBack || now < last;
        last = now;
        ++runs;
    });

    ASSERT_TRUE(harness->runUntil([&] { return runs >= 10; }));
    EXPECT_FALSE(wentBack);
}

TEST_P(SchedulerContract, CountsDatesFromTheStartOf2001) {
    constexpr double aYear = 365.25 * 24 * 3600;

    EXPECT_GT(clock.now().secondsSince2001, 23 * aYear);
    EXPECT_LT(clock.now().secondsSince2001, 200 * aYear);
}

}  // namespace nettlecap
