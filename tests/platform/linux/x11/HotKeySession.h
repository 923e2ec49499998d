#pragma once

#include "platform/linux/x11/DesktopUser.h"
#include "platform/linux/x11/X11HotKeys.h"

#include <gtest/gtest.h>

namespace nettlecap::test {

/// Another program that has hot keys.
class OtherGrabber {
public:
    OtherGrabber();
    ~OtherGrabber();
    OtherGrabber(const OtherGrabber&) = delete;
    OtherGrabber& operator=(const OtherGrabber&) = delete;

    bool take(xcb_keycode_t key, std::uint16_t modifiers);  ///< false: somebody else has it
    void giveBack(xcb_keycode_t key, std::uint16_t modifiers);
    /// Looks without anybody noticing.
    bool isTaken(xcb_keycode_t key, std::uint16_t modifiers);
    int presses();                   ///< of its hot keys up to now, repeats included
    void kill(xcb_window_t window);  ///< the program that made it
    std::vector<xcb_window_t> windows() const;

private:
    xcb_connection_t* xcb_;
    xcb_window_t root_;
    int presses_ = 0;
};

/// Hot keys on the real server, and the user who presses them.
class X11HotKeysTest : public testing::Test {
protected:
    static constexpr std::uint16_t super = XCB_MOD_MASK_4;
    static constexpr xcb_keycode_t digit1 = 10, digit2 = 11, digit3 = 12, arrowRight = 114;

    X11HotKeysTest();

    Registered<HotKeyReference> add(KeyCode code, std::uint32_t modifiers, std::uint32_t id);
    Registered<HotKeyReference> addCommand(KeyCode code, std::uint32_t id) {
        return add(code, hotKeyModifier::command, id);
    }
    /// Until this is what was told since the last time.
    bool tells(const std::string& expected);
    /// All that was told since the last time. ⌃⇧→, with no key of the user's held, shows that
    /// nothing is on its way.
    std::string toldAll();
    std::string told(std::initializer_list<xcb_keycode_t> chord);

    DesktopUser user;
    OtherGrabber other;
    std::unique_ptr<X11HotKeys> hotKeys;
    std::string told_;  // of each event the id, + for a press, - for a release
};

}  // namespace nettlecap::test
