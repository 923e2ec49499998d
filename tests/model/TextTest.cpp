#include "model/Text.h"

#include "model/PlainExpressions.h"

#include <gtest/gtest.h>

#include <random>

namespace nettlecap::text {
namespace {

// Written with escapes where an editor might compose or hide what matters.
constexpr std::string_view family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
constexpr std::string_view decomposedE = "e\u0301";

TEST(TextWhitespaceTest, TakesInSpacesControlsAndSeparators) {
    for (const char32_t scalar :
         {U'\t', U'\n', U'\v', U'\f', U'\r', U' ', U'\u0085', U'\u00A0', U'\u1680', U'\u2000', U'\u200A',
          U'\u200B', U'\u2028', U'\u2029', U'\u202F', U'\u205F', U'\u3000'})
        EXPECT_TRUE(isWhitespaceOrNewline(scalar)) << std::hex << static_cast<std::uint32_t>(scalar);
}

TEST(TextWhitespaceTest, LeavesOutSeparatorControlsAndInvisibles) {
    for (const char32_t scalar :
         {U'\0', U'\u0008', U'\u000E', U'\u001C', U'\u001D', U'\u001E', U'\u001F', U'!', U'\u0084', U'\u0086',
          U'\u180E', U'\u200C', U'\u200D', U'\u2060', U'\u3001', U'\uFEFF', U'\uFFFD', U'\U000E0020'})
        EXPECT_FALSE(isWhitespaceOrNewline(scalar)) << std::hex << static_cast<std::uint32_t>(scalar);
}

TEST(TextTrimmedTest, TakesWhitespaceOffBothEndsOnly) {
    EXPECT_EQ(trimmed(" \t\r\n a b \u3000\u2028"), "a b");
    EXPECT_EQ(trimmed("\u200B\u00A0á\u0085"), "á");
    EXPECT_EQ(trimmed("a"), "a");
}

TEST(TextTrimmedTest, LeavesNothingOfBlanks) {
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(" \n\u2029"), "");
}

TEST(TextTrimmedTest, KeepsWhatOnlyLooksBlank) {
    EXPECT_EQ(trimmed("\uFEFF a \u001C"), "\uFEFF a \u001C");
    EXPECT_EQ(trimmed(std::string_view("\0 a", 3)), std::string_view("\0 a", 3));
}

TEST(TextTrimmedTest, CutsByScalarNotByCharacter) {
    EXPECT_EQ(trimmed(" \u0301a"), "\u0301a");
    EXPECT_EQ(trimmed("a\u200D "), "a\u200D");
}

TEST(TextTrimmedTest, StopsAtBrokenBytes) {
    EXPECT_EQ(trimmed(" \xFF "), "\xFF");
    EXPECT_EQ(trimmed("\x80 a \xE2\x80"), "\x80 a \xE2\x80");
    EXPECT_EQ(trimmed("a\xA0"), "a\xA0");
}

TEST(TextNormalizedTest, MakesEveryLineEndALineFeed) {
    EXPECT_EQ(normalized("a\r\nb\rc\nd"), "a\nb\nc\nd");
    EXPECT_EQ(normalized("a\r\r\nb"), "a\n\nb");
    EXPECT_EQ(normalized("a\n\rb"), "a\n\nb");
}

TEST(TextNormalizedTest, ComposesCanonically) {
    EXPECT_EQ(normalized(decomposedE), "é");
    EXPECT_EQ(normalized("\u212B"), "\u00C5");  // the ångström sign
    EXPECT_EQ(normalized("\uFB01"), "\uFB01");  // a ligature is no canonical equivalent
    EXPECT_EQ(normalized("a\r\ne\u0301"), "a\né");
}

TEST(TextNormalizedTest, TrimsAndMayLeaveNothing) {
    EXPECT_EQ(normalized("\r\n a \r"), "a");
    EXPECT_EQ(normalized(" \r\n\u2000 "), "");
}

TEST(TextNormalizedTest, ChangesNothingTheSecondTime) {
    std::mt19937 random(1);
    const std::string_view parts[] = {"a",      " ",          "\r",     "\n",      "e",
                                      "\u0301", "\u0345",     "\u1100", "\u1161",  "\u2000",
                                      "\u0958", "\U0001F468", "\u200D", "\u1D15E", "\xFF"};
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (int n = 0; n < 8; ++n) text += parts[random() % std::size(parts)];

        const std::string once = normalized(text);

        ASSERT_EQ(normalized(once), once) << testing::PrintToString(text);
    }
}

TEST(TextOnOneLineTest, MakesEveryLineFeedASpace) {
    EXPECT_EQ(onOneLine("a\nb\n\nc"), "a b  c");
    EXPECT_EQ(onOneLine("a\r\nb"), "a\r b");
    EXPECT_EQ(onOneLine("\n a \n"), "a");
}

TEST(TextCharacterCountTest, CountsWhatAReaderTakesForOne) {
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("abc"), 3U);
    EXPECT_EQ(characterCount(decomposedE), 1U);
    EXPECT_EQ(characterCount(family), 1U);
    EXPECT_EQ(characterCount("\U0001F1E7\U0001F1F7\U0001F1F5\U0001F1F9"), 2U);  // two flags
    EXPECT_EQ(characterCount("\r\n"), 1U);
    EXPECT_EQ(characterCount("\n\r"), 2U);
    EXPECT_EQ(characterCount("\u1100\u1161\u11A8"), 1U);
}

TEST(TextCharacterCountTest, JoinsMarksWithTheLetterBeforeThem) {
    EXPECT_EQ(characterCount("abe\u0301"), 3U);
    EXPECT_EQ(characterCount("ab\r\n\u0301"), 4U);
    EXPECT_EQ(characterCount(std::string("a\0\u0301b", 5)), 4U);
}

TEST(TextCharacterCountTest, StopsAtItsLimit) {
    EXPECT_EQ(characterCount("abcdef", 3), 3U);
    EXPECT_EQ(characterCount("ab", 3), 2U);
    EXPECT_EQ(characterCount("ábcdef", 3), 3U);
    EXPECT_EQ(characterCount("ábcdef", 0), 0U);
}

TEST(TextFirstCharactersTest, CutsWhereALookAtTheWholeTextCuts) {
    static constexpr std::string_view parts[] = {
        "a",      "é",      "ж",      "漢",     " ",          "\r",         "\n",         "\r\n",
        "\u00AD", "\u200B", "\u0301", "\u200D", "\u0600",     "\u0903",     "\u0E33",     "\u0915",
        "\u094D", "\u1100", "\u1161", "\u11A8", "\uAC00",     "\uAC01",     "❤",          "\uFE0F",
        "\u0661", "\uFFFD", "\xFF",   "\xE2",   "\U0001F468", "\U0001F1E7", "\U0001F3FB", "\U000110BD"};
    std::mt19937 random(11);
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t count = random() % 10; count > 0; --count)
            text += parts[random() % std::size(parts)];
        const std::vector<std::size_t> ends = plain::characterEnds(text);
        ASSERT_EQ(characterCount(text), ends.size()) << testing::PrintToString(text);
        for (std::size_t count = 1; count <= ends.size(); ++count)
            ASSERT_EQ(firstCharacters(text, count).size(), ends[count - 1]) << testing::PrintToString(text);
    }
}

TEST(TextFirstCharactersTest, CutsBetweenCharacters) {
    EXPECT_EQ(firstCharacters("abc", 2), "ab");
    EXPECT_EQ(firstCharacters("abc", 3), "abc");
    EXPECT_EQ(firstCharacters("abc", 4), "abc");
    EXPECT_EQ(firstCharacters("abc", 0), "");
    EXPECT_EQ(firstCharacters("abe\u0301c", 3), "abe\u0301");
    EXPECT_EQ(firstCharacters("a\r\nb", 2), "a\r\n");
    EXPECT_EQ(firstCharacters(std::string(family) + "x", 1), family);
}

TEST(TextLimitedTest, LeavesAShortTextAlone) {
    EXPECT_EQ(limited("abc", 3), "abc");
    EXPECT_EQ(limited(" abc ", 5), " abc ");
    EXPECT_EQ(limited("", 3), "");
}

TEST(TextLimitedTest, CutsALongOneTrimsItAndAddsThreeFullStops) {
    EXPECT_EQ(limited("abcd", 3), "abc...");
    EXPECT_EQ(limited("ab cd", 3), "ab...");
    EXPECT_EQ(limited("  a bcd", 4), "a...");
    EXPECT_EQ(limited("    b", 4), "...");
    EXPECT_EQ(limited("ae\u0301\u0302b", 2), "ae\u0301\u0302...");
}

TEST(TextLowercasedTest, LowersEachLetterAndChangesNothingElse) {
    EXPECT_EQ(lowercased("Página 1"), "página 1");
    EXPECT_EQ(lowercased("AÇÃO \u212A"), "ação k");
    EXPECT_EQ(lowercased("Straße \u017F"), "straße \u017F");
    EXPECT_EQ(lowercased("A\u0303"), "a\u0303");
    EXPECT_EQ(lowercased(""), "");
}

TEST(TextFoldedTest, ForgetsCaseAndComposition) {
    EXPECT_EQ(folded("Ação"), folded("AÇA\u0303O"));
    EXPECT_EQ(folded("STRASSE"), folded("straße"));
    EXPECT_EQ(folded("ΟΔΟΣ"), folded("οδος"));
    EXPECT_EQ(folded("AbC[]"), "abc[]");
}

TEST(TextFoldedTest, RemembersDiacritics) {
    EXPECT_NE(folded("acao"), folded("ação"));
    EXPECT_NE(folded("e"), folded("é"));
}

TEST(TextFoldedTest, FoldsTheDottedIAsTheRootLocaleDoes) {
    EXPECT_EQ(folded("TITLE"), "title");
    EXPECT_EQ(folded("\u0130"), "i\u0307");
    EXPECT_NE(folded("\u0131"), "i");
}

TEST(TextFoldedTest, ComposesWhatFoldingTookApart) { EXPECT_EQ(folded("\u03B0"), folded("\u03AB\u0301")); }

}  // namespace
}  // namespace nettlecap::text
