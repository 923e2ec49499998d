#pragma once

#include "platform/linux/x11/Deadline.h"
#include "platform/linux/x11/SelectionPorts.h"

#include <map>

namespace nettlecap {

/// Puts bytes into other programs' windows: at one go, or piece by piece as each piece is
/// taken away (INCR, ICCCM 2.7.2). A requestor that dies or takes nothing costs only its own
/// transfer.
class OutgoingTransfers {
public:
    struct Destination {
        xcb_window_t window = XCB_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;

        bool operator<(const Destination& other) const {
            return std::pair(window, property) < std::pair(other.window, other.property);
        }
    };

    explicit OutgoingTransfers(SelectionPorts ports);

    /// The requestor must be told after this, not before.
    void put(Destination destination, xcb_atom_t type, const Bytes& bytes);
    std::size_t underWay() const { return transfers_.size(); }

private:
    struct Transfer {
        xcb_atom_t type = XCB_ATOM_NONE;
        Bytes bytes;
        std::size_t sent = 0;
        std::unique_ptr<Deadline> deadline;
    };

    void onEvent(const xcb_generic_event_t& event);
    void sendPiece(Destination destination);
    void end(Destination destination);
    void endAll(xcb_window_t window);
    void watch(xcb_window_t window, std::uint32_t events) const;

    SelectionPorts ports_;
    std::size_t pieceSize_;
    std::map<Destination, Transfer> transfers_;
    Subscription events_;
};

}  // namespace nettlecap
