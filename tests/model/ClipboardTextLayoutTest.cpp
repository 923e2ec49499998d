#include "model/ClipboardTextLayout.h"

#include "platform/fake/FakeTextMeasure.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// Every scalar is 10 points wide.
bool isTruncated(std::string_view text, double width) {
    return ClipboardTextLayout::isTruncated(text, width, FakeTextMeasure());
}

/// Remembers the longest text that it had to measure.
class CountingMeasure final : public TextMeasure {
public:
    double width(std::string_view text) const override {
        longest = std::max(longest, text.size());
        return static_cast<double>(text.size());
    }

    mutable std::size_t longest = 0;
};

TEST(ClipboardTextLayoutTest, FitsUpToOnePointBeyondTheWidth) {
    EXPECT_FALSE(isTruncated("12345", 50));
    EXPECT_FALSE(isTruncated("12345", 49));
    EXPECT_TRUE(isTruncated("12345", 48.9));
    EXPECT_FALSE(isTruncated("", 1));
}

TEST(ClipboardTextLayoutTest, IsNeverTruncatedWithoutAWidth) {
    EXPECT_FALSE(isTruncated("12345", 0));
    EXPECT_FALSE(isTruncated("1\n2", -3));
    EXPECT_TRUE(isTruncated("12345", 0.5));
}

TEST(ClipboardTextLayoutTest, IsTruncatedAtEveryLineBreak) {
    for (const std::string_view lineBreak : {"\n", "\v", "\f", "\r", "\r\n", "\u0085", "\u2028", "\u2029"}) {
        EXPECT_TRUE(isTruncated(std::string("a") + std::string(lineBreak), 1000));
        EXPECT_TRUE(isTruncated(std::string(lineBreak) + "a", 1000));
    }
    EXPECT_FALSE(isTruncated("a\tb\u200B\u001C\u0084\u202F", 1000));
}

TEST(ClipboardTextLayoutTest, MeasuresNoMoreThanTheFirst256CharactersOfATooLongText) {
    const CountingMeasure measure;

    EXPECT_TRUE(ClipboardTextLayout::isTruncated(std::string(1'000'000, 'x'), 200, measure));

    EXPECT_EQ(measure.longest, 256U);
}

TEST(ClipboardTextLayoutTest, MeasuresTheWholeTextWhereTheStartFits) {
    const CountingMeasure measure;

    EXPECT_FALSE(ClipboardTextLayout::isTruncated(std::string(257, 'x'), 256, measure));
    EXPECT_TRUE(ClipboardTextLayout::isTruncated(std::string(258, 'x'), 256, measure));

    EXPECT_EQ(measure.longest, 258U);
}

}  // namespace
}  // namespace nettlecap
