#pragma once

#include "platform/linux/DesktopEntries.h"
#include "platform/linux/x11/X11Inquiry.h"

namespace nettlecap {

/// What a window says of where it belongs.
struct X11WindowTraits {
    std::optional<std::int64_t> process;  ///< on this host
    WindowClass windowClass;
    xcb_window_t transientFor = XCB_WINDOW_NONE;

    bool hasClass() const { return !windowClass.instance.empty() || !windowClass.name.empty(); }

    /// Absent: the window is gone.
    static std::optional<X11WindowTraits> read(X11Inquiry& inquiry, xcb_window_t window);
    /// A dialog may leave to its main window what that says already.
    static std::optional<X11WindowTraits> readWithOwners(X11Inquiry& inquiry, xcb_window_t window);
};

}  // namespace nettlecap
