#include "ui/MenuBarContentViewFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// What is destroyed only after a question.
class MenuBarContentViewDeletionTest : public MenuBarContentViewFixture {
protected:
    /// Asks about the only entry.
    QString question() {
        show();
        view->moveCurrentSelection(1);
        EXPECT_TRUE(view->requestSelectedHistoryDeletion());
        return view->historyDeletion().message;
    }
    static QString about(const QString& description) {
        return "Tem certeza de que deseja excluir permanentemente “" + description + "” do histórico?";
    }
    void addThree() {
        history.add("um", 1h);
        history.add("dois", 2h);
        history.add("três", 3h);
        show();
    }
    void deleteSelected() {
        ASSERT_TRUE(view->requestSelectedHistoryDeletion());
        view->confirmPendingHistoryDeletion();
    }
};

TEST_F(MenuBarContentViewDeletionTest, AsksBeforeItDeletes) {
    history.add("um\ndois");
    EXPECT_EQ(question(), about("um dois"));

    const Confirmation confirmation = view->historyDeletion();
    EXPECT_TRUE(confirmation.isShown);
    EXPECT_EQ(confirmation.title, "Excluir item do histórico?");
    EXPECT_EQ(confirmation.destructiveLabel, "Excluir");
    EXPECT_EQ(confirmation.cancelLabel, "Cancelar");
    EXPECT_EQ(history.app.store().entries()->size(), 1U);
}

TEST_F(MenuBarContentViewDeletionTest, NamesNinetyCharactersAsTheyAre) {
    history.add(std::string(90, 'a'));

    EXPECT_EQ(question(), about(QString(90, 'a')));
}

TEST_F(MenuBarContentViewDeletionTest, CutsALongerTextAtNinetyCharacters) {
    history.add(std::string(200, 'a'));

    EXPECT_EQ(question(), about(QString(90, 'a') + "..."));
}

TEST_F(MenuBarContentViewDeletionTest, TrimsWhatItCuts) {
    history.add(std::string(88, 'a') + "  bbb");

    EXPECT_EQ(question(), about(QString(88, 'a') + "..."));
}

TEST_F(MenuBarContentViewDeletionTest, NamesAnEmptyText) {
    history.add(" \n ");

    EXPECT_EQ(question(), about("Texto vazio"));
}

TEST_F(MenuBarContentViewDeletionTest, NamesAPicture) {
    history.addImage("gato.png");

    EXPECT_EQ(question(), about("Imagem copiada"));
}

TEST_F(MenuBarContentViewDeletionTest, MasksASensitiveTextWhileItIsProtected) {
    history.addSensitive("segredo", SensitiveContentKind::secret);
    EXPECT_EQ(question(), about("se••••••"));
    const QSignalSpy changes(view.get(), &MenuBarContentView::historyDeletionChanged);

    history.app.updatePreferences([](AppPreferences& edited) { edited.protectSensitiveContent = false; });

    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(view->historyDeletion().message, about("segredo"));
}

TEST_F(MenuBarContentViewDeletionTest, CancellingDeletesNothing) {
    history.add("um");
    question();

    view->cancelPendingHistoryDeletion();
    EXPECT_FALSE(view->historyDeletion().isShown);
    EXPECT_EQ(view->historyDeletion().message, "");

    view->confirmPendingHistoryDeletion();
    EXPECT_EQ(history.app.store().entries()->size(), 1U);
}

TEST_F(MenuBarContentViewDeletionTest, TheNextEntryMovesUpIntoTheSelection) {
    addThree();
    view->moveCurrentSelection(1);

    deleteSelected();
    EXPECT_EQ(summaries(), (QStringList{"dois", "três"}));
    EXPECT_EQ(view->selectedHistoryRow(), 0);
    EXPECT_TRUE(row(0)->isKeyboardSelected());
    EXPECT_FALSE(view->historyDeletion().isShown);

    deleteSelected();
    EXPECT_EQ(summaries(), (QStringList{"três"}));
    EXPECT_EQ(view->selectedHistoryRow(), 0);
}

TEST_F(MenuBarContentViewDeletionTest, AfterTheLastEntryTheNewLastOneIsSelected) {
    addThree();
    view->moveCurrentSelection(-1);

    deleteSelected();

    EXPECT_EQ(summaries(), (QStringList{"um", "dois"}));
    EXPECT_EQ(view->selectedHistoryRow(), 1);
}

TEST_F(MenuBarContentViewDeletionTest, AfterTheOnlyEntryNothingIsSelected) {
    history.add("um");
    question();

    view->confirmPendingHistoryDeletion();

    EXPECT_EQ(view->selectedHistoryEntryID(), std::nullopt);
    EXPECT_EQ(view->selectedHistoryRow(), -1);
}

TEST_F(MenuBarContentViewDeletionTest, TheNeighbourIsTheOneAmongWhatIsFound) {
    addThree();
    history.add("doze", 4h);
    search("do");
    view->moveCurrentSelection(-1);

    deleteSelected();

    EXPECT_EQ(summaries(), (QStringList{"dois"}));
    EXPECT_EQ(view->selectedHistoryRow(), 0);
}

TEST_F(MenuBarContentViewDeletionTest, ARowsMenuAsksForItsOwnEntry) {
    addThree();
    view->moveCurrentSelection(1);

    row(1)->performMenuItem(4);
    EXPECT_EQ(view->historyDeletion().message, about("dois"));
    view->confirmPendingHistoryDeletion();

    EXPECT_EQ(summaries(), (QStringList{"um", "três"}));
    EXPECT_EQ(view->selectedHistoryRow(), 1);
}

TEST_F(MenuBarContentViewDeletionTest, DeletingLeavesTheStartOfNavigation) {
    addThree();
    view->moveCurrentSelection(1);
    const auto before = history.app.navigationEntryID();

    deleteSelected();

    EXPECT_EQ(history.app.navigationEntryID(), before);
}

TEST_F(MenuBarContentViewDeletionTest, AnEntryThatIsGoneMeanwhileTakesNothingWithIt) {
    addThree();
    view->moveCurrentSelection(1);
    ASSERT_TRUE(view->requestSelectedHistoryDeletion());
    history.app.store().remove(*(*history.app.store().entries())[0]);

    view->confirmPendingHistoryDeletion();

    EXPECT_EQ(summaries(), (QStringList{"dois", "três"}));
    EXPECT_FALSE(view->historyDeletion().isShown);
}

TEST_F(MenuBarContentViewDeletionTest, AsksBeforeItClears) {
    addThree();
    view->performFooterAction();

    const Confirmation confirmation = view->historyClearing();
    EXPECT_TRUE(confirmation.isShown);
    EXPECT_EQ(confirmation.title, "Limpar os itens não favoritados?");
    EXPECT_EQ(confirmation.destructiveLabel, "Limpar histórico");
    EXPECT_EQ(confirmation.cancelLabel, "Cancelar");
    EXPECT_EQ(summaries().size(), 3);
}

TEST_F(MenuBarContentViewDeletionTest, ClearingKeepsFavouritesAndSaysNothing) {
    addThree();
    row(1)->toggleFavorite();
    view->moveCurrentSelection(1);
    const auto position = history.app.navigationEntryID();
    const QString status = view->statusMessage();
    view->performFooterAction();

    view->confirmHistoryClearing();

    EXPECT_EQ(summaries(), (QStringList{"dois"}));
    EXPECT_FALSE(view->historyClearing().isShown);
    EXPECT_EQ(view->statusMessage(), status);
    EXPECT_EQ(history.app.navigationEntryID(), position);
}

TEST_F(MenuBarContentViewDeletionTest, CancellingClearsNothing) {
    addThree();
    view->performFooterAction();

    view->cancelHistoryClearing();
    EXPECT_FALSE(view->historyClearing().isShown);

    view->confirmHistoryClearing();
    EXPECT_EQ(summaries().size(), 3);
}

}  // namespace
}  // namespace nettlecap
