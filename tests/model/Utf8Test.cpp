#include "model/Utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace nettlecap::utf8 {
namespace {

std::u32string forwards(std::string_view text) {
    std::u32string result;
    for (std::size_t place = 0; place < text.size();) result += next(text, place);
    return result;
}

std::u32string backwards(std::string_view text) {
    std::u32string result;
    for (std::size_t place = text.size(); place > 0;) result.insert(result.begin(), previous(text, place));
    return result;
}

TEST(Utf8Test, StepsThroughScalarsBothWays) {
    EXPECT_EQ(forwards("aé€\U0001F468"), U"aé€\U0001F468");
    EXPECT_EQ(backwards("aé€\U0001F468"), U"aé€\U0001F468");
}

TEST(Utf8Test, ReadsBrokenBytesAsReplacementCharacters) {
    EXPECT_EQ(forwards("a\xFF\x62"), U"a\uFFFDb");
    EXPECT_EQ(forwards("\xE2\x82"), U"\uFFFD\uFFFD");
    EXPECT_EQ(backwards("a\xFF\x62"), U"a\uFFFDb");
    EXPECT_EQ(backwards("\x80\x80\x80\x80\x80"), std::u32string(5, U'\uFFFD'));
}

/// The bytes of RFC 3629's table.
std::string encoded(char32_t scalar) {
    const auto byte = [](char32_t value) { return static_cast<char>(value); };
    const auto trail = [&](unsigned shift) { return byte(0x80 | (scalar >> shift & 0x3F)); };
    if (scalar < 0x80) return {byte(scalar)};
    if (scalar < 0x800) return {byte(0xC0 | scalar >> 6), trail(0)};
    if (scalar < 0x10000) return {byte(0xE0 | scalar >> 12), trail(6), trail(0)};
    return {byte(0xF0 | scalar >> 18), trail(12), trail(6), trail(0)};
}

TEST(Utf8Test, ReadsEveryScalarAndNothingElse) {
    for (char32_t scalar = 0; scalar <= 0x110000; ++scalar) {
        const std::string bytes = encoded(scalar);
        const bool exists = scalar <= 0x10FFFF && (scalar < 0xD800 || scalar > 0xDFFF);
        const std::u32string broken(bytes.size(), U'\uFFFD');
        ASSERT_EQ(forwards(bytes), exists ? std::u32string(1, scalar) : broken) << std::uint32_t(scalar);
        if (bytes.size() == 1 || !exists) continue;
        const std::string cut = bytes.substr(0, bytes.size() - 1);
        ASSERT_EQ(forwards(cut), broken.substr(1));
        ASSERT_EQ(forwards(cut + 'a'), broken.substr(1) + U'a');
        ASSERT_EQ(forwards(cut + "\xC3\xA9"), broken.substr(1) + U'é');
    }
}

TEST(Utf8Test, TellsWhatIsWellFormed) {
    EXPECT_TRUE(isWellFormed(""));
    EXPECT_TRUE(isWellFormed("doze letras: ação \U0001F468"));
    EXPECT_FALSE(isWellFormed("\xC0\x80"));          // overlong
    EXPECT_FALSE(isWellFormed("\xED\xA0\x80"));      // a surrogate
    EXPECT_FALSE(isWellFormed("\xF4\x90\x80\x80"));  // beyond U+10FFFF
    EXPECT_FALSE(isWellFormed("0123456789\xFF"));
    EXPECT_FALSE(isWellFormed("0123456789\xC3"));
}

TEST(Utf8Test, MakesAnythingWellFormed) {
    EXPECT_EQ(wellFormed("a\xFF\xC3\xA9"), "a\uFFFDé");
    EXPECT_EQ(wellFormed("é"), "é");

    std::mt19937 random(2);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes;
        for (int n = 0; n < 12; ++n) bytes += static_cast<char>(random() % 4 == 0 ? random() : 0xC3);
        ASSERT_TRUE(isWellFormed(wellFormed(bytes)));
        ASSERT_EQ(forwards(wellFormed(bytes)), forwards(bytes));
    }
}

TEST(Utf8Test, FindsTheOneByteBeyondASCIIWhereverItStands) {
    for (std::size_t length = 1; length < 20; ++length)
        for (std::size_t place = 0; place < length; ++place) {
            std::string text(length, 'a');
            EXPECT_TRUE(isASCII(std::string_view(text)));
            text[place] = '\x80';
            EXPECT_FALSE(isASCII(std::string_view(text)));
        }
}

}  // namespace
}  // namespace nettlecap::utf8
