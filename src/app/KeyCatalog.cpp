#include "app/KeyCatalog.h"

namespace nettlecap {

const std::array<KeyChoice, 40> KeyCatalog::choices = {{
    {18, "1"}, {19, "2"}, {20, "3"}, {21, "4"}, {23, "5"},  {22, "6"},  {26, "7"},  {28, "8"},
    {25, "9"}, {29, "0"}, {0, "A"},  {11, "B"}, {8, "C"},   {2, "D"},   {14, "E"},  {3, "F"},
    {5, "G"},  {4, "H"},  {34, "I"}, {38, "J"}, {40, "K"},  {37, "L"},  {46, "M"},  {45, "N"},
    {31, "O"}, {35, "P"}, {12, "Q"}, {15, "R"}, {1, "S"},   {17, "T"},  {32, "U"},  {9, "V"},
    {13, "W"}, {7, "X"},  {16, "Y"}, {6, "Z"},  {123, "←"}, {124, "→"}, {125, "↓"}, {126, "↑"},
}};

std::string_view KeyCatalog::label(KeyCode keyCode) {
    for (const KeyChoice& choice : choices)
        if (choice.keyCode == keyCode) return choice.label;
    return "?";
}

std::string displayText(const ShortcutDefinition& shortcut) {
    std::string text;
    const auto show = [&](ModifierFlags flag, std::string_view symbol) {
        if ((shortcut.modifiers & flag) != 0) text += symbol;
    };
    show(modifier::control, "⌃");
    show(modifier::option, "⌥");
    show(modifier::shift, "⇧");
    show(modifier::command, "⌘");
    text += KeyCatalog::label(shortcut.keyCode);
    return text;
}

}  // namespace nettlecap
