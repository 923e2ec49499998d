#include "platform/linux/x11/HotKeySession.h"

#include <QProcess>
#include <chrono>

namespace nettlecap::test {
namespace {

using X11HotKeyRegistrationTest = X11HotKeysTest;

constexpr std::uint16_t capsLock = 0x02, numLock = 0x10;

TEST_F(X11HotKeyRegistrationTest, SaysWhatTheServerSaysOfAnothersHotKey) {
    ASSERT_TRUE(other.take(digit1, super));

    const auto refused = addCommand(18, 1);

    EXPECT_EQ(refused.status, 10);
    EXPECT_FALSE(refused.reference);
    EXPECT_EQ(addCommand(19, 2).status, 0);
    EXPECT_EQ(told({key::super, digit2}), "2+2-");
    other.giveBack(digit1, super);
    EXPECT_EQ(addCommand(18, 1).status, 0);
}

TEST_F(X11HotKeyRegistrationTest, TakesNothingOfAHotKeyThatItCannotHaveWhole) {
    ASSERT_TRUE(other.take(digit1, super | capsLock | numLock));

    EXPECT_EQ(addCommand(18, 1).status, 10);

    OtherGrabber third;
    for (const auto locks : {std::uint16_t{0}, capsLock, numLock})
        EXPECT_FALSE(third.isTaken(digit1, super | locks)) << locks;
}

TEST_F(X11HotKeyRegistrationTest, TakesAHotKeyWithEveryCombinationOfLocks) {
    const auto added = addCommand(18, 1);
    for (const int locks : {0x00, 0x02, 0x10, 0x12})
        EXPECT_TRUE(other.isTaken(digit1, static_cast<std::uint16_t>(super | locks))) << locks;
    EXPECT_FALSE(other.isTaken(digit1, super | XCB_MOD_MASK_SHIFT));

    hotKeys->unregisterHotKey(added.reference.value());

    for (const int locks : {0x00, 0x02, 0x10, 0x12})
        EXPECT_TRUE(waitFor([&] {
            return !other.isTaken(digit1, static_cast<std::uint16_t>(super | locks));
        })) << locks;
}

TEST_F(X11HotKeyRegistrationTest, RefusesItsOwnLikeThoseOfOthers) {
    addCommand(18, 1);

    EXPECT_EQ(addCommand(18, 2).status, 10);

    EXPECT_EQ(told({key::super, digit1}), "1+1-");
    EXPECT_TRUE(other.isTaken(digit1, super));
}

TEST_F(X11HotKeyRegistrationTest, RefusesWhatTheKeyboardLacks) {
    EXPECT_EQ(addCommand(999, 1).status, 2);
    EXPECT_EQ(addCommand(83, 1).status, 2) << "the keypad's 1";
    user.setLayout("us");
    ASSERT_EQ(QProcess::execute("xmodmap", {"-e", "clear mod4"}), 0);

    EXPECT_TRUE(waitFor([&] {
        const auto added = addCommand(18, 1);
        if (added.reference) hotKeys->unregisterHotKey(*added.reference);
        return added.status == 2;
    }));
    EXPECT_EQ(add(18, hotKeyModifier::option, 2).status, 0);
}

TEST_F(X11HotKeyRegistrationTest, MovesWithTheLabelsOfTheKeys) {
    user.setLayout("us");
    addCommand(0, 1);
    addCommand(12, 2);
    addCommand(18, 3);

    user.setLayout("fr");
    EXPECT_TRUE(waitFor([&] { return other.isTaken(24, super) && other.isTaken(38, super); }));
    EXPECT_EQ(told({key::super, 24}), "1+1-") << "a and q change places";
    EXPECT_EQ(told({key::super, 38}), "2+2-");
    EXPECT_EQ(told({key::super, digit1}), "3+3-");

    user.setLayout("dvorak");
    EXPECT_TRUE(waitFor([&] { return other.isTaken(38, super) && !other.isTaken(24, super); }));
    EXPECT_EQ(told({key::super, 38}), "1+1-");
    EXPECT_EQ(told({key::super, 53}), "2+2-");
}

TEST_F(X11HotKeyRegistrationTest, FollowsTheLayoutInUse) {
    addCommand(7, 1);
    user.setLayout("dvorak,ru");
    EXPECT_TRUE(waitFor([&] { return other.isTaken(key::b, super); }));
    EXPECT_EQ(told({key::super, key::b}), "1+1-");

    user.lockLayout(1);
    EXPECT_TRUE(waitFor([&] { return other.isTaken(key::x, super) && !other.isTaken(key::b, super); }));
    EXPECT_EQ(told({key::super, key::x}), "1+1-");

    user.lockLayout(0);
    EXPECT_TRUE(waitFor([&] { return other.isTaken(key::b, super); }));
    EXPECT_EQ(told({key::super, key::b}), "1+1-");
}

TEST_F(X11HotKeyRegistrationTest, WorksInTheSecondLayoutAsInTheFirst) {
    addCommand(18, 1);
    addCommand(9, 2);
    user.setLayout("us,ru", 1);

    EXPECT_EQ(told({key::super, digit1}), "1+1-");
    EXPECT_EQ(told({key::super, key::v}), "2+2-");
}

TEST_F(X11HotKeyRegistrationTest, FollowsTheModifiers) {
    user.setLayout("us");
    addCommand(18, 1);

    ASSERT_EQ(QProcess::execute("xmodmap", {"-e", "clear mod4", "-e", "add mod3 = Super_L"}), 0);
    EXPECT_TRUE(waitFor([&] { return other.isTaken(digit1, XCB_MOD_MASK_3); }));
    EXPECT_EQ(told({key::super, digit1}), "1+1-");

    user.setLayout("us");
    EXPECT_TRUE(waitFor([&] { return other.isTaken(digit1, super); }));
    EXPECT_EQ(told({key::super, digit1}), "1+1-");
}

TEST_F(X11HotKeyRegistrationTest, TellsTheReleaseOfAKeyThatLostItsLabelMeanwhile) {
    user.setLayout("us");
    addCommand(0, 1);
    user.press(key::super);
    user.press(38);
    EXPECT_TRUE(tells("1+"));

    user.setLayout("fr");
    EXPECT_TRUE(waitFor([&] { return other.isTaken(24, super); }));
    user.release(38);
    user.release(key::super);

    EXPECT_TRUE(tells("1-"));
    EXPECT_EQ(told({key::super, 24}), "1+1-");
}

TEST_F(X11HotKeyRegistrationTest, LeavesTheOthersWhenAPlaceIsTaken) {
    user.setLayout("us");
    addCommand(13, 1);
    addCommand(0, 2);
    ASSERT_TRUE(other.take(52, super | numLock));  // where fr has w

    user.setLayout("fr");
    EXPECT_TRUE(waitFor([&] { return other.isTaken(24, super); }));
    EXPECT_EQ(told({key::super, 52}), "");
    EXPECT_EQ(told({key::super, 24}), "2+2-");
    OtherGrabber third;
    EXPECT_FALSE(third.isTaken(52, super));

    user.setLayout("us");
    EXPECT_TRUE(waitFor([&] { return other.isTaken(25, super); }));
    EXPECT_EQ(told({key::super, 25}), "1+1-");
}

TEST_F(X11HotKeyRegistrationTest, FailsInTimeWhenTheServerDoesNotAnswer) {
    using namespace std::chrono;
    OtherWindow window({});
    window.grabServer();

    const auto start = steady_clock::now();
    for (const KeyCode code : {18U, 19U, 20U, 21U}) EXPECT_EQ(addCommand(code, 1).status, 110);
    EXPECT_LT(steady_clock::now() - start, 3s);
    window.ungrabServer();

    EXPECT_TRUE(waitFor([&] { return addCommand(18, 1).status == 0; }));
    EXPECT_EQ(told({key::super, digit1}), "1+1-");
}

TEST_F(X11HotKeyRegistrationTest, FailsClearlyWhenTheServerIsGone) {
    const auto before = other.windows();
    const auto lost = X11HotKeys::open();
    ASSERT_TRUE(lost);
    const HotKeyRequest request{.keyCode = 18, .modifiers = hotKeyModifier::command};
    const auto first = (*lost)->registerHotKey(request);
    ASSERT_TRUE(first.reference);

    for (const xcb_window_t window : other.windows())
        if (std::find(before.begin(), before.end(), window) == before.end()) other.kill(window);

    EXPECT_TRUE(waitFor([&] { return !other.isTaken(digit1, super); }));
    (*lost)->unregisterHotKey(*first.reference);
    EXPECT_EQ((*lost)->registerHotKey(request).status, 110);
}

}  // namespace
}  // namespace nettlecap::test
