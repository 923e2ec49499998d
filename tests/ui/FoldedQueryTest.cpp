#include "ui/FoldedQuery.h"
#include "model/Text.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

bool finds(std::string_view query, std::string_view text) {
    return FoldedQuery(query).isIn(text::folded(text));
}

TEST(FoldedQueryTest, IsFoundWhateverTheCase) {
    EXPECT_TRUE(finds("REUNIÃO", "a reunião das três"));
    EXPECT_TRUE(finds("três", "A REUNIÃO DAS TRÊS"));
    EXPECT_TRUE(finds("STRASSE", "Hauptstraße"));
}

TEST(FoldedQueryTest, KeepsDiacriticsApart) {
    EXPECT_FALSE(finds("reuniao", "a reunião das três"));
    EXPECT_FALSE(finds("três", "os tres"));
}

TEST(FoldedQueryTest, IsFoundWhicheverWayItsLettersAreComposed) {
    EXPECT_TRUE(finds("cafe\u0301", "um café"));
    EXPECT_TRUE(finds("café", "um cafe\u0301"));
}

TEST(FoldedQueryTest, IsTakenAsTyped) {
    EXPECT_FALSE(finds(" café", "café"));
    EXPECT_FALSE(finds("café leite", "leite com café"));
    EXPECT_TRUE(finds("com café", "leite com café"));
}

TEST(FoldedQueryTest, FindsBeyondANullByte) {
    EXPECT_TRUE(finds("fim", std::string_view("começo\0fim", 11)));
    EXPECT_TRUE(finds(std::string_view("\0", 1), std::string_view("a\0b", 3)));
    EXPECT_FALSE(finds(std::string_view("\0", 1), "ab"));
}

TEST(FoldedQueryTest, AnEmptyOneIsInEverything) {
    EXPECT_TRUE(finds("", ""));
    EXPECT_TRUE(FoldedQuery().isEmpty());
    EXPECT_FALSE(finds("a", ""));
}

TEST(FoldedQueryTest, EqualsOneThatFindsTheSame) {
    EXPECT_EQ(FoldedQuery("CAFÉ"), FoldedQuery("café"));
    EXPECT_NE(FoldedQuery("café"), FoldedQuery("cafe"));
}

}  // namespace
}  // namespace nettlecap
