#include "app/StatusBarController.h"
#include "app/AppIconProvider.h"
#include "app/StatusBarFixture.h"

namespace nettlecap {
namespace {

using StatusBarControllerTest = StatusBarFixture;

TEST_F(StatusBarControllerTest, ShowsTheProgramAmongTheIconsOfTheSystem) {
    EXPECT_EQ(system.statusItem.image(), AppIconProvider::menuBarImage());
    EXPECT_EQ(system.statusItem.toolTip(), "Nettlecap");
}

TEST_F(StatusBarControllerTest, HasAPopoverThatNobodyHasAskedForYet) {
    EXPECT_FALSE(isPopoverShown());
    EXPECT_EQ(system.popover.title(), "Nettlecap");
    EXPECT_EQ(system.popover.contentSize(), (Size{430, 560}));
}

// The left click.

TEST_F(StatusBarControllerTest, AClickOpensThePopoverAndTheNextClosesIt) {
    click();
    EXPECT_TRUE(isPopoverShown());

    click();
    EXPECT_FALSE(isPopoverShown());

    click();
    EXPECT_TRUE(isPopoverShown());
    EXPECT_FALSE(isMenuOpen());
}

TEST_F(StatusBarControllerTest, ThePopoverShowsTheModel) {
    click();

    const auto* view = dynamic_cast<FakeStatusBarContent::View*>(system.popover.content().get());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(&view->app, model.get());
}

TEST_F(StatusBarControllerTest, TheContentIsMadeOnceAndKept) {
    click();
    const auto first = system.popover.content();

    click();
    EXPECT_EQ(system.popover.content(), first);

    click();
    EXPECT_EQ(system.popover.content(), first);
    EXPECT_EQ(content.made(), 1);
}

TEST_F(StatusBarControllerTest, AClickOpensThePopoverAgainThatClosedWhenTheUserWentElsewhere) {
    click();
    system.popover.goElsewhere();

    click();

    EXPECT_TRUE(isPopoverShown());
    EXPECT_EQ(system.popover.shows(), 2);
}

// The right click.

TEST_F(StatusBarControllerTest, ARightClickOpensTheMenuAndNoPopover) {
    rightClick();

    EXPECT_TRUE(isMenuOpen());
    EXPECT_FALSE(isPopoverShown());
}

TEST_F(StatusBarControllerTest, ARightClickClosesThePopoverAndTheLeftClickAfterTheMenuOpensItAgain) {
    click();
    rightClick();
    EXPECT_FALSE(isPopoverShown());
    EXPECT_TRUE(isMenuOpen());

    system.statusItem.closeMenu();
    click();

    EXPECT_TRUE(isPopoverShown());
    EXPECT_FALSE(isMenuOpen());
}

TEST_F(StatusBarControllerTest, ThePopoverClosesWhereTheSystemOpensTheMenuByItself) {
    click();

    system.statusItem.openMenuByItself();

    EXPECT_FALSE(isPopoverShown());
}

// Other reasons to close.

TEST_F(StatusBarControllerTest, ThePopoverClosesBeforeThePanelOpens) {
    const std::vector<Task> waysToOpen = {[this] { model->openSettings(); },
                                          [this] { model->openNettlecap(); }, [this] { press(openSearch); }};
    for (const Task& open : waysToOpen) {
        windows.happenings.clear();
        click();
        ASSERT_TRUE(isPopoverShown());

        open();

        EXPECT_FALSE(isPopoverShown());
        EXPECT_EQ(windows.happenings.back(),
                  windows.panel == ContentKind::history ? "history shown" : "settings shown");
    }
}

TEST_F(StatusBarControllerTest, ThePopoverClosesSoThatAnotherProgramCanBePastedInto) {
    copyOutside("um");
    model->store().addSnippet("Saudação", "Olá");
    click();

    model->copy(entry(0), true);
    EXPECT_FALSE(isPopoverShown());

    click();
    model->copy(model->store().snippets()->at(0), true);
    EXPECT_FALSE(isPopoverShown());
}

TEST_F(StatusBarControllerTest, ThePopoverStaysForACopyThatIsNotPasted) {
    copyOutside("um");
    click();

    model->copy(entry(0), false);

    EXPECT_TRUE(isPopoverShown());
}

TEST_F(StatusBarControllerTest, WhatClosedItLeavesTheContentAsItWas) {
    click();
    const auto before = system.popover.content();

    model->openNettlecap();
    click();

    EXPECT_TRUE(isPopoverShown());
    EXPECT_EQ(system.popover.content(), before);
}

// Its end.

TEST_F(StatusBarControllerTest, TakesItsContentAlongWhenItGoes) {
    click();
    const auto shown = std::weak_ptr(system.popover.content());

    controller.reset();

    EXPECT_TRUE(shown.expired());
    EXPECT_FALSE(isPopoverShown());
    EXPECT_TRUE(system.statusItem.menu().items.empty());
}

TEST_F(StatusBarControllerTest, DoesNothingOnceItIsGone) {
    controller.reset();

    click();
    rightClick();

    EXPECT_FALSE(isPopoverShown());
    EXPECT_FALSE(isMenuOpen());
}

}  // namespace
}  // namespace nettlecap
