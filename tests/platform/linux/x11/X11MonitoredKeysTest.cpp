#include "platform/linux/x11/MonitoredSession.h"

namespace nettlecap::test {
namespace {

using X11MonitoredKeysTest = MonitoredSessionTest;

TEST_F(X11MonitoredKeysTest, KnowsTheKeysThatCopy) {
    EXPECT_EQ(told({key::control, key::c}), "c");
    EXPECT_EQ(told({key::control, key::insert}), "c");
}

TEST_F(X11MonitoredKeysTest, KnowsTheKeysThatCut) {
    EXPECT_EQ(told({key::control, key::x}), "x");
    EXPECT_EQ(told({key::shift, key::deleteForward}), "x");
}

TEST_F(X11MonitoredKeysTest, CountsFurtherModifiersToo) {
    EXPECT_EQ(told({key::control, key::shift, key::c}), "c");
    EXPECT_EQ(told({key::shift, key::control, key::c}), "c");
    EXPECT_EQ(told({key::control, key::alt, key::c}), "c");
    EXPECT_EQ(told({key::control, key::super, key::x}), "x");
    EXPECT_EQ(told({key::control, key::shift, key::insert}), "c");
    EXPECT_EQ(told({key::alt, key::shift, key::deleteForward}), "x");
}

TEST_F(X11MonitoredKeysTest, TellsNothingElseThatIsTyped) {
    for (const Chord chord : {Chord{key::c},
                              {key::x},
                              {key::control},
                              {key::shift, key::c},
                              {key::alt, key::c},
                              {key::super, key::c},
                              {key::control, key::v},
                              {key::control, key::b},
                              {key::shift, key::insert},
                              {key::insert},
                              {key::control, key::deleteForward},
                              {key::deleteForward},
                              {key::control, key::shift, key::v},
                              {key::c, key::control}})
        EXPECT_EQ(told(chord), "") << static_cast<int>(*chord.begin());
}

TEST_F(X11MonitoredKeysTest, ForgetsAModifierWhenItIsReleased) {
    user.type({key::control});
    EXPECT_EQ(told({key::c}), "");

    user.press(key::control);
    user.press(key::shift);
    user.release(key::control);
    EXPECT_EQ(told({key::c}), "");
}

TEST_F(X11MonitoredKeysTest, TellsEveryPressWhileTheModifierStaysDown) {
    user.press(key::control);
    user.type({key::c});
    user.type({key::v});
    user.type({key::x});

    EXPECT_EQ(told(), "cx");
}

TEST_F(X11MonitoredKeysTest, KnowsWhatWasHeldBeforeItLooked) {
    global_.reset();
    user.press(key::control);
    startMonitors();

    EXPECT_EQ(told({key::c}), "c");
}

TEST_F(X11MonitoredKeysTest, TakesNoNoticeOfCapsLock) {
    user.type({key::capsLock});
    ASSERT_TRUE(user.isLocked(XCB_MOD_MASK_LOCK));

    EXPECT_EQ(told({key::control, key::c}), "c");
    EXPECT_EQ(told({key::control, key::x}), "x");
    EXPECT_EQ(told({key::c}), "");
}

TEST_F(X11MonitoredKeysTest, TakesTheKeypadAsNumLockHasIt) {
    EXPECT_EQ(told({key::control, key::keypad0}), "c");
    EXPECT_EQ(told({key::shift, key::keypadPoint}), "x");

    user.type({key::numLock});
    ASSERT_TRUE(user.isLocked(XCB_MOD_MASK_2));

    EXPECT_EQ(told({key::control, key::keypad0}), "");
    EXPECT_EQ(told({key::shift, key::keypadPoint}), "x");
    EXPECT_EQ(told({key::control, key::c}), "c");
}

TEST_F(X11MonitoredKeysTest, FindsTheLettersOfDvorak) {
    user.setLayout("dvorak");

    EXPECT_EQ(told({key::control, key::i}), "c");
    EXPECT_EQ(told({key::control, key::b}), "x");
    EXPECT_EQ(told({key::control, key::c}), "");
    EXPECT_EQ(told({key::control, key::insert}), "c");

    user.setLayout("us");
    EXPECT_EQ(told({key::control, key::c}), "c");
    EXPECT_EQ(told({key::control, key::i}), "");
}

TEST_F(X11MonitoredKeysTest, FindsTheLettersOfAzerty) {
    user.setLayout("fr");

    EXPECT_EQ(told({key::control, key::c}), "c");
    EXPECT_EQ(told({key::control, key::x}), "x");
}

TEST_F(X11MonitoredKeysTest, TakesTheAnsiPositionsWhereThereAreNoSuchLetters) {
    for (const char* layout : {"ru", "gr", "ara"}) {
        user.setLayout(layout);

        EXPECT_EQ(told({key::control, key::c}), "c") << layout;
        EXPECT_EQ(told({key::control, key::x}), "x") << layout;
        EXPECT_EQ(told({key::control, key::i}), "") << layout;
    }
}

TEST_F(X11MonitoredKeysTest, FollowsTheLayoutInUseAmongThoseLoaded) {
    user.setLayout("dvorak,ru", 1);
    EXPECT_EQ(told({key::control, key::c}), "c");
    EXPECT_EQ(told({key::control, key::i}), "");

    user.lockLayout(0);
    EXPECT_EQ(told({key::control, key::c}), "");
    EXPECT_EQ(told({key::control, key::i}), "c");
}

TEST_F(X11MonitoredKeysTest, FollowsModifiersPutOnOtherKeys) {
    user.setLayout("us", 0, "ctrl:nocaps");

    EXPECT_EQ(told({key::capsLock, key::c}), "c");
    EXPECT_FALSE(user.isLocked(XCB_MOD_MASK_LOCK));
}

TEST_F(X11MonitoredKeysTest, CountsAModifierThatNoFingerHolds) {
    user.lockModifiers(XCB_MOD_MASK_CONTROL);
    EXPECT_EQ(told({key::c}), "c");

    user.lockModifiers(0);
    EXPECT_EQ(told({key::c}), "");
}

}  // namespace
}  // namespace nettlecap::test
