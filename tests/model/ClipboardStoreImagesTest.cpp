#include "model/StoreFixture.h"

namespace nettlecap {
namespace {

using Names = std::vector<std::string>;
using Kind = ClipboardStoreMutation::Kind;

class ClipboardStoreImagesTest : public StoreFixture {
protected:
    ClipboardStoreMutation captureImage(std::string png, double at) {
        return store->captureImage(Bytes(std::move(png)), "Fotos", {at});
    }
};

TEST_F(ClipboardStoreImagesTest, StoresAnImageInAFileOfItsOwn) {
    open();

    const auto mutation = captureImage("png", 1);

    EXPECT_EQ(mutation,
              (ClipboardStoreMutation{.kind = Kind::inserted, .fingerprint = imageFingerprint("png")}));
    EXPECT_EQ(images(), Names{"00000000-0000-4000-8000-000000000001.png"});
    EXPECT_EQ(files.contents(imagesFolder / images()[0]), "png");
    const ClipboardEntry& entry = *store->entries()->front();
    EXPECT_EQ(entry, (ClipboardEntry{.id = FakeIdentifiers::nth(2),
                                     .kind = ClipboardContentKind::image,
                                     .imageFilename = images()[0],
                                     .createdAt = {1},
                                     .sourceApplication = "Fotos",
                                     .fingerprint = imageFingerprint("png")}));
    EXPECT_EQ(saved().entries, std::vector{entry});
}

TEST_F(ClipboardStoreImagesTest, CapturesNothingOfNoBytes) {
    open();

    EXPECT_EQ(captureImage("", 1), ClipboardStoreMutation());

    EXPECT_TRUE(store->entries()->empty());
    EXPECT_EQ(saves(), 0);
}

TEST_F(ClipboardStoreImagesTest, PromotesAnImageCopiedTwiceAndWritesNoFile) {
    open();
    captureImage("png", 1);
    captureImage("outra", 2);
    const int writes = files.writes();

    const auto mutation = store->captureImage(Bytes("png"), std::nullopt, {3});

    EXPECT_EQ(mutation,
              (ClipboardStoreMutation{.kind = Kind::promoted, .fingerprint = imageFingerprint("png")}));
    EXPECT_EQ(files.writes(), writes + 1);  // the state file
    EXPECT_EQ(images().size(), 2U);
    ASSERT_EQ(store->entries()->size(), 2U);
    const ClipboardEntry& entry = *store->entries()->front();
    EXPECT_EQ(entry.createdAt, Date{3});
    EXPECT_EQ(entry.sourceApplication, std::nullopt);
    EXPECT_EQ(entry.imageFilename, "00000000-0000-4000-8000-000000000001.png");
    EXPECT_EQ(entry.text, std::nullopt);
}

TEST_F(ClipboardStoreImagesTest, KeepsTextAndKindOfAPromotedImage) {
    open();
    ClipboardEntry image = imageEntry(1, "A.png", "png", 1);
    image.text = "legenda";
    image.sensitiveKind = SensitiveContentKind::secret;
    store->insertChronologically(image);

    captureImage("png", 2);

    EXPECT_EQ(store->entries()->front()->text, "legenda");
    EXPECT_EQ(store->entries()->front()->sensitiveKind, SensitiveContentKind::secret);
}

TEST_F(ClipboardStoreImagesTest, NeverTakesATextForAnImageOfTheSameBytes) {
    open();
    capture("png", 1);

    EXPECT_EQ(captureImage("png", 2).kind, Kind::inserted);

    EXPECT_EQ(store->entries()->size(), 2U);
}

TEST_F(ClipboardStoreImagesTest, KeepsNothingOfAnImageThatCannotBeWritten) {
    open();
    capture("a", 1);
    files.fail(FileOperation::write, "No space left on device");

    EXPECT_EQ(captureImage("png", 2), ClipboardStoreMutation());

    EXPECT_EQ(store->entries()->size(), 1U);
    EXPECT_EQ(error(), "Não foi possível salvar a imagem: No space left on device");
    EXPECT_EQ(store->storageUsage()->imageBytes, 0);

    files.stopFailing(FileOperation::write);
    EXPECT_EQ(captureImage("png", 3).kind, Kind::inserted);
    EXPECT_EQ(error(), "none");
}

TEST_F(ClipboardStoreImagesTest, RemovesTheFileWithTheEntry) {
    open();
    captureImage("um", 1);
    captureImage("outro", 2);

    store->remove(*store->entries()->back());

    EXPECT_EQ(images(), Names{"00000000-0000-4000-8000-000000000003.png"});
    EXPECT_EQ(store->storageUsage()->imageBytes, 5);
    EXPECT_EQ(store->storageUsage()->imageCount, 1);
}

TEST_F(ClipboardStoreImagesTest, RemovesTheFilesOfWhatIsTrimmed) {
    open(10);
    for (int n = 1; n <= 12; ++n) captureImage("imagem " + std::to_string(n), n);

    EXPECT_EQ(store->entries()->size(), 10U);
    EXPECT_EQ(images().size(), 10U);
    EXPECT_EQ(images()[0], "00000000-0000-4000-8000-000000000005.png");
}

TEST_F(ClipboardStoreImagesTest, RemovesTheFilesOfWhatIsPurged) {
    open();
    captureImage("um", 1);
    captureImage("dois", 2);
    store->toggleFavorite(*store->entries()->back());

    store->clearNonFavorites();

    EXPECT_EQ(images(), Names{"00000000-0000-4000-8000-000000000001.png"});
    EXPECT_EQ(*store->storageUsage(),
              (ClipboardStorageUsage{.totalBytes = store->storageUsage()->databaseBytes + 2,
                                     .databaseBytes = *files.size(stateFile),
                                     .imageBytes = 2,
                                     .itemCount = 1,
                                     .imageCount = 1}));
}

TEST_F(ClipboardStoreImagesTest, LosesNoWordOverAFileThatCannotBeRemoved) {
    open();
    captureImage("png", 1);
    files.fail(FileOperation::remove, "Permission denied");

    store->remove(*store->entries()->front());

    EXPECT_TRUE(store->entries()->empty());
    EXPECT_EQ(error(), "none");
    EXPECT_EQ(store->storageUsage()->imageBytes, 3);
}

TEST_F(ClipboardStoreImagesTest, LosesNoWordOverAFileThatIsGone) {
    putImage("B.png", "png");
    open({.entries = {imageEntry(1, "A.png", "png", 1)}, .snippets = {}});

    store->remove(*store->entries()->front());

    EXPECT_TRUE(store->entries()->empty());
    EXPECT_EQ(error(), "none");
    EXPECT_EQ(store->storageUsage()->imageBytes, 3);
}

TEST_F(ClipboardStoreImagesTest, NeverCountsFewerBytesThanNone) {
    open();
    putImage("A.png", "maior do que o contado");  // by somebody else's hand, after the start
    store->insertChronologically(imageEntry(1, "A.png", "png", 1));

    store->remove(*store->entries()->front());

    EXPECT_EQ(store->storageUsage()->imageBytes, 0);
}

TEST_F(ClipboardStoreImagesTest, CountsAtStartWhatLiesInTheFolder) {
    putImage("A.png", "png");
    putImage("sub/B.png", "outra");
    putImage(".oculta", "123456789");

    open({.entries = {imageEntry(1, "A.png", "png", 1), textEntry(2, "a", 2)}, .snippets = {}});

    EXPECT_EQ(*store->storageUsage(), (ClipboardStorageUsage{.totalBytes = *files.size(stateFile) + 8,
                                                             .databaseBytes = *files.size(stateFile),
                                                             .imageBytes = 8,
                                                             .itemCount = 2,
                                                             .imageCount = 1}));
}

TEST_F(ClipboardStoreImagesTest, NeverTidiesAwayAFileThatNoEntryNames) {
    putImage("perdida.png", "png");
    open(10);

    for (int n = 1; n <= 12; ++n) captureImage(std::to_string(n), n);
    store->clearNonFavorites();

    EXPECT_EQ(images(), Names{"perdida.png"});
}

TEST_F(ClipboardStoreImagesTest, PutsTemporaryFilesBesideTheStateFile) {
    files.leaveLeftover(folder);
    files.leaveLeftover(imagesFolder);

    open();

    EXPECT_EQ(files.names(folder), Names{"Images"});
    EXPECT_EQ(images().size(), 1U);  // none of ours
}

TEST_F(ClipboardStoreImagesTest, KnowsWhereAPictureIs) {
    open();
    captureImage("png", 1);

    EXPECT_EQ(store->imageFile(*store->entries()->front()), imagesFolder / images()[0]);
    EXPECT_EQ(store->imageFile(textEntry(1, "a", 1)), std::nullopt);
    EXPECT_EQ(store->imageFile(imageEntry(1, "..png", "png", 1)), imagesFolder / "..png");
}

TEST_F(ClipboardStoreImagesTest, TouchesNoFileByANameThatIsNoPlainOne) {
    files.put("/dados/fora.png", "alheio");
    files.put("/alheio.png", "alheio");
    putImage("sub/A.png", "alheio");
    open();
    for (const std::string& name :
         {std::string(), std::string("."), std::string(".."), std::string("../fora.png"),
          std::string("/alheio.png"), std::string("sub/A.png"), std::string("sub/"),
          std::string("A\0.png", 6)}) {
        const ClipboardEntry entry = imageEntry(1, name, "png", 1);
        EXPECT_EQ(store->imageFile(entry), std::nullopt) << testing::PrintToString(name);

        store->insertChronologically(entry);
        store->remove(entry);
        EXPECT_TRUE(store->entries()->empty());
    }
    EXPECT_TRUE(files.contents("/dados/fora.png"));
    EXPECT_TRUE(files.contents("/alheio.png"));
    EXPECT_TRUE(files.contents(imagesFolder / "sub/A.png"));
}

}  // namespace
}  // namespace nettlecap
