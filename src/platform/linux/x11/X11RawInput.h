#pragma once

#include "platform/linux/x11/X11KeyTable.h"

namespace nettlecap {

/// Copy gestures and clicks as they leave the devices, whichever program gets them and
/// whoever holds a grab. A repeating key gestures again. Nothing else that is typed is told
/// or kept: only which keys are down, since raw events do not say what is held with them.
class X11RawInput {
public:
    using Handler = std::function<void(const InputEvent&)>;

    /// Over a connection of its own: the one that grabs a hot key misses that key's release.
    static Result<std::unique_ptr<X11RawInput>> open();

    /// The server has XInput 2.2 and XKB; without them there is nothing to select.
    bool isAvailable() const { return extension_ && table_.isAvailable(); }
    /// What the server is to send; nothing at first.
    void select(bool keys, bool clicks);
    X11KeyTable& keyTable() { return table_; }

    Subscription onInput(Handler handler) { return input_.subscribe(std::move(handler)); }

private:
    explicit X11RawInput(std::unique_ptr<X11Connection> connection);

    void followKeyboard();
    void receive(const xcb_generic_event_t& event);
    void receiveRaw(const xcb_ge_generic_event_t& event);
    void press(xcb_keycode_t key);
    void click(std::uint32_t button);

    std::unique_ptr<X11Connection> connection_;
    std::optional<std::uint8_t> extension_;  // XInput's number among the server's
    X11KeyTable table_;
    bool selectsKeys_ = false;
    HeldKeys held_;
    KeyState keyboard_;  // as XKB tells it, with what is latched and locked
    Signal<InputEvent> input_;
    Subscription events_;
};

}  // namespace nettlecap
