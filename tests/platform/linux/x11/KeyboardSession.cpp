#include "platform/linux/x11/KeyboardSession.h"

namespace nettlecap::test {

KeyRecorder::KeyRecorder(const OtherWindow& window) : window_(window) {
    const std::uint32_t keys = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_change_window_attributes(window_.xcb(), window_.id(), XCB_CW_EVENT_MASK, &keys);
    catchUp();
}

void KeyRecorder::catchUp() const {
    const X11Reply<xcb_get_input_focus_reply_t> barrier(
        xcb_get_input_focus_reply(window_.xcb(), xcb_get_input_focus(window_.xcb()), nullptr));
}

const std::string& KeyRecorder::keys() {
    catchUp();
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(window_.xcb())}) {
        const auto kind = event->response_type & 0x7F;
        if (kind != XCB_KEY_PRESS && kind != XCB_KEY_RELEASE) continue;
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
        if (!keys_.empty()) keys_ += ' ';
        keys_ += (kind == XCB_KEY_PRESS ? '+' : '-') + std::to_string(key.detail) + '/' +
                 std::to_string(key.state);
    }
    return keys_;
}

KeyboardSession::KeyboardSession() {
    auto opened = X11Pasteboard::open({*session.connection, time, time, background});
    EXPECT_TRUE(opened);
    pasteboard = std::move(*opened);
    auto keys = X11HotKeys::open();
    EXPECT_TRUE(keys);
    hotKeys = std::move(*keys);
    keyboard = std::make_unique<X11Keyboard>(X11Keyboard::Parts{.inquiry = *session.inquiry,
                                                                .keys = session.raw->keyTable(),
                                                                .workspace = *session.workspace,
                                                                .entries = session.entries,
                                                                .pasteboard = *pasteboard,
                                                                .hotKeys = *hotKeys});
}

bool KeyboardSession::paste() {
    const KeyEvent down{.keyCode = keyCode::v, .flags = modifier::command, .isDown = true};
    const KeyEvent up{.keyCode = keyCode::v, .flags = modifier::command, .isDown = false};
    return keyboard->post(std::array{down, up});
}

KeyRecorder& KeyboardSession::openRecorder(const std::string& windowClass) {
    return record(session.openNamed(windowClass));
}

KeyRecorder& KeyboardSession::record(const OtherWindow& window) {
    // Openbox gives the focus a moment after it has called the window active.
    EXPECT_TRUE(waitFor([&] { return session.user.hasKeyboard(window.id()); }));
    recorders_.push_back(std::make_unique<KeyRecorder>(window));
    return *recorders_.back();
}

void KeyboardSession::putOnClipboard(const std::string& text) {
    pasteboard->clearContents();
    EXPECT_TRUE(pasteboard->write({.forms = {{.type = std::string(pasteboardType::text),
                                              .bytes = [bytes = Bytes(text)] { return bytes; }}}}));
}

bool KeyboardSession::runUntil(const std::function<bool()>& condition) {
    return waitFor([&] {
        background.runAll();
        time.advance(Seconds(0));
        return condition();
    });
}

xcb_window_t KeyboardSession::ownerOf(const char* selection) {
    xcb_connection_t* xcb = session.user.xcb();
    const xcb_atom_t atom = session.connection->atoms().of(selection);
    const X11Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, atom), nullptr));
    return owner ? owner->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

}  // namespace nettlecap::test
