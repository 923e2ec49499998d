#pragma once

#include <cstddef>
#include <optional>

namespace nettlecap {

struct ListKeyboardNavigation {
    /// Where a step of `offset` leads in a list: never past its ends. From nothing selected
    /// the first step down goes to the first item, the first step up to the last.
    static std::optional<std::size_t> targetIndex(std::optional<std::size_t> currentIndex,
                                                  std::size_t itemCount, std::ptrdiff_t offset);
};

}  // namespace nettlecap
