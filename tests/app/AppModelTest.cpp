#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class AppModelTest : public AppModelFixture {
protected:
    /// How often the model tells of a change while `act` runs.
    int changesDuring(const Task& act) {
        int changes = 0;
        const auto subscription = model->onChange([&] { ++changes; });
        act();
        return changes;
    }
};

// Construction.

TEST_F(AppModelTest, BeginsWithoutAMessageAndWithCaptureOn) {
    EXPECT_TRUE(*model->isMonitoring());
    EXPECT_EQ(*model->statusMessage(), std::nullopt);
    EXPECT_FALSE(*model->launchAtLoginRequiresApproval());
    EXPECT_EQ(model->navigationEntryID(), std::nullopt);
    EXPECT_EQ(*model->preferences(), AppPreferences());
}

TEST_F(AppModelTest, LoadsThePreferences) {
    AppPreferences preferences;
    preferences.autoPaste = true;
    preferences.maxHistoryItems = 5;

    make(preferences);

    EXPECT_EQ(*model->preferences(), preferences);
}

TEST_F(AppModelTest, LoadsTheHistoryOfTheUsersFolder) {
    model->start();
    copyOutside("olá");

    make();

    EXPECT_TRUE(system.files.contents(folder / "history.json"));
    EXPECT_EQ(entry(0).text, "olá");
}

TEST_F(AppModelTest, GivesTheStoreTheLimitAsItStands) {
    model->start();
    for (int i = 1; i <= 12; ++i) copyOutside("texto " + std::to_string(i));

    make({.maxHistoryItems = 11});
    EXPECT_THAT(*model->store().entries(), SizeIs(11));
    make({.maxHistoryItems = 5});
    EXPECT_THAT(*model->store().entries(), SizeIs(10));
}

TEST_F(AppModelTest, DoesNothingToTheSystemBeforeItStarts) {
    system.workspace.setFrontmost(notes);
    system.time.advance(1s);

    EXPECT_FALSE(system.hotKeys.hasHandler());
    EXPECT_THAT(services.loginItemShowsStatus, SizeIs(0));
    EXPECT_EQ(services.synchronizations, 0);
    EXPECT_THAT(windows.happenings, SizeIs(0));
}

// Start.

TEST_F(AppModelTest, CapturesFromTheStartOnWhatIsCopiedAfterItsConstruction) {
    copyOutside("antes");
    make();
    copyOutside("olá");
    EXPECT_THAT(*model->store().entries(), SizeIs(0));

    model->start();
    ASSERT_THAT(*model->store().entries(), SizeIs(1));
    EXPECT_EQ(entry(0).text, "olá");
}

TEST_F(AppModelTest, StartsOnce) {
    model->start();
    const auto tasks = system.time.waitingTasks();

    model->start();

    EXPECT_EQ(system.time.waitingTasks(), tasks);
    EXPECT_THAT(system.hotKeys.requests(), SizeIs(4));
    EXPECT_THAT(services.loginItemShowsStatus, SizeIs(1));
    EXPECT_EQ(services.synchronizations, 1);
}

TEST_F(AppModelTest, CapturesPicturesAsThePreferencesSay) {
    make({.captureImages = false});
    model->start();
    copyPictureOutside();
    EXPECT_THAT(*model->store().entries(), SizeIs(0));

    make({.captureImages = true});
    model->start();
    copyPictureOutside();
    EXPECT_THAT(*model->store().entries(), SizeIs(1));
}

TEST_F(AppModelTest, SynchronizesTheLoginItemSilentlyAndTheUpdatesAtTheStart) {
    services.loginItemRequiresApproval = true;

    model->start();

    EXPECT_THAT(services.loginItemShowsStatus, ElementsAre(false));
    EXPECT_TRUE(*model->launchAtLoginRequiresApproval());
    EXPECT_EQ(services.synchronizations, 1);
}

TEST_F(AppModelTest, RegistersTheShortcutsBeforeTheLoginItemAndSeesToTheUpdatesLast) {
    std::size_t happenedBefore = 99;
    system.hotKeys.take(previous);
    const auto subscription = model->statusMessage().subscribe(
        [&] { happenedBefore = std::min(happenedBefore, services.happenings.size()); });

    model->start();

    EXPECT_EQ(happenedBefore, 0U);
    EXPECT_THAT(services.happenings, ElementsAre("login item synchronized", "updates synchronized"));
}

TEST_F(AppModelTest, DoesWithoutUpdatesAndLoginItem) {
    model.reset();
    model = newModel({});

    model->start();
    EXPECT_EQ(model->updates(), nullptr);
    model->checkForUpdates();
    model->updatePreferences([](AppPreferences& preferences) { preferences.launchAtLogin = false; });
    copyOutside("olá");

    EXPECT_THAT(history(), ElementsAre("olá"));
    EXPECT_FALSE(model->preferences()->launchAtLogin);
}

TEST_F(AppModelTest, ForgetsWhereItStandsWithEveryCapture) {
    startWith({"um"});
    model->copy(entry(0));
    system.time.advance(1s);
    EXPECT_EQ(model->navigationEntryID(), entry(0).id);

    copyOutside("um");
    EXPECT_EQ(model->navigationEntryID(), std::nullopt);
}

TEST_F(AppModelTest, StandsWhereItStoodThroughWhatIsNotCaptured) {
    startWith({"um"});
    model->copy(entry(0));

    copyOutside("  ");
    copyOutside({{"org.nspasteboard.ConcealedType", Bytes("")}});

    EXPECT_EQ(model->navigationEntryID(), entry(0).id);
}

TEST_F(AppModelTest, KeepsItsMessageUntilTheNextOne) {
    startWith({"um"});
    model->copy(entry(0));

    system.time.advance(3600s);
    copyOutside("dois");

    EXPECT_EQ(status(), "Copiado — use ⌘V para colar");
}

// Telling of changes.

TEST_F(AppModelTest, TellsOfEachChangeOfItsOwn) {
    startWith({"um"});

    EXPECT_EQ(changesDuring([&] { model->copy(entry(0)); }), 1);        // the message
    EXPECT_EQ(changesDuring([&] { model->setMonitoring(false); }), 2);  // the switch and the message
}

TEST_F(AppModelTest, TellsOnceOfAChangeOfThePreferences) {
    int changes = 0;
    const auto subscription = model->preferences().subscribe([&] { ++changes; });

    model->updatePreferences([](AppPreferences& preferences) {
        preferences.autoPaste = true;
        preferences.captureImages = false;
    });

    EXPECT_EQ(changes, 1);
}

TEST_F(AppModelTest, TellsOfThePreferencesWhenTheyHaveChanged) {
    std::optional<bool> whenTold;
    const auto subscription = model->onChange([&] {
        if (!whenTold) whenTold = model->preferences()->autoPaste;
    });

    model->updatePreferences([](AppPreferences& preferences) { preferences.autoPaste = true; });

    EXPECT_EQ(whenTold, true);
}

TEST_F(AppModelTest, TellsOfAWaitForTheUsersApproval) {
    std::vector<bool> whenTold;
    const auto subscription =
        model->onChange([&] { whenTold.push_back(*model->launchAtLoginRequiresApproval()); });
    services.loginItemRequiresApproval = true;

    model->start();

    EXPECT_THAT(whenTold, ElementsAre(true));
}

TEST_F(AppModelTest, TellsOfEachChangeOfTheHistoryAndOfThePreferences) {
    startWith({"um"});
    const int perSave = 2;  // the error and the usage

    EXPECT_EQ(changesDuring([&] { model->store().persist(); }), perSave);
    EXPECT_EQ(changesDuring([&] { model->store().insertChronologically(entry(0)); }), 1);
    EXPECT_EQ(changesDuring([&] { model->store().addSnippet("Saudação", "Olá"); }), perSave + 1);
    EXPECT_EQ(changesDuring([&] { model->updatePreferences([](AppPreferences&) {}); }), perSave + 1);
}

TEST_F(AppModelTest, TellsOfAHistoryThatCannotBeSaved) {
    startWith({"um"});
    std::string whenTold;
    const auto subscription =
        model->onChange([&] { whenTold = model->store().persistenceError()->value_or("none"); });
    system.files.fail(FileOperation::write, "No space left on device");

    model->store().persist();

    EXPECT_EQ(whenTold, "Não foi possível salvar o histórico: No space left on device");
}

TEST_F(AppModelTest, TellsOfTheChangesOfTheUpdates) {
    EXPECT_EQ(changesDuring([&] { services.updatesChanged.emit(); }), 1);
}

TEST_F(AppModelTest, IsSilentOnceItIsGone) {
    int changes = 0;
    const auto subscription = model->onChange([&] { ++changes; });

    model.reset();
    services.updatesChanged.emit();

    EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace nettlecap
