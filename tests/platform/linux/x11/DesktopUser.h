#pragma once

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace nettlecap::test {

/// Key codes of the evdev keyboards, which stay whatever the layout says.
namespace key {
constexpr xcb_keycode_t b = 56, c = 54, i = 31, v = 55, x = 53;
constexpr xcb_keycode_t insert = 118, deleteForward = 119, keypad0 = 90, keypadPoint = 91;
constexpr xcb_keycode_t control = 37, shift = 50, alt = 64, super = 133;
constexpr xcb_keycode_t capsLock = 66, numLock = 77;
}  // namespace key

/// Runs the main loop until the condition holds. False: it did not within half a minute.
bool waitFor(const std::function<bool()>& condition);

/// What a window says of itself; what is absent it leaves out.
struct Appearance {
    std::optional<std::string> windowClass;  ///< WM_CLASS's bytes, zeros included
    std::optional<std::uint32_t> process;
    std::optional<std::string> machine;
    xcb_window_t transientFor = XCB_WINDOW_NONE;
    std::int16_t x = 0;
    std::int16_t y = 0;
    bool isManaged = true;  ///< false: as menus are
    bool isPanel = false;   ///< a dock, which managers never activate
};

/// A window of another program, with a connection to the X server of its own.
class OtherWindow {
public:
    explicit OtherWindow(const Appearance& appearance);
    ~OtherWindow();
    OtherWindow(const OtherWindow&) = delete;
    OtherWindow& operator=(const OtherWindow&) = delete;

    xcb_window_t id() const { return window_; }
    xcb_connection_t* xcb() const { return xcb_; }
    void setClass(const std::string& windowClass);
    void unmap();
    void quit();  ///< as a killed program does
    bool grabKeyboard(std::uint8_t mode = XCB_GRAB_MODE_ASYNC);
    void thaw();  ///< lets the keys of a grabbed keyboard through
    bool grabPointer();
    void grabServer();
    void ungrabServer();

private:
    void setText(const char* property, const std::string& bytes);

    xcb_connection_t* xcb_;
    xcb_window_t window_;
};

/// Someone at the keyboard and the mouse, who leaves both as they were.
class DesktopUser {
public:
    DesktopUser();
    ~DesktopUser();
    DesktopUser(const DesktopUser&) = delete;
    DesktopUser& operator=(const DesktopUser&) = delete;

    void activate(xcb_window_t window);  ///< through the window manager; waits until it is done
    xcb_window_t active() const { return rootWindow("_NET_ACTIVE_WINDOW"); }
    void waitForManager();                        ///< until it has dealt with all that happened
    bool isDesktopEmpty() const;                  ///< as far as the window manager knows
    bool hasKeyboard(xcb_window_t window) const;  ///< the window or one inside of it
    /// An active one that has the keyboard; NONE: none came.
    xcb_window_t waitForWindow(const std::string& title);

    void press(xcb_keycode_t key);
    void release(xcb_keycode_t key);
    void type(std::initializer_list<xcb_keycode_t> chord);  ///< all down in order, all up again
    void moveTo(std::int16_t x, std::int16_t y);
    void moveInto(xcb_window_t window);
    void click(std::uint8_t button);
    void setLayout(const std::string& layout, std::uint8_t group = 0, const std::string& option = "");
    void lockLayout(std::uint8_t group);
    void lockModifiers(std::uint8_t modifiers);  ///< these alone, as sticky keys do
    bool isLocked(std::uint16_t modifier) const;

    xcb_connection_t* xcb() const { return xcb_; }
    xcb_window_t rootWindow(const std::string& property) const;  ///< a property of the root window
    void setRootWindow(const std::string& property, xcb_window_t window);

private:
    void askManager(xcb_window_t window, const std::string& request, std::uint32_t value);
    void fake(std::uint8_t type, std::uint8_t detail, std::int16_t x = 0, std::int16_t y = 0);

    xcb_connection_t* xcb_;
    xcb_window_t root_;
    std::vector<xcb_keycode_t> down_;
    bool hasChangedLayout_ = false;
};

/// The bytes of a window's property; empty: there is none.
std::string propertyOf(xcb_connection_t* xcb, xcb_window_t window, const std::string& name);

}  // namespace nettlecap::test
