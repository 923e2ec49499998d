#include "platform/linux/x11/PasteChord.h"

#include <algorithm>
#include <array>

namespace nettlecap {

namespace {

constexpr KeyCode insert = 114;  // in whose place an ANSI keyboard has Help

constexpr PasteChord usual{.keyCode = keyCode::v, .flags = modifier::control};
constexpr PasteChord inTerminals{.keyCode = keyCode::v, .flags = modifier::control | modifier::shift};
constexpr PasteChord inXterm{.keyCode = insert, .flags = modifier::shift, .pastesPrimary = true};

// To xterm Ctrl+Shift+V is a Ctrl+V, to urxvt the beginning of a character's number.
constexpr std::array<std::string_view, 6> likeXterm{"XTerm", "UXTerm", "KOI8RXTerm",
                                                    "KTerm", "URxvt",  "Rxvt"};
// Often here without an entry, or with one that names another class.
constexpr std::array<std::string_view, 9> otherTerminals{
    "Alacritty",       "Gnome-terminal", "kitty", "org.wezfurlong.wezterm", "Mate-terminal", "st-256color",
    "stterm-256color", "Tilix",          "Zutty",
};

bool contains(const auto& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

PasteChord PasteChord::of(const WindowClass& window, const std::optional<DesktopEntry>& entry) {
    if (contains(likeXterm, window.name)) return inXterm;
    const bool isTerminal =
        contains(otherTerminals, window.name) || (entry && contains(entry->categories, "TerminalEmulator"));
    return isTerminal ? inTerminals : usual;
}

}  // namespace nettlecap
