#include "ui/HistoryFilter.h"

#include "model/Text.h"

#include <gtest/gtest.h>

#include <random>

namespace nettlecap {
namespace {

class HistoryFilterTest : public testing::Test {
protected:
    /// Newest first, as the store has them.
    void hold(const std::vector<ClipboardEntry>& entries) {
        filter.setEntries(StoredEntries(entries.begin(), entries.end()));
    }
    std::vector<std::string> matching(std::string_view query, bool protecting = true) {
        std::vector<std::string> texts;
        for (const StoredEntry& entry : filter.matching(FoldedQuery(query), protecting))
            texts.push_back(entry->text.value_or("-"));
        return texts;
    }

    HistoryFilter filter;
};

using Texts = std::vector<std::string>;

TEST_F(HistoryFilterTest, WithoutAQueryEverythingMatches) {
    hold({{.text = "um"}, {.text = "dois"}});

    EXPECT_EQ(matching(""), (Texts{"um", "dois"}));
}

TEST_F(HistoryFilterTest, FavouritesComeFirstAndNeitherPartLosesItsOrder) {
    hold({{.text = "a1"},
          {.text = "f1", .isFavorite = true},
          {.text = "a2"},
          {.text = "f2", .isFavorite = true},
          {.text = "a3"}});

    EXPECT_EQ(matching(""), (Texts{"f1", "f2", "a1", "a2", "a3"}));
    EXPECT_EQ(matching("2"), (Texts{"f2", "a2"}));
}

TEST_F(HistoryFilterTest, LooksInTheTextAndInTheSource) {
    hold({{.text = "um café", .sourceApplication = "Notas"},
          {.text = "dois", .sourceApplication = "Café com Texto"},
          {.text = "três", .sourceApplication = std::nullopt}});

    EXPECT_EQ(matching("CAFÉ"), (Texts{"um café", "dois"}));
}

TEST_F(HistoryFilterTest, FindsAPictureByItsSource) {
    hold({{.kind = ClipboardContentKind::image, .sourceApplication = "Fotos"}, {.text = "um"}});

    EXPECT_EQ(matching("fotos"), (Texts{"-"}));
}

TEST_F(HistoryFilterTest, DoesNotFindASensitiveTextWhileItIsProtected) {
    hold({{.text = "segredo", .sourceApplication = "Cofre", .sensitiveKind = SensitiveContentKind::secret}});

    EXPECT_EQ(matching("segredo", true), Texts());
    EXPECT_EQ(matching("segredo", false), (Texts{"segredo"}));
    EXPECT_EQ(matching("cofre", true), (Texts{"segredo"}));
}

TEST_F(HistoryFilterTest, FindsWhatIsListedNowWhateverWasListedBefore) {
    std::mt19937 random(7);
    StoredEntries entries;
    for (std::uint64_t number = 1; number < 1500; ++number) {
        const std::size_t place = random() % (entries.size() + 1);
        const bool isSensitive = random() % 4 == 0;
        if (entries.size() > 40) entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(random() % 40));
        const ClipboardEntry entry{.id = {.high = 1, .low = number},
                                   .text = "Texto " + std::to_string(random() % 30),
                                   .sourceApplication = "Notas",
                                   .isFavorite = random() % 5 == 0,
                                   .sensitiveKind = isSensitive ? std::optional(SensitiveContentKind::secret)
                                                                : std::nullopt};
        entries.emplace(entries.begin() + static_cast<std::ptrdiff_t>(std::min(place, entries.size())),
                        entry);
        if (random() % 3 == 0) filter.fold(entries[random() % entries.size()], random() % 2 == 0);
        filter.setEntries(entries);
        const bool protects = random() % 8 != 0;
        const FoldedQuery query("TEXTO " + std::to_string(random() % 30));

        std::vector<std::uint64_t> expected;
        for (const bool favorites : {true, false})
            for (const StoredEntry& candidate : entries)
                if (candidate->isFavorite == favorites &&
                    query.isIn(text::folded(candidate->searchableText(protects))))
                    expected.push_back(candidate->id.low);
        std::vector<std::uint64_t> found;
        for (const StoredEntry& match : filter.matching(query, protects)) found.push_back(match->id.low);
        ASSERT_EQ(found, expected) << number;
    }
}

TEST_F(HistoryFilterTest, WhatWasFoldedAheadIsFoundAsAnythingElse) {
    const StoredEntry entry({.text = "Olá", .sourceApplication = "Notas"});
    filter.setEntries({entry});
    filter.fold(entry, true);
    filter.fold(StoredEntry({.text = "Olá de ninguém"}), true);

    EXPECT_EQ(matching("OLÁ"), (Texts{"Olá"}));
}

}  // namespace
}  // namespace nettlecap
