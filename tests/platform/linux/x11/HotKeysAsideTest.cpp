#include "platform/linux/x11/KeyboardSession.h"

#include <gtest/gtest.h>

namespace nettlecap::test {
namespace {

constexpr xcb_keycode_t digit1 = 10, digit2 = 11;
const std::string controlV = "+37/0 +55/4 -55/4 -37/4";

/// Where what is typed for the user is, or meets, a hot key of the user's.
class HotKeysAsideTest : public testing::Test, public KeyboardSession {
protected:
    HotKeysAsideTest() {
        (void)hotKeys->installHandler([this](const HotKeyEvent* event) {
            told += (event->kind == HotKeyEvent::pressed ? '+' : '-') + std::to_string(event->id.id);
            return 0;
        });
    }
    void add(KeyCode code, std::uint32_t modifiers, std::uint32_t id) {
        EXPECT_EQ(hotKeys->registerHotKey({.keyCode = code, .modifiers = modifiers, .id = {.id = id}}).status,
                  0);
    }
    /// Whether no other program could have it now.
    static bool isTaken(const KeyGrab& grab) {
        xcb_connection_t* xcb = xcb_connect(nullptr, nullptr);
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
        const auto request = xcb_grab_key_checked(xcb, 0, root, grab.modifiers, grab.key, XCB_GRAB_MODE_ASYNC,
                                                  XCB_GRAB_MODE_ASYNC);
        const X11Reply<xcb_generic_error_t> refusal(xcb_request_check(xcb, request));
        xcb_disconnect(xcb);
        return refusal && refusal->error_code == X11KeyGrabs::badAccess;
    }
    bool receives(KeyRecorder& recorder, const std::string& keys) {
        return waitFor([&] { return recorder.keys().find(keys) != std::string::npos; });
    }

    std::string told;
    DesktopUser& user = session.user;
};

TEST_F(HotKeysAsideTest, APasteThatIsAHotKeyTooGoesToTheProgramInFront) {
    add(keyCode::v, hotKeyModifier::control, 1);
    auto& editor = openRecorder("Editor");

    EXPECT_TRUE(paste());

    EXPECT_TRUE(receives(editor, controlV)) << editor.keys();
    EXPECT_EQ(told, "");
}

TEST_F(HotKeysAsideTest, TheHotKeyWorksAgainAfterThePaste) {
    add(keyCode::v, hotKeyModifier::control, 1);
    auto& editor = openRecorder("Editor");
    EXPECT_TRUE(paste());
    EXPECT_TRUE(receives(editor, controlV));

    user.press(key::control);
    user.press(key::v);
    user.release(key::v);
    user.release(key::control);

    EXPECT_TRUE(waitFor([&] { return told == "+1-1"; })) << told;
}

TEST_F(HotKeysAsideTest, OtherHotKeysStayMeanwhileWhateverTheirKey) {
    const KeyGrab typed{key::v, XCB_MOD_MASK_CONTROL};
    const KeyGrab sameKey{key::v, XCB_MOD_MASK_4};
    add(keyCode::v, hotKeyModifier::control, 1);
    add(keyCode::v, hotKeyModifier::command, 2);
    ASSERT_TRUE(isTaken(typed));
    std::string taken;

    hotKeys->standAside({typed}, [&] {
        for (const KeyGrab& grab : {typed, sameKey}) taken += isTaken(grab) ? "taken " : "free ";
    });

    EXPECT_EQ(taken, "free taken ");
    EXPECT_TRUE(isTaken(typed));
}

TEST_F(HotKeysAsideTest, PastesWhileTwoHotKeysAreHeld) {
    add(18, hotKeyModifier::command, 1);
    add(19, hotKeyModifier::command, 2);
    auto& editor = openRecorder("Editor");
    user.press(key::super);
    user.press(digit1);
    user.press(digit2);
    ASSERT_TRUE(waitFor([&] { return told == "+1+2"; })) << told;
    user.release(key::super);

    EXPECT_TRUE(paste());

    EXPECT_TRUE(receives(editor, controlV)) << editor.keys();
    EXPECT_TRUE(waitFor([&] { return told.size() == 8; })) << told;  // and both were let go
}

}  // namespace
}  // namespace nettlecap::test
