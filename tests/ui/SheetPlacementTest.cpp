#include "ui/SheetPlacement.h"
#include "ui/PrintWindows.h"

#include <gtest/gtest.h>

namespace nettlecap {

namespace {

/// A sheet over a panel of 430 x 560 in the middle of a screen of 1920 x 1080 with a bar of 30
/// at its top and a dock of 60 at its bottom.
class SheetPlacementTest : public testing::Test {
protected:
    Point origin() const { return placement.origin(); }

    SheetPlacement placement{.panel = {.origin = {745, 260}, .size = {430, 560}},
                             .sheet = {440, 340},
                             .visibleFrame = {.origin = {0, 60}, .size = {1920, 990}}};
};

TEST_F(SheetPlacementTest, StandsInTheMiddleOfThePanelBelowItsHeader) {
    EXPECT_EQ(origin(), (Point{740, 432}));

    placement.sheet = {200, 100};
    EXPECT_EQ(origin(), (Point{860, 672}));
}

TEST_F(SheetPlacementTest, StaysVisibleAtBothSides) {
    placement.panel.origin.x = 5;
    EXPECT_EQ(origin(), (Point{0, 432}));

    placement.panel.origin.x = 4;
    EXPECT_EQ(origin(), (Point{0, 432}));

    placement.panel.origin.x = 1490;  // at the very edge
    EXPECT_EQ(origin(), (Point{1480, 432}));

    placement.panel.origin.x = -400;
    EXPECT_EQ(origin(), (Point{0, 432}));
}

TEST_F(SheetPlacementTest, StaysVisibleAtTheTopAndTheBottom) {
    placement.panel.origin.y = 600;
    EXPECT_EQ(origin(), (Point{740, 710}));

    placement.panel.origin.y = -112;
    EXPECT_EQ(origin(), (Point{740, 60}));

    placement.panel.origin.y = -300;
    EXPECT_EQ(origin(), (Point{740, 60}));
}

TEST_F(SheetPlacementTest, ShowsTheBeginningOfWhatIsTooLarge) {
    placement.visibleFrame = {.origin = {1000, 300}, .size = {400, 300}};

    EXPECT_EQ(origin(), (Point{1000, 260}));
}

}  // namespace

}  // namespace nettlecap
