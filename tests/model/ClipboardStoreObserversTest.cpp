#include "model/StoreFixture.h"

namespace nettlecap {
namespace {

using Texts = std::vector<std::string>;

class ClipboardStoreObserversTest : public StoreFixture {
protected:
    template <class Published>
    Subscription logs(const Published& published, const std::string& name) {
        return published.subscribe([this, name] { log.push_back(name); });
    }

    Texts log;
};

TEST_F(ClipboardStoreObserversTest, TellsOfTheListThenOfTheSave) {
    open();
    const auto entries = logs(store->entries(), "entries");
    const auto errors = logs(store->persistenceError(), "error");
    const auto usage = logs(store->storageUsage(), "usage");

    store->captureImage(Bytes("png"), "Fotos", {1});
    EXPECT_EQ(log, (Texts{"entries", "error", "usage"}));

    log.clear();
    store->captureImage(Bytes("png"), "Fotos", {2});
    EXPECT_EQ(log, (Texts{"entries", "error", "usage"}));
}

TEST_F(ClipboardStoreObserversTest, TellsOfSnippetsThenOfTheSave) {
    open();
    const auto entries = logs(store->entries(), "entries");
    const auto snippets = logs(store->snippets(), "snippets");
    const auto usage = logs(store->storageUsage(), "usage");

    store->addSnippet("t", "c");

    EXPECT_EQ(log, (Texts{"snippets", "usage"}));
}

TEST_F(ClipboardStoreObserversTest, TellsOfOneChangeHoweverManyEntriesItTouches) {
    open(500);
    for (int n = 1; n <= 20; ++n) store->insertChronologically(textEntry(1, std::to_string(n), n));
    const auto entries = logs(store->entries(), "entries");

    store->setMaxItems(10);
    store->trimIfNeeded();
    EXPECT_EQ(log, Texts{"entries"});

    store->clearNonFavorites();
    EXPECT_EQ(log, (Texts{"entries", "entries"}));
}

TEST_F(ClipboardStoreObserversTest, TellsNothingWhereNothingChanges) {
    open();
    capture("a", 1);
    const auto entries = logs(store->entries(), "entries");
    const auto errors = logs(store->persistenceError(), "error");

    store->trimIfNeeded();
    store->remove(textEntry(9, "x", 1));
    store->captureImage(Bytes(), "Fotos", {2});
    store->promoteExistingEntry({.fingerprint = "text:00", .at = {2}});

    EXPECT_TRUE(log.empty());
}

TEST_F(ClipboardStoreObserversTest, HasSavedTheFileBeforeItTellsSo) {
    open();
    std::vector<std::size_t> counts;
    const auto usage = store->storageUsage().subscribe([&] {
        counts.push_back(saved().entries.size());
        EXPECT_EQ(store->storageUsage()->databaseBytes, files.size(stateFile));
    });

    capture("a", 1);
    capture("b", 2);

    EXPECT_EQ(counts, (std::vector<std::size_t>{1, 2}));
}

TEST_F(ClipboardStoreObserversTest, ShowsAListenerAWholeHistory) {
    open(10);
    const auto subscription = store->entries().subscribe([&] {
        for (const StoredEntry& entry : *store->entries())
            EXPECT_TRUE(files.contents(imagesFolder / *entry->imageFilename));
        EXPECT_EQ(images().size(), store->entries()->size());
        EXPECT_LE(store->entries()->size(), 10U);
    });

    for (int n = 1; n <= 15; ++n) store->captureImage(Bytes(std::to_string(n)), "Fotos", {double(n)});
    store->remove(*store->entries()->front());
    store->clearNonFavorites();

    EXPECT_TRUE(images().empty());
}

TEST_F(ClipboardStoreObserversTest, LeavesACopyOfTheListAlone) {
    open();
    capture("a", 1);
    const StoredEntries before = *store->entries();

    capture("a ", 2);
    store->toggleFavorite(*store->entries()->front());
    store->clearNonFavorites();
    store->remove(*store->entries()->front());

    EXPECT_EQ(before.front()->text, "a");
    EXPECT_FALSE(before.front()->isFavorite);
}

TEST_F(ClipboardStoreObserversTest, KeepsTheRecordsThatDidNotChange) {
    open();
    capture("a", 1);
    capture("b", 2);
    const StoredEntries before = *store->entries();

    store->toggleFavorite(*before[0]);

    EXPECT_FALSE(before[0].isSameRecord((*store->entries())[0]));
    EXPECT_TRUE(before[1].isSameRecord((*store->entries())[1]));
}

TEST_F(ClipboardStoreObserversTest, LetsAListenerRemoveWhatIsBeingCaptured) {
    open();
    const auto subscription = store->entries().subscribe([&] {
        if (!store->entries()->empty()) store->remove(*store->entries()->front());
    });

    const auto mutation = store->captureImage(Bytes("png"), "Fotos", {1});

    EXPECT_EQ(mutation.kind, ClipboardStoreMutation::Kind::inserted);
    EXPECT_TRUE(store->entries()->empty());
    EXPECT_TRUE(images().empty());
    EXPECT_TRUE(saved().entries.empty());
    EXPECT_EQ(*store->storageUsage(), (ClipboardStorageUsage{.totalBytes = *files.size(stateFile),
                                                             .databaseBytes = *files.size(stateFile)}));
}

TEST_F(ClipboardStoreObserversTest, LetsAListenerCaptureDuringAPromotion) {
    open();
    capture("a", 1);
    bool once = false;
    const auto subscription = store->entries().subscribe([&] {
        if (!std::exchange(once, true)) capture("b", 3);
    });

    capture("a", 2);

    EXPECT_EQ(texts(), (Texts{"b", "a"}));
    ASSERT_EQ(saved().entries.size(), 2U);
    EXPECT_EQ(saved().entries[0].text, "b");
}

TEST_F(ClipboardStoreObserversTest, LetsAListenerPurgeWhenASaveFails) {
    open();
    bool once = false;
    const auto subscription = store->persistenceError().subscribe([&] {
        if (std::exchange(once, true)) return;
        files.stopFailing(FileOperation::write);
        store->clearNonFavorites();
    });
    files.fail(FileOperation::write, "No space left on device");

    capture("a", 1);

    EXPECT_TRUE(store->entries()->empty());
    EXPECT_EQ(error(), "none");
    EXPECT_TRUE(saved().entries.empty());
}

TEST_F(ClipboardStoreObserversTest, LetsAListenerChangeSnippetsWhileTheyChange) {
    open();
    const auto subscription = store->snippets().subscribe([&] {
        if (store->snippets()->size() == 1) store->addSnippet("segundo", "dois");
    });

    store->addSnippet("primeiro", "um");

    EXPECT_EQ(store->snippets()->size(), 2U);
    EXPECT_EQ(saved().snippets, *store->snippets());
}

TEST_F(ClipboardStoreObserversTest, TellsOfEverySaveThatItSucceeded) {
    open();
    const auto errors = logs(store->persistenceError(), "error");

    store->persist();
    store->persist();

    EXPECT_EQ(log, (Texts{"error", "error"}));
}

}  // namespace
}  // namespace nettlecap
