#include "ui/RowPreview.h"
#include "platform/fake/FakeIdentifiers.h"
#include "platform/fake/FakeTime.h"

#include <gtest/gtest.h>
#include <list>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

class RowPreviewTest : public testing::Test {
protected:
    void hoverUntilItOpens() {
        preview.handleRowHover(true);
        time.advance(0.3s);
    }

    FakeTime time;
    FakeIdentifiers identifiers;
    RowPreview::Ports ports{.scheduler = time, .identifiers = identifiers};
    int changes = 0;
    RowPreview preview{ports, [this] { ++changes; }};
};

TEST_F(RowPreviewTest, OpensWhenThePointerHasBeenOnTheRowForThreeTenths) {
    preview.handleRowHover(true);

    time.advance(0.299s);
    EXPECT_FALSE(preview.isShowing());

    time.advance(0.001s);
    EXPECT_TRUE(preview.isShowing());
    EXPECT_EQ(changes, 1);
}

TEST_F(RowPreviewTest, OpensNothingForAPointerThatOnlyPasses) {
    preview.handleRowHover(true);
    time.advance(0.25s);
    preview.handleRowHover(false);

    time.advance(1s);

    EXPECT_FALSE(preview.isShowing());
    EXPECT_EQ(changes, 0);
}

TEST_F(RowPreviewTest, CountsAnewWhenThePointerComesBack) {
    preview.handleRowHover(true);
    time.advance(0.2s);
    preview.handleRowHover(false);
    preview.handleRowHover(true);

    time.advance(0.299s);
    EXPECT_FALSE(preview.isShowing());

    time.advance(0.001s);
    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, ClosesTwoTenthsAfterThePointerHasLeft) {
    hoverUntilItOpens();
    preview.handleRowHover(false);

    time.advance(0.199s);
    EXPECT_TRUE(preview.isShowing());

    time.advance(0.001s);
    EXPECT_FALSE(preview.isShowing());
    EXPECT_EQ(changes, 2);
}

TEST_F(RowPreviewTest, StaysWhenThePointerReachesThePreviewInTime) {
    hoverUntilItOpens();
    preview.handleRowHover(false);
    time.advance(0.19s);
    preview.handlePreviewHover(true);

    time.advance(10s);

    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, ClosesTwoTenthsAfterThePointerHasLeftThePreview) {
    hoverUntilItOpens();
    preview.handleRowHover(false);
    preview.handlePreviewHover(true);
    time.advance(10s);
    preview.handlePreviewHover(false);

    time.advance(0.199s);
    EXPECT_TRUE(preview.isShowing());

    time.advance(0.001s);
    EXPECT_FALSE(preview.isShowing());
}

TEST_F(RowPreviewTest, StaysWhenThePointerGoesBackToTheRow) {
    hoverUntilItOpens();
    preview.handleRowHover(false);
    preview.handlePreviewHover(true);
    preview.handlePreviewHover(false);
    time.advance(0.1s);
    preview.handleRowHover(true);

    time.advance(10s);

    EXPECT_TRUE(preview.isShowing());
    EXPECT_EQ(changes, 1);
}

TEST_F(RowPreviewTest, OpensWhenTheRowHasBeenSelectedForFifteenHundredths) {
    preview.handleKeyboardSelection(true);

    time.advance(0.149s);
    EXPECT_FALSE(preview.isShowing());

    time.advance(0.001s);
    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, ClosesAtOnceWhenTheRowIsNoLongerSelected) {
    preview.handleKeyboardSelection(true);
    time.advance(0.15s);

    preview.handleKeyboardSelection(false);

    EXPECT_FALSE(preview.isShowing());
    EXPECT_EQ(changes, 2);
}

TEST_F(RowPreviewTest, OpensNothingWhileTheSelectionRunsThroughTheRows) {
    struct Row {
        explicit Row(RowPreview::Ports ports) : preview(ports, [this] { ++changes; }) {}
        int changes = 0;
        RowPreview preview;
    };
    std::list<Row> rows;
    for (int number = 0; number < 5; ++number) rows.emplace_back(ports);

    for (auto row = rows.begin(); row != rows.end(); ++row) {
        if (row != rows.begin()) std::prev(row)->preview.handleKeyboardSelection(false);
        row->preview.handleKeyboardSelection(true);
        time.advance(0.149s);
    }
    for (const Row& row : rows) EXPECT_EQ(row.changes, 0);

    time.advance(0.001s);
    EXPECT_TRUE(rows.back().preview.isShowing());
    rows.pop_back();
    time.advance(1s);
    for (const Row& row : rows) EXPECT_EQ(row.changes, 0);
}

TEST_F(RowPreviewTest, StaysWithTheSelectedRowWhenThePointerLeaves) {
    preview.handleKeyboardSelection(true);
    hoverUntilItOpens();
    preview.handleRowHover(false);

    time.advance(10s);

    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, StaysWithTheSelectedRowWhenThePointerLeavesThePreview) {
    preview.handleKeyboardSelection(true);
    time.advance(0.15s);
    preview.handlePreviewHover(true);
    preview.handlePreviewHover(false);

    time.advance(10s);

    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, OutlivesTheSelectionWhileThePointerIsOnTheRow) {
    preview.handleKeyboardSelection(true);
    hoverUntilItOpens();

    preview.handleKeyboardSelection(false);
    EXPECT_TRUE(preview.isShowing());

    preview.handleRowHover(false);
    time.advance(0.2s);
    EXPECT_FALSE(preview.isShowing());
}

TEST_F(RowPreviewTest, OutlivesTheSelectionWhileThePointerIsOnThePreview) {
    preview.handleKeyboardSelection(true);
    time.advance(0.15s);
    preview.handlePreviewHover(true);

    preview.handleKeyboardSelection(false);

    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, AHoverThatComesLaterTakesTheSelectionsPlace) {
    preview.handleKeyboardSelection(true);
    time.advance(0.1s);
    preview.handleRowHover(true);

    time.advance(0.299s);
    EXPECT_FALSE(preview.isShowing());

    time.advance(0.001s);
    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, OpensAtOnceByHandAndStaysWhenThePointerLeaves) {
    preview.handleRowHover(true);
    preview.openManually();
    EXPECT_TRUE(preview.isShowing());

    preview.handleRowHover(false);
    time.advance(10s);

    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, OpenedByHandItOutlivesTheSelection) {
    preview.handleKeyboardSelection(true);
    preview.openManually();

    preview.handleKeyboardSelection(false);

    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, OpenedByHandItIsOrdinaryOnceThePointerHasEnteredTheRowAfresh) {
    preview.openManually();
    hoverUntilItOpens();

    preview.handleRowHover(false);
    time.advance(0.2s);

    EXPECT_FALSE(preview.isShowing());
}

TEST_F(RowPreviewTest, OpenedByHandItStaysForAPointerThatOnlyPasses) {
    preview.openManually();
    preview.handleRowHover(true);
    time.advance(0.299s);
    preview.handleRowHover(false);

    time.advance(10s);

    EXPECT_TRUE(preview.isShowing());
}

TEST_F(RowPreviewTest, ForgetsWhenItDisappearsThatItWasOpenedByHand) {
    preview.openManually();
    preview.dismiss();
    EXPECT_FALSE(preview.isShowing());
    preview.handleKeyboardSelection(true);
    time.advance(0.15s);

    preview.handleKeyboardSelection(false);

    EXPECT_FALSE(preview.isShowing());
}

TEST_F(RowPreviewTest, ForgetsWhenItDisappearsThatThePointerWasOnIt) {
    hoverUntilItOpens();
    preview.handlePreviewHover(true);
    preview.dismiss();
    hoverUntilItOpens();
    EXPECT_TRUE(preview.isShowing());

    preview.handleRowHover(false);
    time.advance(0.2s);

    EXPECT_FALSE(preview.isShowing());
}

TEST_F(RowPreviewTest, ClosesWithItsRow) {
    preview.openManually();

    preview.rowDisappeared();

    EXPECT_FALSE(preview.isShowing());
    EXPECT_FALSE(preview.isPointerOverRow());
}

TEST_F(RowPreviewTest, WhatWaitsDoesNothingOnceTheRowHasDisappeared) {
    preview.handleKeyboardSelection(true);
    preview.rowDisappeared();
    time.advance(1s);
    EXPECT_EQ(changes, 0);

    preview.handleRowHover(true);
    preview.rowDisappeared();
    time.advance(1s);
    EXPECT_EQ(changes, 0);
}

TEST_F(RowPreviewTest, WhatWaitsDoesNothingOnceItIsGone) {
    int told = 0;
    auto gone = std::make_unique<RowPreview>(RowPreview::Ports{.scheduler = time, .identifiers = identifiers},
                                             [&] { ++told; });
    gone->handleRowHover(true);
    gone.reset();

    time.advance(1s);

    EXPECT_EQ(told, 0);
}

}  // namespace
}  // namespace nettlecap
