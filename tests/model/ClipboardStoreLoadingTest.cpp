#include "model/StoreFixture.h"

namespace nettlecap {
namespace {

using Texts = std::vector<std::string>;

class ClipboardStoreLoadingTest : public StoreFixture {};

TEST_F(ClipboardStoreLoadingTest, FindsWhatItSaved) {
    open();
    capture("a", 1);
    store->captureImage(Bytes("png"), "Fotos", {2});
    store->addSnippet("t", "c");
    const StoredEntries entries = *store->entries();
    const auto snippets = *store->snippets();
    const auto usage = *store->storageUsage();

    open();

    EXPECT_EQ(*store->entries(), entries);
    EXPECT_EQ(*store->snippets(), snippets);
    EXPECT_EQ(*store->storageUsage(), usage);
    EXPECT_EQ(saves(), 3);
}

TEST_F(ClipboardStoreLoadingTest, SavesARepairedHistoryAtOnce) {
    ClipboardEntry entry = textEntry(1, "a", 1);
    entry.sourceApplication = "Origem não identificada";

    open({.entries = {entry}, .snippets = {}});

    EXPECT_EQ(store->entries()->front()->sourceApplication, "Outro dispositivo");
    EXPECT_EQ(saved().entries[0].sourceApplication, "Outro dispositivo");
    EXPECT_EQ(saves(), 1);
}

TEST_F(ClipboardStoreLoadingTest, MakesAFavoriteOfWhatAnOlderDuplicateWas) {
    open({.entries = {favorite(textEntry(1, "a", 1)), textEntry(2, "a", 2)}, .snippets = {}});

    ASSERT_EQ(store->entries()->size(), 1U);
    EXPECT_EQ(store->entries()->front()->id, uuid(2));
    EXPECT_TRUE(store->entries()->front()->isFavorite);
    EXPECT_EQ(saved().entries, std::vector{*store->entries()->front()});
}

TEST_F(ClipboardStoreLoadingTest, RemovesTheFilesOfDuplicates) {
    putImage("A.png", "png");
    putImage("B.png", "png");
    open({.entries = {imageEntry(1, "A.png", "png", 2), imageEntry(2, "B.png", "png", 1),
                      imageEntry(3, "A.png", "png", 0)},
          .snippets = {}});

    EXPECT_EQ(store->entries()->size(), 1U);
    EXPECT_EQ(images(), Texts{"A.png"});
    EXPECT_EQ(store->storageUsage()->imageBytes, 3);
}

TEST_F(ClipboardStoreLoadingTest, SortsWithoutSaving) {
    open({.entries = {textEntry(1, "a", 1), textEntry(2, "b", 2)}, .snippets = {}});

    EXPECT_EQ(texts(), (Texts{"b", "a"}));
    EXPECT_EQ(saves(), 0);
}

TEST_F(ClipboardStoreLoadingTest, TrimsAtStartButSavesLater) {
    PersistedState state;
    for (int n = 1; n <= 12; ++n) {
        const std::string name = std::to_string(n) + ".png";
        putImage(name, "imagem " + name);
        state.entries.push_back(imageEntry(static_cast<std::uint64_t>(n), name, "imagem " + name, n));
    }

    open(state, 10);

    EXPECT_EQ(store->entries()->size(), 10U);
    EXPECT_EQ(images().size(), 10U);
    EXPECT_EQ(store->storageUsage()->itemCount, 10);
    EXPECT_EQ(saved().entries.size(), 12U);

    store->toggleFavorite(*store->entries()->front());
    EXPECT_EQ(saved().entries.size(), 10U);
}

TEST_F(ClipboardStoreLoadingTest, SaysNothingOfAMissingFile) {
    open();

    EXPECT_EQ(error(), "none");
    EXPECT_TRUE(store->entries()->empty());
}

TEST_F(ClipboardStoreLoadingTest, SaysThatAFileCannotBeDecodedAndLeavesIt) {
    files.put(stateFile, "{\"hunter2\"");

    open();

    EXPECT_EQ(error(), "O histórico salvo não pôde ser lido: o arquivo não é um documento JSON válido.");
    EXPECT_TRUE(store->entries()->empty());
    EXPECT_EQ(files.contents(stateFile), "{\"hunter2\"");
    EXPECT_EQ(store->storageUsage()->databaseBytes, 10);
    EXPECT_EQ(files.names(folder), (Texts{"Images", "history.json"}));
}

TEST_F(ClipboardStoreLoadingTest, SaysThatADocumentHasTheWrongShape) {
    files.put(stateFile, "{}");

    open();

    EXPECT_EQ(error(), "O histórico salvo não pôde ser lido: o documento não tem o formato esperado.");
}

TEST_F(ClipboardStoreLoadingTest, TakesAnEmptyFileForADamagedOne) {
    files.put(stateFile, "");

    open();

    EXPECT_EQ(error(), "O histórico salvo não pôde ser lido: o arquivo não é um documento JSON válido.");
}

TEST_F(ClipboardStoreLoadingTest, ReplacesADamagedFileAtTheFirstCaptureAndKeepsACopy) {
    files.put(stateFile, "estragado");
    open();

    capture("a", 1);

    EXPECT_EQ(texts(), Texts{"a"});
    EXPECT_EQ(saved().entries, std::vector{*store->entries()->front()});
    EXPECT_EQ(files.contents(unreadableFile), "estragado");
    EXPECT_EQ(error(), "none");
}

TEST_F(ClipboardStoreLoadingTest, KeepsTheCopyThroughLaterSavesAndStarts) {
    files.put(stateFile, "estragado");
    open();
    capture("a", 1);
    capture("b", 2);
    open();

    capture("c", 3);

    EXPECT_EQ(files.contents(unreadableFile), "estragado");
    EXPECT_EQ(texts(), (Texts{"c", "b", "a"}));
}

TEST_F(ClipboardStoreLoadingTest, KeepsTheNewestSuchCopyOnly) {
    files.put(unreadableFile, "antigo");
    files.put(stateFile, "estragado");
    open();

    capture("a", 1);

    EXPECT_EQ(files.contents(unreadableFile), "estragado");
}

TEST_F(ClipboardStoreLoadingTest, OverwritesNothingThatCannotBeKept) {
    files.put(stateFile, "estragado");
    files.fail(FileOperation::keepCopy, "Read-only file system");
    open();

    capture("a", 1);
    EXPECT_EQ(error(), "Não foi possível salvar o histórico: Read-only file system");
    EXPECT_EQ(files.contents(stateFile), "estragado");
    EXPECT_EQ(texts(), Texts{"a"});

    files.stopFailing(FileOperation::keepCopy);
    capture("b", 2);
    EXPECT_EQ(error(), "none");
    EXPECT_EQ(files.contents(unreadableFile), "estragado");
    EXPECT_EQ(saved().entries.size(), 2U);
}

TEST_F(ClipboardStoreLoadingTest, KeepsTheDamagedFileWhenTheFirstSaveFails) {
    files.put(stateFile, "estragado");
    files.fail(FileOperation::write, "No space left on device");
    open();

    capture("a", 1);
    EXPECT_EQ(files.contents(stateFile), "estragado");
    EXPECT_EQ(error(), "Não foi possível salvar o histórico: No space left on device");

    files.stopFailing(FileOperation::write);
    capture("b", 2);
    EXPECT_EQ(files.contents(unreadableFile), "estragado");
    EXPECT_EQ(saved().entries.size(), 2U);
}

TEST_F(ClipboardStoreLoadingTest, SavesWhereTheDamagedFileIsGone) {
    files.put(stateFile, "estragado");
    open();
    ASSERT_TRUE(files.remove(stateFile));

    capture("a", 1);

    EXPECT_EQ(error(), "none");
    EXPECT_EQ(saved().entries.size(), 1U);
    EXPECT_FALSE(files.contents(unreadableFile));
}

TEST_F(ClipboardStoreLoadingTest, KeepsAHistoryThatCannotBeReadWithoutAWord) {
    files.put(stateFile,
              HistoryDocument::encode(PersistedState{.entries = {textEntry(1, "a", 1)}, .snippets = {}}));
    files.fail(FileOperation::read, "Permission denied");
    open();
    EXPECT_EQ(error(), "none");
    EXPECT_TRUE(store->entries()->empty());

    capture("b", 2);

    EXPECT_EQ(texts(), Texts{"b"});
    const auto kept = HistoryDocument::decode(Bytes(*files.contents(unreadableFile)));
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->entries[0].text, "a");
}

TEST_F(ClipboardStoreLoadingTest, ForgetsTheCopyAtThePurge) {
    files.put(stateFile, "estragado");
    open();
    capture("a", 1);

    store->clearNonFavorites();

    EXPECT_EQ(files.names(folder), (Texts{"Images", "history.json"}));
    EXPECT_TRUE(saved().entries.empty());
}

TEST_F(ClipboardStoreLoadingTest, PurgesADamagedFileWithoutKeepingIt) {
    files.put(stateFile, "estragado");
    open();

    store->clearNonFavorites();

    EXPECT_EQ(files.names(folder), (Texts{"Images", "history.json"}));
    EXPECT_EQ(error(), "none");
}

TEST_F(ClipboardStoreLoadingTest, ForgetsTheCopyOfAnEarlierRunAtThePurge) {
    files.put(unreadableFile, "estragado");
    open();

    store->clearNonFavorites();

    EXPECT_FALSE(files.contents(unreadableFile));
}

TEST_F(ClipboardStoreLoadingTest, RunsWithoutFolders) {
    files.fail(FileOperation::createDirectory, "Permission denied");
    open();
    EXPECT_EQ(error(), "Não foi possível preparar o armazenamento: Permission denied");

    capture("a", 1);
    EXPECT_EQ(texts(), Texts{"a"});
    EXPECT_EQ(error(), "Não foi possível salvar o histórico: No such file or directory");

    EXPECT_EQ(store->captureImage(Bytes("png"), "Fotos", {2}).kind, ClipboardStoreMutation::Kind::unchanged);
    EXPECT_EQ(error(), "Não foi possível salvar a imagem: No such file or directory");
}

TEST_F(ClipboardStoreLoadingTest, ClearsTheFoldersMessageWithTheNextSave) {
    files.fail(FileOperation::createDirectory, "Permission denied");
    files.put(imagesFolder / "A.png", "png");
    open({.entries = {textEntry(1, "a", 1)}, .snippets = {}});
    EXPECT_EQ(error(), "Não foi possível preparar o armazenamento: Permission denied");
    EXPECT_EQ(texts(), Texts{"a"});

    capture("b", 2);

    EXPECT_EQ(error(), "none");
}

TEST_F(ClipboardStoreLoadingTest, ClearsTheFoldersMessageWithASavedRepair) {
    files.fail(FileOperation::createDirectory, "Permission denied");
    open({.entries = {textEntry(1, "a", 1), textEntry(2, "a", 2)}, .snippets = {}});

    EXPECT_EQ(error(), "none");
    EXPECT_EQ(saves(), 1);
}

TEST_F(ClipboardStoreLoadingTest, SaysThatARepairCannotBeSaved) {
    files.fail(FileOperation::write, "No space left on device");
    open({.entries = {textEntry(1, "a", 1), textEntry(2, "a", 2)}, .snippets = {}});

    EXPECT_EQ(error(), "Não foi possível salvar o histórico: No space left on device");
    EXPECT_EQ(store->entries()->size(), 1U);
    EXPECT_EQ(saved().entries.size(), 2U);
}

TEST_F(ClipboardStoreLoadingTest, LoadsAndPurgesThousandsWithoutEffort) {
    PersistedState state;
    for (std::uint64_t n = 0; n < 5000; ++n) {
        const std::string name = std::to_string(n) + ".png";
        putImage(name, name);
        state.entries.push_back(imageEntry(n, name, name, static_cast<double>(n)));
    }
    open(state, 5000);
    EXPECT_EQ(store->entries()->size(), 5000U);

    store->setMaxItems(2500);
    store->trimIfNeeded();
    EXPECT_EQ(images().size(), 2500U);

    store->clearNonFavorites();
    EXPECT_TRUE(images().empty());
}

}  // namespace
}  // namespace nettlecap
