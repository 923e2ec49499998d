#pragma once

#include "platform/Keys.h"

#include <optional>
#include <string>

namespace nettlecap {

/// A key of the ANSI keyboard, on which virtual key codes are defined.
struct AnsiKey {
    std::uint32_t symbol = 0;  ///< X's keysym of its label
    std::string position;      ///< its name in XKB
};

/// Digits, letters and arrows; absent for all other codes.
std::optional<AnsiKey> ansiKey(KeyCode code);

}  // namespace nettlecap
