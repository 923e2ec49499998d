#include "platform/linux/x11/X11Workspace.h"

#include "platform/linux/x11/PropertyText.h"

#include <unistd.h>

#include <array>
#include <fstream>

namespace nettlecap {

namespace {

constexpr std::string_view activeWindowName = "_NET_ACTIVE_WINDOW";
constexpr std::string_view managerWindowName = "_NET_SUPPORTING_WM_CHECK";
constexpr std::array<std::string_view, 6> propertyNames{
    activeWindowName, managerWindowName, "_NET_WM_PID", "WM_CLASS", "WM_CLIENT_MACHINE", "WM_TRANSIENT_FOR",
};
constexpr int longestChain = 16;  // of transient windows, and from a focus window up to its frame

/// Latin-1 by ICCCM, but toolkits write UTF-8 there.
std::string textOf(std::string_view bytes) {
    auto text = propertyText::validUtf8(bytes);
    return text == bytes ? text : propertyText::utf8FromLatin1(bytes);
}

/// Two strings, each with a zero behind it.
WindowClass windowClassOf(std::string_view bytes) {
    const auto end = std::min(bytes.find('\0'), bytes.size());
    auto name = bytes.substr(std::min(end + 1, bytes.size()));
    name = name.substr(0, name.find('\0'));
    return {.instance = textOf(bytes.substr(0, end)), .name = textOf(name)};
}

/// Some write the host's name with its domain and some without.
bool isThisHost(std::string_view machine) {
    std::array<char, 256> buffer{};
    if (::gethostname(buffer.data(), buffer.size() - 1) != 0) return true;
    const std::string_view host(buffer.data());
    if (machine == host || machine == "localhost") return true;
    if (machine.find('.') != std::string_view::npos && host.find('.') != std::string_view::npos) return false;
    return machine.substr(0, machine.find('.')) == host.substr(0, host.find('.'));
}

std::optional<std::string> processName(std::int64_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/comm");
    std::string name;
    if (!std::getline(file, name) || name.empty()) return std::nullopt;
    return propertyText::validUtf8(name);
}

/// The window aside: of two windows of one application only the first comes to the front.
bool isSameApplication(const RunningApplication& a, const RunningApplication& b) {
    return a.processIdentifier == b.processIdentifier && a.localizedName == b.localizedName &&
           a.bundleIdentifier == b.bundleIdentifier;
}

}  // namespace

/// What a window says of where it belongs.
struct X11Workspace::Traits {
    std::optional<std::int64_t> process;  ///< on this host
    WindowClass windowClass;
    xcb_window_t transientFor = XCB_WINDOW_NONE;

    bool hasClass() const { return !windowClass.instance.empty() || !windowClass.name.empty(); }
};

X11Workspace::X11Workspace(X11Connection& connection, X11Inquiry& inquiry, DesktopEntries& entries)
    : connection_(connection), inquiry_(inquiry), entries_(entries) {
    inquiry_.atoms().prefetch(propertyNames);
    watchActiveWindow();
    look();
    told_ = front_;
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

/// Absent: the window is gone.
std::optional<X11Workspace::Traits> X11Workspace::traitsOf(xcb_window_t window) const {
    const auto existence = xcb_get_geometry(inquiry_.xcb(), window).sequence;
    const auto process = inquiry_.askProperty(window, "_NET_WM_PID");
    const auto windowClass = inquiry_.askProperty(window, "WM_CLASS");
    const auto machine = inquiry_.askProperty(window, "WM_CLIENT_MACHINE");
    const auto parent = inquiry_.askProperty(window, "WM_TRANSIENT_FOR");

    const bool exists = inquiry_.reply<xcb_get_geometry_reply_t>(existence) != nullptr;
    Traits traits{
        .process = inquiry_.propertyNumber(process),
        .windowClass = windowClassOf(inquiry_.propertyBytes(windowClass).value_or("")),
    };
    // Without a machine it is ours: the ones that leave it out know of no network.
    const auto machineName = inquiry_.propertyBytes(machine);
    if (machineName && !isThisHost(machineName->c_str())) traits.process.reset();
    traits.transientFor = inquiry_.propertyNumber(parent).value_or(XCB_WINDOW_NONE);
    if (!exists) return std::nullopt;
    return traits;
}

std::optional<RunningApplication> X11Workspace::applicationOf(xcb_window_t window) const {
    auto traits = traitsOf(window);
    if (!traits) return std::nullopt;
    // A dialog may leave to its main window what that says already.
    for (int i = 0; i < longestChain && traits->transientFor != XCB_WINDOW_NONE; ++i) {
        if (traits->process && traits->hasClass()) break;
        const auto owner = traitsOf(traits->transientFor);
        if (!owner) break;
        if (!traits->process) traits->process = owner->process;
        if (!traits->hasClass()) traits->windowClass = owner->windowClass;
        traits->transientFor = owner->transientFor;
    }
    auto application = current();
    application.handle = window;
    if (traits->process == application.processIdentifier) return application;

    const auto entry = entries_.find(traits->windowClass);
    application.processIdentifier = traits->process;
    application.localizedName = entry ? entry->name : nameWithoutEntry(*traits);
    application.bundleIdentifier = entry ? std::optional(entry->identifier) : std::nullopt;
    return application;
}

std::optional<std::string> X11Workspace::nameWithoutEntry(const Traits& traits) const {
    if (!traits.windowClass.name.empty()) return traits.windowClass.name;
    if (!traits.windowClass.instance.empty()) return traits.windowClass.instance;
    return traits.process ? processName(*traits.process) : std::nullopt;
}

}  // namespace nettlecap
