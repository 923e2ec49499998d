#include "ui/NavigationHUDTextPreview.h"

#include <ctime>
#include <gtest/gtest.h>

namespace nettlecap {

void PrintTo(const NavigationHUDTextPresentation& shown, std::ostream* out) {
    *out << '"' << shown.text << "\" expanded: " << shown.usesExpandedLayout
         << " lines: " << shown.visibleLineLimit;
}

namespace {

using Preview = NavigationHUDTextPreview;

constexpr const char* family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int n = 0; n < times; ++n) result += text;
    return result;
}

NavigationHUDTextPresentation shown(std::string text) {
    return Preview::presentation(ClipboardEntry{.text = std::move(text)}, true);
}

TEST(NavigationHUDLimitedTest, LeavesThreeThousandCharactersAlone) {
    const std::string text = " " + std::string(2998, 'a') + " ";

    EXPECT_EQ(Preview::limited(text), text);
}

TEST(NavigationHUDLimitedTest, CutsTheThreeThousandAndFirstTrimsAndAddsThreeFullStops) {
    EXPECT_EQ(Preview::limited(" " + std::string(2998, 'a') + " b"), std::string(2998, 'a') + "...");
    EXPECT_EQ(Preview::limited(repeated(family, 3001)), repeated(family, 3000) + "...");
}

TEST(NavigationHUDExpandedLayoutTest, BeginsAboveAHundredAndEightyCharacters) {
    EXPECT_FALSE(Preview::shouldUseExpandedLayout(""));
    EXPECT_FALSE(Preview::shouldUseExpandedLayout(std::string(180, 'a')));
    EXPECT_TRUE(Preview::shouldUseExpandedLayout(std::string(181, 'a')));
    EXPECT_FALSE(Preview::shouldUseExpandedLayout(repeated(family, 180)));
    EXPECT_TRUE(Preview::shouldUseExpandedLayout(repeated(family, 181)));
}

TEST(NavigationHUDExpandedLayoutTest, IsForEveryKindOfLineBreak) {
    for (const char* text :
         {"a\nb", "a\vb", "a\fb", "a\rb", "a\r\nb", "a\u0085b", "a\u2028b", "a\u2029b", "\n"})
        EXPECT_TRUE(Preview::shouldUseExpandedLayout(text)) << testing::PrintToString(text);
    for (const char* text : {"a\tb", "a\u000Eb", "a\u0084b", "a\u0086b", "a\u2027b", "a\u202Ab", "a\u200Bb"})
        EXPECT_FALSE(Preview::shouldUseExpandedLayout(text)) << testing::PrintToString(text);
}

TEST(NavigationHUDLineLimitTest, IsNeverBelowFour) {
    EXPECT_EQ(Preview::visibleLineLimit(""), 4);
    EXPECT_EQ(Preview::visibleLineLimit(std::string(58, 'a')), 4);
    EXPECT_EQ(Preview::visibleLineLimit(std::string(59, 'a')), 4);
    EXPECT_EQ(Preview::visibleLineLimit(std::string(232, 'a')), 4);
    EXPECT_EQ(Preview::visibleLineLimit("a\nb\nc\nd"), 4);
}

TEST(NavigationHUDLineLimitTest, CountsARowForEachFiftyEightCharacters) {
    EXPECT_EQ(Preview::visibleLineLimit(std::string(233, 'a')), 5);
    EXPECT_EQ(Preview::visibleLineLimit(std::string(290, 'a')), 5);
    EXPECT_EQ(Preview::visibleLineLimit(std::string(291, 'a')), 6);
    EXPECT_EQ(Preview::visibleLineLimit(repeated(family, 290)), 5);
    EXPECT_EQ(Preview::visibleLineLimit(repeated(family, 291)), 6);
    EXPECT_EQ(Preview::visibleLineLimit("a\nb\nc\n" + std::string(59, 'd')), 5);
}

TEST(NavigationHUDLineLimitTest, CountsLinesAndBlankLines) {
    EXPECT_EQ(Preview::visibleLineLimit("a\nb\nc\nd\ne"), 5);
    EXPECT_EQ(Preview::visibleLineLimit("a\n\nb\n\nc"), 5);
    EXPECT_EQ(Preview::visibleLineLimit("\n\n\n\n"), 5);
    EXPECT_EQ(Preview::visibleLineLimit("a\n\nb\n\nc\n\nd\n\ne"), 9);
}

TEST(NavigationHUDLineLimitTest, IsNeverAboveNine) {
    EXPECT_EQ(Preview::visibleLineLimit(std::string(464, 'a')), 8);
    EXPECT_EQ(Preview::visibleLineLimit(std::string(465, 'a')), 9);
    EXPECT_EQ(Preview::visibleLineLimit(std::string(1000, 'a')), 9);
    EXPECT_EQ(Preview::visibleLineLimit(repeated("a\n", 100)), 9);
    EXPECT_EQ(Preview::visibleLineLimit("a\nb\nc\nd\n" + std::string(1000, 'e')), 9);
}

TEST(NavigationHUDLineLimitTest, OnlyALoneLineFeedEndsARow) {
    EXPECT_EQ(Preview::visibleLineLimit(repeated("a\r\n", 20)), 4);
    EXPECT_EQ(Preview::visibleLineLimit("a\rb\rc\rd\re\rf"), 4);
    EXPECT_EQ(Preview::visibleLineLimit("a\u2028b\u2028c\u2028d\u2028e"), 4);
    EXPECT_EQ(Preview::visibleLineLimit("a\r\n\nb\n\nc\n\r"), 5);
    EXPECT_EQ(Preview::visibleLineLimit(repeated("a\r\n", 117)), 5);  // 234 characters
}

TEST(NavigationHUDPresentationTest, TrimsWhatItShows) {
    EXPECT_EQ(shown(" \u00A0um\n"), (NavigationHUDTextPresentation{"um", true, 4}));
    EXPECT_EQ(shown("um"), (NavigationHUDTextPresentation{"um", false, 4}));
}

TEST(NavigationHUDPresentationTest, MeasuresTheLayoutOnTheWholeTextAndTheLinesOnWhatItShows) {
    EXPECT_EQ(shown(std::string(200, ' ') + "a"), (NavigationHUDTextPresentation{"a", true, 4}));
    EXPECT_EQ(shown("\n\n\n\n\n\n\n\na\r\n"), (NavigationHUDTextPresentation{"a", true, 4}));
    EXPECT_EQ(shown("a\rb"), (NavigationHUDTextPresentation{"a\rb", true, 4}));
}

TEST(NavigationHUDPresentationTest, CutsALongText) {
    EXPECT_EQ(shown(std::string(3000, 'a')),
              (NavigationHUDTextPresentation{std::string(3000, 'a'), true, 9}));
    EXPECT_EQ(shown(std::string(3001, 'a')),
              (NavigationHUDTextPresentation{std::string(3000, 'a') + "...", true, 9}));
}

TEST(NavigationHUDPresentationTest, SaysThatATextIsEmpty) {
    EXPECT_EQ(shown(""), (NavigationHUDTextPresentation{"Texto vazio", false, 4}));
    EXPECT_EQ(shown(" \n\t"), (NavigationHUDTextPresentation{"Texto vazio", true, 4}));
    EXPECT_EQ(Preview::presentation(ClipboardEntry{.kind = ClipboardContentKind::image}, true).text,
              "Texto vazio");
    EXPECT_EQ(shown(std::string(3001, ' ') + "a").text, "...");
}

TEST(NavigationHUDPresentationTest, MasksASensitiveTextHoweverLongItIs) {
    const ClipboardEntry entry{.text = repeated("4111\n", 100),
                               .sensitiveKind = SensitiveContentKind::secret};

    EXPECT_EQ(Preview::presentation(entry, true),
              (NavigationHUDTextPresentation{"41••••••••••••", false, 4}));
}

TEST(NavigationHUDPresentationTest, ShowsASensitiveTextWhileProtectionIsOff) {
    const ClipboardEntry entry{.text = "4111\n1111", .sensitiveKind = SensitiveContentKind::paymentCard};

    EXPECT_EQ(Preview::presentation(entry, false), (NavigationHUDTextPresentation{"4111\n1111", true, 4}));
}

TEST(NavigationHUDPresentationTest, LooksAtOnePageOfAHugeText) {
    std::string huge(std::size_t{64} << 20, 'a');
    huge[5000] = static_cast<char>(0xC3);  // from here on no quick way for ASCII is left
    const ClipboardEntry entry{.text = std::move(huge)};
    const std::clock_t start = std::clock();

    for (int n = 0; n < 100; ++n) ASSERT_EQ(Preview::presentation(entry, true).visibleLineLimit, 9);

    // A look at all of it takes longer each time than this takes a hundred times.
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 5);
}

}  // namespace
}  // namespace nettlecap
