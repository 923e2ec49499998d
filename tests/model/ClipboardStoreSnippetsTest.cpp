#include "model/StoreFixture.h"

namespace nettlecap {
namespace {

class ClipboardStoreSnippetsTest : public StoreFixture {};

TEST_F(ClipboardStoreSnippetsTest, AddsASnippetAtTheFront) {
    open();
    time.setNow({100});
    store->addSnippet("Primeiro", "um");
    time.setNow({50});

    store->addSnippet(" Segundo\n", "\t dois\nlinhas ");

    ASSERT_EQ(store->snippets()->size(), 2U);
    EXPECT_EQ(store->snippets()->front(), (SavedSnippet{.id = FakeIdentifiers::nth(2),
                                                        .title = "Segundo",
                                                        .content = "dois\nlinhas",
                                                        .createdAt = {50},
                                                        .updatedAt = {50}}));
    EXPECT_EQ(saved().snippets, *store->snippets());
    EXPECT_EQ(saves(), 2);
}

TEST_F(ClipboardStoreSnippetsTest, NamesASnippetWithoutATitle) {
    open();

    store->addSnippet(" \n", "um");

    EXPECT_EQ(store->snippets()->front().title, "Sem título");
}

TEST_F(ClipboardStoreSnippetsTest, AddsNothingBlank) {
    open();

    store->addSnippet("Título", " \u200B\n");

    EXPECT_TRUE(store->snippets()->empty());
    EXPECT_EQ(saves(), 0);
}

TEST_F(ClipboardStoreSnippetsTest, UpdatesASnippetInItsPlace) {
    open({.entries = {}, .snippets = {snippetRecord(1, "a", "um", 3), snippetRecord(2, "b", "dois", 2)}});
    time.setNow({100});

    store->updateSnippet(store->snippets()->back(), " novo ", " texto\n");

    EXPECT_EQ(store->snippets()->back(),
              (SavedSnippet{
                  .id = uuid(2), .title = "novo", .content = "texto", .createdAt = {2}, .updatedAt = {100}}));
    EXPECT_EQ(store->snippets()->front().id, uuid(1));
    EXPECT_EQ(saved().snippets, *store->snippets());
}

TEST_F(ClipboardStoreSnippetsTest, SortsByTheLastChangeAtTheNextStart) {
    open({.entries = {}, .snippets = {snippetRecord(1, "a", "um", 3), snippetRecord(2, "b", "dois", 2)}});
    store->updateSnippet(store->snippets()->back(), "b", "dois");

    open();

    EXPECT_EQ(store->snippets()->front().id, uuid(2));
    EXPECT_EQ(saves(), 1);
}

TEST_F(ClipboardStoreSnippetsTest, KeepsTheOrderOfSnippetsChangedAtOnce) {
    open({.entries = {},
          .snippets = {snippetRecord(1, "a", "x", 1), snippetRecord(2, "b", "x", 2),
                       snippetRecord(3, "c", "x", 1), snippetRecord(4, "d", "x", 2)}});

    std::string titles;
    for (const auto& snippet : *store->snippets()) titles += snippet.title;
    EXPECT_EQ(titles, "bdac");
    EXPECT_EQ(saves(), 0);
}

TEST_F(ClipboardStoreSnippetsTest, ChangesNothingToABlankContent) {
    open({.entries = {}, .snippets = {snippetRecord(1, "a", "um", 3)}});

    store->updateSnippet(store->snippets()->front(), "novo", " \n");

    EXPECT_EQ(store->snippets()->front(), snippetRecord(1, "a", "um", 3));
    EXPECT_EQ(saves(), 0);
}

TEST_F(ClipboardStoreSnippetsTest, NamesAnUpdatedSnippetWithoutATitle) {
    open({.entries = {}, .snippets = {snippetRecord(1, "a", "um", 3)}});

    store->updateSnippet(store->snippets()->front(), "", "dois");

    EXPECT_EQ(store->snippets()->front().title, "Sem título");
}

TEST_F(ClipboardStoreSnippetsTest, TakesTitleAndContentFromTheSnippetItself) {
    open({.entries = {},
          .snippets = {snippetRecord(1, "um título longo o bastante", "um texto longo também", 3)}});
    const SavedSnippet& own = store->snippets()->front();

    store->updateSnippet(own, own.title, own.content);
    store->addSnippet(store->snippets()->front().title, store->snippets()->front().content);

    EXPECT_EQ(store->snippets()->front().content, "um texto longo também");
    EXPECT_EQ(store->snippets()->back().title, "um título longo o bastante");
}

TEST_F(ClipboardStoreSnippetsTest, RemovesASnippetById) {
    open({.entries = {}, .snippets = {snippetRecord(1, "a", "um", 3), snippetRecord(2, "b", "dois", 2)}});

    store->removeSnippet(snippetRecord(1, "outro", "texto", 9));

    ASSERT_EQ(store->snippets()->size(), 1U);
    EXPECT_EQ(store->snippets()->front().id, uuid(2));
    EXPECT_EQ(saved().snippets, *store->snippets());
}

TEST_F(ClipboardStoreSnippetsTest, DoesNothingToSnippetsItDoesNotHave) {
    open({.entries = {}, .snippets = {snippetRecord(1, "a", "um", 3)}});

    store->updateSnippet(snippetRecord(7, "a", "um", 3), "b", "dois");
    store->removeSnippet(snippetRecord(7, "a", "um", 3));

    EXPECT_EQ(*store->snippets(), std::vector{snippetRecord(1, "a", "um", 3)});
    EXPECT_EQ(saves(), 0);
}

}  // namespace
}  // namespace nettlecap
