#pragma once

#include "platform/InputEvents.h"
#include "platform/linux/x11/X11Connection.h"

#include <array>
#include <bitset>

struct xkb_context;
struct xkb_keymap;
struct xkb_state;

namespace nettlecap {

using HeldKeys = std::bitset<256>;  ///< by X key code

/// What goes with a key: the modifiers in X's own bits, and the layout among those loaded.
struct KeyState {
    std::uint32_t modifiers = 0;
    std::uint32_t layout = 0;
};

/// What keys mean here in the terms of the ports; the only place that knows.
///
/// "The C key" is the one that carries c in the layout in use, and where that has no such
/// letter, as in Greek, the one at its place on an ANSI keyboard. Follows the server's
/// keymap: a change is read when the next key asks.
class X11KeyTable {
public:
    explicit X11KeyTable(X11Connection& connection);
    ~X11KeyTable();
    X11KeyTable(const X11KeyTable&) = delete;
    X11KeyTable& operator=(const X11KeyTable&) = delete;

    /// c for ⌘C (Ctrl+C, Ctrl+Insert), x for ⌘X (Ctrl+X, Shift+Delete), whatever else is held.
    std::optional<KeyCode> copyGesture(xcb_keycode_t key, KeyState state);
    std::uint32_t modifiersOf(const HeldKeys& held);

    bool isAvailable() const { return firstEvent_.has_value(); }  ///< the server has XKB
    std::uint8_t firstEvent() const { return *firstEvent_; }      ///< of XKB, where available

private:
    struct Free {
        void operator()(xkb_context* context) const;
        void operator()(xkb_keymap* keymap) const;
        void operator()(xkb_state* state) const;
    };

    void refresh();
    void readModifiers();
    HeldKeys keysLabelled(std::uint32_t symbol, const char* ansiPosition, std::uint32_t layout) const;

    X11Connection& connection_;
    std::optional<std::uint8_t> firstEvent_;
    bool isStale_ = true;
    std::unique_ptr<xkb_context, Free> context_;
    std::unique_ptr<xkb_keymap, Free> keymap_;
    std::unique_ptr<xkb_state, Free> state_;
    std::array<HeldKeys, 8> modifierKeys_;  // for each bit of X's
    Subscription events_;
};

}  // namespace nettlecap
