#include "platform/linux/x11/HotKeySession.h"

namespace nettlecap::test {

namespace {

template <class T>
X11Reply<T> owned(T* reply) {
    return X11Reply<T>(reply);
}

}  // namespace

OtherGrabber::OtherGrabber()
    : xcb_(xcb_connect(nullptr, nullptr)), root_(xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data->root) {}

OtherGrabber::~OtherGrabber() { xcb_disconnect(xcb_); }

bool OtherGrabber::take(xcb_keycode_t key, std::uint16_t modifiers) {
    const auto cookie =
        xcb_grab_key_checked(xcb_, 0, root_, modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    return !owned(xcb_request_check(xcb_, cookie));
}

void OtherGrabber::giveBack(xcb_keycode_t key, std::uint16_t modifiers) {
    owned(xcb_request_check(xcb_, xcb_ungrab_key_checked(xcb_, key, root_, modifiers)));
}

bool OtherGrabber::isTaken(xcb_keycode_t key, std::uint16_t modifiers) {
    xcb_grab_server(xcb_);
    const bool isFree = take(key, modifiers);
    if (isFree) giveBack(key, modifiers);
    xcb_ungrab_server(xcb_);
    xcb_flush(xcb_);
    return !isFree;
}

int OtherGrabber::presses() {
    while (const auto event = owned(xcb_poll_for_event(xcb_)))
        if ((event->response_type & ~0x80) == XCB_KEY_PRESS) ++presses_;
    return presses_;
}

void OtherGrabber::kill(xcb_window_t window) {
    owned(xcb_request_check(xcb_, xcb_kill_client_checked(xcb_, window)));
}

std::vector<xcb_window_t> OtherGrabber::windows() const {
    const auto tree = owned(xcb_query_tree_reply(xcb_, xcb_query_tree(xcb_, root_), nullptr));
    if (!tree) return {};
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + tree->children_len};
}

X11HotKeysTest::X11HotKeysTest() {
    auto opened = X11HotKeys::open();
    EXPECT_TRUE(opened);
    hotKeys = std::move(*opened);
    (void)hotKeys->installHandler([this](const HotKeyEvent* event) {
        told_ += std::to_string(event->id.id) + (event->kind == HotKeyEvent::pressed ? "+" : "-");
        return 0;
    });
    (void)add(124, hotKeyModifier::control | hotKeyModifier::shift, 99);
}

Registered<HotKeyReference> X11HotKeysTest::add(KeyCode code, std::uint32_t modifiers, std::uint32_t id) {
    return hotKeys->registerHotKey({.keyCode = code, .modifiers = modifiers, .id = {.id = id}});
}

bool X11HotKeysTest::tells(const std::string& expected) {
    const bool told = waitFor([&] { return told_.size() >= expected.size(); });
    EXPECT_EQ(told_, expected);
    return told && std::exchange(told_, {}) == expected;
}

std::string X11HotKeysTest::toldAll() {
    user.type({key::control, key::shift, arrowRight});
    EXPECT_TRUE(waitFor([&] { return told_.ends_with("99+99-"); })) << told_;
    auto all = std::exchange(told_, {});
    all.resize(all.size() - std::min<std::size_t>(all.size(), 6));
    return all;
}

std::string X11HotKeysTest::told(std::initializer_list<xcb_keycode_t> chord) {
    user.type(chord);
    return toldAll();
}

}  // namespace nettlecap::test
