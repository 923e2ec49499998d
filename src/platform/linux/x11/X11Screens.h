#pragma once

#include "platform/Windows.h"
#include "platform/linux/x11/X11Inquiry.h"

namespace nettlecap {

/// Points and the places of the monitors are Qt's, turned upside down, so that the windows
/// that Qt makes can be put where this says. What docks and bars reserve is asked of each of
/// them: the desktop's own work area is one rectangle for all monitors.
class X11Screens final : public Screens {
public:
    /// Needs a QGuiApplication.
    explicit X11Screens(X11Inquiry& inquiry) : inquiry_(inquiry) {}

    /// The one with the middle of the active window, frame included, else the primary one.
    std::optional<Screen> main() const override;
    std::vector<Screen> all() const override;  ///< the primary one first
    Point pointerLocation() const override;    ///< the bottom left of its pixel

private:
    struct Reserved;

    std::vector<Reserved> reserved() const;
    std::vector<std::uint32_t> numbers(unsigned sequence) const;
    std::optional<Point> middleOfActiveWindow() const;  ///< in pixels, from the top left

    X11Inquiry& inquiry_;
};

}  // namespace nettlecap
