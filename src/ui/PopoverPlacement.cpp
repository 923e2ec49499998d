#include "ui/PopoverPlacement.h"

#include <algorithm>

namespace nettlecap {

namespace {

/// As near to where it is wanted as it can be seen, the end rather than the beginning.
double within(double start, double length, double from, double available) {
    return std::min(std::max(start, from), from + available - length);
}

}  // namespace

Point PopoverPlacement::origin() const {
    const auto& [corner, area] = visibleFrame;
    const double top = corner.y + area.height;
    const double head = item.origin.y + item.size.height;
    const double middle = item.origin.y + item.size.height * 0.5;
    // In a bar with its middle it is in there whole, whatever was guessed of its size.
    const double below = (middle < top ? item.origin.y : std::max(item.origin.y, top)) - popover.height;
    const double above = middle < corner.y ? std::min(head, corner.y) : head;
    const double x = item.origin.x + (item.size.width - popover.width) * 0.5;
    return {std::max(corner.x, within(x, popover.width, corner.x, area.width)),
            within(below >= corner.y ? below : above, popover.height, corner.y, area.height)};
}

}  // namespace nettlecap
