#include "platform/linux/x11/X11Workspace.h"

#include "platform/linux/x11/PropertyText.h"
#include "platform/linux/x11/X11WindowTraits.h"

#include <csignal>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>

namespace nettlecap {

namespace {

constexpr std::string_view activeWindowName = "_NET_ACTIVE_WINDOW";
constexpr std::string_view managerWindowName = "_NET_SUPPORTING_WM_CHECK";
constexpr std::array<std::string_view, 6> propertyNames{
    activeWindowName, managerWindowName, "_NET_WM_PID", "WM_CLASS", "WM_CLIENT_MACHINE", "WM_TRANSIENT_FOR",
};
constexpr int longestChain = 16;  // from a focus window up to its frame

std::optional<std::string> processName(std::int64_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/comm");
    std::string name;
    if (!std::getline(file, name) || name.empty()) return std::nullopt;
    return propertyText::validUtf8(name);
}

/// Ended, or waiting for its parent to take notice of its end.
bool isGone(std::int64_t process) {
    if (::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH) return true;
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string line;
    std::getline(file, line);
    const auto name = line.rfind(')');  // the state comes after the name, which may hold anything
    return name != std::string::npos && line.find_first_of("ZX", name) == name + 2;
}

/// The window aside: of two windows of one application only the first comes to the front.
bool isSameApplication(const RunningApplication& a, const RunningApplication& b) {
    return a.processIdentifier == b.processIdentifier && a.localizedName == b.localizedName &&
           a.bundleIdentifier == b.bundleIdentifier;
}

}  // namespace

X11Workspace::X11Workspace(X11Connection& connection, X11Inquiry& inquiry, DesktopEntries& entries)
    : connection_(connection), inquiry_(inquiry), entries_(entries) {
    inquiry_.atoms().prefetch(propertyNames);
    watchActiveWindow();
    look();
    told_ = front_;
}

void X11Workspace::activate(const RunningApplication& application) {
    if (!inquiry_.canAnswer() || !isStillItsWindow(application)) return;
    // A window manager takes no notice of what is older than the last thing the user did.
    const auto time = connection_.serverTime();
    if (!time) return;
    const auto window = static_cast<xcb_window_t>(application.handle);
    if (!activeWindow()) return raise(window, *time);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = inquiry_.atoms().of(activeWindowName);
    message.data.data32[0] = 2;  // as from a pager: it is the user who wants it
    message.data.data32[1] = *time;
    xcb_send_event(inquiry_.xcb(), 0, inquiry_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(inquiry_.xcb());
}

RunningApplication X11Workspace::current() const {
    return {
        .processIdentifier = ::getpid(),
        .localizedName = "Nettlecap",
        .bundleIdentifier = "com.nettlecap.Nettlecap",
    };
}

std::optional<RunningApplication> X11Workspace::frontmostApplication() const {
    look();
    return front_;
}

bool X11Workspace::isTerminated(const RunningApplication& application) const {
    const auto process = application.processIdentifier;
    if (process && !isGone(*process)) return false;
    return !isStillItsWindow(application) && (process || inquiry_.canAnswer());
}

WindowClass X11Workspace::windowClassOf(const RunningApplication& application) const {
    const auto traits =
        X11WindowTraits::readWithOwners(inquiry_, static_cast<xcb_window_t>(application.handle));
    return traits ? traits->windowClass : WindowClass();
}

Subscription X11Workspace::onActivation(std::function<void(const RunningApplication&)> handler) {
    return activated_.subscribe(std::move(handler));
}

void X11Workspace::watchActiveWindow() {
    xcb_connection_t* xcb = connection_.xcb();
    // The connection may watch the root window for somebody else already.
    const X11Reply<xcb_get_window_attributes_reply_t> root(
        xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, connection_.root()), nullptr));
    const std::uint32_t mask = (root ? root->your_event_mask : 0U) | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb, connection_.root(), XCB_CW_EVENT_MASK, &mask);

    const auto activeWindow = inquiry_.atoms().of(activeWindowName);
    events_ = connection_.onEvent([this, activeWindow](const xcb_generic_event_t& event) {
        if ((event.response_type & ~0x80) != XCB_PROPERTY_NOTIFY) return;
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.window == connection_.root() && change.atom == activeWindow) tellActivation();
    });
    connection_.flush();
}

void X11Workspace::tellActivation() {
    look();
    if (!front_ || (told_ && isSameApplication(*front_, *told_))) return;
    told_ = front_;
    activated_.emit(RunningApplication(*told_));
}

void X11Workspace::look() const {
    if (!inquiry_.canAnswer()) return;
    const auto window = windowInFront();
    auto application = window == XCB_WINDOW_NONE ? std::nullopt : applicationOf(window);
    const bool isBetween = !application && front_ && isViewable(static_cast<xcb_window_t>(front_->handle));
    if (!inquiry_.canAnswer() || isBetween) return;
    front_ = std::move(application);
}

xcb_window_t X11Workspace::windowInFront() const {
    const auto active = activeWindow();
    return active ? *active : clientWithFocus();
}

/// Absent: no window manager is there that tells.
std::optional<xcb_window_t> X11Workspace::activeWindow() const {
    const auto activeQuestion = inquiry_.askProperty(inquiry_.root(), activeWindowName);
    const auto managerQuestion = inquiry_.askProperty(inquiry_.root(), managerWindowName);
    const auto active = inquiry_.propertyNumber(activeQuestion);
    const auto manager = inquiry_.propertyNumber(managerQuestion);
    if (!active || !manager) return std::nullopt;
    // A manager that died leaves its properties on the root window, but not its own window.
    if (inquiry_.propertyNumber(inquiry_.askProperty(*manager, managerWindowName)) != manager)
        return std::nullopt;
    return active;
}

/// The focus may be on a window inside the client's, which the manager marks with WM_STATE.
xcb_window_t X11Workspace::clientWithFocus() const {
    const auto focus =
        inquiry_.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(inquiry_.xcb()).sequence);
    auto window = focus ? focus->focus : static_cast<xcb_window_t>(XCB_INPUT_FOCUS_NONE);
    for (int i = 0; i < longestChain && window > XCB_INPUT_FOCUS_POINTER_ROOT; ++i) {
        const auto stateQuestion = inquiry_.askProperty(window, "WM_STATE");
        const auto treeQuestion = xcb_query_tree(inquiry_.xcb(), window).sequence;
        const bool isClient = inquiry_.propertyBytes(stateQuestion).has_value();
        const auto tree = inquiry_.reply<xcb_query_tree_reply_t>(treeQuestion);
        if (isClient) return window;
        window = tree ? tree->parent : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    }
    return XCB_WINDOW_NONE;
}

bool X11Workspace::isViewable(xcb_window_t window) const {
    const auto attributes = inquiry_.reply<xcb_get_window_attributes_reply_t>(
        xcb_get_window_attributes(inquiry_.xcb(), window).sequence);
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

/// The server gives the number of a window that is gone to another one, sooner or later.
bool X11Workspace::isStillItsWindow(const RunningApplication& application) const {
    const auto window = static_cast<xcb_window_t>(application.handle);
    const auto present = window == XCB_WINDOW_NONE ? std::nullopt : applicationOf(window);
    if (!present || present->processIdentifier != application.processIdentifier) return false;
    return application.processIdentifier || present->bundleIdentifier == application.bundleIdentifier;
}

/// For where no window manager does it.
void X11Workspace::raise(xcb_window_t window, xcb_timestamp_t time) const {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(inquiry_.xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_set_input_focus(inquiry_.xcb(), XCB_INPUT_FOCUS_POINTER_ROOT, window, time);
    xcb_flush(inquiry_.xcb());
}

std::optional<RunningApplication> X11Workspace::applicationOf(xcb_window_t window) const {
    const auto traits = X11WindowTraits::readWithOwners(inquiry_, window);
    if (!traits) return std::nullopt;
    auto application = current();
    application.handle = window;
    if (traits->process == application.processIdentifier) return application;

    const auto entry = entries_.find(traits->windowClass);
    application.processIdentifier = traits->process;
    application.localizedName = entry ? entry->name : nameWithoutEntry(*traits);
    application.bundleIdentifier = entry ? std::optional(entry->identifier) : std::nullopt;
    return application;
}

std::optional<std::string> X11Workspace::nameWithoutEntry(const X11WindowTraits& traits) const {
    if (!traits.windowClass.name.empty()) return traits.windowClass.name;
    if (!traits.windowClass.instance.empty()) return traits.windowClass.instance;
    return traits.process ? processName(*traits.process) : std::nullopt;
}

}  // namespace nettlecap
