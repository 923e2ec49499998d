#pragma once

#include "platform/Keys.h"

#include <span>

namespace nettlecap {

/// One half of a keystroke.
struct KeyEvent {
    KeyCode keyCode = 0;
    ModifierFlags flags = 0;  ///< exactly these, whatever the user holds
    bool isDown = true;

    bool operator==(const KeyEvent&) const = default;
};

/// The keyboard of the session: what is held down, and keystrokes for the application in
/// front. A backend translates ⌘V into what that application takes for it.
class Keyboard {
public:
    virtual ~Keyboard() = default;

    /// Types the events at once, one after the other. False: none could be typed.
    virtual bool post(std::span<const KeyEvent> events) = 0;

    /// Whether the system lets this program type into others; with `prompt` it may ask the user.
    virtual bool isTrusted(bool prompt) = 0;
    virtual ModifierFlags modifiersDown() const = 0;
};

}  // namespace nettlecap
