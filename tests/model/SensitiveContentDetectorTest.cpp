#include "model/SensitiveContentDetector.h"
#include "model/Records.h"

namespace nettlecap {
namespace {

using Detector = SensitiveContentDetector;

constexpr auto none = std::nullopt;
constexpr auto card = SensitiveContentKind::paymentCard;
constexpr auto secret = SensitiveContentKind::secret;

TEST(ClassifyTest, FindsNothingInBlanks) {
    EXPECT_EQ(Detector::classify(""), none);
    EXPECT_EQ(Detector::classify(" \n\r\n\t "), none);
}

TEST(ClassifyTest, FindsACardNumberInGroups) {
    EXPECT_EQ(Detector::classify("4111111111111111"), card);
    EXPECT_EQ(Detector::classify("4111 1111 1111 1111"), card);
    EXPECT_EQ(Detector::classify("4111-1111-1111-1111"), card);
    EXPECT_EQ(Detector::classify("  4111 1111-1111 1111\n"), card);
}

TEST(ClassifyTest, FindsNothingInACardNumberWithAWrongDigit) {
    EXPECT_EQ(Detector::classify("4111 1111 1111 1112"), none);
    EXPECT_EQ(Detector::classify("4111-1111-1111-1112"), none);
    EXPECT_EQ(Detector::classify("4111111111111112"), none);
}

TEST(ClassifyTest, FindsACardNumberInsideASentence) {
    EXPECT_EQ(Detector::classify("o cartão é 4111 1111 1111 1111, validade 12/30"), card);
    EXPECT_EQ(Detector::classify("n=4111111111111111;"), card);
    EXPECT_EQ(Detector::classify("linha\n4111 1111\n4111 1111 1111 1111"), card);
}

TEST(ClassifyTest, WantsThirteenToNineteenDigits) {
    EXPECT_EQ(Detector::classify("000000000018"), none);          // 12
    EXPECT_EQ(Detector::classify("0000000000018"), card);         // 13
    EXPECT_EQ(Detector::classify("0000000000000000018"), card);   // 19
    EXPECT_EQ(Detector::classify("00000000000000000018"), none);  // 20
    EXPECT_EQ(Detector::classify("4111111111111111" + std::string(20, '1')), none);
}

TEST(ClassifyTest, PrefersTheCard) { EXPECT_EQ(Detector::classify("sk-4111111111111111"), card); }

TEST(ClassifyTest, TakesSixToEightDigitsForACode) {
    EXPECT_EQ(Detector::classify("48291"), none);
    EXPECT_EQ(Detector::classify("482913"), secret);
    EXPECT_EQ(Detector::classify("48291345"), secret);
    EXPECT_EQ(Detector::classify("482913457"), none);
    EXPECT_EQ(Detector::classify(" 482913\n"), secret);
}

TEST(ClassifyTest, TakesAnyNumericCharactersForACode) {
    EXPECT_EQ(Detector::classify("\u0664\u0668\u0662\u0669\u0661\u0663"), secret);  // Arabic-Indic digits
    EXPECT_EQ(Detector::classify("①②③④⑤⑥"), secret);
    EXPECT_EQ(Detector::classify("一二三四五六"), secret);
    EXPECT_EQ(Detector::classify("½½½½½½"), secret);
    EXPECT_EQ(Detector::classify("48\u03012913"), secret);  // a mark belongs to its digit
    EXPECT_EQ(Detector::classify("48291x"), none);
}

TEST(ClassifyTest, LeavesAddressesAlone) {
    EXPECT_EQ(Detector::classify("https://exemplo.com/Abc123XYZ-token"), none);
    EXPECT_EQ(Detector::classify("HTTP://Exemplo.com/Abc123"), none);
    EXPECT_EQ(Detector::classify("www.Exemplo123.com"), none);
    EXPECT_EQ(Detector::classify("file:///Users/Ana/Doc1.txt"), none);
    EXPECT_EQ(Detector::classify("ftp://Exemplo.com/Abc123"), secret);
}

TEST(ClassifyTest, LeavesEmailAddressesAlone) {
    EXPECT_EQ(Detector::classify("Ana.Silva2024@Exemplo.com"), none);
    EXPECT_EQ(Detector::classify("Ana2024@Exemplo"), secret);        // no dot
    EXPECT_EQ(Detector::classify("Ana2024@Exemplo.com@x"), secret);  // two at-signs
}

TEST(ClassifyTest, LeavesUUIDsAlone) {
    EXPECT_EQ(Detector::classify("9F1B7E62-3C4D-4E5F-8A6B-0123456789AB"), none);
    EXPECT_EQ(Detector::classify("9f1b7e62-3c4d-4e5f-8a6b-0123456789ab"), none);
    EXPECT_EQ(Detector::classify("9F1B7e62-3C4D-6E5F-8A6B-0123456789AB"), secret);  // version 6
    EXPECT_EQ(Detector::classify("9F1B7e62-3C4D-4E5F-CA6B-0123456789AB"), secret);  // another variant
}

TEST(ClassifyTest, LeavesRelativePathsAlone) {
    EXPECT_EQ(Detector::classify("Empresa/Projeto-2024"), none);
    EXPECT_EQ(Detector::classify("a/b/c/d/e/f/G1.txt"), none);
    EXPECT_EQ(Detector::classify("a/b/c/d/e/f/g/H1.txt"), secret);  // eight components
    EXPECT_EQ(Detector::classify("(Empresa/Projeto-2024)"), none);
    EXPECT_EQ(Detector::classify("<\"Empresa/Projeto-2024\">,"), none);
    EXPECT_EQ(Detector::classify("[`Empresa/Projeto-2024`]"), none);
    EXPECT_EQ(Detector::classify("/Empresa/Projeto-2024"), secret);  // absolute
}

TEST(ClassifyTest, LimitsPathComponentsToAHundredCharacters) {
    const std::string hundred(98, 'a');

    EXPECT_EQ(Detector::classify("A1" + hundred + "/b"), none);
    EXPECT_EQ(Detector::classify("A1x" + hundred + "/b"), secret);
}

TEST(ClassifyTest, KnowsTokensByTheirPrefix) {
    for (const std::string prefix : {"sk-", "sk_", "ghp_", "github_pat_", "xoxb-", "xoxp-", "akia", "eyj"})
        EXPECT_EQ(Detector::classify(prefix + "abc"), secret) << prefix;
    EXPECT_EQ(Detector::classify("SK-abc"), secret);
    EXPECT_EQ(Detector::classify("EyJabc"), secret);
    EXPECT_EQ(Detector::classify("\u212Aeyabcdef"), none);
    EXPECT_EQ(Detector::classify("a\u212Aiaab"), secret);  // the kelvin sign is a K
}

TEST(ClassifyTest, WantsSixCharactersWithoutBlanksOfAToken) {
    EXPECT_EQ(Detector::classify("sk-ab"), none);
    EXPECT_EQ(Detector::classify("sk-abc"), secret);
    EXPECT_EQ(Detector::classify("sk-ab c"), none);
    EXPECT_EQ(Detector::classify("sk-abc\u200Bd"), none);
}

TEST(ClassifyTest, WantsThreeKindsOfCharacters) {
    EXPECT_EQ(Detector::classify("abCD1234"), secret);
    EXPECT_EQ(Detector::classify("abC1234"), none);  // seven characters
    EXPECT_EQ(Detector::classify("abcdef123456"), none);
    EXPECT_EQ(Detector::classify("abcdef-12345"), secret);
    EXPECT_EQ(Detector::classify("ABCDEF-12345"), secret);
    EXPECT_EQ(Detector::classify("ABCDEF123456"), none);
}

TEST(ClassifyTest, WantsADigitAndACapitalOrASymbol) {
    EXPECT_EQ(Detector::classify("abcDEF-ghi"), none);
    EXPECT_EQ(Detector::classify("abcDEFghi1"), secret);
    EXPECT_EQ(Detector::classify("abcdefghi!1"), secret);
}

TEST(ClassifyTest, JudgesLettersOfEveryScript) {
    EXPECT_EQ(Detector::classify("çãéÁÉ123"), secret);
    EXPECT_EQ(Detector::classify("абвГДЕ12"), secret);
    EXPECT_EQ(Detector::classify("\u01C5bcdefg1"), secret);       // a title-case letter counts as a capital
    EXPECT_EQ(Detector::classify("abcDEFg\u0664"), secret);       // an Arabic-Indic digit
    EXPECT_EQ(Detector::classify("abcDEFg\u2163"), none);         // a Roman numeral is no decimal digit
    EXPECT_EQ(Detector::classify("abcdefg1\U0001F600"), secret);  // an emoji is a symbol
    EXPECT_EQ(Detector::classify("abcdefg1e\u0301"), none);       // a mark is none
}

TEST(ClassifyTest, ReadsBrokenBytesAsReplacementCharacters) {
    EXPECT_EQ(Detector::classify("abcdefg1\xFF"), Detector::classify("abcdefg1\uFFFD"));
    EXPECT_EQ(Detector::classify("\xFF\xC3"), none);
}

TEST(ClassifyTest, LeavesLongAndSeveralWordsAlone) {
    std::string mixed;
    for (int n = 0; n < 64; ++n) mixed += "aB1-";
    EXPECT_EQ(Detector::classify(mixed), secret);      // 256 characters
    EXPECT_EQ(Detector::classify(mixed + "a"), none);  // 257
    EXPECT_EQ(Detector::classify(mixed + "aB1-"), none);
    EXPECT_EQ(Detector::classify("abCD1234 abCD1234"), none);
    EXPECT_EQ(Detector::classify("abCD1234\nabCD1234"), none);
}

TEST(ClassifyTest, CountsCharactersNotBytes) {
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";

    EXPECT_EQ(Detector::classify("aB1" + family + family), none);
    EXPECT_EQ(Detector::classify("aB1" + family + family + family + family + family), secret);
}

TEST(ContainsValidPaymentCardTest, AllowsOneSeparatorBetweenDigits) {
    EXPECT_TRUE(Detector::containsValidPaymentCard("4 1-1 1-1 1 1 1 1 1 1 1 1 1 1 1"));
    EXPECT_FALSE(Detector::containsValidPaymentCard("4111  1111 1111 1111"));
    EXPECT_FALSE(Detector::containsValidPaymentCard("4111 - 1111 1111 1111"));
    EXPECT_FALSE(Detector::containsValidPaymentCard("4111.1111.1111.1111"));
    EXPECT_FALSE(Detector::containsValidPaymentCard("4111\u00A01111\u00A01111\u00A01111"));
}

TEST(ContainsValidPaymentCardTest, TouchesNoOtherDigit) {
    EXPECT_FALSE(Detector::containsValidPaymentCard("12345678904111111111111111"));
    EXPECT_TRUE(Detector::containsValidPaymentCard("1234567890a4111111111111111"));
    EXPECT_FALSE(Detector::containsValidPaymentCard("\u06644111111111111111111\u0664"));
}

TEST(ContainsValidPaymentCardTest, TakesTheLongestRunFromTheLeft) {
    // 19 digits with their separator are tried first, and they don't pass; what is left is too short.
    EXPECT_FALSE(Detector::containsValidPaymentCard("123 4111111111111111"));
    EXPECT_TRUE(Detector::containsValidPaymentCard("1234 4111111111111111"));
}

TEST(ContainsValidPaymentCardTest, LooksOnAfterARunThatFails) {
    EXPECT_TRUE(Detector::containsValidPaymentCard("4111 1111 1111 1112, 4111 1111 1111 1111"));
    EXPECT_TRUE(Detector::containsValidPaymentCard("1234567890123456 4111 1111 1111 1111"));
}

TEST(ContainsValidPaymentCardTest, ReadsDigitsOfEveryScript) {
    const std::string one = "\u0661";
    std::string number = "\u0664";
    for (int n = 0; n < 15; ++n) number += one;

    EXPECT_TRUE(Detector::containsValidPaymentCard(number));
    EXPECT_TRUE(Detector::containsValidPaymentCard("4\u0661111111111111\uFF111"));
    EXPECT_FALSE(Detector::containsValidPaymentCard(number + one));
}

TEST(PassesLuhnTest, DoublesEverySecondDigitFromTheRight) {
    EXPECT_TRUE(Detector::passesLuhn("18"));
    EXPECT_TRUE(Detector::passesLuhn("59"));
    EXPECT_TRUE(Detector::passesLuhn("79927398713"));
    EXPECT_FALSE(Detector::passesLuhn("79927398710"));
    EXPECT_FALSE(Detector::passesLuhn("81"));
    EXPECT_FALSE(Detector::passesLuhn("1"));
}

TEST(PassesLuhnTest, FailsWithoutAnythingToAdd) {
    EXPECT_FALSE(Detector::passesLuhn(""));
    EXPECT_FALSE(Detector::passesLuhn("abc"));
    EXPECT_FALSE(Detector::passesLuhn("0"));
    EXPECT_FALSE(Detector::passesLuhn("0000000000000000"));
}

TEST(PassesLuhnTest, SkipsWhatHasNoWholeValue) {
    EXPECT_TRUE(Detector::passesLuhn("1-8"));
    EXPECT_TRUE(Detector::passesLuhn("1½8"));
    EXPECT_TRUE(Detector::passesLuhn("16\u03018"));  // a digit with a mark is no digit
}

TEST(PassesLuhnTest, TakesTheValueOfAnyNumericCharacter) {
    EXPECT_TRUE(Detector::passesLuhn("\u0661\u0668"));
    EXPECT_TRUE(Detector::passesLuhn("一八"));
    EXPECT_TRUE(Detector::passesLuhn("Ⅹ"));   // 10
    EXPECT_TRUE(Detector::passesLuhn("⑫5"));  // 24 - 9 and 5 make 20
}

TEST(PublicIdentifierTest, IsWhatBeginsWithAnAddressPrefix) {
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("http://"));
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("HTTPS://a b"));
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("www."));
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("File://x"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("xhttp://"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier(""));
}

TEST(PublicIdentifierTest, IsAWholeEmailAddress) {
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("a@b.c"));
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("ação@exemplo.com.br"));
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("a@b.c\n"));  // the end of the last line is an end
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a@b"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a@.c"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a@b."));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("@b.c"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a@b.c d"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a@b@c.d"));
}

TEST(PublicIdentifierTest, IsAPathOfTwoToSevenComponents) {
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("a/b"));
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("!?;:a/B.c_d-e*"));
    EXPECT_TRUE(Detector::isClearlyPublicIdentifier("a/b/c/d/e/f/g"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a/b/c/d/e/f/g/h"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a//b"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a/b/"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("a/ção"));
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier("(/)"));
}

}  // namespace
}  // namespace nettlecap
