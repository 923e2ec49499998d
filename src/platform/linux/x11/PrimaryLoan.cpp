#include "platform/linux/x11/PrimaryLoan.h"

#include "platform/linux/x11/SelectionWatch.h"

namespace nettlecap {

namespace {

constexpr Seconds readerPatience(1.0);  // a program that has not asked by then will not

}  // namespace

PrimaryLoan::PrimaryLoan(SelectionPorts ports)
    : ports_(ports), server_(ports, XCB_ATOM_PRIMARY),
      deadline_(ports.scheduler, ports.clock, [this] { server_.release(); }) {
    // Others read every new selection at once, such as those that keep a history of them.
    reads_ = server_.onRead([this](xcb_window_t reader) {
        if (clientOf(ports_.connection, reader) != client_) return;
        deadline_.clear();
        server_.release();
    });
}

bool PrimaryLoan::offer(PasteboardItem item, xcb_window_t reader) {
    const auto time = ports_.connection.serverTime();
    if (!time) return false;
    client_ = clientOf(ports_.connection, reader);
    server_.claim(*time);
    server_.offer(std::move(item));
    deadline_.set(readerPatience);
    return server_.isOwner();
}

}  // namespace nettlecap
