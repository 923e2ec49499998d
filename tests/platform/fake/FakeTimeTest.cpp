#include "platform/fake/FakeTime.h"

#include <gtest/gtest.h>
#include <vector>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

class FakeTimeTest : public testing::Test {
protected:
    FakeTime time;
    std::vector<double> runs;
    Task noteRun = [this] { runs.push_back(time.uptime().count()); };
};

TEST_F(FakeTimeTest, StandsStillUntilItIsAdvanced) {
    EXPECT_EQ(time.uptime(), 0s);

    time.advance(2.001s);

    EXPECT_EQ(time.uptime(), Seconds(2.001));
}

TEST_F(FakeTimeTest, RunsEachTaskAtItsOwnTime) {
    time.after(0.3s, noteRun);
    time.after(0.12s, noteRun);

    time.advance(1s);

    EXPECT_EQ(runs, (std::vector{0.12, 0.3}));
    EXPECT_EQ(time.uptime(), 1s);
}

TEST_F(FakeTimeTest, RunsATaskExactlyWhenItIsDue) {
    time.after(0.12s, noteRun);

    time.advance(0.119999999s);
    EXPECT_EQ(runs.size(), 0U);

    time.advance(0.000000001s);
    EXPECT_EQ(runs.size(), 1U);
}

TEST_F(FakeTimeTest, ManySmallStepsAreAsLongAsOneLongStep) {
    time.after(2s, noteRun);

    for (int i = 0; i < 20; ++i) time.advance(0.1s);

    EXPECT_EQ(time.uptime(), 2s);
    EXPECT_EQ(runs.size(), 1U);
}

TEST_F(FakeTimeTest, RunsWhatWasPostedWithoutMoving) {
    time.post([this] { time.post(noteRun); });

    time.advance(0s);

    EXPECT_EQ(runs, std::vector{0.0});
}

TEST_F(FakeTimeTest, RunsWhatATaskGivesIfItFallsDueOnTheWay) {
    time.after(1s, [this] {
        time.after(0.5s, noteRun);
        time.after(5s, noteRun);
    });

    time.advance(2s);

    EXPECT_EQ(runs, std::vector{1.5});
    EXPECT_EQ(time.waitingTasks(), 1U);
}

TEST_F(FakeTimeTest, RepeatsWithoutDrifting) {
    const auto repeating = time.every(0.45s, noteRun);

    time.advance(1.8s);

    EXPECT_EQ(runs, (std::vector{0.45, 0.9, 1.35, 1.8}));
}

TEST_F(FakeTimeTest, ARepetitionMayEndItselfInItsOwnTask) {
    Subscription repeating;
    repeating = time.every(0.45s, [&] {
        noteRun();
        repeating.reset();
    });

    time.advance(10s);

    EXPECT_EQ(runs, std::vector{0.45});
    EXPECT_EQ(time.waitingTasks(), 0U);
}

TEST_F(FakeTimeTest, ASubscriptionMayOutliveIt) {
    auto shortLived = std::make_unique<FakeTime>();
    auto repeating = shortLived->every(0.45s, noteRun);

    shortLived.reset();
    repeating.reset();

    EXPECT_TRUE(runs.empty());
}

TEST_F(FakeTimeTest, SettingTheWallClockLeavesUptimeAndTasksAlone) {
    time.after(1s, noteRun);
    time.advance(0.5s);

    time.setNow(Date{1'000});
    EXPECT_EQ(time.now(), Date{1'000});

    time.advance(0.5s);
    EXPECT_EQ(time.now(), Date{1'000.5});
    EXPECT_EQ(runs, std::vector{1.0});
}

}  // namespace
}  // namespace nettlecap
