#include "model/StoredEntry.h"

#include "model/HistoryDocument.h"
#include "model/Records.h"

namespace nettlecap {
namespace {

TEST(StoredEntryTest, HoldsTheRecord) {
    const ClipboardEntry record = textEntry(1, "Olá", 5);
    const StoredEntry entry(record);

    EXPECT_EQ(*entry, record);
    EXPECT_EQ(entry->text, "Olá");
}

TEST(StoredEntryTest, EncodesItselfAsTheDocumentDoes) {
    const StoredEntry entry(textEntry(1, "Olá", 5));

    EXPECT_EQ(entry.encoded(), HistoryDocument::encode(*entry));
    EXPECT_EQ(entry.encoded().data(), entry.encoded().data());
}

TEST(StoredEntryTest, IsTheSameRecordAsItsCopiesAlone) {
    const StoredEntry entry(textEntry(1, "a", 5));
    const StoredEntries copies = {entry};
    const StoredEntry twin(textEntry(1, "a", 5));

    EXPECT_TRUE(entry.isSameRecord(copies.front()));
    EXPECT_FALSE(entry.isSameRecord(twin));
    EXPECT_EQ(entry, twin);
    EXPECT_FALSE(entry == StoredEntry(textEntry(1, "b", 5)));
}

}  // namespace
}  // namespace nettlecap
