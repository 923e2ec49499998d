#include "platform/linux/x11/PasteChord.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

constexpr PasteChord controlV{.keyCode = 9, .flags = modifier::control};
constexpr PasteChord controlShiftV{.keyCode = 9, .flags = modifier::control | modifier::shift};
constexpr PasteChord shiftInsert{.keyCode = 114, .flags = modifier::shift, .pastesPrimary = true};

DesktopEntry entryOf(std::vector<std::string> categories) {
    return {.name = "Programa", .categories = std::move(categories)};
}

TEST(PasteChordTest, IsControlVWhereNothingSpeaksForATerminal) {
    EXPECT_EQ(PasteChord::of({"featherpad", "FeatherPad"}, entryOf({"Qt", "TextEditor"})), controlV);
    EXPECT_EQ(PasteChord::of({"zenity", "Zenity"}, std::nullopt), controlV);
    EXPECT_EQ(PasteChord::of({}, std::nullopt), controlV);
}

TEST(PasteChordTest, IsControlShiftVInATerminalByItsEntry) {
    EXPECT_EQ(PasteChord::of({"x", "X"}, entryOf({"GTK", "System", "TerminalEmulator"})), controlShiftV);
}

TEST(PasteChordTest, IsControlShiftVInATerminalWithoutAnEntry) {
    for (const char* name : {"Alacritty", "kitty", "st-256color", "Gnome-terminal"})
        EXPECT_EQ(PasteChord::of({"qualquer", name}, std::nullopt), controlShiftV) << name;
}

TEST(PasteChordTest, IsShiftInsertInXtermWhateverItsEntrySays) {
    for (const char* name : {"XTerm", "UXTerm", "URxvt"})
        EXPECT_EQ(PasteChord::of({"qualquer", name}, entryOf({"System", "TerminalEmulator"})), shiftInsert)
            << name;
}

TEST(PasteChordTest, GoesByTheClassAndNotByTheInstance) {
    EXPECT_EQ(PasteChord::of({"XTerm", "Outro"}, std::nullopt), controlV);
}

}  // namespace
}  // namespace nettlecap
