#include "model/StoreFixture.h"

namespace nettlecap {
namespace {

using Kind = ClipboardStoreMutation::Kind;

/// What the store does about files that are not as it left them.
class ClipboardStoreRecoveryTest : public StoreFixture {
protected:
    static std::string document(const std::string& text) {
        return HistoryDocument::encode(PersistedState{.entries = {textEntry(1, text, 1)}, .snippets = {}});
    }
    Path picture() const { return imagesFolder / images().at(0); }
};

TEST_F(ClipboardStoreRecoveryTest, KeepsADocumentThatAppearedAfterTheStart) {
    open();
    const std::string other = document("de outra máquina");
    files.put(stateFile, other);

    capture("a", 1);

    EXPECT_EQ(files.contents(unreadableFile), other);
    EXPECT_EQ(saved().entries.size(), 1U);
    EXPECT_EQ(error(), "none");
}

TEST_F(ClipboardStoreRecoveryTest, KeepsADocumentThatReplacedItsOwn) {
    open();
    capture("a", 1);
    const std::string other = document("um texto de outra máquina");
    files.put(stateFile, other);

    capture("b", 2);
    capture("c", 3);

    EXPECT_EQ(files.contents(unreadableFile), other);
    EXPECT_EQ(saved().entries.size(), 3U);
}

TEST_F(ClipboardStoreRecoveryTest, NeverKeepsItsOwnDocument) {
    open();
    capture("a", 1);
    capture("bb", 2);
    store->remove(ClipboardEntry(*store->entries()->front()));
    open();
    capture("ccc", 3);

    EXPECT_FALSE(files.contents(unreadableFile));
}

TEST_F(ClipboardStoreRecoveryTest, PurgesADocumentThatReplacedItsOwn) {
    open();
    capture("a", 1);
    files.put(stateFile, document("um texto de outra máquina"));

    store->clearNonFavorites();

    EXPECT_EQ(files.names(folder), (std::vector<std::string>{"Images", "history.json"}));
    EXPECT_TRUE(saved().entries.empty());
}

TEST_F(ClipboardStoreRecoveryTest, SavesOnceMoreWhatCouldNotBeSavedAndNothingElse) {
    open();
    files.fail(FileOperation::write, "No space left on device");
    capture("a", 1);
    files.stopFailing(FileOperation::write);

    store->persistUnsaved();
    EXPECT_EQ(saved().entries.size(), 1U);
    EXPECT_EQ(error(), "none");

    store->persistUnsaved();
    EXPECT_EQ(saves(), 1);
}

TEST_F(ClipboardStoreRecoveryTest, LeavesADamagedFileAloneWhereNothingWasSaved) {
    files.put(stateFile, "estragado");
    open();

    store->persistUnsaved();

    EXPECT_EQ(files.contents(stateFile), "estragado");
}

TEST_F(ClipboardStoreRecoveryTest, MakesTheFoldersThatItCouldNotMakeAtTheStart) {
    files.fail(FileOperation::createDirectory, "Permission denied");
    open();
    capture("a", 1);
    EXPECT_EQ(error(), "Não foi possível salvar o histórico: No such file or directory");

    files.stopFailing(FileOperation::createDirectory);
    store->captureImage(Bytes("png"), "Fotos", {2});

    EXPECT_EQ(error(), "none");
    EXPECT_EQ(saved().entries.size(), 2U);
    EXPECT_EQ(files.contents(picture()), "png");
}

TEST_F(ClipboardStoreRecoveryTest, APictureWhoseFileIsGoneGetsItAgainWhenItIsCopied) {
    open();
    store->captureImage(Bytes("png"), "Fotos", {1});
    const Path file = picture();
    ASSERT_TRUE(files.remove(file));
    open();

    EXPECT_EQ(store->captureImage(Bytes("png"), "Fotos", {2}).kind, Kind::promoted);

    EXPECT_EQ(files.contents(file), "png");
    EXPECT_EQ(store->entries()->size(), 1U);
    EXPECT_EQ(store->storageUsage()->imageBytes, 3);
}

TEST_F(ClipboardStoreRecoveryTest, APictureWhoseFileWasCutShortGetsItAgainWhenItIsCopied) {
    open();
    store->captureImage(Bytes("png"), "Fotos", {1});
    files.put(picture(), "p");
    open();

    store->captureImage(Bytes("png"), "Fotos", {2});

    EXPECT_EQ(files.contents(picture()), "png");
    EXPECT_EQ(store->storageUsage()->imageBytes, 3);
}

TEST_F(ClipboardStoreRecoveryTest, APictureThatCannotGetItsFileAgainStaysWhereItIs) {
    open();
    store->captureImage(Bytes("png"), "Fotos", {1});
    capture("a", 2);
    ASSERT_TRUE(files.remove(picture()));
    files.fail(FileOperation::write, "No space left on device");

    EXPECT_EQ(store->captureImage(Bytes("png"), "Fotos", {3}), ClipboardStoreMutation());

    EXPECT_EQ(error(), "Não foi possível salvar a imagem: No space left on device");
    EXPECT_EQ(texts(), (std::vector<std::string>{"a", "absent"}));
}

}  // namespace
}  // namespace nettlecap
