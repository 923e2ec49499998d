#include "model/HistoryRepair.h"

#include "model/Records.h"

namespace nettlecap {
namespace {

std::vector<Uuid> ids(const std::vector<ClipboardEntry>& entries) {
    std::vector<Uuid> result;
    result.reserve(entries.size());
    for (const auto& entry : entries) result.push_back(entry.id);
    return result;
}

ClipboardEntry with(ClipboardEntry entry, std::string fingerprint) {
    entry.fingerprint = std::move(fingerprint);
    return entry;
}

TEST(HistoryRepairTest, LeavesASoundHistoryAlone) {
    const std::vector entries = {textEntry(1, "a", 2), imageEntry(2, "A.png", "png", 1)};

    const HistoryRepair repair(entries);

    EXPECT_EQ(repair.entries, entries);
    EXPECT_FALSE(repair.changed);
    EXPECT_TRUE(repair.withoutUse.empty());
}

TEST(HistoryRepairTest, RenamesTheSourcesThatEarlierVersionsWrote) {
    for (const std::string legacy : {"Clipboard Universal / origem não identificada",
                                     "Origem não identificada", "Outro dispositivo ou origem desconhecida"}) {
        ClipboardEntry entry = imageEntry(1, "A.png", "png", 1);
        entry.sourceApplication = legacy;

        const HistoryRepair repair({entry});

        EXPECT_EQ(repair.entries[0].sourceApplication, "Outro dispositivo");
        EXPECT_TRUE(repair.changed);
    }
}

TEST(HistoryRepairTest, LeavesEveryOtherSourceAlone) {
    for (const std::optional<std::string>& source :
         {std::optional<std::string>("Outro dispositivo"),
          std::optional<std::string>("origem não identificada"), std::optional<std::string>(""),
          std::optional<std::string>()}) {
        ClipboardEntry entry = textEntry(1, "a", 1);
        entry.sourceApplication = source;

        const HistoryRepair repair({entry});

        EXPECT_EQ(repair.entries[0].sourceApplication, source);
        EXPECT_FALSE(repair.changed);
    }
}

TEST(HistoryRepairTest, MakesTheFingerprintsOfTextsAnew) {
    const HistoryRepair repair({with(textEntry(1, "e\u0301\r\n", 1), "text:old")});

    EXPECT_EQ(repair.entries[0].fingerprint, textFingerprint("é"));
    EXPECT_EQ(repair.entries[0].text, "e\u0301\r\n");
    EXPECT_TRUE(repair.changed);
}

TEST(HistoryRepairTest, LeavesOtherFingerprintsAlone) {
    ClipboardEntry withoutText = with(textEntry(1, "", 3), "text:one");
    withoutText.text.reset();
    const std::vector entries = {withoutText, with(textEntry(2, " \r\n", 2), "text:two"),
                                 with(imageEntry(3, "A.png", "png", 1), "image:three")};

    const HistoryRepair repair(entries);

    EXPECT_EQ(repair.entries, entries);
    EXPECT_FALSE(repair.changed);
}

TEST(HistoryRepairTest, JudgesTextsAnew) {
    ClipboardEntry harmless = textEntry(1, "bom dia", 4);
    harmless.sensitiveKind = SensitiveContentKind::secret;
    ClipboardEntry blank = textEntry(4, " ", 1);
    blank.sensitiveKind = SensitiveContentKind::secret;

    const HistoryRepair repair(
        {harmless, textEntry(2, " 482913\n", 3), textEntry(3, "4111 1111 1111 1111", 2), blank});

    EXPECT_EQ(repair.entries[0].sensitiveKind, std::nullopt);
    EXPECT_EQ(repair.entries[1].sensitiveKind, SensitiveContentKind::secret);
    EXPECT_EQ(repair.entries[2].sensitiveKind, SensitiveContentKind::paymentCard);
    EXPECT_EQ(repair.entries[3].sensitiveKind, std::nullopt);
    EXPECT_TRUE(repair.changed);
}

TEST(HistoryRepairTest, KeepsTheKindOfWhatHasNoText) {
    ClipboardEntry image = imageEntry(1, "A.png", "png", 2);
    image.sensitiveKind = SensitiveContentKind::secret;
    image.text = "bom dia";
    ClipboardEntry text = textEntry(2, "", 1);
    text.text.reset();
    text.sensitiveKind = SensitiveContentKind::paymentCard;

    const HistoryRepair repair({image, text});

    EXPECT_EQ(repair.entries, (std::vector{image, text}));
    EXPECT_FALSE(repair.changed);
}

TEST(HistoryRepairTest, SortsNewestFirstAndKeepsTheOrderOfEqualDates) {
    const HistoryRepair repair({textEntry(1, "a", 1), textEntry(2, "b", 3), textEntry(3, "c", 1),
                                textEntry(4, "d", 3), textEntry(5, "e", 2)});

    EXPECT_EQ(ids(repair.entries), (std::vector{uuid(2), uuid(4), uuid(5), uuid(1), uuid(3)}));
    EXPECT_FALSE(repair.changed);
}

TEST(HistoryRepairTest, KeepsTheNewestOfEachFingerprint) {
    const HistoryRepair repair({textEntry(1, "a", 1), textEntry(2, "a\n", 3), textEntry(3, "b", 2)});

    EXPECT_EQ(ids(repair.entries), (std::vector{uuid(2), uuid(3)}));
    EXPECT_TRUE(repair.changed);
    EXPECT_FALSE(repair.entries[0].isFavorite);
}

TEST(HistoryRepairTest, MakesAFavoriteOfTheSurvivorOfOne) {
    const HistoryRepair repair({favorite(textEntry(1, "a", 1)), textEntry(2, "a", 3), textEntry(3, "a", 2)});

    ASSERT_EQ(repair.entries.size(), 1U);
    EXPECT_EQ(repair.entries[0].id, uuid(2));
    EXPECT_TRUE(repair.entries[0].isFavorite);
}

TEST(HistoryRepairTest, GivesUpTheFilesOfDuplicatesUnlessTheSurvivorSharesThem) {
    const HistoryRepair repair({imageEntry(1, "A.png", "png", 3), imageEntry(2, "A.png", "png", 2),
                                imageEntry(3, "B.png", "png", 1)});

    EXPECT_EQ(ids(repair.entries), std::vector{uuid(1)});
    EXPECT_EQ(ids(repair.withoutUse), std::vector{uuid(3)});
}

TEST(HistoryRepairTest, GivesUpNothingOfTextDuplicates) {
    const HistoryRepair repair({textEntry(1, "a", 2), textEntry(2, "a", 1)});

    EXPECT_TRUE(repair.withoutUse.empty());
}

TEST(HistoryRepairTest, LeavesDuplicateIdsAlone) {
    const HistoryRepair repair({textEntry(1, "a", 2), textEntry(1, "b", 1)});

    EXPECT_EQ(ids(repair.entries), (std::vector{uuid(1), uuid(1)}));
    EXPECT_FALSE(repair.changed);
}

}  // namespace
}  // namespace nettlecap
