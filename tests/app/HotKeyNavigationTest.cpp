#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HotKeyNavigationTest : public AppModelFixture {
protected:
    void remove(std::size_t index) { model->store().remove(ClipboardEntry(entry(index))); }
};

// Steps.

TEST_F(HotKeyNavigationTest, BeginsWithTheSecondEntryAsTheNewestIsOnThePasteboardAlready) {
    startWith({"um", "dois", "três"});

    press(previous);

    EXPECT_EQ(card(), "dois, 2 of 3");
    EXPECT_EQ(pasteboardText(), "dois");
    EXPECT_EQ(standsOn(), "dois");
    EXPECT_EQ(status(), "Copiado — use ⌘V para colar");
}

TEST_F(HotKeyNavigationTest, BeginsWithTheNewestWhenItGoesTowardsNewerOnes) {
    startWith({"um", "dois", "três"});

    press(next);

    EXPECT_EQ(card(), "três, 1 of 3");
    EXPECT_EQ(pasteboardText(), "três");
}

TEST_F(HotKeyNavigationTest, HasOneEntryOnlyToStandOn) {
    startWith({"um"});

    press(previous);
    EXPECT_EQ(card(), "um, 1 of 1");
    press(previous);
    EXPECT_EQ(card(), "um, 1 of 1");

    make();
    model->start();
    press(next);
    EXPECT_EQ(card(), "um, 1 of 1");
}

TEST_F(HotKeyNavigationTest, GoesToOlderEntriesAndBack) {
    startWith({"um", "dois", "três", "quatro"});

    press(previous);
    EXPECT_EQ(card(), "três, 2 of 4");
    press(previous);
    EXPECT_EQ(card(), "dois, 3 of 4");
    press(next);
    EXPECT_EQ(card(), "três, 2 of 4");
    press(next);
    EXPECT_EQ(card(), "quatro, 1 of 4");
}

TEST_F(HotKeyNavigationTest, StopsAtTheOldestAndCopiesItAgain) {
    startWith({"um", "dois"});
    press(previous);
    copyOutside("  ");

    press(previous);

    EXPECT_EQ(card(), "um, 2 of 2");
    EXPECT_EQ(pasteboardText(), "um");
}

TEST_F(HotKeyNavigationTest, StopsAtTheNewestAndCopiesItAgain) {
    startWith({"um", "dois"});
    press(next);
    copyOutside("  ");

    press(next);

    EXPECT_EQ(card(), "dois, 1 of 2");
    EXPECT_EQ(pasteboardText(), "dois");
}

TEST_F(HotKeyNavigationTest, CountsFavoritesLikeAnyOtherEntry) {
    startWith({"um", "dois", "três"});
    model->store().toggleFavorite(entry(2));

    press(previous);
    EXPECT_EQ(card(), "dois, 2 of 3");
    press(previous);
    EXPECT_EQ(card(), "um, 3 of 3");
}

TEST_F(HotKeyNavigationTest, BeepsInAnEmptyHistory) {
    model->start();

    press(previous);
    press(next);

    EXPECT_EQ(system.application.beeps(), 2);
    EXPECT_THAT(windows.happenings, IsEmpty());
    EXPECT_EQ(status(), "none");
}

TEST_F(HotKeyNavigationTest, GoesOnInTheNextGestureFromWhereItStood) {
    startWith({"um", "dois", "três"});
    tap(previous);
    wait();

    press(previous);

    EXPECT_EQ(card(), "um, 3 of 3");
}

TEST_F(HotKeyNavigationTest, GoesOnFromAnEntryThatWasCopied) {
    startWith({"um", "dois", "três", "quatro"});
    model->copy(entry(1));

    press(previous);

    EXPECT_EQ(card(), "dois, 3 of 4");
}

TEST_F(HotKeyNavigationTest, BeginsAnewAfterACaptureInTheMiddleOfAGesture) {
    startWith({"um", "dois", "três"});
    press(previous);
    press(previous);

    copyOutside("quatro");
    EXPECT_EQ(standsOn(), "nothing");

    press(previous);
    EXPECT_EQ(card(), "três, 2 of 4");
}

TEST_F(HotKeyNavigationTest, BeginsAnewAfterASnippetAndAfterAPurge) {
    startWith({"um", "dois", "três"});
    press(previous);
    press(previous);
    model->copy(SavedSnippet{.content = "Olá"});
    press(previous);
    EXPECT_EQ(card(), "dois, 2 of 3");

    for (std::size_t i = 0; i < 3; ++i) model->store().toggleFavorite(entry(i));
    press(previous);
    model->purgeHistory();
    press(previous);
    EXPECT_EQ(card(), "dois, 2 of 3");
}

TEST_F(HotKeyNavigationTest, BeginsAnewWhenTheEntryIsGoneOnWhichItStood) {
    startWith({"um", "dois", "três", "quatro"});
    press(previous);
    press(previous);
    remove(2);
    EXPECT_EQ(standsOn(), "an entry that is gone");
    press(previous);
    EXPECT_EQ(card(), "três, 2 of 3");

    remove(1);
    press(next);
    EXPECT_EQ(card(), "quatro, 1 of 2");
}

TEST_F(HotKeyNavigationTest, KeepsItsEntryWhenOthersAreRemoved) {
    startWith({"um", "dois", "três", "quatro"});
    press(previous);
    press(previous);

    remove(0);
    press(previous);

    EXPECT_EQ(card(), "um, 3 of 3");
}

TEST_F(HotKeyNavigationTest, ShowsWhatItSelectedWhenAListenerChangesTheHistory) {
    startWith({"um", "dois", "três"});
    const auto subscription = model->statusMessage().subscribe([&] { model->store().clearNonFavorites(); });

    press(previous);

    EXPECT_EQ(card(), "dois, 2 of 3");
    EXPECT_EQ(pasteboardText(), "dois");
}

// The card.

TEST_F(HotKeyNavigationTest, ShowsAPictureByItsFile) {
    startWith({"um"});
    copyPictureOutside();
    copyOutside("dois");

    press(previous);

    ASSERT_TRUE(windows.card);
    EXPECT_EQ(windows.card->entry, entry(1));
    EXPECT_EQ(windows.card->imageURL, folder / "Images" / *entry(1).imageFilename);
}

TEST_F(HotKeyNavigationTest, ShowsATextWithoutAFile) {
    startWith({"um", "dois"});

    press(previous);

    ASSERT_TRUE(windows.card);
    EXPECT_EQ(windows.card->entry, entry(1));
    EXPECT_EQ(windows.card->imageURL, std::nullopt);
}

TEST_F(HotKeyNavigationTest, ShowsTheCardOfAPictureWhoseFileIsGoneAndStaysWhereItStood) {
    startWith({"um"});
    copyPictureOutside();
    copyOutside("dois");
    model->copy(entry(0));
    ASSERT_TRUE(system.files.remove(folder / "Images" / *entry(1).imageFilename));

    press(previous);

    EXPECT_EQ(card(), "picture, 2 of 3");
    EXPECT_EQ(status(), "Não foi possível recuperar este item");
    EXPECT_EQ(standsOn(), "dois");
    EXPECT_EQ(pasteboardText(), "dois");
}

TEST_F(HotKeyNavigationTest, ProtectsWhatItShowsAsThePreferencesSay) {
    startWith({"um", "dois"});
    press(previous);
    EXPECT_TRUE(windows.card->protectSensitiveContent);

    model->updatePreferences(
        [](AppPreferences& preferences) { preferences.protectSensitiveContent = false; });
    press(previous);
    EXPECT_FALSE(windows.card->protectSensitiveContent);
}

TEST_F(HotKeyNavigationTest, OnlyCopiesWithEachStepWhateverThePreferenceSays) {
    make({.autoPaste = true});
    startWith({"um", "dois"});
    hold(modifier::command);

    press(previous);
    wait();

    EXPECT_EQ(pastes(), 0U);
    EXPECT_EQ(status(), "Copiado — use ⌘V para colar");
    EXPECT_THAT(windows.happenings, ElementsAre("card shown"));
}

// The favourite.

TEST_F(HotKeyNavigationTest, MakesTheEntryOnWhichItStandsAFavoriteAndBack) {
    startWith({"um", "dois"});
    press(previous);

    press(toggleFavorite);
    EXPECT_TRUE(entry(1).isFavorite);
    EXPECT_EQ(status(), "Adicionado aos favoritos");

    press(toggleFavorite);
    EXPECT_FALSE(entry(1).isFavorite);
    EXPECT_EQ(status(), "Removido dos favoritos");
    EXPECT_EQ(standsOn(), "um");
    EXPECT_EQ(system.application.beeps(), 0);
}

TEST_F(HotKeyNavigationTest, BeepsWhenThereIsNoEntryToMakeAFavorite) {
    startWith({"um"});

    press(toggleFavorite);

    EXPECT_EQ(system.application.beeps(), 1);
    EXPECT_EQ(status(), "Selecione um item do histórico com ↑ ou ↓");
    EXPECT_FALSE(entry(0).isFavorite);
}

TEST_F(HotKeyNavigationTest, BeepsWhenTheEntryIsGoneThatWouldBecomeAFavorite) {
    startWith({"um", "dois"});
    press(previous);
    remove(1);

    press(toggleFavorite);

    EXPECT_EQ(system.application.beeps(), 1);
    EXPECT_EQ(status(), "Selecione um item do histórico com ↑ ou ↓");
    EXPECT_FALSE(entry(0).isFavorite);
}

TEST_F(HotKeyNavigationTest, IgnoresTheReleaseOfTheFavoriteChord) {
    startWith({"um", "dois"});
    press(previous);

    tap(toggleFavorite);

    EXPECT_TRUE(entry(1).isFavorite);
    EXPECT_EQ(card(), "um, 2 of 2");
}

// Open search.

TEST_F(HotKeyNavigationTest, OpensTheHistoryInPlaceOfCardAndPopover) {
    startWith({"um", "dois"});
    press(previous);
    windows.happenings.clear();

    press(openSearch);

    EXPECT_THAT(windows.happenings, ElementsAre("card hidden", "popover closed", "history shown"));
}

TEST_F(HotKeyNavigationTest, IgnoresTheReleaseOfTheOpenSearchChord) {
    model->start();
    press(openSearch);
    windows.happenings.clear();

    release(openSearch);

    EXPECT_THAT(windows.happenings, IsEmpty());
}

}  // namespace
}  // namespace nettlecap
