#include "ui/MenuPlacement.h"

#include <algorithm>

namespace nettlecap {

Point MenuPlacement::origin() const {
    const auto& [corner, size] = screen;
    const double below = item.origin.y - menu.height;
    const double above = std::min(item.origin.y + item.size.height, corner.y + size.height - menu.height);
    const double x = std::min(item.origin.x, corner.x + size.width - menu.width);
    return {std::max(corner.x, x), below >= corner.y ? below : std::max(corner.y, above)};
}

}  // namespace nettlecap
