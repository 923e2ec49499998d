#include "ui/PopoverPlacement.h"
#include "ui/PrintWindows.h"

#include <gtest/gtest.h>

namespace nettlecap {

namespace {

/// An item of 24 points in a bar of 30 at the top of a screen of 1920 x 1080, which has a dock
/// of 60 at its bottom.
class PopoverPlacementTest : public testing::Test {
protected:
    Point origin() const { return placement.origin(); }

    PopoverPlacement placement{.item = {.origin = {1000, 1053}, .size = {24, 24}},
                               .popover = {430, 560},
                               .visibleFrame = {.origin = {0, 60}, .size = {1920, 990}}};
};

TEST_F(PopoverPlacementTest, HangsFromTheMiddleOfTheItemBelowItsBar) {
    EXPECT_EQ(origin(), (Point{797, 490}));
}

TEST_F(PopoverPlacementTest, TouchesAnItemThatIsInNoBar) {
    placement.item.origin.y = 900;
    EXPECT_EQ(origin(), (Point{797, 340}));

    placement.item.origin.y = 620;
    EXPECT_EQ(origin(), (Point{797, 60}));
}

TEST_F(PopoverPlacementTest, StandsAboveTheItemWhereThereIsNoRoomBelow) {
    placement.item.origin.y = 619;
    EXPECT_EQ(origin().y, 490);  // as far above as the screen goes

    placement.item.origin.y = 100;
    EXPECT_EQ(origin().y, 124);
}

TEST_F(PopoverPlacementTest, StandsOnADockWithTheItem) {
    placement.item.origin.y = 18;

    EXPECT_EQ(origin(), (Point{797, 60}));
}

TEST_F(PopoverPlacementTest, TouchesTheBarThatHasTheMiddleOfTheItem) {
    placement.item = {.origin = {988, 1036}, .size = {48, 48}};
    EXPECT_EQ(origin().y, 490);

    placement.item.origin.y = 6;
    EXPECT_EQ(origin().y, 60);

    placement.item.origin.y = 1020;  // the middle is below the bar's edge
    EXPECT_EQ(origin().y, 460);
}

TEST_F(PopoverPlacementTest, StaysVisibleAtBothSides) {
    placement.item.origin.x = 1890;
    EXPECT_EQ(origin(), (Point{1490, 490}));

    placement.item.origin.x = 3;
    EXPECT_EQ(origin(), (Point{0, 490}));
}

TEST_F(PopoverPlacementTest, StandsBesideABarAtTheSide) {
    placement.visibleFrame = {.origin = {40, 0}, .size = {1880, 1080}};
    placement.item.origin = {8, 500};

    EXPECT_EQ(origin(), (Point{40, 520}));
}

TEST_F(PopoverPlacementTest, KnowsAScreenLeftOfThePrimaryOne) {
    placement.visibleFrame = {.origin = {-1280, 0}, .size = {1280, 770}};
    placement.item.origin = {-30, 773};

    EXPECT_EQ(origin(), (Point{-430, 210}));
}

TEST_F(PopoverPlacementTest, ShowsTheTopLeftOfWhatIsTooLarge) {
    placement.visibleFrame = {.origin = {0, 0}, .size = {400, 500}};

    EXPECT_EQ(origin(), (Point{0, -60}));
}

}  // namespace
}  // namespace nettlecap
