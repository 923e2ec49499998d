#include "ui/SettingsView.h"
#include "ui/PrintQt.h"
#include "ui/SettingsOnFakes.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

#include <limits>

namespace nettlecap {
namespace {

class SettingsViewTest : public testing::Test {
protected:
    void start(const AppPreferences& preferences) {
        system = std::make_unique<SettingsOnFakes>(preferences);
        view = std::make_unique<SettingsView>(system->app);
    }
    void startWithLimit(std::int64_t limit) {
        AppPreferences preferences;
        preferences.maxHistoryItems = limit;
        start(preferences);
    }
    void SetUp() override { start({}); }
    void TearDown() override { view.reset(); }

    ShortcutEditor& shortcut(int index) { return *view->shortcuts().at(index).value<ShortcutEditor*>(); }
    std::int64_t limit() const { return system->stored().maxHistoryItems; }

    std::unique_ptr<SettingsOnFakes> system;
    std::unique_ptr<SettingsView> view;
};

TEST_F(SettingsViewTest, HasTheFourShortcutsInOrder) {
    EXPECT_EQ(shortcut(0).title() + shortcut(0).keyLabel(), "Item anterior1");
    EXPECT_EQ(shortcut(1).title() + shortcut(1).keyLabel(), "Item seguinte2");
    EXPECT_EQ(shortcut(2).title() + shortcut(2).keyLabel(), "Abrir NettlecapV");
    EXPECT_EQ(shortcut(3).title() + shortcut(3).keyLabel(), "Alternar favoritoF");
    EXPECT_EQ(view->shortcuts().size(), 4);
}

TEST_F(SettingsViewTest, AShortcutIsWrittenAtOnce) {
    shortcut(1).chooseKey(9);

    AppPreferences expected;
    expected.nextShortcut = {.keyCode = 29, .modifiers = modifier::command};
    EXPECT_EQ(system->stored(), expected);
    EXPECT_EQ(shortcut(1).keyLabel(), "0");
}

TEST_F(SettingsViewTest, EachSwitchWritesItsOwnPreference) {
    view->setCaptureImages(false);
    view->setLaunchAtLogin(false);
    view->setAutoPaste(true);
    view->setPasteHistoryOnDoubleClick(false);
    view->setProtectSensitiveContent(false);

    AppPreferences expected;
    expected.captureImages = false;
    expected.launchAtLogin = false;
    expected.autoPaste = true;
    expected.pasteHistoryOnDoubleClick = false;
    expected.protectSensitiveContent = false;
    EXPECT_EQ(system->stored(), expected);
}

TEST_F(SettingsViewTest, ASwitchIsOneChange) {
    const QSignalSpy changes(view.get(), &SettingsView::preferencesChanged);

    view->setAutoPaste(true);

    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(view->autoPaste());
}

TEST_F(SettingsViewTest, FollowsChangesMadeElsewhere) {
    const QSignalSpy changes(view.get(), &SettingsView::preferencesChanged);

    system->app.updatePreferences([](AppPreferences& preferences) {
        preferences.captureImages = false;
        preferences.maxHistoryItems = 1250;
        preferences.openSearchShortcut.keyCode = 125;
    });

    EXPECT_EQ(changes.count(), 1);
    EXPECT_FALSE(view->captureImages());
    EXPECT_EQ(view->limitLabel(), "Limite do histórico: 1250 itens");
    EXPECT_EQ(shortcut(2).keyLabel(), "↓");
}

TEST_F(SettingsViewTest, RestoresAllFourShortcutsInOneChangeAndNothingElse) {
    for (int index = 0; index < 4; ++index) shortcut(index).chooseKey(30 + index);
    view->setAutoPaste(true);
    const QSignalSpy changes(view.get(), &SettingsView::preferencesChanged);

    view->restoreDefaultShortcuts();

    AppPreferences expected;
    expected.autoPaste = true;
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(system->stored(), expected);
    EXPECT_EQ(shortcut(3).keyLabel(), "F");
}

TEST_F(SettingsViewTest, AStepChangesTheLimitByFifty) {
    view->stepMaxHistoryItems(1);
    EXPECT_EQ(limit(), 550);
    EXPECT_EQ(view->limitLabel(), "Limite do histórico: 550 itens");

    view->stepMaxHistoryItems(-1);
    EXPECT_EQ(limit(), 500);
}

TEST_F(SettingsViewTest, TheLimitStopsAtFiftyAndAtFiveThousand) {
    startWithLimit(100);
    view->stepMaxHistoryItems(-1);
    EXPECT_EQ(limit(), 50);
    view->stepMaxHistoryItems(-1);
    EXPECT_EQ(limit(), 50);

    startWithLimit(4950);
    view->stepMaxHistoryItems(1);
    EXPECT_EQ(limit(), 5000);
    view->stepMaxHistoryItems(1);
    EXPECT_EQ(limit(), 5000);
}

TEST_F(SettingsViewTest, AStepFromAnyStoredLimitEndsWithinTheScale) {
    struct Case {
        std::int64_t stored;
        int step;
        std::int64_t then;
    };
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    for (const auto& [stored, step, then] :
         {Case{3, 1, 53}, Case{-1000, 1, 50}, Case{least, 1, 50}, Case{73, -1, 50}, Case{4975, 1, 5000},
          Case{5010, -1, 4960}, Case{9000, -1, 5000}, Case{most, -1, 5000}}) {
        startWithLimit(stored);
        view->stepMaxHistoryItems(step);
        EXPECT_EQ(limit(), then) << stored;
    }
}

TEST_F(SettingsViewTest, AStepNeverLeadsTheOtherWay) {
    startWithLimit(3);
    view->stepMaxHistoryItems(-1);
    EXPECT_EQ(limit(), 3);

    startWithLimit(9000);
    view->stepMaxHistoryItems(1);
    EXPECT_EQ(limit(), 9000);
}

TEST_F(SettingsViewTest, ALimitGivenAsANumberIsClamped) {
    view->setMaxHistoryItems(7);
    EXPECT_EQ(limit(), 50);

    view->setMaxHistoryItems(100'000);
    EXPECT_EQ(limit(), 5000);
}

TEST_F(SettingsViewTest, ASmallerLimitTrimsTheHistoryAtOnce) {
    startWithLimit(100);
    for (int index = 0; index < 60; ++index) system->add(std::to_string(index));

    view->stepMaxHistoryItems(-1);

    EXPECT_EQ(system->app.store().entries()->size(), 50U);
    EXPECT_EQ(view->storageSummary(), "50 itens • 0 imagens");
}

TEST_F(SettingsViewTest, AnEmptyHistoryHasNoItemsAndNoImages) {
    EXPECT_EQ(view->storageSummary(), "0 itens • 0 imagens");
    EXPECT_EQ(view->usedSpace(), "Zero KB");
}

TEST_F(SettingsViewTest, CountsOneItemInTheSingular) {
    const QSignalSpy changes(view.get(), &SettingsView::storageChanged);

    system->add("um");
    EXPECT_EQ(view->storageSummary(), "1 item • 0 imagens");
    system->addImage("a.png");
    EXPECT_EQ(view->storageSummary(), "2 itens • 1 imagem");
    system->addImage("b.png");
    EXPECT_EQ(view->storageSummary(), "3 itens • 2 imagens");

    EXPECT_EQ(changes.count(), 3);
}

TEST_F(SettingsViewTest, TheUsedSpaceIsThatOfTheFiles) {
    system->add(ClipboardEntry{.text = std::string(38'000, 'x'), .fingerprint = "x"});

    EXPECT_EQ(view->usedSpace(), "38 KB");
}

TEST_F(SettingsViewTest, AsksForUpdates) {
    view->checkForUpdates();

    EXPECT_EQ(system->services.checks, 1);
}

TEST_F(SettingsViewTest, SaysWhileTheLoginItemAwaitsApproval) {
    const QSignalSpy changes(view.get(), &SettingsView::launchAtLoginRequiresApprovalChanged);
    EXPECT_FALSE(view->launchAtLoginRequiresApproval());

    system->services.loginItemRequiresApproval = true;
    system->app.start();

    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(view->launchAtLoginRequiresApproval());
    view->openLoginItems();
    EXPECT_EQ(system->services.loginItemSettingsOpenings, 1);
}

TEST_F(SettingsViewTest, KnowsThePermissionToPasteWithoutAskingTheUser) {
    EXPECT_TRUE(view->canPaste());

    EXPECT_EQ(system->fake.keyboard.prompts(), (std::vector<bool>{false}));
}

TEST_F(SettingsViewTest, LooksAtThePermissionAgainWhenAsked) {
    const QSignalSpy changes(view.get(), &SettingsView::canPasteChanged);

    system->fake.keyboard.setTrusted(false);
    view->refreshPermission();
    view->refreshPermission();

    EXPECT_FALSE(view->canPaste());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(SettingsViewTest, ThePurgeIsConfirmedFirst) {
    system->add("um");
    EXPECT_FALSE(view->showPurgeConfirmation());

    view->setShowPurgeConfirmation(true);
    EXPECT_EQ(system->app.store().entries()->size(), 1U);

    view->purgeHistory();
    EXPECT_FALSE(view->showPurgeConfirmation());
    EXPECT_TRUE(system->app.store().entries()->empty());
    EXPECT_EQ(*system->app.statusMessage(), "1 item removido; favoritos e Salvos foram preservados");
}

TEST_F(SettingsViewTest, OutlivedByTheModelItIsToldNothing) {
    view.reset();

    system->app.updatePreferences([](AppPreferences& preferences) { preferences.autoPaste = true; });

    EXPECT_TRUE(system->stored().autoPaste);
}

}  // namespace
}  // namespace nettlecap
