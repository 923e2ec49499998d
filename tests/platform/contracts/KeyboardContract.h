#pragma once

#include "platform/Keyboard.h"

#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <memory>

namespace nettlecap {

/// A keyboard to be tested, the hands on it, and an application in front.
class KeyboardHarness {
public:
    virtual ~KeyboardHarness() = default;

    virtual Keyboard& keyboard() = 0;
    virtual void hold(ModifierFlags modifiers) = 0;  ///< these alone
    virtual int pastes() = 0;  ///< how often the application was told to paste, and nothing else
    virtual bool runUntil(const std::function<bool()>& condition) = 0;  ///< false: long past the time for it
};

/// What every Keyboard does. Instantiate it with a function that makes the harness.
class KeyboardContract : public testing::TestWithParam<std::unique_ptr<KeyboardHarness> (*)()> {
protected:
    bool paste() {
        const KeyEvent down{.keyCode = keyCode::v, .flags = modifier::command, .isDown = true};
        const KeyEvent up{.keyCode = keyCode::v, .flags = modifier::command, .isDown = false};
        return keyboard.post(std::array{down, up});
    }

    std::unique_ptr<KeyboardHarness> harness = GetParam()();
    Keyboard& keyboard = harness->keyboard();
};

TEST_P(KeyboardContract, TellsEachModifierThatIsHeld) {
    EXPECT_EQ(keyboard.modifiersDown(), 0U);

    for (const ModifierFlags flag :
         {modifier::command, modifier::option, modifier::control, modifier::shift}) {
        harness->hold(flag);
        EXPECT_EQ(keyboard.modifiersDown(), flag);
    }
    harness->hold(0);
    EXPECT_EQ(keyboard.modifiersDown(), 0U);
}

TEST_P(KeyboardContract, TellsModifiersThatAreHeldTogether) {
    harness->hold(modifier::all);
    EXPECT_EQ(keyboard.modifiersDown(), modifier::all);

    harness->hold(modifier::command | modifier::shift);
    EXPECT_EQ(keyboard.modifiersDown(), modifier::command | modifier::shift);
}

TEST_P(KeyboardContract, MayTypeOnceTheSystemTrustsIt) {
    EXPECT_TRUE(keyboard.isTrusted(true));
    EXPECT_TRUE(keyboard.isTrusted(false));
}

TEST_P(KeyboardContract, HasTheApplicationInFrontPasteOncePerKeystroke) {
    EXPECT_TRUE(paste());
    EXPECT_TRUE(harness->runUntil([&] { return harness->pastes() == 1; }));

    EXPECT_TRUE(paste());
    EXPECT_TRUE(harness->runUntil([&] { return harness->pastes() == 2; }));
}

TEST_P(KeyboardContract, PastesWhateverIsHeldAndLeavesItHeld) {
    for (const ModifierFlags held : {modifier::shift, modifier::command | modifier::option, modifier::all}) {
        harness->hold(held);
        const int before = harness->pastes();

        EXPECT_TRUE(paste());

        EXPECT_TRUE(harness->runUntil([&] { return harness->pastes() == before + 1; }));
        EXPECT_EQ(keyboard.modifiersDown(), held);
    }
}

TEST_P(KeyboardContract, TypesNothingWhereNothingIsToBeTyped) {
    EXPECT_TRUE(keyboard.post({}));
    EXPECT_TRUE(paste());

    EXPECT_TRUE(harness->runUntil([&] { return harness->pastes() == 1; }));
}

}  // namespace nettlecap
