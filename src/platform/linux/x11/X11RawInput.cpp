#include "platform/linux/x11/X11RawInput.h"

#include "platform/linux/x11/XkbProtocol.h"

#include <xcb/xinput.h>

namespace nettlecap {

namespace {

/// XInput's number among the server's extensions. Version 2.2 is the first whose raw events
/// come during the grabs of other programs too.
std::optional<std::uint8_t> rawEventsOf(xcb_connection_t* xcb) {
    const auto* extension = xcb_get_extension_data(xcb, &xcb_input_id);
    if (!extension || !extension->present) return std::nullopt;
    const X11Reply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
    if (!version || std::pair(version->major_version, version->minor_version) <
                        std::pair<std::uint16_t, std::uint16_t>(2, 2))
        return std::nullopt;
    return extension->major_opcode;
}

}  // namespace

Result<std::unique_ptr<X11RawInput>> X11RawInput::open() {
    auto connection = X11Connection::open();
    if (!connection) return Failure{connection.description()};
    return std::unique_ptr<X11RawInput>(new X11RawInput(std::move(*connection)));
}

X11RawInput::X11RawInput(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)), extension_(rawEventsOf(connection_->xcb())), table_(*connection_) {
    events_ = connection_->onEvent([this](const xcb_generic_event_t& event) { receive(event); });
}

void X11RawInput::select(bool keys, bool clicks) {
    if (!isAvailable()) return;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t events;
    } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, 0};
    if (keys) mask.events |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    if (clicks) mask.events |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
    xcb_input_xi_select_events(connection_->xcb(), connection_->root(), 1, &mask.head);
    if (keys && !selectsKeys_) followKeyboard();
    selectsKeys_ = keys;
    connection_->flush();
}

/// After the events are selected, so that no key slips through between.
void X11RawInput::followKeyboard() {
    xcb_connection_t* xcb = connection_->xcb();
    const std::uint16_t changes = XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    xcb_xkb_select_events(xcb, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, 0, 0, nullptr);
    const auto stateQuestion = xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD);
    const auto keysQuestion = xcb_query_keymap(xcb);
    const X11Reply<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(xcb, stateQuestion, nullptr));
    const X11Reply<xcb_query_keymap_reply_t> keys(xcb_query_keymap_reply(xcb, keysQuestion, nullptr));
    if (state) keyboard_ = {.modifiers = state->mods, .layout = state->group};
    held_.reset();
    for (std::size_t key = 0; keys && key < held_.size(); ++key)
        held_[key] = (keys->keys[key / 8] & (1U << (key % 8))) != 0;
}

void X11RawInput::receive(const xcb_generic_event_t& event) {
    const auto type = static_cast<std::uint8_t>(event.response_type & ~0x80);
    if (type == XCB_GE_GENERIC) {
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
        if (generic.extension == extension_) receiveRaw(generic);
    } else if (isAvailable() && type == table_.firstEvent() && event.pad0 == XCB_XKB_STATE_NOTIFY) {
        const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
        keyboard_ = {.modifiers = state.mods, .layout = state.group};
    }
}

void X11RawInput::receiveRaw(const xcb_ge_generic_event_t& event) {
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    if (event.event_type == XCB_INPUT_RAW_BUTTON_PRESS) return click(raw.detail);
    if (raw.detail >= held_.size()) return;
    const bool isPress = event.event_type == XCB_INPUT_RAW_KEY_PRESS;
    if (isPress || event.event_type == XCB_INPUT_RAW_KEY_RELEASE) held_[raw.detail] = isPress;
    if (isPress) press(static_cast<xcb_keycode_t>(raw.detail));
}

void X11RawInput::press(xcb_keycode_t key) {
    // XKB tells the state of the first keyboard alone, but with what is latched and locked;
    // a second one with a pointer of its own shows what it holds only in its raw events.
    const KeyState state{keyboard_.modifiers | table_.modifiersOf(held_), keyboard_.layout};
    if (const auto gesture = table_.copyGesture(key, state))
        input_.emit({InputKind::keyDown, modifier::command, *gesture});
}

void X11RawInput::click(std::uint32_t button) {
    if (button == XCB_BUTTON_INDEX_1) input_.emit({.kind = InputKind::leftMouseDown});
    if (button == XCB_BUTTON_INDEX_3) input_.emit({.kind = InputKind::rightMouseDown});
}

}  // namespace nettlecap
