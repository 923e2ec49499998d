#pragma once

#include "platform/fake/FakeBackgroundWork.h"
#include "platform/fake/FakeTime.h"
#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/X11Session.h"

namespace nettlecap::test {

/// A window that keeps the keys it is given, as "+37/0 +55/4": pressed, key code, X's
/// modifiers at the time.
class KeyRecorder {
public:
    explicit KeyRecorder(const OtherWindow& window);

    const std::string& keys();  ///< so far: all that the server has given the window
    void forget() { (void)keys(), keys_.clear(); }

private:
    void catchUp() const;

    const OtherWindow& window_;
    std::string keys_;
};

/// A desktop on which the backend types, with a clipboard.
class KeyboardSession {
public:
    KeyboardSession();

    bool paste();
    /// A window in front, with the keys of nobody else's before it.
    KeyRecorder& openRecorder(const std::string& windowClass);
    KeyRecorder& record(const OtherWindow& window);  ///< of one that is in front
    void putOnClipboard(const std::string& text);
    bool runUntil(const std::function<bool()>& condition);  ///< with all that waits in the background
    xcb_window_t ownerOf(const char* selection);

    X11Session session;
    FakeTime time;
    FakeBackgroundWork background{time};
    std::unique_ptr<X11Pasteboard> pasteboard;
    std::unique_ptr<X11HotKeys> hotKeys;
    std::unique_ptr<X11Keyboard> keyboard;

private:
    std::vector<std::unique_ptr<KeyRecorder>> recorders_;
};

}  // namespace nettlecap::test
