#include "platform/Values.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

TEST(UuidTest, WritesItsTextInUpperCaseWithHyphens) {
    const Uuid id{.high = 0x0123456789ABCDEFU, .low = 0xFEDCBA9876543210U};

    EXPECT_EQ(id.text(), "01234567-89AB-CDEF-FEDC-BA9876543210");
}

TEST(UuidTest, ReadsBackWhatItWrote) {
    const Uuid id{.high = 0xE621E1F8C36C495AU, .low = 0x93FC0C247A3E6E5FU};

    EXPECT_EQ(Uuid::parse(id.text()), id);
}

TEST(UuidTest, ReadsLowerCaseToo) {
    EXPECT_EQ(Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f"),
              Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F"));
}

TEST(UuidTest, RefusesWhatIsNotCanonical) {
    EXPECT_FALSE(Uuid::parse(""));
    EXPECT_FALSE(Uuid::parse("E621E1F8C36C495A93FC0C247A3E6E5F"));
    EXPECT_FALSE(Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5"));
    EXPECT_FALSE(Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5F0"));
    EXPECT_FALSE(Uuid::parse("E621E1F8-C36C-495A-93FC-0C247A3E6E5G"));
    EXPECT_FALSE(Uuid::parse("E621E1F8+C36C-495A-93FC-0C247A3E6E5F"));
    EXPECT_FALSE(Uuid::parse("{621E1F8-C36C-495A-93FC-0C247A3E6E5}"));
}

TEST(BytesTest, AreEqualByContent) {
    EXPECT_EQ(Bytes("abc"), Bytes("abc"));
    EXPECT_EQ(Bytes(), Bytes(""));
    EXPECT_FALSE(Bytes("abc") == Bytes("abd"));
}

TEST(ResultTest, CarriesTheValueOrTheDescription) {
    const Result<int> good(3);
    const Result<int> bad(Failure{"No space left on device"});

    ASSERT_TRUE(good);
    EXPECT_EQ(*good, 3);
    ASSERT_FALSE(bad);
    EXPECT_EQ(bad.description(), "No space left on device");
}

}  // namespace
}  // namespace nettlecap
