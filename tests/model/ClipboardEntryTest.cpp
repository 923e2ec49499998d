#include "model/Records.h"

namespace nettlecap {
namespace {

const std::string sixBullets = "••••••";
const std::string eightBullets = "••••••••";
const std::string twelveBullets = "••••••••••••";

std::string masked(std::optional<std::string> text) {
    ClipboardEntry entry;
    entry.text = std::move(text);
    return entry.maskedDescription();
}

TEST(MaskedDescriptionTest, IsEightBulletsWhereThereIsNoText) {
    EXPECT_EQ(masked(std::nullopt), eightBullets);
    EXPECT_EQ(masked(""), eightBullets);
    EXPECT_EQ(masked(" \r\n\t\u200B"), eightBullets);
}

TEST(MaskedDescriptionTest, ShowsTwoCharactersAndSixToTwelveBullets) {
    EXPECT_EQ(masked("a"), "a" + sixBullets);
    EXPECT_EQ(masked("ab"), "ab" + sixBullets);
    EXPECT_EQ(masked("abc"), "ab" + sixBullets);
    EXPECT_EQ(masked("abcdefgh"), "ab" + sixBullets);
    EXPECT_EQ(masked("abcdefghi"), "ab" + sixBullets + "•");
    EXPECT_EQ(masked("abcdefghijklm"), "ab" + sixBullets + "•••••");
    EXPECT_EQ(masked("abcdefghijklmn"), "ab" + twelveBullets);
    EXPECT_EQ(masked("abcdefghijklmno"), "ab" + twelveBullets);
    EXPECT_EQ(masked(std::string(40, 'x')), "xx" + twelveBullets);
}

TEST(MaskedDescriptionTest, HidesACardNumber) {
    EXPECT_EQ(masked("4111 1111 1111 1111"), "41" + twelveBullets);
}

TEST(MaskedDescriptionTest, CountsCharactersNotBytes) {
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";

    EXPECT_EQ(masked(family), family + sixBullets);
    EXPECT_EQ(masked(family + "e\u0301senha"), family + "e\u0301" + sixBullets);
    EXPECT_EQ(masked("e\u0301e\u0301" + std::string(7, 'x')), "e\u0301e\u0301" + sixBullets + "•");
}

TEST(MaskedDescriptionTest, IsOneTrimmedLine) {
    EXPECT_EQ(masked("\n a\nbcdefgh \n"), "a " + sixBullets + "•");
    EXPECT_EQ(masked("a\r\nb"), "a\r" + sixBullets);
}

TEST(MaskedDescriptionTest, CountsALineFeedAndItsMarkAsOneOnceItIsASpace) {
    std::string text = "ab";
    for (int n = 0; n < 7; ++n) text += "\n\u0301";

    EXPECT_EQ(masked(text), "ab" + sixBullets + "•");
}

TEST(MaskedDescriptionTest, KeepsBlanksInTheMiddleOfALongText) {
    EXPECT_EQ(masked("a" + std::string(100, ' ') + "b"), "a " + twelveBullets);
    EXPECT_EQ(masked("a" + std::string(100, '\n') + "b"), "a " + twelveBullets);
}

TEST(MaskedDescriptionTest, IsThatOfTheWholeTextHoweverLong) {
    std::string huge;
    huge.resize(50'000'000, 'x');

    EXPECT_EQ(masked(huge), "xx" + twelveBullets);
}

TEST(SearchableTextTest, JoinsTextAndSourceWithASpace) {
    ClipboardEntry entry = textEntry(1, "Olá", 0);
    EXPECT_EQ(entry.searchableText(false), "Olá Notas");

    entry.sourceApplication.reset();
    EXPECT_EQ(entry.searchableText(false), "Olá");

    entry.text.reset();
    EXPECT_EQ(entry.searchableText(false), "");

    entry.sourceApplication = "Fotos";
    EXPECT_EQ(entry.searchableText(false), "Fotos");
}

TEST(SearchableTextTest, LeavesASensitiveTextOutWhileProtected) {
    ClipboardEntry entry = textEntry(1, "482913", 0);
    EXPECT_EQ(entry.searchableText(true), "482913 Notas");

    entry.sensitiveKind = SensitiveContentKind::secret;
    EXPECT_EQ(entry.searchableText(true), "Notas");
    EXPECT_EQ(entry.searchableText(false), "482913 Notas");

    entry.sourceApplication.reset();
    EXPECT_EQ(entry.searchableText(true), "");
}

TEST(SearchableTextTest, KeepsAnEmptyTextInItsPlace) {
    EXPECT_EQ(textEntry(1, "", 0).searchableText(false), " Notas");
}

TEST(ClipboardEntryTest, IsEqualInAllNineFieldsOrNotAtAll) {
    const ClipboardEntry entry = textEntry(1, "a", 0);
    const auto differs = [&](auto change) {
        ClipboardEntry other = entry;
        change(other);
        return !(other == entry);
    };

    EXPECT_TRUE(entry == ClipboardEntry(entry));
    EXPECT_TRUE(differs([](auto& other) { other.id = uuid(2); }));
    EXPECT_TRUE(differs([](auto& other) { other.kind = ClipboardContentKind::image; }));
    EXPECT_TRUE(differs([](auto& other) { other.text = "b"; }));
    EXPECT_TRUE(differs([](auto& other) { other.imageFilename = "b.png"; }));
    EXPECT_TRUE(differs([](auto& other) { other.createdAt = {1}; }));
    EXPECT_TRUE(differs([](auto& other) { other.sourceApplication.reset(); }));
    EXPECT_TRUE(differs([](auto& other) { other.fingerprint += "0"; }));
    EXPECT_TRUE(differs([](auto& other) { other.isFavorite = true; }));
    EXPECT_TRUE(differs([](auto& other) { other.sensitiveKind = SensitiveContentKind::secret; }));
}

}  // namespace
}  // namespace nettlecap
