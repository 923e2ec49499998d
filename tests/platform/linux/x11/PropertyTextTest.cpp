#include "platform/linux/x11/PropertyText.h"

#include <gtest/gtest.h>

using namespace nettlecap;
using namespace std::string_literals;

TEST(PropertyTextTest, LeavesWellFormedTextAlone) {
    EXPECT_EQ(propertyText::validUtf8(""), "");
    EXPECT_EQ(propertyText::validUtf8("ação, \xE2\x82\xAC, \xF0\x9F\x8C\xBF"),
              "ação, \xE2\x82\xAC, \xF0\x9F\x8C\xBF");
    EXPECT_EQ(propertyText::validUtf8("a text longer than eight bytes, then ç"),
              "a text longer than eight bytes, then ç");
}

TEST(PropertyTextTest, KeepsTheNullCharacterAndTheByteOrderMark) {
    EXPECT_EQ(propertyText::validUtf8("a\0b"s), "a\0b"s);
    EXPECT_EQ(propertyText::validUtf8("\xEF\xBB\xBF"
                                      "a"),
              "\xEF\xBB\xBF"
              "a");
}

TEST(PropertyTextTest, ReplacesEachIllFormedPartOnce) {
    EXPECT_EQ(propertyText::validUtf8("a\xFF"
                                      "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(propertyText::validUtf8("\x80\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(propertyText::validUtf8("\xE2\x82"), "\xEF\xBF\xBD") << "cut off at the end";
    EXPECT_EQ(propertyText::validUtf8("\xF0\x9F\x8C!"), "\xEF\xBF\xBD!") << "cut off in the middle";
    EXPECT_EQ(propertyText::validUtf8("12345678\xC3"), "12345678\xEF\xBF\xBD");
}

TEST(PropertyTextTest, ReplacesWhatUnicodeForbids) {
    EXPECT_EQ(propertyText::validUtf8("\xC0\xAF"), "\xEF\xBF\xBD\xEF\xBF\xBD") << "overlong";
    EXPECT_EQ(propertyText::validUtf8("\xE0\x9F\xBF"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD") << "overlong";
    EXPECT_EQ(propertyText::validUtf8("\xE0\xA0\x80"), "\xE0\xA0\x80");
    EXPECT_EQ(propertyText::validUtf8("\xED\x9F\xBF"), "\xED\x9F\xBF");
    EXPECT_EQ(propertyText::validUtf8("\xED\xA0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD")
        << "a surrogate";
    EXPECT_EQ(propertyText::validUtf8("\xF4\x8F\xBF\xBF"), "\xF4\x8F\xBF\xBF");
    EXPECT_EQ(propertyText::validUtf8("\xF4\x90\x80\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD")
        << "beyond U+10FFFF";
}

TEST(PropertyTextTest, ReadsStringAsLatin1) {
    EXPECT_EQ(propertyText::utf8FromLatin1("a\xE7\xE3o\0\x7F\x80\xFF"s), "ação\0\x7F\xC2\x80\xC3\xBF"s);
}

TEST(PropertyTextTest, WritesAsLatin1WhatHasAPlaceThere) {
    EXPECT_EQ(propertyText::latin1FromUtf8("ação\0"s), "a\xE7\xE3o\0"s);
    EXPECT_EQ(propertyText::latin1FromUtf8("\xC2\x80\xC3\xBF"), "\x80\xFF");
    EXPECT_EQ(propertyText::latin1FromUtf8("\xC4\x80"), std::nullopt) << "U+0100";
    EXPECT_EQ(propertyText::latin1FromUtf8("5 \xE2\x82\xAC"), std::nullopt);
    EXPECT_EQ(propertyText::latin1FromUtf8("\xE7"), std::nullopt) << "ill-formed";
    EXPECT_EQ(propertyText::latin1FromUtf8("\xC3"), std::nullopt) << "ill-formed";
}

TEST(PropertyTextTest, ReadsListsOfAtoms) {
    const std::uint32_t units[] = {5, 0, 7, 5};
    const std::string bytes(reinterpret_cast<const char*>(units), sizeof units);

    EXPECT_EQ(propertyText::atoms(bytes, 32), (std::vector<std::uint32_t>{5, 7}));
    EXPECT_EQ(propertyText::atoms(bytes + "abc", 32), (std::vector<std::uint32_t>{5, 7}));
    EXPECT_EQ(propertyText::atoms("", 32), std::vector<std::uint32_t>());
}

TEST(PropertyTextTest, FindsNoAtomsInUnitsOfAnotherSize) {
    EXPECT_EQ(propertyText::atoms("\x05\0\0\0"s, 8), std::vector<std::uint32_t>());
    EXPECT_EQ(propertyText::atoms("\x05\0\0\0"s, 16), std::vector<std::uint32_t>());
    EXPECT_EQ(propertyText::atoms("\x05\0\0\0"s, 0), std::vector<std::uint32_t>());
}
