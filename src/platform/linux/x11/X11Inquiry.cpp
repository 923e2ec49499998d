#include "platform/linux/x11/X11Inquiry.h"

#include <poll.h>
#include <xcb/xcbext.h>

#include <chrono>
#include <cstring>

namespace nettlecap {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// A grabbed server moves nothing on the screen either, so nobody sees us wait.
constexpr milliseconds patience{250};
constexpr std::uint32_t propertyUnits = 256;  // of four bytes

}  // namespace

Result<std::unique_ptr<X11Inquiry>> X11Inquiry::open() {
    auto connection = X11Connection::open();
    if (!connection) return Failure{connection.description()};
    return std::unique_ptr<X11Inquiry>(new X11Inquiry(std::move(*connection)));
}

unsigned X11Inquiry::askProperty(xcb_window_t window, std::string_view name) {
    const auto property = atoms().of(name);
    return xcb_get_property(xcb(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, propertyUnits).sequence;
}

std::optional<std::string> X11Inquiry::propertyBytes(unsigned sequence) {
    const auto property = reply<xcb_get_property_reply_t>(sequence);
    if (!property || property->type == XCB_ATOM_NONE) return std::nullopt;
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(property.get()));
    return std::string(static_cast<const char*>(xcb_get_property_value(property.get())), length);
}

std::optional<std::uint32_t> X11Inquiry::propertyNumber(unsigned sequence) {
    const auto property = reply<xcb_get_property_reply_t>(sequence);
    if (!property || property->format != 32 || property->value_len == 0) return std::nullopt;
    std::uint32_t number = 0;
    std::memcpy(&number, xcb_get_property_value(property.get()), sizeof number);
    return number;
}

bool X11Inquiry::canAnswer() {
    bool arrived = false;
    if (overdue_) std::free(take(*overdue_, arrived));
    if (arrived) overdue_.reset();
    return !overdue_;
}

void* X11Inquiry::wait(unsigned sequence) {
    if (!canAnswer()) {
        xcb_discard_reply(xcb(), sequence);
        return nullptr;
    }
    xcb_flush(xcb());
    const auto end = steady_clock::now() + patience;
    while (true) {
        bool arrived = false;
        void* reply = take(sequence, arrived);
        if (arrived) return reply;
        const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
        if (left <= milliseconds(0)) break;
        pollfd readable{.fd = xcb_get_file_descriptor(xcb()), .events = POLLIN, .revents = 0};
        ::poll(&readable, 1, static_cast<int>(left.count()));
    }
    overdue_ = sequence;
    return nullptr;
}

/// Null with `arrived` for an error, and for everything once the server is gone.
void* X11Inquiry::take(unsigned sequence, bool& arrived) const {
    // Only looking for events reads what has come; none are selected here.
    const X11Reply<xcb_generic_event_t> unwanted(xcb_poll_for_event(xcb()));
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    arrived =
        xcb_poll_for_reply(xcb(), sequence, &reply, &error) != 0 || xcb_connection_has_error(xcb()) != 0;
    std::free(error);
    return reply;
}

}  // namespace nettlecap
