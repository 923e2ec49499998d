#include "platform/linux/x11/X11KeyTable.h"

#include "platform/linux/x11/AnsiKeys.h"
#include "platform/linux/x11/XkbProtocol.h"

#include <bit>
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
    const std::uint16_t states = XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    const xcb_xkb_select_events_details_t layouts{.affectState = XCB_XKB_STATE_PART_GROUP_STATE,
                                                  .stateDetails = XCB_XKB_STATE_PART_GROUP_STATE};
    xcb_xkb_select_events_aux(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, states, 0, 0, 0, 0, &layouts);
    events_ = connection.onEvent([this](const xcb_generic_event_t& event) { receive(event); });
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

    if (control && keysOf(keyCode::c, state.layout)[key]) return keyCode::c;
    if (control && keysOf(keyCode::x, state.layout)[key]) return keyCode::x;
    return std::nullopt;
}

HeldKeys X11KeyTable::keysOf(KeyCode code, std::uint32_t layout) {
    refresh();
    const auto wanted = ansiKey(code);
    if (!wanted || !keymap_) return {};
    // Without any modifier rather than on Shift, where French has its digits.
    for (const std::uint32_t level : {0U, 1U})
        if (const HeldKeys keys = keysCarrying(wanted->symbol, layout, level); keys.any()) return keys;
    HeldKeys keys;
    const xkb_keycode_t position = xkb_keymap_key_by_name(keymap_.get(), wanted->position.c_str());
    if (position < keys.size()) keys.set(position);
    return keys;
}

std::optional<std::uint32_t> X11KeyTable::modifiersFor(ModifierFlags flags) {
    refresh();
    struct Meaning {
        ModifierFlags flag;
        std::uint32_t modifiers;
    };
    const std::uint32_t further = ~(0U | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_CONTROL);
    const Meaning meanings[] = {
        {modifier::shift, modifierKeys_[0].any() ? XCB_MOD_MASK_SHIFT + 0U : 0U},
        {modifier::control, modifierKeys_[2].any() ? XCB_MOD_MASK_CONTROL + 0U : 0U},
        {modifier::option, modifiersCarrying({XKB_KEY_Alt_L, XKB_KEY_Alt_R}) & further},
        {modifier::command, modifiersCarrying({XKB_KEY_Super_L, XKB_KEY_Super_R}) & further}};
    std::uint32_t modifiers = 0;
    for (const Meaning& meaning : meanings) {
        if ((flags & meaning.flag) == 0) continue;
        if (meaning.modifiers == 0) return std::nullopt;
        modifiers |= std::uint32_t{1} << std::countr_zero(meaning.modifiers);  // one bit says it
    }
    return modifiers;
}

ModifierFlags X11KeyTable::flagsOf(std::uint32_t modifiers) {
    ModifierFlags flags = 0;
    for (const ModifierFlags flag : {modifier::shift, modifier::control, modifier::option, modifier::command})
        if (const auto bit = modifiersFor(flag); bit && (modifiers & *bit) != 0) flags |= flag;
    return flags;
}

std::uint32_t X11KeyTable::lockModifiers() {
    refresh();
    std::uint32_t held = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL;
    for (const ModifierFlags flag : {modifier::option, modifier::command})
        held |= modifiersFor(flag).value_or(0);
    return XCB_MOD_MASK_LOCK | (modifiersCarrying({XKB_KEY_Num_Lock, XKB_KEY_Scroll_Lock}) & ~held);
}

std::uint32_t X11KeyTable::modifiersOf(const HeldKeys& held) {
    refresh();
    return modifiersWith(held);
}

HeldKeys X11KeyTable::keysOfModifiers(std::uint32_t modifiers) {
    refresh();
    HeldKeys keys;
    for (std::size_t bit = 0; bit < modifierKeys_.size(); ++bit)
        if ((modifiers & (1U << bit)) != 0) keys |= modifierKeys_[bit];
    return keys;
}

std::uint32_t X11KeyTable::layoutInUse() {
    if (!isAvailable() || !canAnswer()) return layout_;
    const auto question = xcb_xkb_get_state(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD);
    if (const auto state = connection_.waitFor<xcb_xkb_get_state_reply_t>(question.sequence))
        layout_ = state->group;
    return layout_;
}

/// Letters in any case.
HeldKeys X11KeyTable::keysCarrying(xkb_keysym_t symbol, std::uint32_t layout, std::uint32_t level) const {
    HeldKeys keys;
    const auto last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap_.get()), keys.size() - 1);
    for (auto key = xkb_keymap_min_keycode(keymap_.get()); key <= last; ++key) {
        const xkb_keysym_t* symbols = nullptr;
        const auto layouts = xkb_keymap_num_layouts_for_key(keymap_.get(), key);
        if (layouts == 0) continue;
        const int count =
            xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout % layouts, level, &symbols);
        if (count == 1 && xkb_keysym_to_lower(symbols[0]) == symbol) keys.set(key);
    }
    return keys;
}

std::uint32_t X11KeyTable::modifiersWith(const HeldKeys& keys) const {
    std::uint32_t modifiers = 0;
    for (std::size_t bit = 0; bit < modifierKeys_.size(); ++bit)
        if ((modifierKeys_[bit] & keys).any()) modifiers |= 1U << bit;
    return modifiers;
}

/// The bits of those modifiers that have a key with such a symbol, on whatever level.
std::uint32_t X11KeyTable::modifiersCarrying(std::initializer_list<xkb_keysym_t> symbols) const {
    std::uint32_t modifiers = 0;
    const xkb_layout_index_t layouts = keymap_ ? xkb_keymap_num_layouts(keymap_.get()) : 0;
    for (xkb_layout_index_t layout = 0; layout < layouts; ++layout)
        for (const std::uint32_t level : {0U, 1U})
            for (const xkb_keysym_t symbol : symbols)
                modifiers |= modifiersWith(keysCarrying(symbol, layout, level));
    return modifiers;
}

void X11KeyTable::receive(const xcb_generic_event_t& event) {
    if ((event.response_type & ~0x80) != *firstEvent_) return;
    // All of XKB's events share one number, and have their own in the second byte.
    if (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY) {
        isStale_ = true;
        changed_.emit();
    } else if (event.pad0 == XCB_XKB_STATE_NOTIFY) {
        const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
        layout_ = state.group;
        if ((state.changed & XCB_XKB_STATE_PART_GROUP_STATE) != 0) changed_.emit();
    }
}

bool X11KeyTable::canAnswer() {
    using Answer = xcb_get_input_focus_reply_t;  // the server has one for everybody at any time
    xcb_connection_t* xcb = connection_.xcb();
    if (isOverdue_ || connection_.isLost()) return false;
    if (connection_.waitFor<Answer>(xcb_get_input_focus(xcb).sequence)) return true;
    isOverdue_ = true;
    connection_.await<Answer>(xcb_get_input_focus(xcb).sequence, guard_([this](const Answer* answer) {
                                  isOverdue_ = false;
                                  if (answer) changed_.emit();
                              }));
    return false;
}

void X11KeyTable::refresh() {
    // libxkbcommon waits for as long as it takes.
    if (!isStale_ || !isAvailable() || !canAnswer()) return;
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
