#pragma once

#include "platform/Windows.h"
#include "platform/linux/x11/X11Inquiry.h"

namespace nettlecap {

/// What a window wants of the window manager is said on Qt's own connection, so that it
/// comes between the requests that Qt makes for the window.
class X11Windows final : public NativeWindows {
public:
    X11Windows(X11Connection& connection, X11Inquiry& inquiry) : connection_(connection), inquiry_(inquiry) {}

    void prepareToShow(std::uint64_t window) override;
    void keepOffTaskbars(std::uint64_t window) override;
    void prepareToCover(std::uint64_t window) override;
    void bringToFront(std::uint64_t window) override;

    bool isComposited() const override;

private:
    xcb_timestamp_t haveUserTime(xcb_window_t window);
    xcb_window_t windowForTime(xcb_window_t window);
    void set(xcb_window_t window, std::string_view property, std::uint32_t number);
    void setStates(xcb_window_t window, std::initializer_list<std::string_view> names);

    X11Connection& connection_;
    X11Inquiry& inquiry_;
};

}  // namespace nettlecap
