#include "platform/contracts/BackgroundWorkContract.h"
#include "platform/contracts/SchedulerContract.h"
#include "platform/contracts/TextMeasureContract.h"
#include "platform/linux/QtApplication.h"
#include "platform/linux/QtBackgroundWork.h"
#include "platform/linux/QtScheduler.h"
#include "platform/linux/QtTextMeasure.h"
#include "platform/linux/SystemClock.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace nettlecap {
namespace {

class QtSchedulerHarness final : public SchedulerHarness {
public:
    Clock& clock() override { return clock_; }
    Scheduler& scheduler() override { return scheduler_; }
    bool runUntil(const std::function<bool()>& condition) override { return runMainLoopUntil(condition); }

private:
    SystemClock clock_;
    QtScheduler scheduler_;
};

class QtBackgroundWorkHarness final : public BackgroundWorkHarness {
public:
    BackgroundWork& background() override { return background_; }
    bool runUntil(const std::function<bool()>& condition) override { return runMainLoopUntil(condition); }

private:
    QtBackgroundWork background_;
};

INSTANTIATE_TEST_SUITE_P(Qt, SchedulerContract, testing::Values([]() -> std::unique_ptr<SchedulerHarness> {
                             return std::make_unique<QtSchedulerHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Qt, BackgroundWorkContract,
                         testing::Values([]() -> std::unique_ptr<BackgroundWorkHarness> {
                             return std::make_unique<QtBackgroundWorkHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Qt, TextMeasureContract, testing::Values([]() -> std::unique_ptr<TextMeasure> {
                             return std::make_unique<QtTextMeasure>();
                         }));

class QtSchedulerTest : public testing::Test {
protected:
    /// Keeps the main thread busy, as a long save would.
    static void stallFor(Seconds time) {
        const Uptime end = SystemClock().uptime() + time;
        while (SystemClock().uptime() < end) {
        }
    }
};

TEST_F(QtSchedulerTest, ARepetitionDoesNotMakeUpForWhatAStallMissed) {
    QtScheduler scheduler;
    std::vector<Uptime> runs;
    const auto repeating = scheduler.every(Seconds(0.01), [&] { runs.push_back(SystemClock().uptime()); });

    stallFor(Seconds(0.1));
    const Uptime stallEnd = SystemClock().uptime();
    ASSERT_TRUE(runMainLoopUntil([&] { return runs.size() >= 4; }));

    EXPECT_GE(runs[3] - stallEnd, Seconds(0.015));
}

TEST_F(QtSchedulerTest, DropsWhatWaitsWhenItIsDestroyed) {
    int runs = 0;
    auto scheduler = std::make_unique<QtScheduler>();
    scheduler->post([&] { ++runs; });
    scheduler->after(Seconds(0.001), [&] { ++runs; });
    auto repeating = scheduler->every(Seconds(0.001), [&] { ++runs; });

    scheduler.reset();
    repeating.reset();

    QtScheduler other;
    bool later = false;
    other.after(Seconds(0.02), [&] { later = true; });
    ASSERT_TRUE(runMainLoopUntil([&] { return later; }));
    EXPECT_EQ(runs, 0);
}

/// Opens once, for threads to wait at.
class Gate {
public:
    void open() {
        const std::lock_guard lock(mutex_);
        isOpen_ = true;
        opened_.notify_all();
    }
    bool wait() {
        std::unique_lock lock(mutex_);
        return opened_.wait_for(lock, std::chrono::seconds(10), [this] { return isOpen_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable opened_;
    bool isOpen_ = false;
};

TEST(QtBackgroundWorkTest, RunsJobsOffTheMainThreadAndTasksOnIt) {
    QtBackgroundWork background;
    std::thread::id job;
    std::thread::id task;
    background.run([&]() -> Task {
        job = std::this_thread::get_id();
        return [&] { task = std::this_thread::get_id(); };
    });

    ASSERT_TRUE(runMainLoopUntil([&] { return task != std::thread::id(); }));
    EXPECT_NE(job, std::this_thread::get_id());
    EXPECT_EQ(task, std::this_thread::get_id());
}

TEST(QtBackgroundWorkTest, AJobThatTakesLongDoesNotHoldUpTheNext) {
    Gate gate;
    QtBackgroundWork background;
    bool quickRan = false;
    background.run([&gate]() -> Task {
        gate.wait();
        return nullptr;
    });
    background.run([&quickRan]() -> Task { return [&quickRan] { quickRan = true; }; });

    EXPECT_TRUE(runMainLoopUntil([&] { return quickRan; }));
    gate.open();
}

TEST(QtBackgroundWorkTest, WaitsForTheJobThatRunsAndDropsItsTask) {
    Gate started;
    Gate gate;
    std::atomic<bool> finished = false;
    bool taskRan = false;
    auto background = std::make_unique<QtBackgroundWork>();
    background->run([&]() -> Task {
        started.open();
        gate.wait();
        finished = true;
        return [&] { taskRan = true; };
    });
    ASSERT_TRUE(started.wait());

    std::thread opener([&] { gate.open(); });
    background.reset();
    opener.join();
    EXPECT_TRUE(finished);

    QtScheduler scheduler;
    bool later = false;
    scheduler.post([&] { later = true; });
    ASSERT_TRUE(runMainLoopUntil([&] { return later; }));
    EXPECT_FALSE(taskRan);
}

TEST(QtBackgroundWorkTest, DropsJobsThatHaveNotBegun) {
    Gate gate;
    std::atomic<int> begun = 0;
    auto background = std::make_unique<QtBackgroundWork>();
    const auto held = std::make_shared<int>(1);
    const auto job = [&, held]() -> Task {
        ++begun;
        gate.wait();
        return nullptr;
    };
    for (int i = 0; i < 10; ++i) background->run(job);
    ASSERT_TRUE(runMainLoopUntil([&] { return begun == 2; }));

    // Of the jobs there remain, once the others are dropped, the two that run and `job` itself.
    std::thread opener([&] {
        while (held.use_count() > 4) std::this_thread::yield();
        gate.open();
    });
    background.reset();
    opener.join();

    EXPECT_EQ(begun, 2);
}

TEST(QtTextMeasureTest, AWideCharacterTakesMoreRoomThanANarrowOne) {
    const QtTextMeasure measure;

    EXPECT_GT(measure.width("WWWWWWWWWW"), 1.5 * measure.width("iiiiiiiiii"));
}

TEST(QtTextMeasureTest, ACharacterIsAsWideInEitherNormalForm) {
    const QtTextMeasure measure;

    EXPECT_NEAR(measure.width("cópia"), measure.width("co\u0301pia"), 0.5);
}

}  // namespace
}  // namespace nettlecap
