#include "ui/SnippetFilter.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using Titles = std::vector<std::string>;

class SnippetFilterTest : public testing::Test {
protected:
    SnippetFilterTest() {
        filter.setSnippets({{.title = "Saudação", .content = "Bom dia"},
                            {.title = "Endereço", .content = "Rua das Flores"},
                            {.title = "Dia útil", .content = "Segunda"}});
    }
    Titles matching(std::string_view query) {
        Titles titles;
        for (const SavedSnippet& snippet : filter.matching(FoldedQuery(query)))
            titles.push_back(snippet.title);
        return titles;
    }

    SnippetFilter filter;
};

TEST_F(SnippetFilterTest, WithoutAQueryEverythingMatchesInTheStoresOrder) {
    EXPECT_EQ(matching(""), (Titles{"Saudação", "Endereço", "Dia útil"}));
}

TEST_F(SnippetFilterTest, LooksInTitlesAndContents) {
    EXPECT_EQ(matching("DIA"), (Titles{"Saudação", "Dia útil"}));
    EXPECT_EQ(matching("flores"), (Titles{"Endereço"}));
}

TEST_F(SnippetFilterTest, LooksInEachForItself) {
    EXPECT_EQ(matching("Saudação Bom"), Titles());
    EXPECT_EQ(matching("çãobom"), Titles());
}

TEST_F(SnippetFilterTest, LooksInWhatIsThereNow) {
    EXPECT_EQ(matching("flores"), (Titles{"Endereço"}));

    filter.setSnippets({{.title = "Outra", .content = "com flores"}});

    EXPECT_EQ(matching("flores"), (Titles{"Outra"}));
    EXPECT_EQ(matching("dia"), Titles());
}

}  // namespace
}  // namespace nettlecap
