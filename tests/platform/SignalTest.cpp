#include "platform/Signal.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

TEST(PublishedTest, TellsAfterTheAssignment) {
    Published<int> value{1};
    int seen = 0;
    const auto subscription = value.subscribe([&] { seen = *value; });

    value = 2;

    EXPECT_EQ(seen, 2);
}

TEST(PublishedTest, NestedChangesNeverShowAnOldValue) {
    Published<int> value{1};
    std::vector<int> seen;
    const auto changes = value.subscribe([&] {
        if (*value < 3) value = *value + 1;
    });
    const auto subscription = value.subscribe([&] { seen.push_back(*value); });

    value = 2;

    EXPECT_EQ(seen, (std::vector<int>{3, 3}));
}

TEST(SignalTest, DoesNotCallAListenerThatWasEndedDuringTheCall) {
    const Signal<> signal;
    std::string log;
    Subscription later;
    const auto first = signal.subscribe([&] {
        log += "a";
        later.reset();
    });
    later = signal.subscribe([&] { log += "b"; });

    signal.emit();

    EXPECT_EQ(log, "a");
}

TEST(SignalTest, DoesNotCallAListenerThatCameDuringTheCall) {
    const Signal<> signal;
    int calls = 0;
    Subscription late;
    const auto first = signal.subscribe([&] {
        if (!late) late = signal.subscribe([&] { ++calls; });
    });

    signal.emit();
    EXPECT_EQ(calls, 0);

    signal.emit();
    EXPECT_EQ(calls, 1);
}

TEST(SignalTest, AListenerMayEndItselfAndStillUseItsCaptures) {
    const Signal<> signal;
    std::string log;
    Subscription self;
    self = signal.subscribe([&, text = std::string(1000, 'x')] {
        self.reset();
        log += text;
    });

    signal.emit();
    signal.emit();

    EXPECT_EQ(log.size(), 1000U);
}

TEST(SignalTest, AListenerMayDestroyTheSignal) {
    auto signal = std::make_unique<Signal<>>();
    int calls = 0;
    const auto first = signal->subscribe([&] { signal.reset(); });
    const auto second = signal->subscribe([&] { ++calls; });

    signal->emit();

    EXPECT_EQ(calls, 0);
}

TEST(PublishedTest, TellsOfAnEditAfterIt) {
    Published<std::vector<int>> numbers({1, 2});
    std::vector<int> whenTold;
    const auto subscription = numbers.subscribe([&] { whenTold = *numbers; });

    numbers.edit([](std::vector<int>& values) { values.push_back(3); });

    EXPECT_EQ(whenTold, (std::vector{1, 2, 3}));
}

TEST(SubscriptionTest, EndsWhenDestroyedAndOnlyOnce) {
    int ends = 0;
    {
        Subscription one([&] { ++ends; });
        const Subscription two = std::move(one);
    }

    EXPECT_EQ(ends, 1);
}

TEST(LifetimeGuardTest, CallsOnlyWhileItsOwnerLives) {
    auto guard = std::make_unique<LifetimeGuard>();
    int sum = 0;
    auto add = (*guard)([&](int value) { sum += value; });

    add(2);
    guard.reset();
    add(3);

    EXPECT_EQ(sum, 2);
}

}  // namespace
}  // namespace nettlecap
