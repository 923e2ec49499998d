#include "ui/MenuBarContentViewFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// Searching, the two sections, and what stands where nothing is listed.
class MenuBarContentViewSearchTest : public MenuBarContentViewFixture {
protected:
    void addSnippet(const std::string& title, const std::string& content) {
        history.app.store().addSnippet(title, content);
    }
    void showSnippets() {
        show();
        view->showSection(1);
    }
};

TEST_F(MenuBarContentViewSearchTest, ListsWhatContainsTheQueryInEitherCase) {
    history.add("uma reunião", 1h);
    history.add("outra coisa", 2h);
    history.add("Reunião às três", 3h);
    show();

    search("REUNIÃO");
    EXPECT_EQ(summaries(), (QStringList{"uma reunião", "Reunião às três"}));

    search("");
    EXPECT_EQ(summaries().size(), 3);
}

TEST_F(MenuBarContentViewSearchTest, ListsFoundFavouritesFirst) {
    const ClipboardEntry old = history.add("café velho", 200h);
    history.add("café novo", 1s);
    history.add("chá", 2s);
    history.app.store().toggleFavorite(old);
    show();

    search("café");

    EXPECT_EQ(summaries(), (QStringList{"café velho", "café novo"}));
}

TEST_F(MenuBarContentViewSearchTest, TakesTheQueryAsTyped) {
    history.add("um dois", 1h);
    show();

    search("dois um");
    EXPECT_TRUE(summaries().isEmpty());

    search(" dois");
    EXPECT_EQ(summaries(), (QStringList{"um dois"}));

    search("um  dois");
    EXPECT_TRUE(summaries().isEmpty());
}

TEST_F(MenuBarContentViewSearchTest, WhatIsCopiedMeanwhileIsListedIfItMatches) {
    show();
    search("café");

    history.add("chá");
    history.add("um café");

    EXPECT_EQ(summaries(), (QStringList{"um café"}));
}

TEST_F(MenuBarContentViewSearchTest, FindsAProtectedTextOnlyOnceProtectionIsOff) {
    history.addSensitive("segredo", SensitiveContentKind::secret);
    show();
    search("segredo");
    EXPECT_TRUE(summaries().isEmpty());

    history.app.updatePreferences([](AppPreferences& edited) { edited.protectSensitiveContent = false; });
    EXPECT_EQ(summaries(), (QStringList{"segredo"}));

    history.app.updatePreferences([](AppPreferences& edited) { edited.protectSensitiveContent = true; });
    EXPECT_TRUE(summaries().isEmpty());
}

TEST_F(MenuBarContentViewSearchTest, KeepsTheRowsThatAreStillListed) {
    history.add("um", 1h);
    history.add("dois", 2h);
    history.add("doze", 3h);
    show();
    const ClipboardEntryRow* last = row(2);
    const QSignalSpy resets(view->historyRows(), &RowList::modelReset);

    search("do");

    EXPECT_EQ(row(1), last);
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(MenuBarContentViewSearchTest, AQueryThatFindsTheSameChangesNothing) {
    history.add("um", 1h);
    show();
    search("u");
    const QSignalSpy changes(view.get(), &MenuBarContentView::selectedHistoryRowChanged);

    search("U");

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(MenuBarContentViewSearchTest, APreferenceThatHidesNothingChangesNothing) {
    history.add("um", 1h);
    show();
    search("u");
    const QSignalSpy changes(row(0), &ClipboardEntryRow::entryChanged);

    history.app.updatePreferences([](AppPreferences& edited) { edited.autoPaste = true; });

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(MenuBarContentViewSearchTest, TheSelectionWaitsForItsEntry) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();
    view->moveCurrentSelection(1);

    search("dois");
    EXPECT_EQ(view->selectedHistoryRow(), -1);
    EXPECT_TRUE(view->selectedHistoryEntryID());

    search("");
    EXPECT_EQ(view->selectedHistoryRow(), 0);
    EXPECT_TRUE(row(0)->isKeyboardSelected());
}

TEST_F(MenuBarContentViewSearchTest, NamesItsSectionsAndWhatTheSearchIsIn) {
    show();
    EXPECT_EQ(view->sectionTitles(), (QStringList{"Histórico", "Salvos"}));
    EXPECT_EQ(view->sectionIndex(), 0);
    EXPECT_EQ(view->searchField()->placeholder(), "Buscar no histórico");

    view->showSection(1);
    EXPECT_EQ(view->sectionIndex(), 1);
    EXPECT_EQ(view->searchField()->placeholder(), "Buscar no salvos");
}

TEST_F(MenuBarContentViewSearchTest, KnowsNoOtherSection) {
    show();

    view->showSection(2);
    EXPECT_TRUE(view->isHistory());
    view->showSection(-1);
    EXPECT_TRUE(view->isHistory());
}

TEST_F(MenuBarContentViewSearchTest, TellsOfASectionOnlyWhenItChanges) {
    show();
    const QSignalSpy changes(view.get(), &MenuBarContentView::sectionChanged);

    view->showSection(0);
    view->showSection(1);
    view->showSection(1);

    EXPECT_EQ(changes.count(), 1);
}

TEST_F(MenuBarContentViewSearchTest, ListsSavedMessagesInTheStoresOrder) {
    addSnippet("Saudação", "Bom dia");
    addSnippet("Endereço", "Rua das Flores");
    show();
    EXPECT_EQ(titles(), (QStringList{"Endereço", "Saudação"}));

    search("dia");
    EXPECT_EQ(titles(), (QStringList{"Saudação"}));
    search("ENDEREÇO");
    EXPECT_EQ(titles(), (QStringList{"Endereço"}));
}

TEST_F(MenuBarContentViewSearchTest, TheSectionsShareTheQueryAndKeepTheirSelections) {
    history.add("um café", 1h);
    addSnippet("Café", "com leite");
    addSnippet("Chá", "sem leite");
    show();
    search("café");
    view->moveCurrentSelection(1);

    view->showSection(1);
    EXPECT_EQ(titles(), (QStringList{"Café"}));
    view->moveCurrentSelection(1);
    view->showSection(0);

    EXPECT_EQ(view->searchField()->text(), "café");
    EXPECT_EQ(view->selectedHistoryRow(), 0);
    EXPECT_EQ(view->selectedSnippetRow(), 0);
}

TEST_F(MenuBarContentViewSearchTest, FollowsTheSavedMessages) {
    show();

    addSnippet("Saudação", "Bom dia");
    EXPECT_EQ(titles(), (QStringList{"Saudação"}));
    snippetRow(0)->performMenuItem(4);

    EXPECT_TRUE(titles().isEmpty());
}

TEST_F(MenuBarContentViewSearchTest, AnEmptyHistorySaysWhatItIsForEvenWithAQuery) {
    show();
    const EmptyState expected = view->emptyState();
    EXPECT_EQ(expected.symbol, "clipboard");
    EXPECT_EQ(expected.title, "Nenhuma cópia ainda");
    EXPECT_EQ(expected.text, "Textos e imagens copiados aparecerão aqui.");
    EXPECT_EQ(expected.button, "");

    search("café");
    EXPECT_EQ(view->emptyState(), expected);
}

TEST_F(MenuBarContentViewSearchTest, AHistoryWithoutMatchesSaysSo) {
    history.add("um");
    show();

    search("café");

    EXPECT_EQ(view->emptyState().symbol, "magnifyingglass");
    EXPECT_EQ(view->emptyState().title, "Nada encontrado");
    EXPECT_EQ(view->emptyState().text, "Tente buscar por outro termo.");
    EXPECT_EQ(view->emptyState().button, "");
}

TEST_F(MenuBarContentViewSearchTest, WithoutSavedMessagesItOffersToWriteOne) {
    history.add("um");
    showSnippets();

    EXPECT_EQ(view->emptyState().symbol, "text.badge.plus");
    EXPECT_EQ(view->emptyState().title, "Nenhuma mensagem salva");
    EXPECT_EQ(view->emptyState().text, "Salve respostas, assinaturas e textos usados com frequência.");
    EXPECT_EQ(view->emptyState().button, "Criar mensagem");

    addSnippet("Saudação", "Bom dia");
    EXPECT_FALSE(view->emptyState().isShown());
}

TEST_F(MenuBarContentViewSearchTest, SavedMessagesWithoutMatchesSaySoToo) {
    addSnippet("Saudação", "Bom dia");
    showSnippets();

    search("café");

    EXPECT_EQ(view->emptyState(), EmptyState::nothingFound());
}

TEST_F(MenuBarContentViewSearchTest, WhatStandsForNothingFollowsTheSection) {
    history.add("um");
    show();
    const QSignalSpy changes(view.get(), &MenuBarContentView::emptyStateChanged);

    view->showSection(1);
    EXPECT_TRUE(view->emptyState().isShown());
    view->showSection(0);
    EXPECT_FALSE(view->emptyState().isShown());

    EXPECT_EQ(changes.count(), 2);
}

}  // namespace
}  // namespace nettlecap
