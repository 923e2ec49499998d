#include "ui/NavigationHUDController.h"
#include "platform/fake/FakeTime.h"
#include "platform/fake/FakeWindows.h"
#include "ui/PrintQt.h"
#include "ui/PrintWindows.h"

#include <gtest/gtest.h>

namespace nettlecap {

namespace {

using namespace std::chrono_literals;

/// Shows the view that it was made from.
struct FakeHostedView final : HostedView {
    FakeHostedView(std::unique_ptr<NavigationHUDView> shown, double fitting)
        : view(std::move(shown)), height(fitting) {}

    double fittingHeight(double width) override {
        measuredWidth = width;
        return height;
    }

    std::unique_ptr<NavigationHUDView> view;
    double height;
    double measuredWidth = 0;
};

class FakeViews final : public ViewFactory {
public:
    std::unique_ptr<HostedView> navigationHUD(std::unique_ptr<NavigationHUDView> view) override {
        return std::make_unique<FakeHostedView>(std::move(view), fittingHeight);
    }
    std::unique_ptr<HostedView> menuBarContent(std::unique_ptr<MenuBarContentView>) override {
        return nullptr;
    }
    std::unique_ptr<HostedView> settings(std::unique_ptr<SettingsView>,
                                         std::unique_ptr<SettingsNavigationButton>) override {
        return nullptr;
    }
    void releaseMemory() override {}

    double fittingHeight = 100;
};

class NavigationHUDControllerTest : public testing::Test {
protected:
    static NavigationCard text(std::string text) {
        return {.entry = {.text = std::move(text)}, .position = 1, .total = 3};
    }
    static NavigationCard image() {
        return {.entry = {.kind = ClipboardContentKind::image},
                .imageURL = "/i/gato.png",
                .position = 1,
                .total = 3};
    }
    FakePanelState& panel() const { return *panels.made().at(0); }
    FakeHostedView& content() const { return dynamic_cast<FakeHostedView&>(*panel().content); }
    const NavigationHUDView& view() const { return *content().view; }

    FakePanels panels;
    FakeScreens screens;
    FakeTime time;
    FakeViews views;
    NavigationHUDController hud{{.panels = panels, .screens = screens, .scheduler = time, .views = views}};
};

TEST_F(NavigationHUDControllerTest, MakesItsPanelAtTheFirstShowAndKeepsIt) {
    hud.hide();
    EXPECT_TRUE(panels.made().empty());

    hud.show(text("um"));
    hud.hide();
    hud.show(text("dois"));

    ASSERT_EQ(panels.made().size(), 1U);
    EXPECT_EQ(panel().kind, PanelKind::card);
    EXPECT_TRUE(panel().isVisible);
}

TEST_F(NavigationHUDControllerTest, KeepsNothingOfTheEntryASecondAfterHiding) {
    hud.show(text("um"));
    hud.hide();

    time.advance(0.999s);
    EXPECT_NE(panel().content, nullptr);
    time.advance(1ms);
    EXPECT_EQ(panel().content, nullptr);
}

TEST_F(NavigationHUDControllerTest, KeepsWhatIsShownWithinASecondAfterHiding) {
    hud.show(text("um"));
    hud.hide();
    hud.show(text("dois"));

    time.advance(5s);

    EXPECT_TRUE(panel().isVisible);
    EXPECT_EQ(view().text(), "dois");
}

TEST_F(NavigationHUDControllerTest, ShowsTheEntryAndItsPlace) {
    hud.show({.entry = {.text = " um "}, .position = 2, .total = 7});

    EXPECT_EQ(view().text(), "um");
    EXPECT_EQ(view().caption(), "Item 2 de 7 • solte as teclas para colar");
    EXPECT_EQ(view().panelWidth(), 440);
}

TEST_F(NavigationHUDControllerTest, MasksASensitiveEntryOnlyWhileItIsProtected) {
    NavigationCard card = text("4111 1111 1111 1111\n" + std::string(500, 'x'));
    card.entry.sensitiveKind = SensitiveContentKind::paymentCard;

    hud.show(card);
    EXPECT_EQ(view().text(), "41••••••••••••");
    EXPECT_TRUE(view().isMasked());
    EXPECT_EQ(panel().contentSize.width, 440);

    card.protectSensitiveContent = false;
    hud.show(card);
    EXPECT_TRUE(view().text().startsWith("4111 1111"));
    EXPECT_FALSE(view().isMasked());
    EXPECT_EQ(panel().contentSize.width, 480);
}

TEST_F(NavigationHUDControllerTest, IsWideForALongTextOrOneOfSeveralLines) {
    hud.show(text(std::string(180, 'a')));
    EXPECT_EQ(panel().contentSize.width, 440);
    hud.show(text(std::string(181, 'a')));
    EXPECT_EQ(panel().contentSize.width, 480);
    hud.show(text("a\nb"));
    EXPECT_EQ(panel().contentSize.width, 480);
    EXPECT_EQ(content().measuredWidth, 480);
}

TEST_F(NavigationHUDControllerTest, IsAsHighAsItsTextNeedsButNeverAbove260) {
    for (const double needed : {1.0, 78.5, 260.0}) {
        views.fittingHeight = needed;
        hud.show(text("um"));
        EXPECT_EQ(panel().contentSize, (Size{440, needed}));
    }
    views.fittingHeight = 261;
    hud.show(text("um"));
    EXPECT_EQ(panel().contentSize, (Size{440, 260}));
}

TEST_F(NavigationHUDControllerTest, IsAlways480By330ForAnImage) {
    views.fittingHeight = 500;
    hud.show(image());
    EXPECT_EQ(panel().contentSize, (Size{480, 330}));

    NavigationCard missing = image();
    missing.imageURL.reset();
    hud.show(missing);
    EXPECT_EQ(panel().contentSize, (Size{480, 330}));
}

TEST_F(NavigationHUDControllerTest, StandsInTheMiddleAboveTheBottomOfTheVisibleFrame) {
    screens.setMain(
        Screen{.frame = {.size = {3000, 2000}}, .visibleFrame = {.origin = {100, 60}, .size = {1001, 900}}});

    hud.show(text("um"));
    EXPECT_EQ(panel().origin, (Point{100 + 500.5 - 220, 170}));

    hud.show(image());
    EXPECT_EQ(panel().origin, (Point{100 + 500.5 - 240, 170}));
}

TEST_F(NavigationHUDControllerTest, TakesTheFirstScreenWhereNoneIsTheMainOne) {
    screens.setMain(std::nullopt);
    screens.setAll({Screen{.visibleFrame = {.origin = {-1000, 40}, .size = {1000, 500}}}, FakeScreens::only});

    hud.show(text("um"));

    EXPECT_EQ(panel().origin, (Point{-720, 150}));
}

TEST_F(NavigationHUDControllerTest, StaysWhereItWasWithoutAnyScreen) {
    hud.show(text("um"));
    const Point before = panel().origin;
    screens.setMain(std::nullopt);
    screens.setAll({});

    hud.show(image());

    EXPECT_EQ(panel().origin, before);
    EXPECT_TRUE(panel().isVisible);
    EXPECT_EQ(panel().contentSize, (Size{480, 330}));
}

TEST_F(NavigationHUDControllerTest, ReplacesTheContentAtEachShow) {
    hud.show(text("um"));
    const auto first = panel().content;
    hud.show(text("um"));

    EXPECT_NE(panel().content, first);
    EXPECT_EQ(panel().shows, 2);
    EXPECT_EQ(panel().hides, 0);
}

TEST_F(NavigationHUDControllerTest, HidesHalfAMinuteAfterTheLastShow) {
    hud.show(text("um"));

    time.advance(29.999s);
    EXPECT_TRUE(panel().isVisible);
    time.advance(1ms);
    EXPECT_FALSE(panel().isVisible);
    EXPECT_NE(panel().content, nullptr);
}

TEST_F(NavigationHUDControllerTest, HidesOnceAfterSeveralShows) {
    hud.show(text("um"));
    time.advance(1s);
    hud.show(text("dois"));
    time.advance(1s);
    hud.show(text("três"));

    time.advance(29.999s);
    EXPECT_TRUE(panel().isVisible);
    time.advance(1ms);
    EXPECT_FALSE(panel().isVisible);
    time.advance(60s);
    EXPECT_EQ(panel().hides, 1);
}

TEST_F(NavigationHUDControllerTest, AnEarlierShowDoesNotHideOneAfterAHide) {
    hud.show(text("um"));
    time.advance(10s);
    hud.hide();
    EXPECT_FALSE(panel().isVisible);
    time.advance(10s);
    hud.show(text("dois"));

    time.advance(29.999s);
    EXPECT_TRUE(panel().isVisible);
    time.advance(1ms);
    EXPECT_FALSE(panel().isVisible);
    EXPECT_EQ(panel().hides, 2);
}

TEST_F(NavigationHUDControllerTest, AHiddenCardIsNotHiddenAgain) {
    hud.show(text("um"));
    hud.hide();

    time.advance(60s);

    EXPECT_EQ(panel().hides, 1);
}

TEST_F(NavigationHUDControllerTest, NothingHappensOnceItIsGone) {
    auto other = std::make_unique<NavigationHUDController>(NavigationHUDController::Collaborators{
        .panels = panels, .screens = screens, .scheduler = time, .views = views});
    other->show(text("um"));
    other.reset();

    time.advance(60s);

    EXPECT_EQ(panel().hides, 0);
}

}  // namespace
}  // namespace nettlecap
