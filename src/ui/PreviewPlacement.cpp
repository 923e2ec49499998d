#include "ui/PreviewPlacement.h"

#include <algorithm>

namespace nettlecap {

namespace {

/// As near to where it is wanted as it can be seen; of what is too large, the end is cut off.
double within(double start, double length, double from, double available) {
    return std::max(from, std::min(start, from + available - length));
}

}  // namespace

Point PreviewPlacement::origin() const {
    const Point corner = visibleFrame.origin;
    const double right = panel.origin.x + panel.size.width;
    const double left = panel.origin.x - preview.width;
    const bool fitsRight = right + preview.width <= corner.x + visibleFrame.size.width;
    const bool fitsLeft = left >= corner.x;
    const double below = row.origin.y - preview.height;
    const double above = row.origin.y + row.size.height;

    double y = row.origin.y + (row.size.height - preview.height) * 0.5;
    if (!fitsRight && !fitsLeft) y = below >= corner.y ? below : above;
    const double top = corner.y + visibleFrame.size.height;
    return {within(fitsRight || !fitsLeft ? right : left, preview.width, corner.x, visibleFrame.size.width),
            std::min(std::max(y, corner.y), top - preview.height)};
}

}  // namespace nettlecap
