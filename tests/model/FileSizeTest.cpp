#include "model/FileSize.h"

#include <gtest/gtest.h>

#include <limits>

namespace nettlecap {
namespace {

TEST(FileSizeTest, SpellsZeroOut) { EXPECT_EQ(fileSize(0), "Zero KB"); }

TEST(FileSizeTest, CountsSingleBytesBelowAThousand) {
    EXPECT_EQ(fileSize(1), "1 byte");
    EXPECT_EQ(fileSize(2), "2 bytes");
    EXPECT_EQ(fileSize(999), "999 bytes");
}

TEST(FileSizeTest, TellsKilobytesWithoutDecimals) {
    EXPECT_EQ(fileSize(1'000), "1 KB");
    EXPECT_EQ(fileSize(1'499), "1 KB");
    EXPECT_EQ(fileSize(1'501), "2 KB");
    EXPECT_EQ(fileSize(38'200), "38 KB");
    EXPECT_EQ(fileSize(999'499), "999 KB");
}

TEST(FileSizeTest, TellsMegabytesWithOneDecimal) {
    EXPECT_EQ(fileSize(1'500'000), "1,5 MB");
    EXPECT_EQ(fileSize(12'340'000), "12,3 MB");
    EXPECT_EQ(fileSize(12'360'000), "12,4 MB");
    EXPECT_EQ(fileSize(999'949'999), "999,9 MB");
}

TEST(FileSizeTest, TellsGigabytesAndMoreWithTwoDecimals) {
    EXPECT_EQ(fileSize(1'230'000'000), "1,23 GB");
    EXPECT_EQ(fileSize(1'050'000'000), "1,05 GB");
    EXPECT_EQ(fileSize(2'345'678'901'234), "2,35 TB");
    EXPECT_EQ(fileSize(7'010'000'000'000'000), "7,01 PB");
}

TEST(FileSizeTest, LeavesOutDecimalsThatAreZero) {
    EXPECT_EQ(fileSize(1'000'000), "1 MB");
    EXPECT_EQ(fileSize(20'049'999), "20 MB");
    EXPECT_EQ(fileSize(1'200'000'000), "1,2 GB");
    EXPECT_EQ(fileSize(3'000'000'000), "3 GB");
}

TEST(FileSizeTest, RoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(fileSize(1'500), "2 KB");
    EXPECT_EQ(fileSize(2'500), "2 KB");
    EXPECT_EQ(fileSize(1'250'000), "1,2 MB");
    EXPECT_EQ(fileSize(1'350'000), "1,4 MB");
    EXPECT_EQ(fileSize(1'005'000'000), "1 GB");
    EXPECT_EQ(fileSize(1'015'000'000), "1,02 GB");
}

TEST(FileSizeTest, NeverTellsAThousandOfAUnit) {
    EXPECT_EQ(fileSize(999'500), "1 MB");
    EXPECT_EQ(fileSize(999'999), "1 MB");
    EXPECT_EQ(fileSize(999'950'000), "1 GB");
    EXPECT_EQ(fileSize(999'994'999'999), "999,99 GB");
    EXPECT_EQ(fileSize(999'995'000'000), "1 TB");
    EXPECT_EQ(fileSize(999'995'000'000'000), "1 PB");
}

TEST(FileSizeTest, GroupsTheThousandsOfTheLargestUnit) {
    EXPECT_EQ(fileSize(std::numeric_limits<std::int64_t>::max()), "9.223,37 PB");
}

}  // namespace
}  // namespace nettlecap
