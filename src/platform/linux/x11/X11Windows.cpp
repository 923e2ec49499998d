#include "platform/linux/x11/X11Windows.h"

#include <QGuiApplication>

#include <cstring>

namespace nettlecap {

namespace {

constexpr std::string_view userTimeName = "_NET_WM_USER_TIME";
constexpr std::string_view skipTaskbar = "_NET_WM_STATE_SKIP_TASKBAR";
constexpr std::string_view skipPager = "_NET_WM_STATE_SKIP_PAGER";
constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;  // _NET_WM_DESKTOP
constexpr std::uint32_t fromPager = 2;              // _NET_ACTIVE_WINDOW, the source: never refused

/// Null where Qt's windows are not on an X server.
xcb_connection_t* connectionOfQt() {
    const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native ? native->connection() : nullptr;
}

int numberOfScreen(xcb_connection_t* xcb, xcb_window_t root) {
    int number = 0;
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb)); screens.rem > 0;
         xcb_screen_next(&screens), ++number)
        if (screens.data->root == root) break;
    return number;
}

}  // namespace

void X11Windows::prepareToShow(std::uint64_t window) {
    const auto target = static_cast<xcb_window_t>(window);
    set(target, "_NET_WM_DESKTOP", everyDesktop);  // forgotten at each hiding
    haveUserTime(target);
}

void X11Windows::keepOffTaskbars(std::uint64_t window) {
    setStates(static_cast<xcb_window_t>(window), {skipTaskbar, skipPager});
}

/// Modal for the window manager only: Qt would keep the window below from being closed.
void X11Windows::prepareToCover(std::uint64_t window) {
    setStates(static_cast<xcb_window_t>(window), {skipTaskbar, skipPager, "_NET_WM_STATE_MODAL"});
}

void X11Windows::bringToFront(std::uint64_t window) {
    xcb_connection_t* xcb = connectionOfQt();
    if (!xcb) return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window);
    message.type = inquiry_.atoms().of("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = fromPager;
    // Qt put the time of the last event that it saw itself there when it showed the window.
    message.data.data32[1] = haveUserTime(message.window);
    xcb_send_event(xcb, 0, inquiry_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(xcb);
}

bool X11Windows::isComposited() const {
    const auto selection = "_NET_WM_CM_S" + std::to_string(numberOfScreen(inquiry_.xcb(), inquiry_.root()));
    const auto question = xcb_get_selection_owner(inquiry_.xcb(), inquiry_.atoms().of(selection)).sequence;
    const auto owner = inquiry_.reply<xcb_get_selection_owner_reply_t>(question);
    return owner && owner->owner != XCB_WINDOW_NONE;
}

/// The present, since it was the user who asked for the window, wherever the keys went.
xcb_timestamp_t X11Windows::haveUserTime(xcb_window_t window) {
    const xcb_timestamp_t time = connection_.serverTime().value_or(XCB_CURRENT_TIME);
    if (time == XCB_CURRENT_TIME) return time;
    set(window, userTimeName, time);
    // Where there is a window for the time alone, the manager looks at no other.
    if (const xcb_window_t apart = windowForTime(window); apart != XCB_WINDOW_NONE)
        set(apart, userTimeName, time);
    return time;
}

/// Asked behind what Qt has just done to the window.
xcb_window_t X11Windows::windowForTime(xcb_window_t window) {
    xcb_connection_t* xcb = connectionOfQt();
    if (!xcb) return XCB_WINDOW_NONE;
    const auto question = xcb_get_property(xcb, 0, window, inquiry_.atoms().of("_NET_WM_USER_TIME_WINDOW"),
                                           XCB_ATOM_WINDOW, 0, 1);
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb, question, nullptr));
    if (!reply || reply->value_len == 0) return XCB_WINDOW_NONE;
    xcb_window_t result = XCB_WINDOW_NONE;
    std::memcpy(&result, xcb_get_property_value(reply.get()), sizeof result);
    return result;
}

void X11Windows::set(xcb_window_t window, std::string_view property, std::uint32_t number) {
    xcb_connection_t* xcb = connectionOfQt();
    if (!xcb) return;
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, inquiry_.atoms().of(property), XCB_ATOM_CARDINAL,
                        32, 1, &number);
}

/// Of a window that is not shown yet. Qt adds its own states to them when it shows it, and the
/// window manager takes all of them away when it hides.
void X11Windows::setStates(xcb_window_t window, std::initializer_list<std::string_view> names) {
    xcb_connection_t* xcb = connectionOfQt();
    if (!xcb) return;
    std::vector<xcb_atom_t> states;
    for (const std::string_view name : names) states.push_back(inquiry_.atoms().of(name));
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, inquiry_.atoms().of("_NET_WM_STATE"),
                        XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(states.size()), states.data());
}

}  // namespace nettlecap
