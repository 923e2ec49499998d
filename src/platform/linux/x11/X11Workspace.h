#pragma once

#include "platform/Workspace.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/x11/X11Inquiry.h"

namespace nettlecap {

struct X11WindowTraits;

/// The application in front is the one whose window the window manager calls active; under
/// a manager that names none, the one whose window has the input focus. Every question asks
/// the server anew, so that a key pressed right after a change of windows is no one else's.
///
/// While no window is active, as between two, the last one stays in front as long as it can
/// be seen. Without an active window to watch, activations are not told.
class X11Workspace final : public Workspace {
public:
    X11Workspace(X11Connection& connection, X11Inquiry& inquiry, DesktopEntries& entries);

    void activate(const RunningApplication& application) override;

    RunningApplication current() const override;
    std::optional<RunningApplication> frontmostApplication() const override;
    /// A program in a sandbox tells a process number of its own world: while its window is
    /// there, it runs.
    bool isTerminated(const RunningApplication& application) const override;
    /// Of its window, or of the window that this belongs to. Empty: it is gone, or has none.
    WindowClass windowClassOf(const RunningApplication& application) const;

    Subscription onActivation(std::function<void(const RunningApplication&)> handler) override;

private:
    void watchActiveWindow();
    void tellActivation();
    void look() const;
    xcb_window_t windowInFront() const;
    std::optional<xcb_window_t> activeWindow() const;
    xcb_window_t clientWithFocus() const;
    bool isViewable(xcb_window_t window) const;
    bool isStillItsWindow(const RunningApplication& application) const;
    void raise(xcb_window_t window, xcb_timestamp_t time) const;
    std::optional<RunningApplication> applicationOf(xcb_window_t window) const;
    std::optional<std::string> nameWithoutEntry(const X11WindowTraits& traits) const;

    X11Connection& connection_;
    X11Inquiry& inquiry_;
    DesktopEntries& entries_;
    mutable std::optional<RunningApplication> front_;  // as the last look found it
    std::optional<RunningApplication> told_;
    Signal<RunningApplication> activated_;
    Subscription events_;
};

}  // namespace nettlecap
