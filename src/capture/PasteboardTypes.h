#pragma once

#include "platform/Pasteboard.h"

#include <algorithm>
#include <set>
#include <span>

namespace nettlecap {

/// The types of one change; their order means nothing.
using PasteboardTypes = std::set<PasteboardType, std::less<>>;

inline bool sharesMember(const PasteboardTypes& types, std::span<const std::string_view> others) {
    return std::ranges::any_of(others, [&](std::string_view other) { return types.contains(other); });
}

}  // namespace nettlecap
