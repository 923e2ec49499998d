#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class AppModelCommandsTest : public AppModelFixture {
protected:
    void change(const std::function<void(AppPreferences&)>& edit) { model->updatePreferences(edit); }
    void changeNothing() {
        change([](AppPreferences&) {});
    }
};

// Changing preferences.

TEST_F(AppModelCommandsTest, EditsThePreferencesInPlaceAndSavesThem) {
    make({.autoPaste = true});

    change([](AppPreferences& preferences) { preferences.maxHistoryItems = 5; });

    EXPECT_TRUE(model->preferences()->autoPaste);
    EXPECT_EQ(model->preferences()->maxHistoryItems, 5);
    EXPECT_EQ(AppPreferences::load(system.defaults), *model->preferences());
}

TEST_F(AppModelCommandsTest, GoesOnWithPreferencesThatCannotBeSaved) {
    startWith({"um"});
    system.defaults.setRefusesWrites(true);

    change([](AppPreferences& preferences) { preferences.captureImages = false; });
    copyPictureOutside();

    EXPECT_FALSE(model->preferences()->captureImages);
    EXPECT_THAT(history(), ElementsAre("um"));
    EXPECT_EQ(status(), "none");
}

TEST_F(AppModelCommandsTest, CapturesPicturesFromTheMomentTheyAreWanted) {
    make({.captureImages = false});
    model->start();

    change([](AppPreferences& preferences) { preferences.captureImages = true; });
    copyPictureOutside();
    EXPECT_THAT(history(), ElementsAre("picture"));

    change([](AppPreferences& preferences) { preferences.captureImages = false; });
    copyOutside({{"public.png", Bytes("\x89PNG\r\n\x1a\noutra")}});
    EXPECT_THAT(history(), ElementsAre("picture"));
}

TEST_F(AppModelCommandsTest, TrimsTheHistoryToANewLimitAndSavesIt) {
    model->start();
    for (int i = 1; i <= 14; ++i) copyOutside("texto " + std::to_string(i));
    model->store().toggleFavorite(entry(13));

    change([](AppPreferences& preferences) { preferences.maxHistoryItems = 12; });

    EXPECT_THAT(history(), SizeIs(12));
    EXPECT_EQ(history().back(), "texto 1");
    make();
    EXPECT_THAT(history(), SizeIs(12));
}

TEST_F(AppModelCommandsTest, KeepsTenEntriesUnderASmallerLimit) {
    model->start();
    for (int i = 1; i <= 14; ++i) copyOutside("texto " + std::to_string(i));

    change([](AppPreferences& preferences) { preferences.maxHistoryItems = 5; });
    EXPECT_THAT(history(), SizeIs(10));

    copyOutside("texto 15");
    EXPECT_THAT(history(), SizeIs(10));
    EXPECT_EQ(model->preferences()->maxHistoryItems, 5);
}

TEST_F(AppModelCommandsTest, LetsTheHistoryGrowUnderALargerLimit) {
    make({.maxHistoryItems = 10});
    model->start();
    change([](AppPreferences& preferences) { preferences.maxHistoryItems = 11; });

    for (int i = 1; i <= 14; ++i) copyOutside("texto " + std::to_string(i));

    EXPECT_THAT(history(), SizeIs(11));
}

TEST_F(AppModelCommandsTest, AppliesEverythingAtEachChangeWhicheverFieldChanged) {
    startWith({"um"});
    const int saves = system.files.writes(folder / "history.json");
    const auto registrations = system.hotKeys.requests().size();

    change([](AppPreferences& preferences) { preferences.captureImages = false; });
    EXPECT_EQ(system.files.writes(folder / "history.json"), saves + 1);
    EXPECT_THAT(system.hotKeys.requests(), SizeIs(registrations + 4));

    changeNothing();
    EXPECT_EQ(system.files.writes(folder / "history.json"), saves + 2);
    EXPECT_THAT(system.hotKeys.requests(), SizeIs(registrations + 8));
    EXPECT_THAT(system.hotKeys.registered(), SizeIs(4));
}

TEST_F(AppModelCommandsTest, AnswersToANewShortcutAndNoLongerToTheOld) {
    startWith({"um", "dois"});

    change([](AppPreferences& preferences) {
        preferences.previousShortcut = {.keyCode = 0, .modifiers = modifier::control};
    });
    press(previous);
    EXPECT_EQ(card(), "hidden");

    press({0, hotKeyModifier::control});
    EXPECT_EQ(card(), "um, 2 of 2");
}

TEST_F(AppModelCommandsTest, SynchronizesTheLoginItemWhenItsSwitchWasMovedAndSaysSo) {
    model->start();
    services.loginItemMessage = "Início automático desativado";

    change([](AppPreferences& preferences) { preferences.launchAtLogin = false; });

    EXPECT_THAT(services.loginItemShowsStatus, ElementsAre(false, true));
    EXPECT_EQ(status(), "Início automático desativado");
}

TEST_F(AppModelCommandsTest, TheMessageOfTheLoginItemComesAfterThatOfTheShortcuts) {
    system.hotKeys.take(previous);
    services.loginItemMessage = "Início automático ativado";

    model->start();
    EXPECT_EQ(status(), "Início automático ativado");

    services.loginItemMessage = "Início automático desativado";
    change([](AppPreferences& preferences) { preferences.launchAtLogin = false; });
    EXPECT_EQ(status(), "Início automático desativado");
}

TEST_F(AppModelCommandsTest, LeavesTheLoginItemAloneOtherwise) {
    model->start();

    changeNothing();
    change([](AppPreferences& preferences) { preferences.captureImages = false; });
    change([](AppPreferences& preferences) { preferences.launchAtLogin = true; });

    EXPECT_THAT(services.loginItemShowsStatus, ElementsAre(false));
}

TEST_F(AppModelCommandsTest, AChangeInTheMiddleOfAChangeIsTheOneThatHolds) {
    model->start();
    bool isNested = false;
    const auto subscription = model->preferences().subscribe([&] {
        if (std::exchange(isNested, true)) return;
        change([](AppPreferences& preferences) { preferences.maxHistoryItems = 12; });
    });

    change([](AppPreferences& preferences) { preferences.maxHistoryItems = 11; });
    for (int i = 1; i <= 14; ++i) copyOutside("texto " + std::to_string(i));

    EXPECT_THAT(history(), SizeIs(12));
    EXPECT_EQ(AppPreferences::load(system.defaults).maxHistoryItems, 12);
}

// Purging.

TEST_F(AppModelCommandsTest, PurgesAllButFavoritesAndSavedMessages) {
    startWith({"um", "dois", "três"});
    model->store().toggleFavorite(entry(1));
    model->store().addSnippet("Saudação", "Olá");

    model->purgeHistory();

    EXPECT_THAT(history(), ElementsAre("dois"));
    EXPECT_THAT(*model->store().snippets(), SizeIs(1));
    EXPECT_EQ(status(), "2 itens removidos; favoritos e Salvos foram preservados");
}

TEST_F(AppModelCommandsTest, SaysThatOneEntryWasRemoved) {
    startWith({"um"});

    model->purgeHistory();

    EXPECT_EQ(status(), "1 item removido; favoritos e Salvos foram preservados");
}

TEST_F(AppModelCommandsTest, SaysThatNoneWasRemoved) {
    startWith({"um"});
    model->store().toggleFavorite(entry(0));

    model->purgeHistory();

    EXPECT_EQ(status(), "0 itens removidos; favoritos e Salvos foram preservados");
    EXPECT_THAT(history(), ElementsAre("um"));
}

TEST_F(AppModelCommandsTest, CountsWithoutGrouping) {
    make({.maxHistoryItems = 5000});
    model->start();
    for (int i = 1; i <= 1001; ++i)
        model->store().insertChronologically(
            {.id = FakeIdentifiers::nth(10'000U + static_cast<std::uint64_t>(i)), .text = "texto"});

    model->purgeHistory();

    EXPECT_EQ(status(), "1001 itens removidos; favoritos e Salvos foram preservados");
}

TEST_F(AppModelCommandsTest, StandsNowhereAfterAPurge) {
    startWith({"um", "dois"});
    model->store().toggleFavorite(entry(0));
    model->copy(entry(0));

    model->purgeHistory();

    EXPECT_EQ(standsOn(), "nothing");
    EXPECT_THAT(history(), ElementsAre("dois"));
}

TEST_F(AppModelCommandsTest, StandsWhereItStoodAfterAClearingThroughTheStore) {
    startWith({"um", "dois"});
    model->store().toggleFavorite(entry(0));
    model->copy(entry(0));

    model->store().clearNonFavorites();

    EXPECT_EQ(standsOn(), "dois");
    EXPECT_EQ(status(), "Copiado — use ⌘V para colar");
}

// The favourite, and the entry to start from.

TEST_F(AppModelCommandsTest, MakesAnEntryAFavoriteAndBackAndSaysSo) {
    startWith({"um", "dois"});

    model->toggleFavorite(entry(1));
    EXPECT_TRUE(entry(1).isFavorite);
    EXPECT_EQ(status(), "Adicionado aos favoritos");

    model->toggleFavorite(entry(1));
    EXPECT_FALSE(entry(1).isFavorite);
    EXPECT_EQ(status(), "Removido dos favoritos");
    EXPECT_EQ(standsOn(), "nothing");
}

TEST_F(AppModelCommandsTest, NavigatesFromTheEntryThatItWasGiven) {
    startWith({"um", "dois", "três", "quatro"});

    model->setNavigationEntryID(entry(1).id);
    press(previous);

    EXPECT_EQ(card(), "dois, 3 of 4");
}

// Windows and updates.

TEST_F(AppModelCommandsTest, ClosesThePopoverBeforeItOpensThePanel) {
    model->openSettings();
    EXPECT_THAT(windows.happenings, ElementsAre("popover closed", "settings shown"));

    windows.happenings.clear();
    model->openNettlecap();
    EXPECT_THAT(windows.happenings, ElementsAre("popover closed", "history shown"));
}

TEST_F(AppModelCommandsTest, ChecksForUpdates) {
    model->checkForUpdates();

    EXPECT_EQ(services.checks, 1);
}

TEST_F(AppModelCommandsTest, DoesNotCheckForUpdatesWhileItCannot) {
    services.canCheckForUpdates = false;

    model->checkForUpdates();

    EXPECT_EQ(services.checks, 0);
}

TEST_F(AppModelCommandsTest, SynchronizesUpdatesAndLoginItemWheneverItIsTold) {
    model->synchronizeUpdates();
    model->syncLaunchAtLogin(true);
    model->syncLaunchAtLogin(false);

    EXPECT_EQ(services.synchronizations, 1);
    EXPECT_THAT(services.loginItemShowsStatus, ElementsAre(true, false));
}

TEST_F(AppModelCommandsTest, OpensTheSystemsSettingsOfTheLoginItems) {
    model->openLoginItems();

    EXPECT_EQ(services.loginItemSettingsOpenings, 1);
}

TEST_F(AppModelCommandsTest, KnowsWhetherItCanPasteWithoutAskingTheUser) {
    EXPECT_TRUE(model->canPaste());
    system.keyboard.setTrusted(false);
    EXPECT_FALSE(model->canPaste());

    EXPECT_THAT(system.keyboard.prompts(), ElementsAre(false, false));
}

// Monitoring.

TEST_F(AppModelCommandsTest, PausesTheMonitoringAndSaysSo) {
    startWith({"um"});

    model->setMonitoring(false);
    copyOutside("segredo");

    EXPECT_FALSE(*model->isMonitoring());
    EXPECT_EQ(status(), "Monitoramento pausado");
    EXPECT_THAT(history(), ElementsAre("um"));
}

TEST_F(AppModelCommandsTest, TakesTheMonitoringUpAgainWithWhatIsCopiedFromThenOn) {
    startWith({"um"});
    model->setMonitoring(false);
    copyOutside("segredo");

    model->setMonitoring(true);
    system.time.advance(1s);
    copyOutside("dois");

    EXPECT_TRUE(*model->isMonitoring());
    EXPECT_EQ(status(), "Monitoramento ativado");
    EXPECT_THAT(history(), ElementsAre("dois", "um"));
}

TEST_F(AppModelCommandsTest, StartsPausedWhenItWasPausedBefore) {
    model->setMonitoring(false);

    startWith({"um"});

    EXPECT_THAT(history(), SizeIs(0));
}

TEST_F(AppModelCommandsTest, ForgetsThePauseWithTheProgram) {
    model->start();
    model->setMonitoring(false);

    make();
    startWith({"um"});

    EXPECT_TRUE(*model->isMonitoring());
    EXPECT_THAT(history(), ElementsAre("um"));
}

TEST_F(AppModelCommandsTest, AChangeOfPreferencesLeavesThePause) {
    model->start();
    model->setMonitoring(false);

    changeNothing();
    copyOutside("um");

    EXPECT_THAT(history(), SizeIs(0));
    EXPECT_EQ(status(), "Monitoramento pausado");
}

}  // namespace
}  // namespace nettlecap
