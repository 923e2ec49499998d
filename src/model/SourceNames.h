#pragma once

#include <array>
#include <string_view>

/// Names that stand for a source that no application can be credited with.
namespace nettlecap::sourceName {

inline constexpr std::string_view otherDevice = "Outro dispositivo";

/// What earlier versions wrote in its place.
inline constexpr std::array<std::string_view, 3> legacyUnidentified = {
    "Clipboard Universal / origem não identificada",
    "Origem não identificada",
    "Outro dispositivo ou origem desconhecida",
};

}  // namespace nettlecap::sourceName
