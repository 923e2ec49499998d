#include "platform/linux/x11/X11Connection.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <poll.h>
#include <xcb/xcbext.h>

namespace nettlecap {

namespace {

constexpr std::chrono::milliseconds serverPatience(1000);
constexpr std::chrono::milliseconds turn(8);  // at the main loop, however much there is to tell
constexpr std::size_t mostUnanswered = 256;   // windows, each a few hundred bytes in the server

std::string describe(int error) {
    switch (error) {
    case XCB_CONN_CLOSED_EXT_NOTSUPPORTED: return "the X server lacks an extension";
    case XCB_CONN_CLOSED_MEM_INSUFFICIENT: return "not enough memory for the X connection";
    case XCB_CONN_CLOSED_PARSE_ERR: return "DISPLAY names no X server";
    case XCB_CONN_CLOSED_INVALID_SCREEN: return "the X server has no such screen";
    default: return "cannot connect to the X server";
    }
}

const xcb_screen_t* screenAt(xcb_connection_t* xcb, int number) {
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb)); screens.rem > 0;
         xcb_screen_next(&screens))
        if (number-- == 0) return screens.data;
    return nullptr;
}

}  // namespace

struct X11Connection::MainLoop {
    explicit MainLoop(X11Connection& connection)
        : readable(xcb_get_file_descriptor(connection.xcb_), QSocketNotifier::Read) {
        const auto drain = [&connection] { connection.drain(); };
        QObject::connect(&readable, &QSocketNotifier::activated, &readable, drain);
        // A reply that was read while waiting for another one can leave events in the queue
        // without waking the descriptor: the loop must not sleep on them.
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                         &readable, drain);
        later.setSingleShot(true);
        later.callOnTimeout(drain);
    }

    QSocketNotifier readable;
    QTimer later;  // once others had their turn
};

Result<std::unique_ptr<X11Connection>> X11Connection::open() {
    int number = 0;
    xcb_connection_t* xcb = xcb_connect(nullptr, &number);
    const int error = xcb_connection_has_error(xcb);
    const xcb_screen_t* screen = error == 0 ? screenAt(xcb, number) : nullptr;
    if (!screen) {
        xcb_disconnect(xcb);
        return Failure{describe(error == 0 ? XCB_CONN_CLOSED_INVALID_SCREEN : error)};
    }
    return std::unique_ptr<X11Connection>(new X11Connection(xcb, screen));
}

X11Connection::X11Connection(xcb_connection_t* xcb, const xcb_screen_t* screen)
    : xcb_(xcb), screen_(screen), atoms_(*this), clockWindow_(xcb_generate_id(xcb)),
      loop_(std::make_unique<MainLoop>(*this)) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb_, 0, clockWindow_, root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
}

X11Connection::~X11Connection() {
    loop_.reset();
    xcb_disconnect(xcb_);
}

void X11Connection::awaitAny(unsigned sequence, ReplyHandler handler) {
    awaited_.emplace(awaitedCount_++, std::pair(sequence, std::move(handler)));
}

void X11Connection::drain() {
    if (lost_) return endAwaited();
    const auto end = Steady::now() + turn;
    // Looking for an event reads replies too, and handlers may read events: none of them wakes
    // the descriptor any more.
    for (bool isMore = true; isMore;) {
        Event event = nextEvent();
        isMore = deliverReplies(end) || event;
        if (Steady::now() >= end) {
            if (event) readAhead_.push_front(std::move(event));
            return drainLater();
        }
        if (!event) continue;
        destroyIfAnswered(*event);
        event_.emit(*event);
    }
    xcb_flush(xcb_);
    endWhenLost();
}

/// Whoever floods us must not stop the program.
void X11Connection::drainLater() {
    loop_->later.start(0);
    xcb_flush(xcb_);
}

void X11Connection::destroyOnceAnswered(xcb_window_t window) {
    unanswered_.push_back(window);
    if (unanswered_.size() <= mostUnanswered) return;
    xcb_destroy_window(xcb_, unanswered_.front());
    unanswered_.pop_front();
}

void X11Connection::destroyIfAnswered(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != XCB_SELECTION_NOTIFY) return;
    const auto window = reinterpret_cast<const xcb_selection_notify_event_t&>(event).requestor;
    if (std::erase(unanswered_, window) > 0) xcb_destroy_window(xcb_, window);
}

X11Connection::Event X11Connection::nextEvent() {
    if (readAhead_.empty() && !readEvents()) return nullptr;
    Event event = std::move(readAhead_.front());
    readAhead_.pop_front();
    return event;
}

bool X11Connection::readEvents() {
    const std::size_t before = readAhead_.size();
    while (Event event{xcb_poll_for_event(xcb_)}) readAhead_.push_back(std::move(event));
    return readAhead_.size() > before;
}

void* X11Connection::waitForAny(unsigned sequence) {
    const auto end = Steady::now() + serverPatience;
    xcb_flush(xcb_);
    for (;;) {
        const bool readSome = readEvents();
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(xcb_, sequence, &reply, &error) != 0) {
            std::free(error);
            readEvents();  // which came before the reply
            return reply;
        }
        if (readSome) continue;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Steady::now());
        if (left.count() <= 0) break;
        pollfd readable{.fd = xcb_get_file_descriptor(xcb_), .events = POLLIN, .revents = 0};
        (void)poll(&readable, 1, static_cast<int>(left.count()));  // interrupted: the next turn goes on
    }
    xcb_discard_reply(xcb_, sequence);
    return nullptr;
}

bool X11Connection::hasMoreToTell() {
    (void)waitFor<xcb_get_input_focus_reply_t>(xcb_get_input_focus(xcb_).sequence);
    return !readAhead_.empty();
}

bool X11Connection::isAhead(const std::function<bool(const xcb_generic_event_t&)>& kind) const {
    return std::ranges::any_of(readAhead_, [&](const Event& event) { return kind(*event); });
}

std::optional<xcb_timestamp_t> X11Connection::serverTime() {
    // Appending nothing changes nothing and is told all the same, with the time (ICCCM 2.1).
    xcb_change_property(xcb_, XCB_PROP_MODE_APPEND, clockWindow_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                        nullptr);
    const auto barrier = xcb_get_input_focus(xcb_);
    if (!waitFor<xcb_get_input_focus_reply_t>(barrier.sequence)) return std::nullopt;
    const auto tellsTime = [this](const Event& event) {
        return (event->response_type & 0x7F) == XCB_PROPERTY_NOTIFY &&
               reinterpret_cast<const xcb_property_notify_event_t&>(*event).window == clockWindow_;
    };
    const auto told = std::ranges::find_if(readAhead_, tellsTime);
    if (told == readAhead_.end()) return std::nullopt;
    const xcb_timestamp_t time = reinterpret_cast<const xcb_property_notify_event_t&>(**told).time;
    readAhead_.erase(told);
    return time;
}

/// Whether there were any.
bool X11Connection::deliverReplies(Steady::time_point end) {
    bool wereAny = false;
    while (!awaited_.empty() && Steady::now() < end) {
        const auto next = awaited_.begin();
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(xcb_, next->second.first, &answer, &error) == 0) break;
        const X11Reply<void> reply(answer);
        const X11Reply<xcb_generic_error_t> failure(error);
        const ReplyHandler handler = std::move(next->second.second);
        awaited_.erase(next);
        wereAny = true;
        handler(reply.get());
    }
    return wereAny;
}

void X11Connection::endWhenLost() {
    if (lost_ || xcb_connection_has_error(xcb_) == 0) return;
    lost_ = true;
    loop_->readable.setEnabled(false);
    endAwaited();
    lostSignal_.emit();
}

void X11Connection::endAwaited() {
    while (!awaited_.empty()) {
        const ReplyHandler handler = std::move(awaited_.begin()->second.second);
        awaited_.erase(awaited_.begin());
        handler(nullptr);
    }
}

}  // namespace nettlecap
