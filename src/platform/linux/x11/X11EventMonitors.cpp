#include "platform/linux/x11/X11EventMonitors.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>

#include <algorithm>

namespace nettlecap {

namespace {

// Window managers take a few milliseconds. Panels and desktops never come to the front.
constexpr std::chrono::milliseconds longestActivation{100};

std::uint32_t bitOf(InputKind kind) { return static_cast<std::uint32_t>(kind); }

EventMonitors::Handler filtered(std::uint32_t mask, EventMonitors::Handler handler) {
    return [mask, handler = std::move(handler)](const InputEvent& event) {
        if ((mask & bitOf(event.kind)) != 0) handler(event);
    };
}

bool isOf(xcb_connection_t* xcb, xcb_window_t window) {
    const xcb_setup_t* setup = xcb_get_setup(xcb);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

/// Everything that Qt shows, pop-ups included, is made by its one connection.
bool isOfQt(xcb_window_t window) {
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    const auto* x11 =
        application ? application->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 && isOf(x11->connection(), window);
}

}  // namespace

/// Looks at what Qt hands to this program's windows. An event passes from the window on to
/// the items in it: it counts at the window, and only as it came from the system.
class X11EventMonitors::LocalInput : public QObject {
public:
    explicit LocalInput(X11KeyTable& keys) : keys_(keys) {
        QCoreApplication::instance()->installEventFilter(this);
    }

    Subscription subscribe(Handler handler) { return input_.subscribe(std::move(handler)); }
    void tell(const InputEvent& event) const { input_.emit(event); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched->isWindowType() && event->spontaneous()) look(*event);
        return false;
    }

private:
    void look(const QEvent& event) {
        if (event.type() == QEvent::KeyPress) lookAtKey(static_cast<const QKeyEvent&>(event));
        if (event.type() != QEvent::MouseButtonPress) return;
        const auto button = static_cast<const QMouseEvent&>(event).button();
        if (button == Qt::LeftButton) input_.emit({.kind = InputKind::leftMouseDown});
        if (button == Qt::RightButton) input_.emit({.kind = InputKind::rightMouseDown});
    }

    void lookAtKey(const QKeyEvent& event) {
        // X's own state: the modifiers, and the layout in bits 13 and 14 (XKB protocol, 2.2.2).
        const std::uint32_t native = event.nativeModifiers();
        const KeyState state{.modifiers = native & 0xFFU, .layout = (native >> 13U) & 3U};
        const auto key = static_cast<xcb_keycode_t>(event.nativeScanCode());
        if (const auto gesture = keys_.copyGesture(key, state))
            input_.emit({InputKind::keyDown, modifier::command, *gesture});
    }

    X11KeyTable& keys_;
    Signal<InputEvent> input_;
};

X11EventMonitors::X11EventMonitors(Workspace& workspace, X11Inquiry& inquiry, X11RawInput& raw,
                                   const X11Connection& connection)
    : workspace_(workspace), inquiry_(inquiry), raw_(raw), connection_(connection),
      local_(std::make_unique<LocalInput>(raw.keyTable())), activationDelay_(std::make_unique<QTimer>()) {
    activationDelay_->setSingleShot(true);
    activationDelay_->callOnTimeout([this] { tellPendingClick(); });
    rawInput_ = raw_.onInput([this](const InputEvent& event) { receive(event); });
    activations_ = workspace_.onActivation([this](const RunningApplication&) { tellPendingClick(); });
}

X11EventMonitors::~X11EventMonitors() { raw_.select(false, false); }

std::optional<Subscription> X11EventMonitors::addGlobal(std::uint32_t mask, Handler handler) {
    if (!raw_.isAvailable()) return std::nullopt;
    auto listening = std::make_shared<Subscription>(global_.subscribe(filtered(mask, std::move(handler))));
    globalMasks_.insert(mask);
    selectRawInput();
    return Subscription(guard_([this, mask, listening] {
        listening->reset();
        globalMasks_.erase(globalMasks_.find(mask));
        selectRawInput();
    }));
}

std::optional<Subscription> X11EventMonitors::addLocal(std::uint32_t mask, Handler handler) {
    return local_->subscribe(filtered(mask, std::move(handler)));
}

/// Asks the server for no more than somebody listens to.
void X11EventMonitors::selectRawInput() {
    std::uint32_t all = 0;
    for (const std::uint32_t mask : globalMasks_) all |= mask;
    const auto clicks = bitOf(InputKind::leftMouseDown) | bitOf(InputKind::rightMouseDown);
    raw_.select((all & bitOf(InputKind::keyDown)) != 0, (all & clicks) != 0);
}

void X11EventMonitors::receive(const InputEvent& event) {
    tellPendingClick();
    if (event.kind != InputKind::keyDown) return receiveClick(event);
    if (!isThisProgramInFront()) global_.emit(event);
}

void X11EventMonitors::receiveClick(const InputEvent& event) {
    const auto clicked = windowsUnderPointer();
    const auto isOurs = [this](xcb_window_t window) { return isOf(connection_.xcb(), window); };
    if (std::ranges::any_of(clicked, isOurs)) return local_->tell(event);
    if (std::ranges::any_of(clicked, isOfQt)) return;
    if (!mayComeToFront(clicked)) return global_.emit(event);

    pendingClick_ = event;
    activationDelay_->start(longestActivation);
}

void X11EventMonitors::tellPendingClick() {
    activationDelay_->stop();
    if (const auto click = std::exchange(pendingClick_, std::nullopt)) global_.emit(*click);
}

bool X11EventMonitors::isThisProgramInFront() const {
    const auto front = workspace_.frontmostApplication();
    return front && front->processIdentifier == workspace_.current().processIdentifier;
}

/// Whether the click was on a program's window (ICCCM marks those with WM_STATE, unlike
/// menus and the like), and on another than the one in front.
bool X11EventMonitors::mayComeToFront(const std::vector<xcb_window_t>& clicked) const {
    const auto front = workspace_.frontmostApplication();
    if (front && std::ranges::find(clicked, front->handle) != clicked.end()) return false;
    return std::ranges::any_of(clicked, [this](xcb_window_t window) {
        return inquiry_.propertyBytes(inquiry_.askProperty(window, "WM_STATE")).has_value();
    });
}

/// From the window that the root window shows there down to the innermost.
std::vector<xcb_window_t> X11EventMonitors::windowsUnderPointer() const {
    constexpr std::size_t deepest = 32;
    std::vector<xcb_window_t> windows;
    xcb_window_t window = inquiry_.root();
    while (inquiry_.canAnswer() && windows.size() < deepest) {
        const auto pointer =
            inquiry_.reply<xcb_query_pointer_reply_t>(xcb_query_pointer(inquiry_.xcb(), window).sequence);
        if (!pointer || pointer->child == XCB_WINDOW_NONE) break;
        window = pointer->child;
        windows.push_back(window);
    }
    return windows;
}

}  // namespace nettlecap
