#include "platform/linux/x11/HotKeySession.h"

#include <QProcess>
#include <xcb/xtest.h>

namespace nettlecap::test {
namespace {

/// Keys that are held repeat fast.
class X11RepeatingHotKeysTest : public X11HotKeysTest {
protected:
    X11RepeatingHotKeysTest() {
        EXPECT_EQ(QProcess::execute("xset", {"r", "rate", "30", "200"}), 0);
        EXPECT_TRUE(other.take(digit3, super));
        user.press(key::super);
        user.press(digit3);
        EXPECT_TRUE(waitFor([&] { return other.presses() > 20; })) << "nothing repeats here";
        user.release(digit3);
        user.release(key::super);
        other.giveBack(digit3, super);
    }
    ~X11RepeatingHotKeysTest() override { QProcess::execute("xset", {"r", "rate"}); }

    /// Only who gets a key sees it repeat. By the server's own clock it has done so often.
    void letItRepeat() {
        const auto clock = X11Connection::open();
        ASSERT_TRUE(clock);
        const auto start = (*clock)->serverTime();
        ASSERT_TRUE(start);
        EXPECT_TRUE(waitFor([&] {
            const auto now = (*clock)->serverTime();
            return now && *now - *start > 300;
        }));
    }
};

TEST_F(X11HotKeysTest, TellsThePressAtOnceAndTheReleaseWhenItComes) {
    ASSERT_EQ(addCommand(18, 1).status, 0);

    user.press(key::super);
    user.press(digit1);
    EXPECT_TRUE(tells("1+"));
    user.release(digit1);
    user.release(key::super);

    EXPECT_TRUE(tells("1-"));
    EXPECT_EQ(toldAll(), "");
}

TEST_F(X11HotKeysTest, IsBehindUntilItHasToldWhatWasPressed) {
    addCommand(18, 1);
    EXPECT_FALSE(hotKeys->isBehind());

    user.press(key::super);
    user.press(digit1);
    EXPECT_TRUE(hotKeys->isBehind());
    EXPECT_TRUE(tells("1+"));

    EXPECT_FALSE(hotKeys->isBehind());
    user.release(digit1);
    user.release(key::super);
}

TEST_F(X11HotKeysTest, TellsTheReleaseAlsoWhenSuperIsLetGoFirst) {
    addCommand(18, 1);

    user.press(key::super);
    user.press(digit1);
    user.release(key::super);
    EXPECT_TRUE(tells("1+"));
    user.release(digit1);

    EXPECT_TRUE(tells("1-"));
    EXPECT_EQ(toldAll(), "");
}

TEST_F(X11HotKeysTest, TellsTheArrowsAndKeysWithoutModifiers) {
    add(126, 0, 1);
    add(3, hotKeyModifier::option, 2);

    EXPECT_EQ(told({111}), "1+1-");
    EXPECT_EQ(told({key::alt, 41}), "2+2-");
    EXPECT_EQ(told({key::alt, 111}), "");
}

TEST_F(X11HotKeysTest, TellsTenQuickTapsOneByOne) {
    addCommand(18, 1);
    std::string expected;
    for (int i = 0; i < 10; ++i) {
        user.type({key::super, digit1});
        expected += "1+1-";
    }
    user.press(key::super);
    for (int i = 0; i < 10; ++i) {
        user.type({digit1});
        expected += "1+1-";
    }
    user.release(key::super);

    EXPECT_EQ(toldAll(), expected);
}

TEST_F(X11RepeatingHotKeysTest, TellsAKeyThatRepeatsOnce) {
    addCommand(18, 1);

    user.press(key::super);
    user.press(digit1);
    letItRepeat();
    user.release(key::super);
    letItRepeat();
    EXPECT_TRUE(tells("1+"));
    user.release(digit1);

    EXPECT_EQ(toldAll(), "1-");
}

TEST_F(X11HotKeysTest, TakesNoNoticeOfTheLocks) {
    addCommand(18, 1);
    add(9, hotKeyModifier::command | hotKeyModifier::shift, 2);
    for (const int locks : {0x02, 0x10, 0x12}) {
        user.lockModifiers(static_cast<std::uint8_t>(locks));

        EXPECT_EQ(told({key::super, digit1}), "1+1-") << locks;
        EXPECT_EQ(told({key::super, key::shift, key::v}), "2+2-") << locks;
        EXPECT_EQ(told({key::shift, digit1}), "") << locks;
    }
}

TEST_F(X11HotKeysTest, TellsOneKeyWithDifferentModifiersApart) {
    addCommand(18, 1);
    add(18, hotKeyModifier::option, 2);
    add(18, hotKeyModifier::command | hotKeyModifier::option, 3);

    EXPECT_EQ(told({key::super, digit1}), "1+1-");
    EXPECT_EQ(told({key::alt, digit1}), "2+2-");
    EXPECT_EQ(told({key::alt, key::super, digit1}), "3+3-");
}

TEST_F(X11RepeatingHotKeysTest, DoesNotCountAKeyTwiceWhenTheModifiersChangeUnderIt) {
    addCommand(18, 1);
    add(18, hotKeyModifier::command | hotKeyModifier::control, 2);

    user.press(key::super);
    user.press(digit1);
    user.press(key::control);
    letItRepeat();
    user.release(digit1);
    user.release(key::control);
    user.release(key::super);

    EXPECT_EQ(toldAll(), "1+1-");
}

TEST_F(X11RepeatingHotKeysTest, DoesNotCountAKeyAnewThatIsRegisteredAgainWhileHeld) {
    const auto first = addCommand(18, 1);
    user.press(key::super);
    user.press(digit1);
    EXPECT_TRUE(tells("1+"));

    hotKeys->unregisterHotKey(first.reference.value());
    addCommand(18, 2);
    letItRepeat();
    user.release(digit1);
    user.release(key::super);

    EXPECT_EQ(toldAll(), "");
}

TEST_F(X11HotKeysTest, TellsSeveralThatAreHeldAtOnce) {
    addCommand(18, 1);
    addCommand(19, 2);
    addCommand(20, 3);
    user.press(key::super);

    user.press(digit1);
    user.press(digit2);
    user.release(digit1);
    user.press(digit3);
    user.release(digit2);
    user.press(digit1);
    user.release(digit1);
    user.release(digit3);
    user.release(key::super);

    EXPECT_EQ(toldAll(), "1+2+1-3+2-1+1-3-");
}

TEST_F(X11HotKeysTest, GivesTheKeyboardBackAfterSeveral) {
    addCommand(18, 1);
    addCommand(19, 2);
    user.press(key::super);
    user.press(digit1);
    user.press(digit2);
    EXPECT_TRUE(tells("1+2+"));
    user.release(digit1);
    user.release(digit2);
    user.release(key::super);
    EXPECT_TRUE(tells("1-2-"));

    OtherWindow window({});
    EXPECT_TRUE(waitFor([&] { return window.grabKeyboard(); }));
}

TEST_F(X11HotKeysTest, TellsAReleaseThatAnotherProgramGot) {
    addCommand(18, 1);
    addCommand(19, 2);
    OtherWindow window({});
    window.grabServer();  // so that nobody gets in between
    const auto send = [&](std::uint8_t type, std::uint8_t key) {
        xcb_test_fake_input(window.xcb(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    };
    for (const auto key : {key::super, digit1, digit2}) send(XCB_KEY_PRESS, key);
    send(XCB_KEY_RELEASE, digit1);
    ASSERT_TRUE(window.grabKeyboard());
    for (const auto key : {digit2, key::super}) send(XCB_KEY_RELEASE, key);
    window.ungrabServer();

    EXPECT_TRUE(tells("1+2+1-2-"));
    window.quit();
    EXPECT_EQ(told({key::super, digit2}), "2+2-");
}

TEST_F(X11HotKeysTest, HearsNothingWhileAProgramHoldsTheKeyboard) {
    addCommand(18, 1);
    OtherWindow window({});
    ASSERT_TRUE(window.grabKeyboard());

    user.type({key::super, digit1});
    window.quit();

    EXPECT_EQ(toldAll(), "");
    EXPECT_EQ(told({key::super, digit1}), "1+1-");
}

TEST_F(X11HotKeysTest, MayBeUnregisteredAndRegisteredWhileHeld) {
    const auto first = addCommand(18, 1);
    user.press(key::super);
    user.press(digit1);
    EXPECT_TRUE(tells("1+"));

    hotKeys->unregisterHotKey(first.reference.value());
    ASSERT_EQ(addCommand(18, 2).status, 0);
    ASSERT_EQ(addCommand(19, 3).status, 0);
    user.type({digit2});
    user.release(digit1);
    user.release(key::super);

    EXPECT_EQ(toldAll(), "3+3-");
    // The keyboard is only now given back; a release at that moment is seen a little later.
    user.type({key::super, digit1});
    EXPECT_TRUE(tells("2+2-"));
}

TEST_F(X11HotKeysTest, MayBeUnregisteredInTheHandler) {
    std::optional<HotKeyReference> hotKey = addCommand(18, 1).reference;
    auto second = X11HotKeys::open();
    ASSERT_TRUE(second);
    int events = 0;
    std::optional<HotKeyReference> own;
    const auto handler = (*second)->installHandler([&](const HotKeyEvent*) {
        ++events;
        (*second)->unregisterHotKey(*own);
        return 0;
    });
    own = (*second)->registerHotKey({.keyCode = 19, .modifiers = hotKeyModifier::command}).reference;
    ASSERT_TRUE(hotKey && own);

    user.type({key::super, digit2});
    user.type({key::super, digit2});

    EXPECT_EQ(told({key::super, digit1}), "1+1-");
    EXPECT_TRUE(waitFor([&] { return events > 0 && !(*second)->isBehind(); }));
    EXPECT_EQ(events, 1);
    EXPECT_TRUE(waitFor([&] { return !other.isTaken(digit2, super); }));
    (*second)->removeHandler(handler.reference.value());
}

}  // namespace
}  // namespace nettlecap::test
