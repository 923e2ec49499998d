#include "platform/linux/x11/X11HotKeys.h"

#include "platform/linux/x11/XkbProtocol.h"

#include <QTimer>
#include <algorithm>

namespace nettlecap {

namespace {

constexpr std::chrono::milliseconds betweenLooks{25};

ModifierFlags flagsOf(std::uint32_t modifiers) {
    ModifierFlags flags = 0;
    if ((modifiers & hotKeyModifier::command) != 0) flags |= modifier::command;
    if ((modifiers & hotKeyModifier::shift) != 0) flags |= modifier::shift;
    if ((modifiers & hotKeyModifier::option) != 0) flags |= modifier::option;
    if ((modifiers & hotKeyModifier::control) != 0) flags |= modifier::control;
    return flags;
}

/// Whether the server tells a key that repeats from one that is pressed again.
bool makeRepeatClear(X11Connection& connection) {
    const std::uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto request =
        xcb_xkb_per_client_flags(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0);
    const auto reply = connection.waitFor<xcb_xkb_per_client_flags_reply_t>(request.sequence);
    return reply && (reply->value & flag) != 0;
}

}  // namespace

Result<std::unique_ptr<X11HotKeys>> X11HotKeys::open() {
    auto connection = X11Connection::open();
    if (!connection) return Failure{connection.description()};
    return std::unique_ptr<X11HotKeys>(new X11HotKeys(std::move(*connection)));
}

X11HotKeys::X11HotKeys(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)), table_(*connection_), grabs_(*connection_, table_),
      presses_([this](HotKeyReference hotKey, std::uint32_t kind) { tell(hotKey, kind); }),
      watching_(std::make_unique<QTimer>()), settling_(std::make_unique<QTimer>()) {
    presses_.setRepeatClear(table_.isAvailable() && makeRepeatClear(*connection_));
    watching_->setSingleShot(true);
    watching_->callOnTimeout([this] { look(); });
    settling_->setSingleShot(true);
    settling_->callOnTimeout([this] {
        presses_.settle();
        watchHeld();
    });
    events_ = connection_->onEvent([this](const xcb_generic_event_t& event) { receive(event); });
    changes_ = table_.onChange([this] { follow(); });
}

X11HotKeys::~X11HotKeys() = default;

Registered<HandlerReference> X11HotKeys::installHandler(Handler handler) {
    if (handler_) return {.status = alreadyInstalled};
    handler_ = {HandlerReference{++lastReference_}, std::move(handler)};
    return {.reference = handler_->first};
}

void X11HotKeys::removeHandler(HandlerReference handler) {
    if (handler_ && handler_->first == handler) handler_.reset();
}

Registered<HotKeyReference> X11HotKeys::registerHotKey(const HotKeyRequest& request) {
    const bool isOurs = std::ranges::any_of(hotKeys_, [&](const auto& registered) {
        return registered.second.keyCode == request.keyCode &&
               registered.second.modifiers == request.modifiers;
    });
    if (isOurs) return {.status = X11KeyGrabs::badAccess};
    if (!table_.canAnswer()) return {.status = X11KeyGrabs::unanswered};
    const KeyGrabs grabs = grabsFor(request);
    if (grabs.empty()) return {.status = X11KeyGrabs::badValue};
    const HotKeyReference reference{++lastReference_};
    if (const Status status = grabs_.take(grabs, reference); status != 0) return {.status = status};
    hotKeys_.emplace(reference, request);
    return {.reference = reference};
}

void X11HotKeys::unregisterHotKey(HotKeyReference hotKey) {
    grabs_.giveUp(hotKey);
    hotKeys_.erase(hotKey);
    presses_.forget(hotKey);
}

void X11HotKeys::standAside(const KeyGrabs& typed, const Task& type) {
    const auto inTheWay = grabs_.ownersOf(typed, locks_);
    if (!holdsKeyboard_ && inTheWay.empty()) return type();
    for (const HotKeyReference hotKey : inTheWay) grabs_.giveUp(hotKey);
    holdKeyboard(false);
    if (table_.canAnswer()) type();  // the keys come over another connection, behind the answer
    if (!inTheWay.empty()) follow();
}

/// Its keys with its modifiers and every combination of locks. None: this keyboard cannot.
KeyGrabs X11HotKeys::grabsFor(const HotKeyRequest& request) {
    const auto modifiers = table_.modifiersFor(flagsOf(request.modifiers));
    if (!modifiers) return {};
    locks_ = table_.lockModifiers();
    const HeldKeys keys = table_.keysOf(request.keyCode, table_.layoutInUse());
    KeyGrabs grabs;
    for (unsigned key = 0; key < keys.size(); ++key)
        for (std::uint32_t locks = locks_; keys[key]; locks = (locks - 1) & locks_) {
            grabs.insert({static_cast<xcb_keycode_t>(key), static_cast<std::uint16_t>(*modifiers | locks)});
            if (locks == 0) break;
        }
    return grabs;
}

/// What is held stays held: a grab at work ends with its key, wherever the hot key went.
void X11HotKeys::follow() {
    if (!table_.canAnswer()) return;  // its answer will be a change again
    std::map<HotKeyReference, KeyGrabs> wanted;
    for (const auto& [hotKey, request] : hotKeys_) wanted.emplace(hotKey, grabsFor(request));
    grabs_.arrange(wanted);
}

void X11HotKeys::receive(const xcb_generic_event_t& event) {
    const auto type = static_cast<std::uint8_t>(event.response_type & ~0x80);
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) return;
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);  // releases look alike
    if (type == XCB_KEY_PRESS)
        press(key);
    else
        presses_.release(key.detail, key.time);
    watchHeld();
}

void X11HotKeys::press(const xcb_key_press_event_t& event) {
    const auto modifiers = static_cast<std::uint16_t>(event.state & 0xFFU & ~locks_);
    const auto hotKey = grabs_.ownerOf({event.detail, modifiers});
    // Without this the keyboard is ours until the key that went down first goes up: the
    // releases of the others would go to whoever is in front.
    if (hotKey && presses_.anyBut(event.detail)) holdKeyboard(true);
    presses_.press(event.detail, event.time, hotKey);
}

void X11HotKeys::tell(HotKeyReference hotKey, std::uint32_t kind) {
    const auto registered = hotKeys_.find(hotKey);
    if (registered == hotKeys_.end() || !handler_) return;
    const HotKeyEvent event{.kind = kind, .id = registered->second.id};
    const Handler handler = handler_->second;  // which may remove itself
    (void)handler(&event);
}

void X11HotKeys::watchHeld() {
    if (presses_.isUnsettled()) settleLater();
    if (!presses_.any()) {
        holdKeyboard(false);
        watching_->stop();
    } else if (!isLooking_ && !watching_->isActive()) {
        watching_->start(betweenLooks);
    }
}

void X11HotKeys::settleLater() {
    // What belongs to the release was sent with it, before this answer.
    using Answer = xcb_get_input_focus_reply_t;
    settling_->stop();
    connection_->await<Answer>(xcb_get_input_focus(connection_->xcb()).sequence,
                               guard_([this, release = ++releases_](const Answer*) {
                                   if (release == releases_) settling_->start(0);  // events first
                               }));
}

void X11HotKeys::look() {
    using Answer = xcb_query_keymap_reply_t;
    isLooking_ = true;
    connection_->await<Answer>(xcb_query_keymap(connection_->xcb()).sequence,
                               guard_([this](const Answer* answer) {
                                   isLooking_ = false;
                                   if (!answer) return;
                                   HeldKeys down;
                                   for (std::size_t key = 0; key < down.size(); ++key)
                                       down[key] = (answer->keys[key / 8] & (1U << (key % 8))) != 0;
                                   presses_.look(down);
                                   watchHeld();
                               }));
}

void X11HotKeys::holdKeyboard(bool holds) {
    if (holdsKeyboard_ == holds) return;
    holdsKeyboard_ = holds;
    xcb_connection_t* xcb = connection_->xcb();
    if (holds) {
        const auto request = xcb_grab_keyboard(xcb, 0, connection_->root(), XCB_CURRENT_TIME,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_discard_reply(xcb, request.sequence);  // refused: another program has it by now
    } else {
        xcb_ungrab_keyboard(xcb, XCB_CURRENT_TIME);
    }
    connection_->flush();
}

}  // namespace nettlecap
