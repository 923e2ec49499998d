#include "ui/MenuPlacement.h"
#include "ui/PrintWindows.h"

#include <gtest/gtest.h>

namespace nettlecap {

namespace {

/// An item of 24 points in a bar at the top of a screen of 1920 x 1080.
class MenuPlacementTest : public testing::Test {
protected:
    Point origin() const { return placement.origin(); }

    MenuPlacement placement{.item = {.origin = {1000, 1053}, .size = {24, 24}},
                            .menu = {200, 100},
                            .screen = {.size = {1920, 1080}}};
};

TEST_F(MenuPlacementTest, HangsFromTheItemsLeftEdge) { EXPECT_EQ(origin(), (Point{1000, 953})); }

TEST_F(MenuPlacementTest, StandsOnTheItemWhereThereIsNoRoomBelow) {
    placement.item.origin.y = 100;
    EXPECT_EQ(origin().y, 0);

    placement.item.origin.y = 99;
    EXPECT_EQ(origin().y, 123);
}

TEST_F(MenuPlacementTest, StaysOnTheScreenAtBothSides) {
    placement.item.origin.x = 1720;
    EXPECT_EQ(origin().x, 1720);

    placement.item.origin.x = 1721;
    EXPECT_EQ(origin().x, 1720);

    placement.item.origin.x = -5;
    EXPECT_EQ(origin().x, 0);
}

TEST_F(MenuPlacementTest, StaysOnAScreenThatIsNotTheFirst) {
    placement.screen.origin = {1920, 200};
    placement.item.origin = {3830, 210};

    EXPECT_EQ(origin(), (Point{3640, 234}));
}

TEST_F(MenuPlacementTest, BeginsWhereItWasPointedAt) {
    placement.item = {.origin = {500, 600}};
    EXPECT_EQ(origin(), (Point{500, 500}));

    placement.item = {.origin = {500, 60}};
    EXPECT_EQ(origin(), (Point{500, 60}));
}

TEST_F(MenuPlacementTest, ShowsItsTopLeftWhereItIsTooLarge) {
    placement.menu = {2000, 1100};

    EXPECT_EQ(origin(), (Point{0, 0}));
}

}  // namespace
}  // namespace nettlecap
