#include "ui/SheetPlacement.h"

#include <algorithm>

namespace nettlecap {

Point SheetPlacement::origin() const {
    const auto& [corner, area] = visibleFrame;
    const double right = corner.x + area.width;
    const double top = corner.y + area.height;
    const double x = panel.origin.x + (panel.size.width - sheet.width) * 0.5;
    const double y = panel.origin.y + panel.size.height - below - sheet.height;
    return {std::max(corner.x, std::min(x, right - sheet.width)),
            std::min(top - sheet.height, std::max(y, corner.y))};
}

}  // namespace nettlecap
