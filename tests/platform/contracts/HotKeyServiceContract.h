#pragma once

#include "platform/HotKeyService.h"

#include <gmock/gmock.h>

namespace nettlecap {

/// Hot keys to be tested, a user at the keyboard, and another program that has some itself.
class HotKeyServiceHarness {
public:
    using Shortcut = std::pair<KeyCode, std::uint32_t>;  ///< key code and `hotKeyModifier` bits

    virtual ~HotKeyServiceHarness() = default;

    virtual HotKeyService& service() = 0;
    virtual void press(const Shortcut&) = 0;    ///< the modifiers first
    virtual void release(const Shortcut&) = 0;  ///< the modifiers last
    virtual bool take(const Shortcut&) = 0;     ///< for the other program; false: it cannot have it
    virtual void giveBack(const Shortcut&) = 0;
    virtual bool runUntil(const std::function<bool()>& condition) = 0;  ///< false: long past the time for it
};

/// What every HotKeyService does. Instantiate it with a function that makes the harness.
class HotKeyServiceContract : public testing::TestWithParam<std::unique_ptr<HotKeyServiceHarness> (*)()> {
protected:
    using Shortcut = HotKeyServiceHarness::Shortcut;

    static constexpr Shortcut command1{18, hotKeyModifier::command};
    static constexpr Shortcut command2{19, hotKeyModifier::command};
    static constexpr Shortcut option1{18, hotKeyModifier::option};
    static constexpr Shortcut commandShiftV{9, hotKeyModifier::command | hotKeyModifier::shift};
    static constexpr Shortcut last{37, hotKeyModifier::control | hotKeyModifier::option};

    void install() {
        handler = service.installHandler([this](const HotKeyEvent* event) {
            EXPECT_TRUE(event);
            told += std::to_string(event->id.id) + (event->kind == HotKeyEvent::pressed ? "+" : "-");
            signatures.push_back(event->id.signature);
            return 0;
        });
        ASSERT_EQ(handler.status, 0);
    }
    Registered<HotKeyReference> add(const Shortcut& shortcut, std::uint32_t id) {
        return service.registerHotKey(
            {.keyCode = shortcut.first, .modifiers = shortcut.second, .id = {.signature = 7, .id = id}});
    }
    void tap(const Shortcut& shortcut) {
        harness->press(shortcut);
        harness->release(shortcut);
    }
    /// All that was told up to now. One more hot key shows that nothing is on its way.
    std::string toldAll() {
        const auto end = add(last, 99);
        tap(last);
        EXPECT_TRUE(harness->runUntil([&] { return told.ends_with("99+99-"); })) << told;
        service.unregisterHotKey(end.reference.value());
        auto all = std::exchange(told, {});
        all.resize(all.size() - std::min<std::size_t>(all.size(), 6));
        return all;
    }

    std::unique_ptr<HotKeyServiceHarness> harness = GetParam()();
    HotKeyService& service = harness->service();
    Registered<HandlerReference> handler;
    std::string told;  // of each event the id, + for a press, - for a release
    std::vector<std::uint32_t> signatures;
};

TEST_P(HotKeyServiceContract, TellsAPressAndARelease) {
    install();
    const auto added = add(command1, 1);
    ASSERT_EQ(added.status, 0);
    ASSERT_TRUE(added.reference);

    harness->press(command1);
    ASSERT_TRUE(harness->runUntil([&] { return told == "1+"; }));
    harness->release(command1);

    ASSERT_TRUE(harness->runUntil([&] { return told == "1+1-"; }));
    EXPECT_THAT(signatures, testing::ElementsAre(7, 7));
}

TEST_P(HotKeyServiceContract, TellsEveryHotKeyInTheOrderOfTheKeys) {
    install();
    add(command1, 1);
    add(command2, 2);
    add(commandShiftV, 3);
    add(option1, 4);

    for (const auto& shortcut : {commandShiftV, command2, option1, command1, command1}) tap(shortcut);

    EXPECT_EQ(toldAll(), "3+3-2+2-4+4-1+1-1+1-");
}

TEST_P(HotKeyServiceContract, TellsNoOtherKeys) {
    install();
    add(command1, 1);

    tap(command2);
    tap(option1);
    tap({18, hotKeyModifier::command | hotKeyModifier::shift});

    EXPECT_EQ(toldAll(), "");
}

TEST_P(HotKeyServiceContract, KnowsHotKeysFromBeforeTheHandler) {
    add(command1, 1);
    install();

    tap(command1);

    EXPECT_EQ(toldAll(), "1+1-");
}

TEST_P(HotKeyServiceContract, RefusesAShortcutThatIsRegistered) {
    install();
    add(command1, 1);

    const auto again = add(command1, 2);

    EXPECT_NE(again.status, 0);
    EXPECT_FALSE(again.reference);
    tap(command1);
    EXPECT_EQ(toldAll(), "1+1-");
}

TEST_P(HotKeyServiceContract, RefusesAShortcutOfAnotherProgram) {
    install();
    ASSERT_TRUE(harness->take(command1));

    const auto refused = add(command1, 1);
    const auto other = add(command2, 2);

    EXPECT_NE(refused.status, 0);
    EXPECT_FALSE(refused.reference);
    EXPECT_EQ(other.status, 0);
    tap(command1);
    tap(command2);
    EXPECT_EQ(toldAll(), "2+2-");
    harness->giveBack(command1);
    EXPECT_EQ(add(command1, 1).status, 0);
}

TEST_P(HotKeyServiceContract, LeavesAShortcutToOthersOnceItIsUnregistered) {
    install();
    const auto added = add(command1, 1);
    EXPECT_FALSE(harness->take(command1));

    service.unregisterHotKey(added.reference.value());

    tap(command1);
    EXPECT_EQ(toldAll(), "");
    EXPECT_TRUE(harness->take(command1));
}

TEST_P(HotKeyServiceContract, TakesAShortcutBackUnderAnotherId) {
    install();
    const auto first = add(command1, 1);
    service.unregisterHotKey(first.reference.value());

    const auto second = add(command1, 2);

    ASSERT_EQ(second.status, 0);
    EXPECT_NE(second.reference, first.reference);
    tap(command1);
    EXPECT_EQ(toldAll(), "2+2-");
}

TEST_P(HotKeyServiceContract, TellsNoReleaseOfWhatWasUnregisteredMeanwhile) {
    install();
    const auto added = add(command1, 1);
    harness->press(command1);
    ASSERT_TRUE(harness->runUntil([&] { return told == "1+"; }));

    service.unregisterHotKey(added.reference.value());
    harness->release(command1);

    EXPECT_EQ(toldAll(), "1+");
}

TEST_P(HotKeyServiceContract, HasOneHandlerAtATime) {
    install();
    add(command1, 1);

    const auto second = service.installHandler([](const HotKeyEvent*) { return 0; });

    EXPECT_NE(second.status, 0);
    EXPECT_FALSE(second.reference);
    tap(command1);
    EXPECT_EQ(toldAll(), "1+1-");
}

TEST_P(HotKeyServiceContract, TellsNothingToAHandlerThatWasRemoved) {
    install();
    add(command1, 1);
    service.removeHandler(handler.reference.value());

    std::string others;
    const auto second = service.installHandler([&](const HotKeyEvent* event) {
        others += event->kind == HotKeyEvent::pressed ? '+' : '-';
        return 0;
    });
    ASSERT_EQ(second.status, 0);
    EXPECT_NE(second.reference, handler.reference);
    tap(command1);

    ASSERT_TRUE(harness->runUntil([&] { return others == "+-"; }));
    EXPECT_EQ(told, "");
    service.removeHandler(second.reference.value());
}

}  // namespace nettlecap
