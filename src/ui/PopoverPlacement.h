#pragma once

#include "platform/Windows.h"

namespace nettlecap {

/// A popover at the status item that it hangs from.
struct PopoverPlacement {
    Rect item;
    Size popover;
    Rect visibleFrame;  ///< of the item's screen; a bar with the item is no part of it

    /// Of the popover's bottom left corner: below the middle of the item, or above it where
    /// there is no room below. All of it is visible.
    Point origin() const;
};

}  // namespace nettlecap
