#include "ui/MenuBarContentViewFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// What the search field's keys do to the lists.
class MenuBarContentViewKeysTest : public MenuBarContentViewFixture {
protected:
    void addSnippets() {
        history.app.store().addSnippet("Segunda", "dois");
        history.app.store().addSnippet("Primeira", "um");
    }
};

TEST_F(MenuBarContentViewKeysTest, ArrowsMoveTheSelectionAndTheStartOfNavigation) {
    const ClipboardEntry first = history.add("um", 1h);
    const ClipboardEntry second = history.add("dois", 2h);
    show();

    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_EQ(view->selectedHistoryEntryID(), first.id);
    EXPECT_EQ(history.app.navigationEntryID(), first.id);

    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_EQ(view->selectedHistoryEntryID(), second.id);
    EXPECT_EQ(history.app.navigationEntryID(), second.id);

    EXPECT_TRUE(press(Qt::Key_Up));
    EXPECT_EQ(view->selectedHistoryEntryID(), first.id);
}

TEST_F(MenuBarContentViewKeysTest, ARowIsSelectedAsAStepToItWould) {
    history.add("um", 1h);
    const ClipboardEntry second = history.add("dois", 2h);
    addSnippets();
    show();

    view->selectRow(1);
    EXPECT_EQ(view->selectedHistoryEntryID(), second.id);
    EXPECT_EQ(history.app.navigationEntryID(), second.id);
    EXPECT_EQ(pasteboard(), std::nullopt);

    view->selectRow(2);
    view->selectRow(-1);
    EXPECT_EQ(view->selectedHistoryEntryID(), second.id);

    view->showSection(1);
    view->selectRow(0);
    EXPECT_EQ(view->selectedSnippetRow(), 0);
    EXPECT_EQ(history.app.navigationEntryID(), second.id);
}

TEST_F(MenuBarContentViewKeysTest, AClickMovesTheStartOfNavigationEvenWhereItCannotCopy) {
    const ClipboardEntry picture = history.addImage("sumiu.png");
    show();

    row(0)->handleRowClick(1);

    EXPECT_EQ(view->selectedHistoryEntryID(), picture.id);
    EXPECT_EQ(history.app.navigationEntryID(), picture.id);
}

TEST_F(MenuBarContentViewKeysTest, TellsOfAnotherSelectedEntryForTheListToScroll) {
    history.add("um", 1h);
    show();
    const QSignalSpy scrolls(view.get(), &MenuBarContentView::selectedHistoryEntryChanged);

    press(Qt::Key_Down);
    press(Qt::Key_Down);  // it is the last one already
    history.add("dois");  // its row moves, and it stays selected

    EXPECT_EQ(scrolls.count(), 1);
}

TEST_F(MenuBarContentViewKeysTest, ArrowsMoveAmongWhatIsFound) {
    history.add("um", 1h);
    history.add("dois", 2h);
    const ClipboardEntry third = history.add("doze", 3h);
    show();
    search("do");

    press(Qt::Key_Up);

    EXPECT_EQ(view->selectedHistoryEntryID(), third.id);
}

TEST_F(MenuBarContentViewKeysTest, ArrowsMoveAmongSavedMessagesAndNavigationStays) {
    addSnippets();
    show();
    view->showSection(1);

    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_EQ(view->selectedSnippetID(), history.app.store().snippets()->front().id);
    EXPECT_TRUE(snippetRow(0)->isKeyboardSelected());

    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_EQ(view->selectedSnippetRow(), 1);
    EXPECT_FALSE(snippetRow(0)->isKeyboardSelected());
    EXPECT_EQ(history.app.navigationEntryID(), std::nullopt);
    EXPECT_EQ(view->selectedHistoryEntryID(), std::nullopt);
}

TEST_F(MenuBarContentViewKeysTest, LeftAndRightSwitchSectionsWithinAQueryToo) {
    show();
    search("café");

    EXPECT_TRUE(press(Qt::Key_Right));
    EXPECT_FALSE(view->isHistory());
    EXPECT_TRUE(press(Qt::Key_Right));
    EXPECT_FALSE(view->isHistory());
    EXPECT_TRUE(press(Qt::Key_Left));
    EXPECT_TRUE(view->isHistory());
    EXPECT_EQ(view->searchField()->text(), "café");
}

TEST_F(MenuBarContentViewKeysTest, ReturnPastesTheTopEntryWhenNoneIsSelected) {
    const ClipboardEntry top = history.add("um", 1h);
    history.add("dois", 2h);
    show();

    EXPECT_TRUE(press(Qt::Key_Return));

    EXPECT_EQ(pasteboard(), "um");
    EXPECT_EQ(view->selectedHistoryEntryID(), top.id);
    EXPECT_TRUE(pasted());
}

TEST_F(MenuBarContentViewKeysTest, ReturnPastesTheTopEntryWhenTheSelectedOneIsNotListed) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();
    press(Qt::Key_Down);
    search("dois");

    EXPECT_TRUE(press(Qt::Key_Return));

    EXPECT_EQ(pasteboard(), "dois");
    EXPECT_EQ(view->selectedHistoryRow(), 0);
}

TEST_F(MenuBarContentViewKeysTest, ReturnPastesTheSelectedSavedMessage) {
    addSnippets();
    show();
    view->showSection(1);
    press(Qt::Key_Up);

    EXPECT_TRUE(press(Qt::Key_Return));

    EXPECT_EQ(pasteboard(), "dois");
    EXPECT_TRUE(pasted());
}

TEST_F(MenuBarContentViewKeysTest, ReturnPastesTheTopSavedMessageWhenNoneIsSelected) {
    addSnippets();
    history.add("do histórico");
    show();
    view->showSection(1);

    EXPECT_TRUE(press(Qt::Key_Return));

    EXPECT_EQ(pasteboard(), "um");
    EXPECT_EQ(view->selectedSnippetRow(), 0);
}

TEST_F(MenuBarContentViewKeysTest, AnEntryThatCannotBePastedLeavesNavigationWhereItIs) {
    const ClipboardEntry other = history.add("um", 2h);
    history.addImage("sumiu.png", 1h);
    show();
    history.app.setNavigationEntryID(other.id);

    EXPECT_TRUE(press(Qt::Key_Return));

    EXPECT_EQ(history.app.navigationEntryID(), other.id);
    EXPECT_EQ(view->statusMessage(), "Não foi possível recuperar este item");
}

TEST_F(MenuBarContentViewKeysTest, AnEmptyListHandlesNoKeyThatNeedsARow) {
    history.add("um");
    show();
    search("café");
    for (const int section : {0, 1}) {
        view->showSection(section);
        for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Delete})
            EXPECT_FALSE(press(key)) << section << " " << key;
    }

    EXPECT_EQ(history.fake.pasteboard.changeCount(), 0);
    EXPECT_EQ(view->statusMessage(), "");
}

TEST_F(MenuBarContentViewKeysTest, BackspaceWithASelectedEntryAsksAndKeepsTheQuery) {
    history.add("um", 1h);
    show();
    search("u");
    press(Qt::Key_Down);

    EXPECT_TRUE(press(Qt::Key_Backspace));

    EXPECT_TRUE(view->historyDeletion().isShown);
    EXPECT_EQ(view->searchField()->text(), "u");
}

TEST_F(MenuBarContentViewKeysTest, BackspaceEditsTheQueryWhenNothingListedIsSelected) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();
    EXPECT_FALSE(press(Qt::Key_Backspace));

    press(Qt::Key_Down);
    search("dois");
    EXPECT_FALSE(press(Qt::Key_Backspace));
    EXPECT_FALSE(view->historyDeletion().isShown);
}

TEST_F(MenuBarContentViewKeysTest, BackspaceEditsTheQueryAmongSavedMessages) {
    history.add("um");
    addSnippets();
    show();
    press(Qt::Key_Down);
    view->showSection(1);
    press(Qt::Key_Down);

    EXPECT_FALSE(press(Qt::Key_Delete));

    EXPECT_FALSE(view->historyDeletion().isShown);
}

}  // namespace
}  // namespace nettlecap
