#include "platform/linux/x11/OutgoingTransfers.h"

#include <algorithm>

namespace nettlecap {

namespace {

constexpr Seconds requestorPatience(10.0);         // for each piece to be taken
constexpr std::size_t largestPiece = 256U << 10U;  // written to the server without a stall
constexpr std::size_t requestOverhead = 64;        // more than the head of ChangeProperty takes

std::size_t pieceSizeOf(xcb_connection_t* xcb) {
    const std::size_t largestRequest = std::size_t(4) * xcb_get_maximum_request_length(xcb);
    return std::min(largestPiece, largestRequest - requestOverhead);
}

}  // namespace

OutgoingTransfers::OutgoingTransfers(SelectionPorts ports)
    : ports_(ports), pieceSize_(pieceSizeOf(ports.connection.xcb())),
      events_(ports.connection.onEvent([this](const xcb_generic_event_t& event) { onEvent(event); })) {}

void OutgoingTransfers::put(Destination destination, xcb_atom_t type, const Bytes& bytes) {
    xcb_connection_t* xcb = ports_.connection.xcb();
    if (bytes.size() <= pieceSize_) {
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, destination.window, destination.property, type, 8,
                            static_cast<std::uint32_t>(bytes.size()), bytes.view().data());
        return;
    }
    auto deadline =
        std::make_unique<Deadline>(ports_.scheduler, ports_.clock, [this, destination] { end(destination); });
    deadline->set(requestorPatience);
    transfers_.insert_or_assign(destination,
                                Transfer{.type = type, .bytes = bytes, .deadline = std::move(deadline)});
    // Before the announcement, or its removal could go unseen.
    watch(destination.window, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const auto size = static_cast<std::uint32_t>(std::min<std::size_t>(bytes.size(), UINT32_MAX));
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, destination.window, destination.property,
                        ports_.connection.atoms().of("INCR"), 32, 1, &size);
}

void OutgoingTransfers::onEvent(const xcb_generic_event_t& event) {
    const auto kind = event.response_type & 0x7F;
    if (kind == XCB_PROPERTY_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.state == XCB_PROPERTY_DELETE) sendPiece({change.window, change.atom});
    } else if (kind == XCB_DESTROY_NOTIFY) {
        endAll(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    } else if (kind == 0) {
        const auto& error = reinterpret_cast<const xcb_generic_error_t&>(event);
        if (error.error_code == XCB_WINDOW) endAll(error.resource_id);  // gone before we watched it
    }
}

void OutgoingTransfers::sendPiece(Destination destination) {
    const auto found = transfers_.find(destination);
    if (found == transfers_.end()) return;
    Transfer& transfer = found->second;
    const std::string_view piece = transfer.bytes.view().substr(transfer.sent, pieceSize_);
    transfer.sent += piece.size();
    transfer.deadline->set(requestorPatience);
    xcb_change_property(ports_.connection.xcb(), XCB_PROP_MODE_REPLACE, destination.window,
                        destination.property, transfer.type, 8, static_cast<std::uint32_t>(piece.size()),
                        piece.data());
    if (piece.empty()) end(destination);  // which told the requestor that this was all
}

void OutgoingTransfers::end(Destination destination) {
    const auto ended = transfers_.extract(destination);  // lives on: its deadline may be calling
    const auto isThere = [&](const auto& other) { return other.first.window == destination.window; };
    if (std::ranges::none_of(transfers_, isThere)) watch(destination.window, XCB_EVENT_MASK_NO_EVENT);
}

void OutgoingTransfers::endAll(xcb_window_t window) {
    std::erase_if(transfers_, [&](const auto& transfer) { return transfer.first.window == window; });
}

void OutgoingTransfers::watch(xcb_window_t window, std::uint32_t events) const {
    xcb_change_window_attributes(ports_.connection.xcb(), window, XCB_CW_EVENT_MASK, &events);
}

}  // namespace nettlecap
