#include "ui/ShortcutEditor.h"
#include "ui/PrintQt.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

constexpr int controlToggle = 0;
constexpr int optionToggle = 1;
constexpr int shiftToggle = 2;
constexpr int commandToggle = 3;

class ShortcutEditorTest : public testing::Test {
protected:
    /// As the form does: a change comes back as the new shortcut.
    void show(const ShortcutDefinition& shortcut) {
        editor = std::make_unique<ShortcutEditor>("Item anterior", shortcut,
                                                  [this](const ShortcutDefinition& changed) {
                                                      changes.push_back(changed);
                                                      editor->setShortcut(changed);
                                                  });
    }

    std::vector<ShortcutDefinition> changes;
    std::unique_ptr<ShortcutEditor> editor;
};

TEST_F(ShortcutEditorTest, OffersTheKeysInTheirOrder) {
    show({.keyCode = 18, .modifiers = modifier::command});

    EXPECT_EQ(editor->keyLabels().join(""), "1234567890ABCDEFGHIJKLMNOPQRSTUVWXYZ←→↓↑");
    EXPECT_EQ(editor->modifierSymbols(), (QStringList{"⌃", "⌥", "⇧", "⌘"}));
}

TEST_F(ShortcutEditorTest, ShowsItsKeyAndItsModifiers) {
    show({.keyCode = 9, .modifiers = modifier::command | modifier::shift});

    EXPECT_EQ(editor->title(), "Item anterior");
    EXPECT_EQ(editor->keyLabel(), "V");
    EXPECT_EQ(editor->keyLabels().at(editor->chosenKey()), "V");
    EXPECT_EQ(editor->modifiersOn(), (QList<bool>{false, false, true, true}));
}

TEST_F(ShortcutEditorTest, AKeyThatIsNotOfferedIsAQuestionMarkWithNoRowChosen) {
    show({.keyCode = 999, .modifiers = modifier::command});

    EXPECT_EQ(editor->keyLabel(), "?");
    EXPECT_EQ(editor->chosenKey(), -1);
}

TEST_F(ShortcutEditorTest, AnotherKeyKeepsTheModifiersAsTheyAreStored) {
    constexpr ModifierFlags unknownBit = 1U << 23;
    show({.keyCode = 999, .modifiers = modifier::option | unknownBit});

    editor->chooseKey(static_cast<int>(editor->keyLabels().indexOf("K")));

    EXPECT_EQ(changes,
              (std::vector<ShortcutDefinition>{{.keyCode = 40, .modifiers = modifier::option | unknownBit}}));
    EXPECT_EQ(editor->keyLabel(), "K");
}

TEST_F(ShortcutEditorTest, TheSameKeyAndARowThatIsNoneAreNoChange) {
    show({.keyCode = 18, .modifiers = modifier::command});

    for (const int row : {0, -1, 40}) editor->chooseKey(row);

    EXPECT_TRUE(changes.empty());
}

TEST_F(ShortcutEditorTest, AToggleSetsItsBitAndClearsIt) {
    show({.keyCode = 18, .modifiers = modifier::command});

    editor->setModifier(controlToggle, true);
    editor->setModifier(shiftToggle, true);
    editor->setModifier(commandToggle, false);

    EXPECT_EQ(changes, (std::vector<ShortcutDefinition>{
                           {.keyCode = 18, .modifiers = 0x140000},
                           {.keyCode = 18, .modifiers = 0x160000},
                           {.keyCode = 18, .modifiers = 0x60000},
                       }));
}

TEST_F(ShortcutEditorTest, AToggleLeavesOnlyTheFourModifiers) {
    show({.keyCode = 18, .modifiers = modifier::command | 0xF});

    editor->setModifier(optionToggle, true);

    EXPECT_EQ(changes.at(0).modifiers, 0x180000U);
}

TEST_F(ShortcutEditorTest, TheLastModifierSpringsBack) {
    show({.keyCode = 18, .modifiers = modifier::command | 1});

    editor->setModifier(commandToggle, false);

    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(editor->modifiersOn().at(commandToggle));
}

TEST_F(ShortcutEditorTest, WithoutAnyModifierTheFirstCanBeSet) {
    show({.keyCode = 18, .modifiers = 0});
    EXPECT_EQ(editor->modifiersOn(), (QList<bool>{false, false, false, false}));

    editor->setModifier(optionToggle, true);

    EXPECT_EQ(changes, (std::vector<ShortcutDefinition>{{.keyCode = 18, .modifiers = modifier::option}}));
}

TEST_F(ShortcutEditorTest, FollowsAChangeMadeElsewhere) {
    show({.keyCode = 18, .modifiers = modifier::command});
    const QSignalSpy told(editor.get(), &ShortcutEditor::shortcutChanged);

    editor->setShortcut({.keyCode = 126, .modifiers = modifier::control});
    editor->setShortcut({.keyCode = 126, .modifiers = modifier::control});

    EXPECT_EQ(told.count(), 1);
    EXPECT_EQ(editor->keyLabel(), "↑");
    EXPECT_TRUE(changes.empty());
}

TEST_F(ShortcutEditorTest, ATypedLetterNamesItsRow) {
    show({.keyCode = 18, .modifiers = modifier::command});

    EXPECT_EQ(editor->keyLabelled("2"), 1);
    EXPECT_EQ(editor->keyLabelled("a"), 10);
    EXPECT_EQ(editor->keyLabelled("Z"), 35);
    EXPECT_EQ(editor->keyLabelled("ç"), -1);
    EXPECT_EQ(editor->keyLabelled(""), -1);
}

}  // namespace
}  // namespace nettlecap
