#include "platform/fake/FakeWindows.h"
#include "ui/ContentPorts.h"
#include "ui/FakeViews.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintWindows.h"
#include "ui/SearchPanelController.h"
#include "ui/SettingsPanelController.h"

#include <gtest/gtest.h>

namespace nettlecap {

namespace {

using namespace std::chrono_literals;

class SearchPanelPlacementTest : public testing::Test {
protected:
    static Screen screen(double x, double y, double width, double height) {
        return {.frame = {.origin = {x, y}, .size = {width, height}},
                .visibleFrame = {.origin = {x, y + 40}, .size = {width, height - 60}}};
    }
    void show(ContentKind content = ContentKind::history) { controller.show(content, system.app); }
    FakeTitledPanelState& panel() const { return *panels.titled().at(0); }
    SettingsContent& settings() const { return dynamic_cast<SettingsContent&>(*panel().content); }
    bool showsHistory() const { return dynamic_cast<HistoryContent*>(panel().content.get()) != nullptr; }

    HistoryOnFakes system;
    FakePanels panels;
    FakeScreens screens;
    FakeViews views;
    int hidings = 0;
    SearchPanelController controller{
        {.ports = contentPorts(system.fake), .panels = panels, .screens = screens, .views = views},
        [this] { ++hidings; }};
};

TEST_F(SearchPanelPlacementTest, OpensInTheMiddleOfWhatIsVisibleOfTheScreenUnderThePointer) {
    screens.setAll({screen(0, 0, 1920, 1080), screen(1920, 200, 1280, 800)});
    screens.movePointer({1920, 200});

    show();

    EXPECT_EQ(panel().contentSize, (Size{430, 560}));
    EXPECT_EQ(panel().origin, (Point{1920 + (1280 - 430) / 2.0, 240 + (740 - 560) / 2.0}));
}

TEST_F(SearchPanelPlacementTest, TheEdgesOfAScreenAreItsOwnAtTheLeftAndTheBottomOnly) {
    screens.setAll({screen(0, 0, 1000, 800), screen(1000, 0, 1000, 800)});
    screens.movePointer({999.9, 0});
    show();
    EXPECT_EQ(panel().origin->x, 285);

    controller.hide();
    screens.movePointer({1000, 799.9});
    show();
    EXPECT_EQ(panel().origin->x, 1285);
}

TEST_F(SearchPanelPlacementTest, OpensOnTheMainScreenWhereThePointerIsOnNone) {
    screens.setMain(screen(5000, 0, 1000, 800));
    screens.movePointer({1920, 500});

    show();

    EXPECT_EQ(panel().origin, (Point{5285, 130}));
}

TEST_F(SearchPanelPlacementTest, LeavesThePlaceToTheSystemWithoutAnyScreen) {
    screens.setAll({});
    screens.setMain(std::nullopt);
    show();

    EXPECT_EQ(panel().origin, std::nullopt);
    EXPECT_TRUE(panel().isVisible);
}

TEST_F(SearchPanelPlacementTest, FollowsThePointerWhenItIsShownAgain) {
    screens.setAll({screen(0, 0, 1000, 800), screen(1000, 0, 1000, 800)});
    screens.movePointer({500, 400});
    show();
    controller.hide();

    screens.movePointer({1500, 400});
    show();

    EXPECT_EQ(panel().origin, (Point{1285, 130}));
    EXPECT_EQ(panels.titled().size(), 1U);
}

TEST_F(SearchPanelPlacementTest, SwitchesToTheSettingsAndBackWhereItIs) {
    show();
    EXPECT_EQ(panel().title, "Nettlecap");
    panel().origin = {17, 23};  // dragged there by the user

    show(ContentKind::settings);
    EXPECT_EQ(panel().title, "Ajustes do Nettlecap");
    EXPECT_EQ(panel().origin, (Point{17, 23}));
    EXPECT_FALSE(showsHistory());

    show();
    EXPECT_EQ(panel().title, "Nettlecap");
    EXPECT_EQ(panel().origin, (Point{17, 23}));
    EXPECT_TRUE(showsHistory());
}

TEST_F(SearchPanelPlacementTest, TheSettingsButtonLeadsBackToTheHistory) {
    show(ContentKind::settings);
    const auto before = panel().content;
    const SettingsNavigationButton& button = *settings().button;
    EXPECT_EQ(button.symbol(), "xmark");
    EXPECT_EQ(button.help(), "Fechar ajustes e voltar ao histórico");
    EXPECT_EQ(button.accessibilityLabel(), "Voltar ao histórico");

    button.press();

    EXPECT_TRUE(showsHistory());
    EXPECT_EQ(panel().title, "Nettlecap");
}

TEST_F(SearchPanelPlacementTest, TheSettingsStartAfreshAtEveryShow) {
    show(ContentKind::settings);
    settings().view->setShowPurgeConfirmation(true);

    show(ContentKind::settings);

    EXPECT_FALSE(settings().view->showPurgeConfirmation());
}

TEST_F(SearchPanelPlacementTest, TakesTheKeyboardAndComesToTheFrontAtEveryShow) {
    show();
    show(ContentKind::settings);

    EXPECT_EQ(panel().keyShows, 2);
    EXPECT_EQ(panel().frontShows, 2);
}

TEST_F(SearchPanelPlacementTest, OrderedOutByTheUserItDropsItsContentInTheNextTurn) {
    for (const ContentKind content : {ContentKind::history, ContentKind::settings}) {
        show(content);
        hidings = 0;

        panel().orderOut();
        EXPECT_NE(panel().content, nullptr);

        system.fake.time.advance(0s);
        EXPECT_EQ(panel().content, nullptr);
        EXPECT_EQ(hidings, 1);
    }
}

TEST_F(SearchPanelPlacementTest, ASettingsPanelOfItsOwnIsHiddenByItsCancelCommandToo) {
    SettingsPanelController alone{.panel = SettingsPanel(panels.makeTitledPanel())};
    alone.panel->makeKeyAndOrderFront();
    EXPECT_TRUE(panel().isVisible);

    alone.panel->cancelOperation();

    EXPECT_FALSE(panel().isVisible);
}

}  // namespace
}  // namespace nettlecap
