#include "ui/ListKeyboardNavigation.h"

#include <algorithm>

namespace nettlecap {

std::optional<std::size_t> ListKeyboardNavigation::targetIndex(std::optional<std::size_t> currentIndex,
                                                               std::size_t itemCount, std::ptrdiff_t offset) {
    if (itemCount == 0) return std::nullopt;
    const auto last = static_cast<std::ptrdiff_t>(itemCount - 1);
    if (!currentIndex) return offset < 0 ? itemCount - 1 : 0;
    const auto target = static_cast<std::ptrdiff_t>(*currentIndex) + offset;
    return static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(target, 0, last));
}

}  // namespace nettlecap
