#pragma once

#include "platform/Windows.h"

namespace nettlecap {

/// A preview beside the row that it belongs to, and what it must keep clear of.
struct PreviewPlacement {
    Rect row;
    Rect panel;  ///< the window with the row, frame included
    Size preview;
    Rect visibleFrame;  ///< of their screen

    /// Of the preview's bottom left corner: right of the panel, else left of it. Where it
    /// fits on neither side it covers the panel, but not the row. All of it is visible.
    Point origin() const;
};

}  // namespace nettlecap
