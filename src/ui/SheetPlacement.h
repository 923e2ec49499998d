#pragma once

#include "platform/Windows.h"

namespace nettlecap {

/// A sheet over the window that it belongs to.
struct SheetPlacement {
    Rect panel;  ///< the window below, without what a window manager draws around it
    Size sheet;
    Rect visibleFrame;  ///< of their screen

    /// How much of the panel is seen above the sheet, where there is room: its header.
    static constexpr double below = 48;

    /// Of the sheet's bottom left corner: in the middle of the panel's width, near its top.
    /// All of it is visible; of what is too large, the beginning.
    Point origin() const;
};

}  // namespace nettlecap
