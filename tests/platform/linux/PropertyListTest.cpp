#include "platform/linux/PropertyList.h"

#include <gmock/gmock.h>

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

std::map<std::string, bool> flags(const std::string& contents) {
    return flagsOfPropertyList("<plist version=\"1.0\"><dict>" + contents + "</dict></plist>");
}

TEST(PropertyListTest, ReadsTheBooleansOfAnInfoFile) {
    const auto read = flagsOfPropertyList(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n<!-- ours -->\n<dict>\n  <key>CFBundleName</key>\n  "
        "<string>Nettlecap</string>\n"
        "  <key>NettlecapUpdatesEnabled</key>\n  <true/>\n  <key>Off</key><false/>\n</dict>\n</plist>\n");

    EXPECT_THAT(read, ElementsAre(Pair("NettlecapUpdatesEnabled", true), Pair("Off", false)));
}

TEST(PropertyListTest, OnlyTrueAndFalseAreBooleans) {
    EXPECT_THAT(flags("<key>k</key><string>true</string>"), IsEmpty());
    EXPECT_THAT(flags("<key>k</key><integer>1</integer>"), IsEmpty());
    EXPECT_THAT(flags("<key>k</key><True/>"), IsEmpty());
    EXPECT_THAT(flags("<key>k</key><yes/>"), IsEmpty());
    EXPECT_THAT(flags("<key>k</key><true>false</true>"), IsEmpty());
    EXPECT_THAT(flags("<key>k</key><true><true/></true>"), IsEmpty());
    EXPECT_THAT(flags("<key>k</key><true></true>"), ElementsAre(Pair("k", true)));
}

TEST(PropertyListTest, TheKeyCountsAsItIsWritten) {
    EXPECT_THAT(flags("<key> k </key><true/>"), ElementsAre(Pair(" k ", true)));
    EXPECT_THAT(flags("<key>a&amp;&#231;</key><true/>"), ElementsAre(Pair("a&ç", true)));
}

TEST(PropertyListTest, TheLastOfTwoValuesCounts) {
    EXPECT_THAT(flags("<key>k</key><true/><key>k</key><false/>"), ElementsAre(Pair("k", false)));
    EXPECT_THAT(flags("<key>k</key><true/><key>k</key><string/>"), IsEmpty());
}

TEST(PropertyListTest, WhatIsFurtherInsideDoesNotCount) {
    EXPECT_THAT(flags("<key>a</key><dict><key>k</key><true/></dict>"), IsEmpty());
    EXPECT_THAT(flags("<key>a</key><array><true/></array><key>b</key><true/>"), ElementsAre(Pair("b", true)));
}

TEST(PropertyListTest, KeysAndValuesAlternate) {
    EXPECT_THAT(flags("<key>a</key><true/><true/>"), IsEmpty());
    EXPECT_THAT(flags("<key>a</key><true/><key>b</key>"), IsEmpty());
    EXPECT_THAT(flags("<true/><key>a</key>"), IsEmpty());
    EXPECT_THAT(flags("<key>a<b/></key><true/>"), IsEmpty());
}

TEST(PropertyListTest, WhatIsNoPropertyListHasNone) {
    constexpr const char* contents = "<dict><key>k</key><true/></dict>";
    EXPECT_THAT(flagsOfPropertyList(""), IsEmpty());
    EXPECT_THAT(flagsOfPropertyList(contents), IsEmpty());
    EXPECT_THAT(flagsOfPropertyList("<html>" + std::string(contents) + "</html>"), IsEmpty());
    EXPECT_THAT(flagsOfPropertyList("<plist><array>" + std::string(contents) + "</array></plist>"),
                IsEmpty());
    EXPECT_THAT(flagsOfPropertyList(std::string("bplist00\0\1\2", 11)), IsEmpty());
    EXPECT_THAT(flagsOfPropertyList("{ k = 1; }"), IsEmpty());
}

TEST(PropertyListTest, ADocumentThatDoesNotEndWellSaysNothing) {
    const std::string whole = "<plist><dict><key>k</key><true/></dict></plist>";
    ASSERT_FALSE(flagsOfPropertyList(whole).empty());

    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_THAT(flagsOfPropertyList(whole.substr(0, length)), IsEmpty()) << length;
    EXPECT_THAT(flagsOfPropertyList(whole + "<plist/>"), IsEmpty());
    EXPECT_THAT(flagsOfPropertyList("<plist><dict><key>k</key><true/></dict><dict/></plist>"), IsEmpty());
    EXPECT_THAT(flagsOfPropertyList("<plist><dict><key>k</key><true/>\xFF</dict></plist>"), IsEmpty());
}

TEST(PropertyListTest, EntitiesNeitherGrowNorReachOut) {
    std::string bomb = "<!DOCTYPE plist [<!ENTITY a0 \"aaaaaaaaaa\">";
    for (int i = 1; i < 12; ++i) {
        bomb += "<!ENTITY a" + std::to_string(i) + " \"";
        for (int j = 0; j < 10; ++j) bomb += "&a" + std::to_string(i - 1) + ";";
        bomb += "\">";
    }
    EXPECT_THAT(flagsOfPropertyList(bomb + "]><plist><dict><key>&a11;</key><true/></dict></plist>"),
                IsEmpty());
    EXPECT_THAT(flagsOfPropertyList("<!DOCTYPE plist [<!ENTITY e SYSTEM \"file:///etc/hostname\">]>"
                                    "<plist><dict><key>&e;</key><true/></dict></plist>"),
                Not(testing::Contains(Pair(testing::HasSubstr("\n"), true))));
}

TEST(PropertyListTest, DepthDoesNotMatter) {
    std::string deep;
    for (int i = 0; i < 20'000; ++i) deep += "<a>";
    EXPECT_THAT(flags("<key>k</key>" + deep), IsEmpty());
}

}  // namespace
}  // namespace nettlecap
