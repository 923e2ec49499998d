#pragma once

#include "platform/InputEvents.h"

#include <gmock/gmock.h>

namespace nettlecap {

inline void PrintTo(const InputEvent& event, std::ostream* out) {
    *out << "kind " << static_cast<std::uint32_t>(event.kind) << " key " << event.keyCode << " flags "
         << event.flags;
}

/// Monitors to be tested, and someone at the keyboard and the mouse.
class EventMonitorsHarness {
public:
    enum class Target { otherApplication, thisProgram };
    enum class Button { left, right };

    virtual ~EventMonitorsHarness() = default;

    virtual EventMonitors& monitors() = 0;
    virtual void copy(Target) = 0;  ///< types ⌘C there, or what it is called on this desktop
    virtual void cut(Target) = 0;   ///< ⌘X
    virtual void click(Target, Button) = 0;
    virtual bool runUntil(const std::function<bool()>& condition) = 0;  ///< false: long past the time for it
};

/// What every EventMonitors does. Instantiate it with a function that makes the harness.
class EventMonitorsContract : public testing::TestWithParam<std::unique_ptr<EventMonitorsHarness> (*)()> {
protected:
    using Harness = EventMonitorsHarness;
    using Events = std::vector<InputEvent>;

    static constexpr std::uint32_t keys = 1024;
    static constexpr std::uint32_t clicks = 10;
    static constexpr auto other = Harness::Target::otherApplication;
    static constexpr auto here = Harness::Target::thisProgram;

    static InputEvent key(KeyCode code) { return {InputKind::keyDown, modifier::command, code}; }
    static EventMonitors::Handler into(Events& events) {
        return [&events](const InputEvent& event) { events.push_back(event); };
    }
    bool waitForOne(const Events& events) {
        return harness->runUntil([&] { return !events.empty(); });
    }

    std::unique_ptr<EventMonitorsHarness> harness = GetParam()();
    EventMonitors& monitors = harness->monitors();
};

TEST_P(EventMonitorsContract, TellsCopyingAndCuttingInOtherApplications) {
    Events events;
    const auto monitor = monitors.addGlobal(keys, into(events));
    ASSERT_TRUE(monitor);

    harness->copy(other);
    harness->cut(other);

    ASSERT_TRUE(harness->runUntil([&] { return events.size() == 2; }));
    EXPECT_THAT(events, testing::ElementsAre(key(8), key(7)));
}

TEST_P(EventMonitorsContract, TellsClicksOnOtherApplications) {
    Events events;
    const auto monitor = monitors.addGlobal(clicks, into(events));
    ASSERT_TRUE(monitor);

    harness->click(other, Harness::Button::left);
    harness->click(other, Harness::Button::right);

    ASSERT_TRUE(harness->runUntil([&] { return events.size() == 2; }));
    EXPECT_EQ(events[0].kind, InputKind::leftMouseDown);
    EXPECT_EQ(events[1].kind, InputKind::rightMouseDown);
}

TEST_P(EventMonitorsContract, TellsLocallyWhatGoesToThisProgram) {
    Events events;
    const auto monitor = monitors.addLocal(keys | clicks, into(events));
    ASSERT_TRUE(monitor);

    harness->copy(here);
    ASSERT_TRUE(waitForOne(events));
    harness->cut(here);
    harness->click(here, Harness::Button::left);
    harness->click(here, Harness::Button::right);

    ASSERT_TRUE(harness->runUntil([&] { return events.size() == 4; }));
    EXPECT_EQ(events[0], key(8));
    EXPECT_EQ(events[1], key(7));
    EXPECT_EQ(events[2].kind, InputKind::leftMouseDown);
    EXPECT_EQ(events[3].kind, InputKind::rightMouseDown);
}

TEST_P(EventMonitorsContract, TellsGloballyNothingThatGoesToThisProgram) {
    Events global, local;
    const auto monitors1 = monitors.addGlobal(keys | clicks, into(global));
    const auto monitors2 = monitors.addLocal(keys | clicks, into(local));

    harness->click(here, Harness::Button::left);
    harness->copy(here);
    ASSERT_TRUE(harness->runUntil([&] { return local.size() == 2; }));
    harness->cut(other);

    ASSERT_TRUE(waitForOne(global));
    EXPECT_THAT(global, testing::ElementsAre(key(7)));
    EXPECT_EQ(local.size(), 2U);
}

TEST_P(EventMonitorsContract, TellsOnlyWhatTheMaskNames) {
    Events rightClicks, copies;
    const auto monitor1 = monitors.addGlobal(1U << 3, into(rightClicks));
    const auto monitor2 = monitors.addGlobal(keys, into(copies));

    harness->click(other, Harness::Button::left);
    harness->copy(other);
    harness->click(other, Harness::Button::right);

    ASSERT_TRUE(waitForOne(rightClicks));
    ASSERT_TRUE(waitForOne(copies));
    ASSERT_EQ(rightClicks.size(), 1U);
    EXPECT_EQ(rightClicks[0].kind, InputKind::rightMouseDown);
    EXPECT_THAT(copies, testing::ElementsAre(key(8)));
}

TEST_P(EventMonitorsContract, TellsEveryMonitorOnce) {
    Events first, second;
    const auto monitor1 = monitors.addGlobal(keys, into(first));
    const auto monitor2 = monitors.addGlobal(keys, into(second));

    harness->copy(other);

    ASSERT_TRUE(harness->runUntil([&] { return !first.empty() && !second.empty(); }));
    EXPECT_EQ(first.size(), 1U);
    EXPECT_EQ(second.size(), 1U);
}

TEST_P(EventMonitorsContract, TellsNothingAfterTheSubscription) {
    Events ended, lasting;
    auto endedMonitor = monitors.addGlobal(keys, into(ended));
    const auto lastingMonitor = monitors.addGlobal(keys, into(lasting));
    endedMonitor.reset();

    harness->copy(other);

    ASSERT_TRUE(waitForOne(lasting));
    EXPECT_TRUE(ended.empty());
}

TEST_P(EventMonitorsContract, CanBeAddedAgain) {
    Events first, second;
    auto monitor = monitors.addGlobal(keys, into(first));
    monitor.reset();
    monitor = monitors.addGlobal(keys, into(second));

    harness->copy(other);

    ASSERT_TRUE(waitForOne(second));
    EXPECT_TRUE(first.empty());
}

TEST_P(EventMonitorsContract, AMonitorMayEndItselfInItsHandler) {
    int calls = 0;
    Events all;
    std::optional<Subscription> monitor;
    monitor = monitors.addGlobal(keys, [&](const InputEvent&) {
        ++calls;
        monitor.reset();
    });
    const auto lasting = monitors.addGlobal(keys, into(all));

    harness->copy(other);
    harness->copy(other);

    ASSERT_TRUE(harness->runUntil([&] { return all.size() == 2; }));
    EXPECT_EQ(calls, 1);
}

}  // namespace nettlecap
