#include "platform/linux/x11/Deadline.h"
#include "platform/fake/FakeTime.h"

#include <gtest/gtest.h>

using namespace nettlecap;
using namespace std::chrono_literals;

class DeadlineTest : public testing::Test {
protected:
    FakeTime time;
    int missed = 0;
    std::unique_ptr<Deadline> deadline = std::make_unique<Deadline>(time, time, [this] { ++missed; });
};

TEST_F(DeadlineTest, IsMissedOnceAtItsTime) {
    deadline->set(1.5s);

    time.advance(1.499s);
    EXPECT_EQ(missed, 0);
    time.advance(0.001s);
    EXPECT_EQ(missed, 1);
    time.advance(10s);
    EXPECT_EQ(missed, 1);
}

TEST_F(DeadlineTest, CanBePutOff) {
    deadline->set(1.5s);
    time.advance(1s);

    deadline->set(1.5s);

    time.advance(1.499s);
    EXPECT_EQ(missed, 0);
    time.advance(0.001s);
    EXPECT_EQ(missed, 1);
}

TEST_F(DeadlineTest, CanBeBroughtForward) {
    deadline->set(10s);

    deadline->set(0.1s);

    time.advance(0.1s);
    EXPECT_EQ(missed, 1);
    time.advance(10s);
    EXPECT_EQ(missed, 1);
}

TEST_F(DeadlineTest, IsNotMissedOnceCleared) {
    deadline->set(1s);
    deadline->clear();
    time.advance(2s);
    EXPECT_EQ(missed, 0);

    deadline->set(1s);
    time.advance(1s);
    EXPECT_EQ(missed, 1);
}

TEST_F(DeadlineTest, AsksTheSchedulerOnceForMuchPuttingOff) {
    for (int piece = 0; piece < 1000; ++piece) {
        deadline->set(2s);
        time.advance(0.001s);
    }
    EXPECT_EQ(time.waitingTasks(), 1U);
}

TEST_F(DeadlineTest, MayBeDestroyedWhenMissed) {
    deadline = std::make_unique<Deadline>(time, time, [this] {
        deadline.reset();
        ++missed;
    });
    deadline->set(1s);
    time.advance(1s);
    EXPECT_EQ(missed, 1);
}
