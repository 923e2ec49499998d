#include "ui/PreviewPlacement.h"
#include "ui/PrintWindows.h"

#include <gtest/gtest.h>

namespace nettlecap {

namespace {

/// A row of 50 points in the middle of a panel of 430 x 560, on a screen of 1920 x 1080 with
/// a bar of 30 at its top and a dock of 60 at its bottom.
class PreviewPlacementTest : public testing::Test {
protected:
    Point origin() const { return placement.origin(); }
    void movePanelTo(double x) {
        placement.panel.origin.x = x;
        placement.row.origin.x = x + 10;
    }

    PreviewPlacement placement{.row = {.origin = {755, 500}, .size = {410, 50}},
                               .panel = {.origin = {745, 260}, .size = {430, 560}},
                               .preview = {400, 100},
                               .visibleFrame = {.origin = {0, 60}, .size = {1920, 990}}};
};

TEST_F(PreviewPlacementTest, StandsRightOfThePanelBesideTheMiddleOfItsRow) {
    EXPECT_EQ(origin(), (Point{1175, 475}));
}

TEST_F(PreviewPlacementTest, StandsLeftWhereThereIsNoRoomAtTheRight) {
    movePanelTo(1090);
    EXPECT_EQ(origin(), (Point{1520, 475}));

    movePanelTo(1091);
    EXPECT_EQ(origin(), (Point{691, 475}));
}

TEST_F(PreviewPlacementTest, StaysVisibleAtTheTopAndTheBottom) {
    placement.row.origin.y = 1030;
    EXPECT_EQ(origin(), (Point{1175, 950}));

    placement.row.origin.y = 40;
    EXPECT_EQ(origin(), (Point{1175, 60}));
}

TEST_F(PreviewPlacementTest, CoversThePanelBelowTheRowWhereNeitherSideHasRoom) {
    placement.visibleFrame = {.origin = {500, 60}, .size = {800, 990}};

    EXPECT_EQ(origin(), (Point{900, 400}));
}

TEST_F(PreviewPlacementTest, CoversThePanelAboveTheRowWhereThereIsNoRoomBelow) {
    placement.visibleFrame = {.origin = {500, 60}, .size = {800, 990}};
    placement.row.origin.y = 159;

    EXPECT_EQ(origin(), (Point{900, 209}));
}

TEST_F(PreviewPlacementTest, KnowsAScreenLeftOfThePrimaryOne) {
    placement.visibleFrame = {.origin = {-1280, 0}, .size = {1280, 800}};
    movePanelTo(-855);

    EXPECT_EQ(origin(), (Point{-425, 475}));

    movePanelTo(-800);
    EXPECT_EQ(origin(), (Point{-1200, 475}));
}

TEST_F(PreviewPlacementTest, ShowsTheBeginningOfWhatIsTooLarge) {
    placement.preview = {2000, 2000};

    EXPECT_EQ(origin(), (Point{0, 1050 - 2000}));
}

}  // namespace
}  // namespace nettlecap
