#pragma once

#include "platform/StatusItem.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace nettlecap {

/// A popover to be tested, and the user before it.
class PopoverHarness {
public:
    virtual ~PopoverHarness() = default;

    virtual Popover& popover() = 0;
    /// A view that says when it goes.
    virtual std::unique_ptr<HostedView> makeContent(Task onEnd) = 0;
    virtual bool hasKeyboard() = 0;
    virtual void goElsewhere() = 0;                                     ///< with a click on another window
    virtual bool runUntil(const std::function<bool()>& condition) = 0;  ///< false: long past the time for it
};

/// What every Popover does. Instantiate it with a function that makes the harness.
class PopoverContract : public testing::TestWithParam<std::unique_ptr<PopoverHarness> (*)()> {
protected:
    PopoverContract() {
        popover.setTitle("Nettlecap");
        popover.setContentSize({430, 560});
        setContent();
    }

    void setContent() {
        popover.setContent(harness->makeContent([this] { ++ended; }));
    }
    void show() {
        popover.showBelowStatusItem();
        ASSERT_TRUE(popover.isShown());
        ASSERT_TRUE(harness->runUntil([this] { return harness->hasKeyboard(); }));
    }
    bool waitUntilClosed() {
        return harness->runUntil([this] { return !popover.isShown(); });
    }

    int ended = 0;  // of the contents
    std::unique_ptr<PopoverHarness> harness = GetParam()();
    Popover& popover = harness->popover();
};

TEST_P(PopoverContract, IsNotShownBeforeItIsAskedFor) { EXPECT_FALSE(popover.isShown()); }

TEST_P(PopoverContract, HasTheKeyboardAtEachShowing) {
    for (int time = 0; time < 3; ++time) {
        show();

        popover.close();

        EXPECT_FALSE(popover.isShown());
    }
}

TEST_P(PopoverContract, StaysWhenItIsShownAgain) {
    show();

    show();

    EXPECT_TRUE(popover.isShown());
}

TEST_P(PopoverContract, MayBeClosedTwice) {
    popover.close();
    show();

    popover.close();
    popover.close();

    EXPECT_FALSE(popover.isShown());
    show();
}

TEST_P(PopoverContract, ClosesWhenTheUserGoesElsewhereAndOpensAgain) {
    for (int time = 0; time < 2; ++time) {
        show();

        harness->goElsewhere();

        EXPECT_TRUE(waitUntilClosed());
    }
}

TEST_P(PopoverContract, ItsContentStaysWhileItIsClosed) {
    show();
    popover.close();
    show();
    harness->goElsewhere();
    ASSERT_TRUE(waitUntilClosed());

    EXPECT_EQ(ended, 0);
}

TEST_P(PopoverContract, ANewContentTakesThePlaceOfTheOld) {
    show();

    setContent();

    EXPECT_TRUE(harness->runUntil([this] { return ended == 1; }));
    EXPECT_TRUE(popover.isShown());
}

TEST_P(PopoverContract, LetsGoOfItsContent) {
    popover.setContent(nullptr);

    EXPECT_TRUE(harness->runUntil([this] { return ended == 1; }));
    show();
}

}  // namespace nettlecap
