#include "model/StoreFixture.h"

namespace nettlecap {
namespace {

using Texts = std::vector<std::string>;

class ClipboardStoreTest : public StoreFixture {};

TEST_F(ClipboardStoreTest, StartsEmptyInFoldersOfItsOwn) {
    open();

    EXPECT_TRUE(store->entries()->empty());
    EXPECT_TRUE(store->snippets()->empty());
    EXPECT_EQ(error(), "none");
    EXPECT_EQ(*store->storageUsage(), ClipboardStorageUsage());
    EXPECT_TRUE(files.hasFolder(imagesFolder));
    EXPECT_EQ(store->imagesDirectory(), imagesFolder);
    EXPECT_EQ(saves(), 0);
}

TEST_F(ClipboardStoreTest, LivesInTheApplicationSupportFolderByDefault) {
    files.setApplicationSupportDirectory("/casa/dados");
    EXPECT_EQ(ClipboardStore::defaultBaseDirectory(files), "/casa/dados/Nettlecap");
    EXPECT_EQ(ClipboardStore::defaultImagesDirectory(files), "/casa/dados/Nettlecap/Images");

    store.emplace(ClipboardStore::Ports{.files = files, .clock = time, .identifiers = identifiers},
                  std::nullopt, limit);
    EXPECT_TRUE(files.hasFolder("/casa/dados/Nettlecap/Images"));
}

TEST_F(ClipboardStoreTest, CannotLiveWithoutAnApplicationSupportFolder) {
    files.setApplicationSupportDirectory(std::nullopt);

    EXPECT_DEATH(ClipboardStore::defaultBaseDirectory(files), "application-support");
}

TEST_F(ClipboardStoreTest, KeepsTheNewestFirst) {
    open();

    capture("b", 2);
    capture("c", 3);
    capture("a", 1);
    capture("d", 2.5);

    EXPECT_EQ(texts(), (Texts{"c", "d", "b", "a"}));
    EXPECT_EQ(saved().entries[1].text, "d");
}

TEST_F(ClipboardStoreTest, PutsAnEntryBehindThoseOfItsDate) {
    open();

    capture("a", 1);
    capture("b", 1);
    capture("c", 1);

    EXPECT_EQ(texts(), (Texts{"a", "b", "c"}));
}

TEST_F(ClipboardStoreTest, InsertsWithoutSaving) {
    open();

    store->insertChronologically(textEntry(1, "a", 1));

    EXPECT_EQ(texts(), Texts{"a"});
    EXPECT_EQ(saves(), 0);
}

TEST_F(ClipboardStoreTest, SavesEachCaptureAsItStands) {
    open();

    capture("a", 1);
    EXPECT_EQ(saves(), 1);
    capture("482913", 2, std::nullopt);
    EXPECT_EQ(saves(), 2);

    ASSERT_EQ(saved().entries.size(), 2U);
    EXPECT_EQ(saved().entries[0], *store->entries()->front());
    EXPECT_EQ(saved().entries[0].sensitiveKind, SensitiveContentKind::secret);
    EXPECT_EQ(saved().entries[0].sourceApplication, std::nullopt);
    EXPECT_EQ(saved().entries[1], *store->entries()->back());
}

TEST_F(ClipboardStoreTest, KnowsItsFingerprintsExactly) {
    open();
    capture("a", 1);

    EXPECT_TRUE(store->containsFingerprint(textFingerprint("a")));
    EXPECT_TRUE(store->containsFingerprint(textFingerprint(" a\n")));
    EXPECT_FALSE(store->containsFingerprint(textFingerprint("A")));
    EXPECT_FALSE(store->containsFingerprint(""));
}

TEST_F(ClipboardStoreTest, MovesWhatIsCopiedAgainToTheTop) {
    open();
    capture("A", 1, "Notas");
    const Uuid id = store->entries()->front()->id;
    capture("B", 2, "Notas");

    capture("A\r\n", 3, "Terminal");

    EXPECT_EQ(texts(), (Texts{"A\r\n", "B"}));
    const ClipboardEntry& entry = *store->entries()->front();
    EXPECT_EQ(entry.id, id);
    EXPECT_EQ(entry.createdAt, Date{3});
    EXPECT_EQ(entry.sourceApplication, "Terminal");
    EXPECT_EQ(saved().entries[0], entry);
}

TEST_F(ClipboardStoreTest, ForgetsTheSourceOfACopyWithoutOne) {
    open();
    capture("A", 1, "Notas");

    capture("A", 2, std::nullopt);

    EXPECT_EQ(store->entries()->front()->sourceApplication, std::nullopt);
}

TEST_F(ClipboardStoreTest, MovesBackWhatIsCopiedAgainWithAnEarlierDate) {
    open();
    capture("A", 5);
    capture("B", 3);

    capture("A", 1);

    EXPECT_EQ(texts(), (Texts{"B", "A"}));
}

TEST_F(ClipboardStoreTest, KeepsAFavoriteWhenItIsCopiedAgain) {
    open();
    capture("A", 1);
    store->toggleFavorite(*store->entries()->front());

    capture("A", 2);

    EXPECT_TRUE(store->entries()->front()->isFavorite);
}

TEST_F(ClipboardStoreTest, PromotesNothingUnknown) {
    open();
    capture("A", 1);

    EXPECT_FALSE(store->promoteExistingEntry({.fingerprint = textFingerprint("B"), .at = {2}}));

    EXPECT_EQ(texts(), Texts{"A"});
    EXPECT_EQ(saves(), 1);
}

TEST_F(ClipboardStoreTest, TakesTheNewTextAndItsKindAtAPromotion) {
    open();
    capture("482913", 1);
    const std::string fingerprint = store->entries()->front()->fingerprint;

    EXPECT_TRUE(store->promoteExistingEntry(
        {.fingerprint = fingerprint, .at = {2}, .replacementText = " 482913", .sensitiveKind = {}}));
    EXPECT_EQ(store->entries()->front()->text, " 482913");
    EXPECT_EQ(store->entries()->front()->sensitiveKind, std::nullopt);

    EXPECT_TRUE(store->promoteExistingEntry({.fingerprint = fingerprint, .at = {3}}));
    EXPECT_EQ(store->entries()->front()->text, std::nullopt);
}

TEST_F(ClipboardStoreTest, MergesEntriesThatCameToShareAFingerprint) {
    open();
    putImage("A.png", "png");
    putImage("B.png", "png");
    store->insertChronologically(favorite(imageEntry(1, "A.png", "png", 1)));
    store->insertChronologically(imageEntry(2, "B.png", "png", 3));
    store->insertChronologically(textEntry(3, "entre", 2));

    EXPECT_TRUE(store->promoteExistingEntry({.fingerprint = imageFingerprint("png"), .at = {1.5}}));

    ASSERT_EQ(store->entries()->size(), 2U);
    const ClipboardEntry& survivor = *store->entries()->back();
    EXPECT_EQ(survivor.id, uuid(2));
    EXPECT_EQ(survivor.imageFilename, "B.png");
    EXPECT_TRUE(survivor.isFavorite);
    EXPECT_EQ(images(), Texts{"B.png"});
}

TEST_F(ClipboardStoreTest, KeepsTheFileThatADuplicateShares) {
    open();
    putImage("A.png", "png");
    store->insertChronologically(imageEntry(1, "A.png", "png", 1));
    store->insertChronologically(imageEntry(2, "A.png", "png", 2));

    store->promoteExistingEntry({.fingerprint = imageFingerprint("png"), .at = {3}});

    EXPECT_EQ(store->entries()->size(), 1U);
    EXPECT_EQ(images(), Texts{"A.png"});
}

TEST_F(ClipboardStoreTest, NeverTrimsAtAPromotion) {
    open(10);
    for (int n = 0; n < 12; ++n) store->insertChronologically(textEntry(1, std::to_string(n), n));

    capture("0", 20);

    EXPECT_EQ(store->entries()->size(), 12U);
}

TEST_F(ClipboardStoreTest, KeepsTheNewestOfMoreThanItsLimit) {
    open(10);

    for (int n = 1; n <= 11; ++n) capture(std::to_string(n), n);

    EXPECT_EQ(texts(), (Texts{"11", "10", "9", "8", "7", "6", "5", "4", "3", "2"}));
    EXPECT_EQ(saved().entries.size(), 10U);
}

TEST_F(ClipboardStoreTest, NeverHasALimitBelowTen) {
    open(3);
    for (int n = 1; n <= 11; ++n) capture(std::to_string(n), n);
    EXPECT_EQ(store->entries()->size(), 10U);

    store->setMaxItems(-5);
    store->trimIfNeeded();
    EXPECT_EQ(store->entries()->size(), 10U);
}

TEST_F(ClipboardStoreTest, HasALimitOf500WhenToldSo) {
    open(500);

    for (int n = 1; n <= 501; ++n) store->insertChronologically(textEntry(1, std::to_string(n), n));
    store->trimIfNeeded();

    EXPECT_EQ(store->entries()->size(), 500U);
    EXPECT_EQ(texts().back(), "2");
}

TEST_F(ClipboardStoreTest, DropsTheOldestThatAreNoFavorites) {
    open(10);
    for (int n = 1; n <= 12; ++n) {
        const ClipboardEntry entry = textEntry(1, std::to_string(n), n);
        store->insertChronologically(n <= 2 || n == 4 ? favorite(entry) : entry);
    }

    store->trimIfNeeded();

    EXPECT_EQ(texts(), (Texts{"12", "11", "10", "9", "8", "7", "6", "4", "2", "1"}));
}

TEST_F(ClipboardStoreTest, DropsANewTextAtOnceWhereFavoritesFillTheLimit) {
    open(10);
    for (int n = 1; n <= 10; ++n) store->insertChronologically(favorite(textEntry(1, std::to_string(n), n)));

    capture("novo", 11);

    EXPECT_EQ(store->entries()->size(), 10U);
    EXPECT_FALSE(store->containsFingerprint(textFingerprint("novo")));
}

TEST_F(ClipboardStoreTest, DropsANewImageAtOnceWhereFavoritesFillTheLimit) {
    open(10);
    for (int n = 1; n <= 10; ++n) store->insertChronologically(favorite(textEntry(1, std::to_string(n), n)));

    const auto mutation = store->captureImage(Bytes("png"), "Fotos", {11});

    EXPECT_EQ(mutation.kind, ClipboardStoreMutation::Kind::inserted);
    EXPECT_EQ(store->entries()->size(), 10U);
    EXPECT_TRUE(images().empty());
    EXPECT_EQ(store->storageUsage()->imageBytes, 0);
}

TEST_F(ClipboardStoreTest, StaysLongerThanItsLimitWithFavoritesAlone) {
    open(500);
    for (int n = 1; n <= 11; ++n) store->insertChronologically(favorite(textEntry(1, std::to_string(n), n)));

    store->setMaxItems(10);
    store->trimIfNeeded();

    EXPECT_EQ(store->entries()->size(), 11U);
}

TEST_F(ClipboardStoreTest, TrimsToANewLimitWithoutSaving) {
    open(500);
    for (int n = 1; n <= 20; ++n) store->insertChronologically(textEntry(1, std::to_string(n), n));

    store->setMaxItems(12);
    EXPECT_EQ(store->entries()->size(), 20U);
    store->trimIfNeeded();

    EXPECT_EQ(store->entries()->size(), 12U);
    EXPECT_EQ(saves(), 0);
}

TEST_F(ClipboardStoreTest, RemovesAnEntryById) {
    open();
    capture("a", 1);
    capture("b", 2);
    ClipboardEntry stale = *store->entries()->front();
    stale.text = "antigo";

    store->remove(stale);

    EXPECT_EQ(texts(), Texts{"a"});
    EXPECT_EQ(saved().entries.size(), 1U);
    EXPECT_EQ(saves(), 3);
}

TEST_F(ClipboardStoreTest, RemovesAnEntryThatIsReadFromItsOwnList) {
    open();
    capture("a", 1);

    store->remove(*store->entries()->front());

    EXPECT_TRUE(store->entries()->empty());
}

TEST_F(ClipboardStoreTest, RemovesAFavoriteThatIsToldByName) {
    open({.entries = {favorite(textEntry(1, "a", 1))}, .snippets = {}});

    store->remove(*store->entries()->front());

    EXPECT_TRUE(store->entries()->empty());
}

TEST_F(ClipboardStoreTest, DoesNothingToEntriesItDoesNotHave) {
    open();
    capture("a", 1);

    store->remove(textEntry(7, "a", 1));
    store->toggleFavorite(textEntry(7, "a", 1));

    EXPECT_EQ(texts(), Texts{"a"});
    EXPECT_FALSE(store->entries()->front()->isFavorite);
    EXPECT_EQ(saves(), 1);
}

TEST_F(ClipboardStoreTest, ActsOnTheFirstOfEntriesWithOneId) {
    open({.entries = {textEntry(1, "a", 2), textEntry(1, "b", 1)}, .snippets = {}});

    store->toggleFavorite(*store->entries()->back());
    EXPECT_TRUE(store->entries()->front()->isFavorite);
    EXPECT_FALSE(store->entries()->back()->isFavorite);

    store->remove(*store->entries()->back());
    EXPECT_EQ(texts(), Texts{"b"});
}

TEST_F(ClipboardStoreTest, TogglesAFavoriteInItsPlaceAndTrimsNothing) {
    open(10);
    for (int n = 1; n <= 11; ++n) store->insertChronologically(favorite(textEntry(1, std::to_string(n), n)));
    store->insertChronologically(favorite(textEntry(2, "x", 5)));

    store->toggleFavorite(textEntry(2, "x", 5));

    EXPECT_EQ(store->entries()->size(), 12U);
    EXPECT_EQ(texts()[7], "x");
    EXPECT_FALSE((*store->entries())[7]->isFavorite);
    EXPECT_FALSE(saved().entries[7].isFavorite);

    store->toggleFavorite(textEntry(2, "x", 5));
    EXPECT_TRUE((*store->entries())[7]->isFavorite);
}

TEST_F(ClipboardStoreTest, PurgesAllButFavoritesAndSnippets) {
    open({.entries = {textEntry(1, "a", 4), favorite(textEntry(2, "b", 3)), textEntry(3, "c", 2),
                      favorite(textEntry(4, "d", 1))},
          .snippets = {snippetRecord(5, "t", "c", 1)}});

    store->clearNonFavorites();

    EXPECT_EQ(texts(), (Texts{"b", "d"}));
    EXPECT_EQ(store->snippets()->size(), 1U);
    EXPECT_EQ(saved().entries.size(), 2U);
    EXPECT_EQ(saved().snippets.size(), 1U);
}

TEST_F(ClipboardStoreTest, SavesAPurgeThatFindsNothing) {
    open();

    store->clearNonFavorites();

    EXPECT_EQ(saves(), 1);
}

}  // namespace
}  // namespace nettlecap
