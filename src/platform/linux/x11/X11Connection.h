#pragma once

#include "platform/Signal.h"
#include "platform/linux/x11/X11Atoms.h"

#include <chrono>
#include <cstdlib>
#include <deque>
#include <map>
#include <xcb/xcb.h>

namespace nettlecap {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

/// What xcb hands out with malloc.
template <class Reply>
using X11Reply = std::unique_ptr<Reply, FreeMemory>;

/// A connection of our own to the X server, driven by Qt's event loop. Nothing here waits
/// for another client: replies are awaited by their sequence number, and everything that is
/// called from the main loop comes through `onEvent` and the handlers of `await`. Errors
/// never end the program. Must not be destroyed from within a handler of its own.
class X11Connection {
public:
    /// To the server that DISPLAY names. Needs a running QCoreApplication.
    static Result<std::unique_ptr<X11Connection>> open();
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    xcb_connection_t* xcb() const { return xcb_; }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    X11Atoms& atoms() { return atoms_; }
    bool isLost() const { return lost_; }

    /// Of a window that asked an owner for a selection and no longer waits: a program that
    /// answers a window that is gone may end of it, as Xlib has it by default. It goes once it
    /// is answered, or when many others have been given up after it.
    void destroyOnceAnswered(xcb_window_t window);

    /// Requests leave by themselves before the main loop sleeps; this sends them at once.
    void flush() { xcb_flush(xcb_); }

    /// Calls the handler from the main loop when the reply to the request `sequence` is
    /// there; with null when the server answered with an error or went away. The reply
    /// belongs to the connection and lives during the call. Never within this call.
    template <class Reply>
    void await(unsigned sequence, std::function<void(const Reply*)> handler) {
        awaitAny(sequence, [handler = std::move(handler)](const void* reply) {
            handler(static_cast<const Reply*>(reply));
        });
    }

    /// Waits for the server, never for another client's answer, and not for ever: null also
    /// when there is no reply within a second. Events that come meanwhile are told later.
    template <class Reply>
    X11Reply<Reply> waitFor(unsigned sequence) {
        return X11Reply<Reply>(static_cast<Reply*>(waitForAny(sequence)));
    }
    /// The server's present time; waits for it like waitFor. Absent: it did not answer.
    std::optional<xcb_timestamp_t> serverTime();

    /// Whether the server has sent events by now that are not told; waits for it like waitFor.
    bool hasMoreToTell();
    /// Whether such an event is here and will be told.
    bool isAhead(const std::function<bool(const xcb_generic_event_t&)>& kind) const;

    /// Tells of every event, and of errors of requests without a reply (response_type 0).
    Subscription onEvent(std::function<void(const xcb_generic_event_t&)> handler) const {
        return event_.subscribe(std::move(handler));
    }
    /// The server is gone: told once, after the last handler was called with null.
    Subscription onLost(Task handler) const { return lostSignal_.subscribe(std::move(handler)); }

private:
    using ReplyHandler = std::function<void(const void*)>;
    using Event = X11Reply<xcb_generic_event_t>;
    using Steady = std::chrono::steady_clock;
    struct MainLoop;

    X11Connection(xcb_connection_t* xcb, const xcb_screen_t* screen);
    void awaitAny(unsigned sequence, ReplyHandler handler);
    void* waitForAny(unsigned sequence);
    bool readEvents();
    void destroyIfAnswered(const xcb_generic_event_t& event);
    Event nextEvent();
    void drain();
    void drainLater();
    bool deliverReplies(Steady::time_point end);
    void endWhenLost();
    void endAwaited();

    xcb_connection_t* xcb_;
    const xcb_screen_t* screen_;
    X11Atoms atoms_;
    xcb_window_t clockWindow_;
    std::deque<Event> readAhead_;
    std::deque<xcb_window_t> unanswered_;
    std::map<std::uint64_t, std::pair<unsigned, ReplyHandler>> awaited_;  // in the order of await()
    std::uint64_t awaitedCount_ = 0;
    bool lost_ = false;
    Signal<xcb_generic_event_t> event_;
    Signal<> lostSignal_;
    std::unique_ptr<MainLoop> loop_;
};

}  // namespace nettlecap
