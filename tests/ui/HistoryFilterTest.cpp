#include "ui/HistoryFilter.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace nettlecap
