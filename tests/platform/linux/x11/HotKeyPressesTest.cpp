#include "platform/linux/x11/HotKeyPresses.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

class HotKeyPressesTest : public testing::Test {
protected:
    static constexpr HotKeyReference first{1};
    static constexpr HotKeyReference second{2};

    static HeldKeys down(std::initializer_list<std::size_t> keys) {
        HeldKeys held;
        for (const std::size_t key : keys) held.set(key);
        return held;
    }
    /// What a server sends that cannot tell a repeat from a key that is let go.
    void repeat(xcb_keycode_t key, xcb_timestamp_t time, std::optional<HotKeyReference> hotKey) {
        presses.release(key, time);
        presses.press(key, time, hotKey);
    }

    std::string told;
    HotKeyPresses presses{[this](HotKeyReference hotKey, std::uint32_t kind) {
        told +=
            std::to_string(static_cast<std::uint64_t>(hotKey)) + (kind == HotKeyEvent::pressed ? "+" : "-");
    }};
};

TEST_F(HotKeyPressesTest, TellsNoRepeatThatIsClear) {
    presses.setRepeatClear(true);

    for (const xcb_timestamp_t time : {100U, 600U, 640U, 680U}) presses.press(10, time, first);
    presses.release(10, 700);

    EXPECT_EQ(told, "1+1-");
}

TEST_F(HotKeyPressesTest, TakesAClearReleaseForOneEvenAtTheMomentOfTheNextPress) {
    presses.setRepeatClear(true);
    presses.press(10, 100, first);

    repeat(10, 101, first);

    EXPECT_EQ(told, "1+1-1+");
    EXPECT_FALSE(presses.isUnsettled());
}

TEST_F(HotKeyPressesTest, TellsNoRepeatThatLooksLikeARelease) {
    presses.press(10, 100, first);
    for (const xcb_timestamp_t time : {600U, 640U, 680U}) repeat(10, time, first);
    EXPECT_EQ(told, "1+");

    presses.release(10, 700);
    EXPECT_EQ(told, "1+");
    EXPECT_TRUE(presses.isUnsettled());
    presses.settle();

    EXPECT_EQ(told, "1+1-");
    EXPECT_FALSE(presses.any());
}

TEST_F(HotKeyPressesTest, TellsNoRepeatWithoutTheModifierEither) {
    presses.press(10, 100, first);

    repeat(10, 600, std::nullopt);
    presses.settle();

    EXPECT_EQ(told, "1+");
    EXPECT_TRUE(presses.any());
}

TEST_F(HotKeyPressesTest, SettlesAReleaseBeforeWhateverComesNext) {
    presses.press(10, 100, first);
    presses.release(10, 200);
    presses.press(11, 200, second);
    presses.release(11, 300);
    presses.press(11, 301, second);

    EXPECT_EQ(told, "1+1-2+2-2+");
}

TEST_F(HotKeyPressesTest, TellsTheReleaseOfTheKeyWhateverTheModifiers) {
    presses.setRepeatClear(true);
    presses.press(10, 100, first);

    presses.press(10, 600, second);
    presses.press(10, 640, std::nullopt);
    presses.release(10, 700);

    EXPECT_EQ(told, "1+1-");
}

TEST_F(HotKeyPressesTest, TellsNothingOfKeysThatAreNotOurs) {
    presses.setRepeatClear(true);

    presses.press(12, 100, std::nullopt);
    EXPECT_FALSE(presses.any());
    presses.release(12, 200);

    EXPECT_EQ(told, "");
}

TEST_F(HotKeyPressesTest, TellsALostReleaseAtTheSecondLook) {
    presses.setRepeatClear(true);
    presses.press(10, 100, first);
    presses.press(11, 110, second);

    presses.look(down({11}));
    EXPECT_EQ(told, "1+2+");
    presses.look(down({11}));

    EXPECT_EQ(told, "1+2+1-");
    presses.press(10, 200, first);
    EXPECT_EQ(told, "1+2+1-1+");
}

TEST_F(HotKeyPressesTest, TellsAReleaseOnceThatComesBetweenTheLooks) {
    presses.setRepeatClear(true);
    presses.press(10, 100, first);

    presses.look(down({}));
    presses.release(10, 200);
    presses.press(10, 300, first);
    presses.look(down({}));

    EXPECT_EQ(told, "1+1-1+");
}

TEST_F(HotKeyPressesTest, CountsOnlyLooksInARow) {
    presses.setRepeatClear(true);
    presses.press(10, 100, first);

    presses.look(down({}));
    presses.look(down({10}));
    presses.look(down({}));

    EXPECT_EQ(told, "1+");
}

TEST_F(HotKeyPressesTest, ForgetsAHotKeyButNotThatItsKeyIsDown) {
    presses.setRepeatClear(true);
    presses.press(10, 100, first);

    presses.forget(first);
    presses.press(10, 600, second);
    presses.release(10, 700);
    EXPECT_EQ(told, "1+");
    presses.press(10, 800, second);

    EXPECT_EQ(told, "1+2+");
}

TEST_F(HotKeyPressesTest, KnowsWhetherAnotherKeyIsHeld) {
    presses.setRepeatClear(true);
    EXPECT_FALSE(presses.anyBut(10));

    presses.press(10, 100, first);

    EXPECT_FALSE(presses.anyBut(10));
    EXPECT_TRUE(presses.anyBut(11));
}

}  // namespace
}  // namespace nettlecap
