#include "ui/ClipboardEntryRow.h"
#include "ui/EntryRowFixture.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

using ClipboardEntryRowTest = EntryRowFixture;

TEST_F(ClipboardEntryRowTest, ShowsATextOnOneLine) {
    EXPECT_EQ(rowOf(history.add("  um\ndois\n"))->summary(), "um dois");
}

TEST_F(ClipboardEntryRowTest, SaysThatATextIsEmpty) {
    EXPECT_EQ(rowOf(history.add(" \n\t "))->summary(), "Texto vazio");
    EXPECT_EQ(rowOf(ClipboardEntry{.text = std::nullopt})->summary(), "Texto vazio");
}

TEST_F(ClipboardEntryRowTest, LooksAtTwelveHundredCharactersOnly) {
    EXPECT_EQ(rowOf(history.add(std::string(1200, 'a')))->summary(), QString(1200, 'a'));
    EXPECT_EQ(rowOf(history.add(std::string(1201, 'a')))->summary(), QString(1200, 'a') + "...");
}

TEST_F(ClipboardEntryRowTest, CallsAPictureACopiedImage) {
    EXPECT_EQ(rowOf(history.addImage("gato.png"))->summary(), "Imagem copiada");
}

TEST_F(ClipboardEntryRowTest, MasksASensitiveTextWhileProtectionIsOn) {
    const auto row = rowOf(history.addSensitive("4111 1111 1111 1111", SensitiveContentKind::paymentCard));

    EXPECT_EQ(row->summary(), "41••••••••••••");
    EXPECT_EQ(row->symbol(), "lock.fill");
}

TEST_F(ClipboardEntryRowTest, ShowsASensitiveTextWhileProtectionIsOff) {
    HistoryOnFakes open(AppPreferences{.protectSensitiveContent = false});
    const auto row = rowOf(open.addSensitive("4111 1111 1111 1111", SensitiveContentKind::paymentCard), open);

    EXPECT_EQ(row->summary(), "4111 1111 1111 1111");
    EXPECT_EQ(row->symbol(), "doc.text");
}

TEST_F(ClipboardEntryRowTest, HasASymbolForEachKind) {
    EXPECT_EQ(rowOf(history.add("um"))->symbol(), "doc.text");
    EXPECT_EQ(rowOf(history.addImage("gato.png"))->symbol(), "photo");
}

TEST_F(ClipboardEntryRowTest, NamesItsThumbnailByTheFileAlone) {
    EXPECT_EQ(rowOf(history.addImage("gato.png"))->thumbnail().toString(QUrl::FullyEncoded),
              "image://history/gato.png");
    EXPECT_EQ(rowOf(history.add("um"))->thumbnail(), QUrl());
}

TEST_F(ClipboardEntryRowTest, HasNoThumbnailOutsideTheFolder) {
    for (const char* name : {"../gato.png", "a/b", "..", ""})
        EXPECT_EQ(rowOf(history.addImage(name))->thumbnail(), QUrl()) << name;
}

TEST_F(ClipboardEntryRowTest, TellsSourceAndAge) {
    const auto row = rowOf(history.add("um", 5min));

    EXPECT_EQ(row->sourceApplication(), "Notas");
    EXPECT_EQ(row->age(), "há 5 minutos");
}

TEST_F(ClipboardEntryRowTest, AClickSelectsAndCopies) {
    const ClipboardEntry entry = history.add("um");
    const auto row = rowOf(entry);

    row->handleRowClick(1);

    EXPECT_EQ(selections, 1);
    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "um");
    EXPECT_EQ(history.app.statusMessage().operator*(), "Copiado — use ⌘V para colar");
    EXPECT_EQ(history.app.navigationEntryID(), entry.id);
}

TEST_F(ClipboardEntryRowTest, TellsWhenItsContentChanged) {
    ClipboardEntry entry = history.add("um");
    const auto row = rowOf(entry);
    const QSignalSpy content(row.get(), &ClipboardEntryRow::entryChanged);
    const QSignalSpy age(row.get(), &ClipboardEntryRow::ageChanged);

    entry.isFavorite = true;
    row->setRecord(StoredEntry(entry));
    EXPECT_EQ(content.count(), 1);
    EXPECT_EQ(age.count(), 0);
    EXPECT_TRUE(row->isFavorite());

    entry.createdAt.secondsSince2001 += 60;
    row->setRecord(StoredEntry(entry));
    EXPECT_EQ(age.count(), 1);
}

TEST_F(ClipboardEntryRowTest, SaysNothingWhenItIsGivenTheSameRecord) {
    const StoredEntry entry(history.add("um"));
    const auto row = rowOf(*entry);
    row->setRecord(entry);
    const QSignalSpy content(row.get(), &ClipboardEntryRow::entryChanged);

    row->setRecord(entry);

    EXPECT_EQ(content.count(), 0);
}

TEST_F(ClipboardEntryRowTest, OnlySensitiveRowsCareAboutProtection) {
    const auto plain = rowOf(history.add("um"));
    const auto secret = rowOf(history.addSensitive("segredo", SensitiveContentKind::secret));
    const QSignalSpy plainChanges(plain.get(), &ClipboardEntryRow::entryChanged);
    const QSignalSpy secretChanges(secret.get(), &ClipboardEntryRow::entryChanged);

    plain->refreshProtection();
    secret->refreshProtection();

    EXPECT_EQ(plainChanges.count(), 0);
    EXPECT_EQ(secretChanges.count(), 1);
}

TEST_F(ClipboardEntryRowTest, ItsStarSaysWhetherItIsAFavourite) {
    ClipboardEntry entry = history.add("um");
    EXPECT_EQ(rowOf(entry)->favoriteSymbol(), "star");
    EXPECT_EQ(rowOf(entry)->favoriteLabel(), "Favoritar");

    entry.isFavorite = true;
    EXPECT_EQ(rowOf(entry)->favoriteSymbol(), "star.fill");
    EXPECT_EQ(rowOf(entry)->favoriteLabel(), "Remover dos favoritos");
}

TEST_F(ClipboardEntryRowTest, ItsStarTogglesAndSaysSo) {
    const auto row = rowOf(history.add("um"));

    row->toggleFavorite();
    EXPECT_TRUE((*history.app.store().entries())[0]->isFavorite);
    EXPECT_EQ(*history.app.statusMessage(), "Adicionado aos favoritos");

    row->setRecord((*history.app.store().entries())[0]);
    row->toggleFavorite();
    EXPECT_FALSE((*history.app.store().entries())[0]->isFavorite);
    EXPECT_EQ(*history.app.statusMessage(), "Removido dos favoritos");
}

TEST_F(ClipboardEntryRowTest, TellsThatItIsSelectedOnlyWhenThatChanges) {
    const auto row = rowOf(history.add("um"));
    const QSignalSpy changes(row.get(), &ClipboardEntryRow::isKeyboardSelectedChanged);

    row->setKeyboardSelected(true);
    row->setKeyboardSelected(true);

    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(row->isKeyboardSelected());
}

}  // namespace
}  // namespace nettlecap
