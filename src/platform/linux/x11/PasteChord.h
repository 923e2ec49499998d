#pragma once

#include "platform/Keys.h"
#include "platform/linux/DesktopEntries.h"

namespace nettlecap {

/// The keys that a program takes for "paste".
struct PasteChord {
    KeyCode keyCode = 0;
    ModifierFlags flags = 0;
    bool pastesPrimary = false;  ///< and not the clipboard

    bool operator==(const PasteChord&) const = default;

    /// By its window's class, or else by the categories of its desktop entry.
    static PasteChord of(const WindowClass& window, const std::optional<DesktopEntry>& entry);
};

}  // namespace nettlecap
