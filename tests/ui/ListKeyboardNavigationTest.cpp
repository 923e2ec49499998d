#include "ui/ListKeyboardNavigation.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

std::optional<std::size_t> target(std::optional<std::size_t> current, std::size_t count, int offset) {
    return ListKeyboardNavigation::targetIndex(current, count, offset);
}

TEST(ListKeyboardNavigationTest, StartsAtTheTopGoingDownAndAtTheBottomGoingUp) {
    EXPECT_EQ(target(std::nullopt, 5, 1), 0U);
    EXPECT_EQ(target(std::nullopt, 5, -1), 4U);
}

TEST(ListKeyboardNavigationTest, StepsToTheNeighbour) {
    EXPECT_EQ(target(2, 5, 1), 3U);
    EXPECT_EQ(target(2, 5, -1), 1U);
}

TEST(ListKeyboardNavigationTest, StopsAtBothEnds) {
    EXPECT_EQ(target(0, 5, -1), 0U);
    EXPECT_EQ(target(4, 5, 1), 4U);
    EXPECT_EQ(target(2, 5, 10), 4U);
    EXPECT_EQ(target(2, 5, -10), 0U);
}

TEST(ListKeyboardNavigationTest, FindsNothingInAnEmptyList) {
    EXPECT_EQ(target(std::nullopt, 0, 1), std::nullopt);
    EXPECT_EQ(target(3, 0, -1), std::nullopt);
}

}  // namespace
}  // namespace nettlecap
