#include "platform/linux/x11/X11KeyTable.h"

#include "platform/linux/x11/XkbProtocol.h"

#include <xkbcommon/xkbcommon-x11.h>

namespace nettlecap {

void X11KeyTable::Free::operator()(xkb_context* context) const { xkb_context_unref(context); }
void X11KeyTable::Free::operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
void X11KeyTable::Free::operator()(xkb_state* state) const { xkb_state_unref(state); }

X11KeyTable::X11KeyTable(X11Connection& connection) : connection_(connection) {
    std::uint8_t first = 0;
    if (xkb_x11_setup_xkb_extension(connection.xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION,
                                    XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS,
                                    nullptr, nullptr, &first, nullptr) == 0)
        return;
    firstEvent_ = first;
    context_.reset(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));

    const std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    const std::uint16_t parts = 0xFF;  // of the map: types, symbols, modifiers and the rest
    xcb_xkb_select_events(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts,
                          nullptr);
    events_ = connection.onEvent([this](const xcb_generic_event_t& event) {
        if ((event.response_type & ~0x80) != *firstEvent_) return;
        // All of XKB's events share one number, and have their own in the second byte.
        if (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY) isStale_ = true;
    });
    connection.flush();
}

X11KeyTable::~X11KeyTable() = default;

std::optional<KeyCode> X11KeyTable::copyGesture(xcb_keycode_t key, KeyState state) {
    const bool control = (state.modifiers & XCB_MOD_MASK_CONTROL) != 0;
    const bool shift = (state.modifiers & XCB_MOD_MASK_SHIFT) != 0;
    if (!control && !shift) return std::nullopt;
    refresh();
    if (!state_) return std::nullopt;

    // Insert and Delete as they are now: those of the keypad come and go with Num Lock.
    xkb_state_update_mask(state_.get(), state.modifiers, 0, 0, 0, 0, state.layout);
    const xkb_keysym_t symbol = xkb_state_key_get_one_sym(state_.get(), key);
    if (control && (symbol == XKB_KEY_Insert || symbol == XKB_KEY_KP_Insert)) return keyCode::c;
    if (shift && (symbol == XKB_KEY_Delete || symbol == XKB_KEY_KP_Delete)) return keyCode::x;

    if (control && keysLabelled(XKB_KEY_c, "AB03", state.layout)[key]) return keyCode::c;
    if (control && keysLabelled(XKB_KEY_x, "AB02", state.layout)[key]) return keyCode::x;
    return std::nullopt;
}

std::uint32_t X11KeyTable::modifiersOf(const HeldKeys& held) {
    refresh();
    std::uint32_t modifiers = 0;
    for (std::size_t bit = 0; bit < modifierKeys_.size(); ++bit)
        if ((modifierKeys_[bit] & held).any()) modifiers |= 1U << bit;
    return modifiers;
}

/// The letter without any modifier, in any case, so that Shift and the locks change nothing.
HeldKeys X11KeyTable::keysLabelled(xkb_keysym_t symbol, const char* ansiPosition,
                                   std::uint32_t layout) const {
    HeldKeys keys;
    const auto last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap_.get()), keys.size() - 1);
    for (auto key = xkb_keymap_min_keycode(keymap_.get()); key <= last; ++key) {
        const xkb_keysym_t* symbols = nullptr;
        const auto layouts = xkb_keymap_num_layouts_for_key(keymap_.get(), key);
        if (layouts == 0) continue;
        const int count = xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout % layouts, 0, &symbols);
        if (count == 1 && xkb_keysym_to_lower(symbols[0]) == symbol) keys.set(key);
    }
    if (keys.any()) return keys;
    const xkb_keycode_t position = xkb_keymap_key_by_name(keymap_.get(), ansiPosition);
    if (position < keys.size()) keys.set(position);
    return keys;
}

void X11KeyTable::refresh() {
    if (!isStale_ || !isAvailable()) return;
    isStale_ = false;
    xcb_connection_t* xcb = connection_.xcb();
    const auto device = xkb_x11_get_core_keyboard_device_id(xcb);
    keymap_.reset(xkb_x11_keymap_new_from_device(context_.get(), xcb, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    state_.reset(keymap_ ? xkb_state_new(keymap_.get()) : nullptr);
    readModifiers();
}

void X11KeyTable::readModifiers() {
    modifierKeys_ = {};
    xcb_connection_t* xcb = connection_.xcb();
    const X11Reply<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(xcb, xcb_get_modifier_mapping(xcb), nullptr));
    if (!mapping) return;
    const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(mapping.get());
    for (std::size_t bit = 0; bit < modifierKeys_.size(); ++bit)
        for (int i = 0; i < mapping->keycodes_per_modifier; ++i, ++keys)
            if (*keys != XCB_NO_SYMBOL) modifierKeys_[bit].set(*keys);
}

}  // namespace nettlecap
