#pragma once

#include "platform/linux/x11/X11Connection.h"

namespace nettlecap {

/// Asks the X server and waits for its answer, which takes no other program. A server that
/// somebody holds grabbed is waited for a quarter of a second, once: until it moves again
/// it cannot answer, and questions come back unanswered.
class X11Inquiry {
public:
    /// Over a connection of its own, since waiting may read past events.
    static Result<std::unique_ptr<X11Inquiry>> open();

    xcb_connection_t* xcb() const { return connection_->xcb(); }
    xcb_window_t root() const { return connection_->root(); }
    X11Atoms& atoms() { return connection_->atoms(); }

    /// Null: the server's error, or no answer. Send all questions before waiting for the first.
    template <class Reply>
    X11Reply<Reply> reply(unsigned sequence) {
        return X11Reply<Reply>(static_cast<Reply*>(wait(sequence)));
    }
    /// Look before asking: the server does not take in questions without end.
    bool canAnswer();

    /// Sends the question for a property of up to 1 KiB; any type is taken.
    unsigned askProperty(xcb_window_t window, std::string_view name);
    /// Absent: no such property or window.
    std::optional<std::string> propertyBytes(unsigned sequence);
    std::optional<std::uint32_t> propertyNumber(unsigned sequence);  ///< the first of a list

private:
    explicit X11Inquiry(std::unique_ptr<X11Connection> connection) : connection_(std::move(connection)) {}
    void* wait(unsigned sequence);
    void* take(unsigned sequence, bool& arrived) const;

    std::unique_ptr<X11Connection> connection_;
    std::optional<unsigned> overdue_;  // the question that the server has not answered in time
};

}  // namespace nettlecap
