#include "app/KeyCatalog.h"

#include "app/AppPreferences.h"

#include <gmock/gmock.h>
#include <set>

namespace nettlecap {
namespace {

using namespace modifier;

TEST(KeyCatalogTest, OffersDigitsThenLettersThenArrows) {
    std::string labels;
    for (const KeyChoice& choice : KeyCatalog::choices) labels += choice.label;

    EXPECT_EQ(labels, "1234567890ABCDEFGHIJKLMNOPQRSTUVWXYZ\u2190\u2192\u2193\u2191");
}

TEST(KeyCatalogTest, KnowsEachKeyByItsPlaceOnAnAnsiKeyboard) {
    std::vector<KeyCode> codes;
    for (const KeyChoice& choice : KeyCatalog::choices) codes.push_back(choice.keyCode);

    EXPECT_THAT(codes, testing::ElementsAre(18, 19, 20, 21, 23, 22, 26, 28, 25, 29,     // 1 to 9, 0
                                            0, 11, 8, 2, 14, 3, 5, 4, 34, 38,           // A to J
                                            40, 37, 46, 45, 31, 35, 12, 15, 1, 17,      // K to T
                                            32, 9, 13, 7, 16, 6, 123, 124, 125, 126));  // U to Z, arrows
}

TEST(KeyCatalogTest, OffersNoKeyTwice) {
    std::set<KeyCode> codes;
    for (const KeyChoice& choice : KeyCatalog::choices) codes.insert(choice.keyCode);

    EXPECT_EQ(codes.size(), 40U);
}

TEST(KeyCatalogTest, LabelsAKey) {
    EXPECT_EQ(KeyCatalog::label(0), "A");
    EXPECT_EQ(KeyCatalog::label(18), "1");
    EXPECT_EQ(KeyCatalog::label(126), "↑");
}

TEST(KeyCatalogTest, LabelsEveryOtherKeyWithAQuestionMark) {
    for (const KeyCode other : {10U, 122U, 127U, 999U, 0xFFFF'FFFFU})
        EXPECT_EQ(KeyCatalog::label(other), "?");
}

TEST(ShortcutDisplayTextTest, ShowsTheDefaults) {
    const AppPreferences preferences;

    EXPECT_EQ(displayText(preferences.previousShortcut), "⌘1");
    EXPECT_EQ(displayText(preferences.nextShortcut), "⌘2");
    EXPECT_EQ(displayText(preferences.openSearchShortcut), "⇧⌘V");
    EXPECT_EQ(displayText(preferences.toggleFavoriteShortcut), "⌥F");
}

TEST(ShortcutDisplayTextTest, ShowsTheModifiersInOneOrder) {
    EXPECT_EQ(displayText({.keyCode = 123, .modifiers = all}), "\u2303\u2325\u21E7\u2318\u2190");
    EXPECT_EQ(displayText({.keyCode = 0, .modifiers = command | control}), "⌃⌘A");
    EXPECT_EQ(displayText({.keyCode = 0, .modifiers = shift | option}), "⌥⇧A");
}

TEST(ShortcutDisplayTextTest, ShowsAKeyWithoutModifiersAlone) { EXPECT_EQ(displayText({.keyCode = 6}), "Z"); }

TEST(ShortcutDisplayTextTest, ShowsNoOtherModifiers) {
    constexpr ModifierFlags capsLock = 1U << 16;

    EXPECT_EQ(displayText({.keyCode = 6, .modifiers = capsLock}), "Z");
    EXPECT_EQ(displayText({.keyCode = 6, .modifiers = ~ModifierFlags{0}}), "⌃⌥⇧⌘Z");
}

TEST(ShortcutDisplayTextTest, ShowsAQuestionMarkForAKeyThatIsNotOffered) {
    EXPECT_EQ(displayText({.keyCode = 999, .modifiers = command}), "⌘?");
}

}  // namespace
}  // namespace nettlecap
