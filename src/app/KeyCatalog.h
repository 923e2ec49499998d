#pragma once

#include "model/ShortcutDefinition.h"

#include <array>
#include <string>
#include <string_view>

namespace nettlecap {

struct KeyChoice {
    KeyCode keyCode = 0;
    std::string_view label;

    bool operator==(const KeyChoice&) const = default;
};

/// The keys that a shortcut may use, in the order in which the settings offer them.
struct KeyCatalog {
    static const std::array<KeyChoice, 40> choices;

    static std::string_view label(KeyCode keyCode);  ///< "?" for a key that is not offered
};

/// As the user reads it: ⌃ ⌥ ⇧ ⌘, then the key's label.
std::string displayText(const ShortcutDefinition& shortcut);

}  // namespace nettlecap
