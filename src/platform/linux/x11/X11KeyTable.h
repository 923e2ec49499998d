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
/// letter, as in Greek, the one at its place on an ANSI keyboard. A digit may stand on
/// Shift, as in French. Follows the server's keymap: a change is read when somebody asks
/// next. A server that somebody holds grabbed cannot tell: what it said last counts on.
class X11KeyTable {
public:
    explicit X11KeyTable(X11Connection& connection);
    ~X11KeyTable();
    X11KeyTable(const X11KeyTable&) = delete;
    X11KeyTable& operator=(const X11KeyTable&) = delete;

    /// c for ⌘C (Ctrl+C, Ctrl+Insert), x for ⌘X (Ctrl+X, Shift+Delete), whatever else is held.
    std::optional<KeyCode> copyGesture(xcb_keycode_t key, KeyState state);

    /// The keys that carry the virtual key code's label in the layout, else the one at its
    /// place on an ANSI keyboard. None: the code is unknown, or such a key is missing.
    HeldKeys keysOf(KeyCode code, std::uint32_t layout);

    /// X's bits for Super (⌘), Alt (⌥), Control (⌃) and Shift (⇧), as the modifier map has
    /// them now. Absent: this keyboard lacks one of them.
    std::optional<std::uint32_t> modifiersFor(ModifierFlags flags);
    ModifierFlags flagsOf(std::uint32_t modifiers);  ///< the reverse; other bits are left out
    std::uint32_t lockModifiers();  ///< Caps Lock, Num Lock, Scroll Lock: whatever only locks
    std::uint32_t modifiersOf(const HeldKeys& held);
    HeldKeys keysOfModifiers(std::uint32_t modifiers);  ///< all that the modifier map has for these bits

    /// Asks the server. Where it does not answer, what it said last.
    std::uint32_t layoutInUse();
    /// The keymap, the modifier map or the layout in use changed. Comes from the main loop, and
    /// also when nothing that matters did: two keyboards of one kind that take turns suffice.
    Subscription onChange(Task handler) { return changed_.subscribe(std::move(handler)); }

    /// Waits for the server up to a second, and then not again until it has answered; that
    /// counts as a change.
    bool canAnswer();

    bool isAvailable() const { return firstEvent_.has_value(); }  ///< the server has XKB
    std::uint8_t firstEvent() const { return *firstEvent_; }      ///< of XKB, where available

private:
    struct Free {
        void operator()(xkb_context* context) const;
        void operator()(xkb_keymap* keymap) const;
        void operator()(xkb_state* state) const;
    };

    void receive(const xcb_generic_event_t& event);
    void refresh();
    void readModifiers();
    HeldKeys keysCarrying(std::uint32_t symbol, std::uint32_t layout, std::uint32_t level) const;
    std::uint32_t modifiersCarrying(std::initializer_list<std::uint32_t> symbols) const;
    std::uint32_t modifiersWith(const HeldKeys& keys) const;

    X11Connection& connection_;
    std::optional<std::uint8_t> firstEvent_;
    bool isStale_ = true;
    bool isOverdue_ = false;  // an answer of the server
    std::unique_ptr<xkb_context, Free> context_;
    std::unique_ptr<xkb_keymap, Free> keymap_;
    std::unique_ptr<xkb_state, Free> state_;
    std::array<HeldKeys, 8> modifierKeys_;  // for each bit of X's
    std::uint32_t layout_ = 0;              // in use, as the server said last
    Signal<> changed_;
    Subscription events_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
