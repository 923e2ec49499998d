#pragma once

#include <array>
#include <string_view>

namespace nettlecap {

/// The two lists of the main view, in the order in which they are offered.
enum class MainSection { history, snippets };

inline constexpr std::array<std::string_view, 2> mainSectionTitles = {"Histórico", "Salvos"};

constexpr std::string_view titleOf(MainSection section) {
    return mainSectionTitles.at(static_cast<std::size_t>(section));
}

}  // namespace nettlecap
