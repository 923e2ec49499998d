#include "app/StatusBarFixture.h"

namespace nettlecap {
namespace {

using testing::ElementsAre;

class StatusBarMenuTest : public StatusBarFixture {
protected:
    /// Each as "title key", a separator as "-".
    std::vector<std::string> items() const {
        std::vector<std::string> result;
        for (const MenuItem& item : system.statusItem.menu().items) {
            if (item.title.empty())
                result.emplace_back("-");
            else
                result.push_back(item.title + (item.keyEquivalent.empty() ? "" : " ⌘" + item.keyEquivalent));
        }
        return result;
    }
    bool offersUpdates() const { return system.statusItem.menu().items.at(0).isEnabled; }
    void choose(std::string_view title) {
        rightClick();
        system.statusItem.choose(title);
    }
    void pressCommand(std::string_view key) {
        rightClick();
        system.statusItem.pressCommand(key);
    }
};

TEST_F(StatusBarMenuTest, OffersUpdatesSettingsAndTheEnd) {
    EXPECT_EQ(system.statusItem.menu().title, "Nettlecap");
    EXPECT_THAT(items(),
                ElementsAre("Buscar atualizações…", "-", "Settings\u2026 ⌘,", "-", "Quit Nettlecap ⌘q"));
}

TEST_F(StatusBarMenuTest, OffersUpdatesExactlyWhenItCanCheckAsItOpens) {
    services.canCheckForUpdates = false;
    rightClick();
    EXPECT_FALSE(offersUpdates());
    system.statusItem.closeMenu();

    services.canCheckForUpdates = true;
    rightClick();
    EXPECT_TRUE(offersUpdates());
    system.statusItem.closeMenu();

    services.canCheckForUpdates = false;
    system.statusItem.openMenuByItself();
    EXPECT_FALSE(offersUpdates());
}

TEST_F(StatusBarMenuTest, OffersNoUpdatesWhereThereAreNone) {
    controller.reset();
    model = newModel({});
    makeController();

    rightClick();

    EXPECT_FALSE(offersUpdates());
}

TEST_F(StatusBarMenuTest, OffersTheRestInAnyCase) {
    services.canCheckForUpdates = false;

    rightClick();

    EXPECT_TRUE(system.statusItem.menu().items.at(2).isEnabled);
    EXPECT_TRUE(system.statusItem.menu().items.at(4).isEnabled);
}

TEST_F(StatusBarMenuTest, ChecksForUpdates) {
    choose("Buscar atualizações…");
    EXPECT_EQ(services.checks, 1);

    services.canCheckForUpdates = false;
    choose("Buscar atualizações…");
    EXPECT_EQ(services.checks, 1);
}

TEST_F(StatusBarMenuTest, ChecksNoLongerWhereItCannotSinceTheMenuOpened) {
    rightClick();
    services.canCheckForUpdates = false;

    system.statusItem.choose("Buscar atualizações…");

    EXPECT_EQ(services.checks, 0);
}

TEST_F(StatusBarMenuTest, OpensTheSettings) {
    choose("Settings…");
    EXPECT_EQ(windows.panel, ContentKind::settings);

    windows.panel.reset();
    pressCommand(",");
    EXPECT_EQ(windows.panel, ContentKind::settings);
    EXPECT_EQ(system.application.terminations(), 0);
}

TEST_F(StatusBarMenuTest, EndsTheProgram) {
    choose("Quit Nettlecap");
    EXPECT_EQ(system.application.terminations(), 1);

    pressCommand("q");
    EXPECT_EQ(system.application.terminations(), 2);
}

TEST_F(StatusBarMenuTest, ActsOnNothingOnceTheControllerIsGone) {
    const Menu menu = system.statusItem.menu();

    controller.reset();
    for (const MenuItem& item : menu.items)
        if (item.action) item.action();

    EXPECT_EQ(services.checks, 0);
    EXPECT_EQ(windows.panel, std::nullopt);
    EXPECT_EQ(system.application.terminations(), 0);
}

}  // namespace
}  // namespace nettlecap
