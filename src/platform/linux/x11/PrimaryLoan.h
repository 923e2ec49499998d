#pragma once

#include "platform/linux/x11/SelectionServer.h"

namespace nettlecap {

/// PRIMARY for one paste into a program that pastes nothing else. It is the user's, who has
/// text selected somewhere: taken as late, and given back as soon, as can be.
class PrimaryLoan {
public:
    explicit PrimaryLoan(SelectionPorts ports);

    /// Until the program of this window has read the item, or for a second. Waits for the
    /// server. False: the selection is not ours.
    bool offer(PasteboardItem item, xcb_window_t reader);

private:
    SelectionPorts ports_;
    SelectionServer server_;
    Deadline deadline_;
    std::uint32_t client_ = 0;
    Subscription reads_;
};

}  // namespace nettlecap
