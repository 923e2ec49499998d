#pragma once

#include <cstdint>
#include <string>

namespace nettlecap {

/// A text as the card shows it.
struct NavigationHUDTextPresentation {
    std::string text;                 ///< cut and trimmed
    bool usesExpandedLayout = false;  ///< the wide card, in the smaller font
    std::int64_t visibleLineLimit = 4;

    bool operator==(const NavigationHUDTextPresentation&) const = default;
};

}  // namespace nettlecap
