#include "platform/linux/x11/DesktopUser.h"

#include "platform/linux/x11/XkbProtocol.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xtest.h>

namespace nettlecap::test {

namespace {

template <class T>
std::unique_ptr<T, void (*)(void*)> owned(T* reply) {
    return {reply, std::free};
}

xcb_window_t rootOf(xcb_connection_t* xcb) { return xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root; }

xcb_atom_t atom(xcb_connection_t* xcb, const std::string& name) {
    const auto cookie = xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto reply = owned(xcb_intern_atom_reply(xcb, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void sync(xcb_connection_t* xcb) { owned(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr)); }

bool isViewable(xcb_connection_t* xcb, xcb_window_t window) {
    const auto reply =
        owned(xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

}  // namespace

bool waitFor(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(30'000);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QTimer::singleShot(2, QCoreApplication::instance(), [] {});
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

std::string propertyOf(xcb_connection_t* xcb, xcb_window_t window, const std::string& name) {
    const auto cookie = xcb_get_property(xcb, 0, window, atom(xcb, name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1000);
    const auto reply = owned(xcb_get_property_reply(xcb, cookie, nullptr));
    if (!reply) return {};
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), length};
}

OtherWindow::OtherWindow(const Appearance& appearance)
    : xcb_(xcb_connect(nullptr, nullptr)), window_(xcb_generate_id(xcb_)) {
    const std::uint32_t unmanaged = appearance.isManaged ? 0 : 1;
    xcb_create_window(xcb_, XCB_COPY_FROM_PARENT, window_, rootOf(xcb_), appearance.x, appearance.y, 200, 150,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &unmanaged);
    if (appearance.windowClass) setClass(*appearance.windowClass);
    if (appearance.machine) setText("WM_CLIENT_MACHINE", *appearance.machine);
    if (appearance.process)
        xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, window_, atom(xcb_, "_NET_WM_PID"),
                            XCB_ATOM_CARDINAL, 32, 1, &*appearance.process);
    if (appearance.transientFor != XCB_WINDOW_NONE)
        xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW,
                            32, 1, &appearance.transientFor);
    if (appearance.isPanel) {
        const xcb_atom_t dock = atom(xcb_, "_NET_WM_WINDOW_TYPE_DOCK");
        xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, window_, atom(xcb_, "_NET_WM_WINDOW_TYPE"),
                            XCB_ATOM_ATOM, 32, 1, &dock);
    }
    const std::array<std::uint32_t, 18> userPosition{1};  // WM_NORMAL_HINTS, flag USPosition
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, userPosition.size(), userPosition.data());
    xcb_map_window(xcb_, window_);
    EXPECT_TRUE(waitFor([this] { return isViewable(xcb_, window_); }));
}

OtherWindow::~OtherWindow() { quit(); }

void OtherWindow::setClass(const std::string& windowClass) { setText("WM_CLASS", windowClass); }

void OtherWindow::unmap() {
    xcb_unmap_window(xcb_, window_);
    sync(xcb_);
}

void OtherWindow::quit() {
    if (!xcb_) return;
    xcb_destroy_window(xcb_, window_);
    sync(xcb_);
    xcb_disconnect(xcb_);
    xcb_ = nullptr;
}

bool OtherWindow::grabKeyboard(std::uint8_t mode) {
    const auto cookie = xcb_grab_keyboard(xcb_, 1, window_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, mode);
    const auto reply = owned(xcb_grab_keyboard_reply(xcb_, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void OtherWindow::thaw() {
    xcb_allow_events(xcb_, XCB_ALLOW_ASYNC_KEYBOARD, XCB_CURRENT_TIME);
    sync(xcb_);
}

bool OtherWindow::grabPointer() {
    const auto cookie =
        xcb_grab_pointer(xcb_, 0, window_, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const auto reply = owned(xcb_grab_pointer_reply(xcb_, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void OtherWindow::grabServer() {
    xcb_grab_server(xcb_);
    sync(xcb_);
}

void OtherWindow::ungrabServer() {
    xcb_ungrab_server(xcb_);
    sync(xcb_);
}

void OtherWindow::setText(const char* property, const std::string& bytes) {
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, window_, atom(xcb_, property), XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
    sync(xcb_);
}

DesktopUser::DesktopUser() : xcb_(xcb_connect(nullptr, nullptr)), root_(rootOf(xcb_)) {
    const auto version = xcb_xkb_use_extension(xcb_, 1, 0);
    EXPECT_TRUE(owned(xcb_xkb_use_extension_reply(xcb_, version, nullptr)));
}

DesktopUser::~DesktopUser() {
    while (!down_.empty()) release(down_.back());
    lockModifiers(0);
    if (hasChangedLayout_) setLayout("us");
    xcb_disconnect(xcb_);
}

void DesktopUser::activate(xcb_window_t window) {
    EXPECT_TRUE(waitFor([&] {
        askManager(window, "_NET_ACTIVE_WINDOW", 2);  // as a pager does, so that it is not refused
        waitForManager();
        return active() == window;
    }));
}

void DesktopUser::waitForManager() {
    // It answers this in turn, behind everything that the server told it before.
    const xcb_window_t window = xcb_generate_id(xcb_);
    xcb_create_window(xcb_, XCB_COPY_FROM_PARENT, window, root_, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    askManager(window, "_NET_REQUEST_FRAME_EXTENTS", 0);
    EXPECT_TRUE(waitFor([&] { return !propertyOf(xcb_, window, "_NET_FRAME_EXTENTS").empty(); }));
    xcb_destroy_window(xcb_, window);
}

void DesktopUser::askManager(xcb_window_t window, const std::string& request, std::uint32_t value) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(xcb_, request);
    message.data.data32[0] = value;
    xcb_send_event(xcb_, 0, root_, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(xcb_);
}

xcb_window_t DesktopUser::rootWindow(const std::string& property) const {
    const auto bytes = propertyOf(xcb_, root_, property);
    xcb_window_t window = XCB_WINDOW_NONE;
    if (bytes.size() >= sizeof window) std::memcpy(&window, bytes.data(), sizeof window);
    return window;
}

void DesktopUser::setRootWindow(const std::string& property, xcb_window_t window) {
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, root_, atom(xcb_, property), XCB_ATOM_WINDOW, 32, 1,
                        &window);
    sync(xcb_);
}

bool DesktopUser::isDesktopEmpty() const { return propertyOf(xcb_, root_, "_NET_CLIENT_LIST").empty(); }

bool DesktopUser::hasKeyboard(xcb_window_t window) const {
    const auto focus = owned(xcb_get_input_focus_reply(xcb_, xcb_get_input_focus(xcb_), nullptr));
    xcb_window_t holder = focus ? focus->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    while (holder != window && holder > XCB_INPUT_FOCUS_POINTER_ROOT) {
        const auto tree = owned(xcb_query_tree_reply(xcb_, xcb_query_tree(xcb_, holder), nullptr));
        holder = tree ? tree->parent : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    }
    return holder == window;
}

xcb_window_t DesktopUser::waitForWindow(const std::string& title) {
    xcb_window_t found = XCB_WINDOW_NONE;
    // Openbox gives the focus a moment after it has called the window active.
    const bool came = waitFor([&] {
        found = active();
        return found != XCB_WINDOW_NONE &&
               propertyOf(xcb_, found, "WM_NAME").find(title) != std::string::npos && hasKeyboard(found);
    });
    return came ? found : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void DesktopUser::press(xcb_keycode_t key) {
    fake(XCB_KEY_PRESS, key);
    down_.push_back(key);
}

void DesktopUser::release(xcb_keycode_t key) {
    fake(XCB_KEY_RELEASE, key);
    std::erase(down_, key);
}

void DesktopUser::type(std::initializer_list<xcb_keycode_t> chord) {
    for (const xcb_keycode_t key : chord) press(key);
    for (auto key = std::rbegin(chord); key != std::rend(chord); ++key) release(*key);
}

void DesktopUser::moveTo(std::int16_t x, std::int16_t y) { fake(XCB_MOTION_NOTIFY, 0, x, y); }

void DesktopUser::moveInto(xcb_window_t window) {
    const auto place = owned(xcb_translate_coordinates_reply(
        xcb_, xcb_translate_coordinates(xcb_, window, root_, 60, 60), nullptr));
    ASSERT_TRUE(place);
    moveTo(place->dst_x, place->dst_y);
}

void DesktopUser::click(std::uint8_t button) {
    fake(XCB_BUTTON_PRESS, button);
    fake(XCB_BUTTON_RELEASE, button);
}

void DesktopUser::setLayout(const std::string& layout, std::uint8_t group, const std::string& option) {
    hasChangedLayout_ = true;
    QStringList arguments{"-layout", QString::fromStdString(layout), "-option", ""};
    if (!option.empty()) arguments << "-option" << QString::fromStdString(option);
    EXPECT_EQ(QProcess::execute("setxkbmap", arguments), 0);
    lockLayout(group);
}

void DesktopUser::lockLayout(std::uint8_t group) {
    xcb_xkb_latch_lock_state(xcb_, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
    sync(xcb_);
}

void DesktopUser::lockModifiers(std::uint8_t modifiers) {
    xcb_xkb_latch_lock_state(xcb_, XCB_XKB_ID_USE_CORE_KBD, 0xFF, modifiers, 0, 0, 0, 0, 0);
    sync(xcb_);
}

bool DesktopUser::isLocked(std::uint16_t modifier) const {
    const auto state =
        owned(xcb_xkb_get_state_reply(xcb_, xcb_xkb_get_state(xcb_, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return state && (state->lockedMods & modifier) != 0;
}

void DesktopUser::fake(std::uint8_t type, std::uint8_t detail, std::int16_t x, std::int16_t y) {
    xcb_test_fake_input(xcb_, type, detail, XCB_CURRENT_TIME, root_, x, y, 0);
    sync(xcb_);
}

}  // namespace nettlecap::test
