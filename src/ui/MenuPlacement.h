#pragma once

#include "platform/Windows.h"

namespace nettlecap {

/// A menu or a tool tip at the status item that it belongs to.
struct MenuPlacement {
    Rect item;  ///< without a size: a place that was pointed at
    Size menu;
    Rect screen;

    /// Of its bottom left corner: below the item, or above it where there is no room below,
    /// and from the item's left edge on as far as the screen goes.
    Point origin() const;
};

}  // namespace nettlecap
