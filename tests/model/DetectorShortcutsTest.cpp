#include "model/PlainExpressions.h"
#include "model/SensitiveContentDetector.h"
#include "model/Text.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>

namespace nettlecap {
namespace {

using Detector = SensitiveContentDetector;

class DetectorShortcutsTest : public testing::Test {
protected:
    /// Of `count` parts, each drawn anew.
    template <std::size_t size>
    std::string draw(const std::string_view (&parts)[size], int count) {
        std::string text;
        for (int n = 0; n < count; ++n) text += parts[random() % size];
        return text;
    }

    std::mt19937 random{3};
};

TEST_F(DetectorShortcutsTest, FindTheCardsThatThePlainExpressionFinds) {
    static constexpr std::string_view parts[] = {"4",  "1",      "11",     "1111",   "0",      "5",   "9",
                                                 "18", " ",      " ",      "-",      "-",      ".",   "a",
                                                 "\n", "\u0661", "\uFF11", "\u0301", "\u00A0", "ção", "\xFF"};
    int cards = 0;
    for (int round = 0; round < 60'000; ++round) {
        const std::string text = draw(parts, 8 + static_cast<int>(random() % 24));
        const bool expected = plain::containsValidPaymentCard(text);
        cards += expected;
        ASSERT_EQ(Detector::containsValidPaymentCard(text), expected) << testing::PrintToString(text);
    }
    EXPECT_GT(cards, 100);
}

TEST_F(DetectorShortcutsTest, FindTheCardsThatThePlainExpressionFindsAmongDigitsAndSeparators) {
    static constexpr std::string_view parts[] = {"1", "2", "3", "4", "56", "789", "0000", " ", "-", "- "};
    int cards = 0;
    for (int round = 0; round < 60'000; ++round) {
        const std::string text = draw(parts, 10 + static_cast<int>(random() % 30));
        const bool expected = plain::containsValidPaymentCard(text);
        cards += expected;
        ASSERT_EQ(Detector::containsValidPaymentCard(text), expected) << testing::PrintToString(text);
    }
    EXPECT_GT(cards, 1000);
}

TEST_F(DetectorShortcutsTest, KnowTheIdentifiersThatThePlainExpressionsKnow) {
    static constexpr std::string_view parts[] = {"a",  "B",    "7",      ".",      "_",      "-",
                                                 "/",  "/",    "@",      "é",      "\u017F", "\u212A",
                                                 "\n", "\r\n", "\u2028", "\u0085", " ",      "\u200B"};
    int identifiers = 0;
    for (int round = 0; round < 60'000; ++round) {
        const std::string text = draw(parts, 1 + static_cast<int>(random() % 9));
        const bool expected = plain::isEmail(text) || plain::isUUID(text) || plain::isRepositoryPath(text);
        identifiers += expected;
        ASSERT_EQ(Detector::isClearlyPublicIdentifier(text), expected) << testing::PrintToString(text);
    }
    EXPECT_GT(identifiers, 500);
}

TEST_F(DetectorShortcutsTest, KnowTheUUIDsThatThePlainExpressionKnows) {
    static constexpr std::string_view parts[] = {"x", "\u017F", "-", "F", "", "\n", "\r\n", "\u2028"};
    for (int round = 0; round < 20'000; ++round) {
        std::string text = "9f1b7e62-3c4d-4e5f-8a6b-0123456789ab";
        text.replace(random() % text.size(), random() % 2, draw(parts, 1));
        text += draw(parts, static_cast<int>(random() % 2));
        ASSERT_EQ(Detector::isClearlyPublicIdentifier(text), plain::isUUID(text))
            << testing::PrintToString(text);
    }
}

TEST_F(DetectorShortcutsTest, KnowTheSecretsThatThePlainRulesKnow) {
    static constexpr std::string_view parts[] = {
        "a",      "b",      "C",    "7",   "42", "é", "É",      "-",      "_",
        "sk-",    "eyJ",    "①",    "½",   "漢", "/", ".",      "\u01C5", "\u0661",
        "\u0301", "\u200D", "\xFF", "www", "@",  " ", "\u00A0", "\u200B", "\U0001F600"};
    int secrets = 0;
    for (int round = 0; round < 60'000; ++round) {
        std::string text = draw(parts, 1 + static_cast<int>(random() % 12));
        if (random() % 8 == 0) text.insert(random() % 2 == 0 ? 0 : text.size(), 246 + random() % 12, 'x');
        const bool expected = plain::resemblesSecret(text);
        secrets += expected;
        ASSERT_EQ(Detector::resemblesSecret(text), expected) << testing::PrintToString(text);
    }
    EXPECT_GT(secrets, 3000);
}

/// Texts that send a careless expression into deep stacks or quadratic time.
class HugeTextTest : public testing::TestWithParam<std::string_view> {
protected:
    static constexpr std::size_t size = 2 << 20;

    static std::string repeated(std::string_view part) {
        std::string text;
        text.reserve(size + part.size());
        while (text.size() < size) text += part;
        return text;
    }
};

TEST_P(HugeTextTest, IsClassifiedInLinearTime) {
    const std::string text = "a@" + repeated(GetParam()) + "@";

    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Detector::classify(text), std::nullopt);
    EXPECT_FALSE(Detector::isClearlyPublicIdentifier(text));

    // Quadratic time would be hours.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

TEST_P(HugeTextTest, MayHideACardAtItsEnd) {
    EXPECT_TRUE(Detector::containsValidPaymentCard(repeated(GetParam()) + "x4111 1111 1111 1111"));
}

INSTANTIATE_TEST_SUITE_P(Nasty, HugeTextTest,
                         testing::Values("a", "1", "1-", "11 ", "111 111 111 111 - ", "1234567890123 ",
                                         "12345678901234567890 ", ".", ".a", ". ", "a/", "/", "\u0301",
                                         ".\u0301\u0301\u0301\u0301\u0301\u0301", "\u0661", "\u0661-", "é",
                                         "\xFF", "\U0001F468\u200D"));

TEST_F(DetectorShortcutsTest, SurviveAFewCharactersOfManyMegabytes) {
    std::string marks;
    while (marks.size() < (4U << 20U)) marks += "\u0301";
    const std::string text = "a@b." + marks + "." + marks + ".1" + marks + "@";

    EXPECT_EQ(Detector::classify(text), SensitiveContentKind::secret);
    EXPECT_EQ(Detector::classify("aB1" + marks + "cdefg"), SensitiveContentKind::secret);
}

}  // namespace
}  // namespace nettlecap
