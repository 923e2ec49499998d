#pragma once

#include "platform/Keys.h"

namespace nettlecap {

/// A key with modifiers, as the user chose it.
struct ShortcutDefinition {
    KeyCode keyCode = 0;
    ModifierFlags modifiers = 0;

    bool operator==(const ShortcutDefinition&) const = default;
};

}  // namespace nettlecap
