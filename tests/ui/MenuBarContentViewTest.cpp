#include "ui/MenuBarContentViewFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

using MenuBarContentViewTest = MenuBarContentViewFixture;

TEST_F(MenuBarContentViewTest, ListsTheNewestFirst) {
    history.add("velho", 2h);
    history.add("novo", 1min);
    show();

    EXPECT_EQ(summaries(), (QStringList{"novo", "velho"}));
}

TEST_F(MenuBarContentViewTest, ListsFavouritesBeforeEverythingElse) {
    const ClipboardEntry old = history.add("velho favorito", 200h);
    history.add("recente", 1s);
    show();

    history.app.store().toggleFavorite(old);

    EXPECT_EQ(summaries(), (QStringList{"velho favorito", "recente"}));
    EXPECT_TRUE(row(0)->isFavorite());
}

TEST_F(MenuBarContentViewTest, FollowsTheHistory) {
    show();
    EXPECT_TRUE(view->emptyState().isShown());

    const ClipboardEntry entry = history.add("um");
    EXPECT_FALSE(view->emptyState().isShown());
    EXPECT_EQ(summaries(), (QStringList{"um"}));

    history.app.store().remove(entry);
    EXPECT_TRUE(view->emptyState().isShown());
}

TEST_F(MenuBarContentViewTest, TellsOfEmptinessOnlyWhenItChanges) {
    show();
    const QSignalSpy changes(view.get(), &MenuBarContentView::emptyStateChanged);

    history.add("um");
    history.add("dois");

    EXPECT_EQ(changes.count(), 1);
}

TEST_F(MenuBarContentViewTest, KeepsARowsObjectThroughAPromotion) {
    history.add("um", 2h);
    history.add("dois", 1h);
    show();
    const ClipboardEntryRow* last = row(1);

    history.app.store().promoteExistingEntry({.fingerprint = "text:um",
                                              .sourceApplication = "Terminal",
                                              .at = history.ago(0s),
                                              .replacementText = "um!",
                                              .sensitiveKind = std::nullopt});

    EXPECT_EQ(row(0), last);
    EXPECT_EQ(row(0)->summary(), "um!");
    EXPECT_EQ(row(0)->sourceApplication(), "Terminal");
    EXPECT_EQ(row(0)->age(), "agora");
}

TEST_F(MenuBarContentViewTest, RowsTellTheirAgeOnceAMinute) {
    history.add("um", 5min);
    show();
    const QSignalSpy ages(row(0), &ClipboardEntryRow::ageChanged);

    history.fake.time.advance(59.999s);
    EXPECT_EQ(ages.count(), 0);

    history.fake.time.advance(0.001s);
    EXPECT_EQ(ages.count(), 1);
    EXPECT_EQ(row(0)->age(), "há 6 minutos");
}

TEST_F(MenuBarContentViewTest, RowsTellTheirAgeBesideANewOne) {
    history.add("um");
    show();
    const QSignalSpy ages(row(0), &ClipboardEntryRow::ageChanged);
    history.fake.time.advance(10s);

    history.add("dois");

    EXPECT_EQ(ages.count(), 1);
    EXPECT_EQ(row(0)->age(), "agora");
    EXPECT_EQ(row(1)->age(), "há 10 segundos");
}

TEST_F(MenuBarContentViewTest, NothingTicksOnceItIsGone) {
    const std::size_t before = history.fake.time.waitingTasks();
    show();
    EXPECT_EQ(history.fake.time.waitingTasks(), before + 1);

    view.reset();
    history.fake.time.advance(60s);

    EXPECT_EQ(history.fake.time.waitingTasks(), before);
}

TEST_F(MenuBarContentViewTest, ArrowsMoveOneSelection) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();
    EXPECT_EQ(view->selectedHistoryRow(), -1);

    EXPECT_TRUE(view->moveCurrentSelection(1));
    EXPECT_TRUE(row(0)->isKeyboardSelected());

    EXPECT_TRUE(view->moveCurrentSelection(1));
    EXPECT_EQ(view->selectedHistoryRow(), 1);
    EXPECT_FALSE(row(0)->isKeyboardSelected());
    EXPECT_TRUE(row(1)->isKeyboardSelected());
}

TEST_F(MenuBarContentViewTest, TheFirstStepUpGoesToTheLastRow) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();

    view->moveCurrentSelection(-1);

    EXPECT_EQ(view->selectedHistoryRow(), 1);
}

TEST_F(MenuBarContentViewTest, TheSelectionStaysWithItsEntry) {
    history.add("um", 1h);
    show();
    view->moveCurrentSelection(1);

    history.add("dois");

    EXPECT_EQ(view->selectedHistoryRow(), 1);
    EXPECT_TRUE(row(1)->isKeyboardSelected());
}

TEST_F(MenuBarContentViewTest, ASelectionWhoseEntryIsGoneCountsAsNone) {
    history.add("um", 1h);
    const ClipboardEntry second = history.add("dois", 2h);
    show();
    view->moveCurrentSelection(-1);

    history.app.store().remove(second);

    EXPECT_EQ(view->selectedHistoryRow(), -1);
    EXPECT_TRUE(view->pasteSelectedItem());
    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "um");
}

TEST_F(MenuBarContentViewTest, ReturnPastesTheSelectedRow) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();
    view->moveCurrentSelection(-1);

    EXPECT_TRUE(view->pasteSelectedItem());

    EXPECT_EQ(pasteboard(), "dois");
    EXPECT_TRUE(pasted());
}

TEST_F(MenuBarContentViewTest, ReturnTakesTheTopRowWhenNoneIsSelected) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();

    EXPECT_TRUE(view->pasteSelectedItem());

    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "um");
    EXPECT_EQ(view->selectedHistoryRow(), 0);
}

TEST_F(MenuBarContentViewTest, AnEmptyListHandlesNoKey) {
    show();

    EXPECT_FALSE(view->moveCurrentSelection(1));
    EXPECT_FALSE(view->pasteSelectedItem());
    EXPECT_EQ(history.fake.pasteboard.changeCount(), 0);
}

TEST_F(MenuBarContentViewTest, AClickSelectsItsRow) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();

    row(1)->handleRowClick(1);

    EXPECT_EQ(view->selectedHistoryRow(), 1);
    EXPECT_TRUE(row(1)->isKeyboardSelected());
}

TEST_F(MenuBarContentViewTest, SaysWhenAnItemCannotBeCopied) {
    history.addImage("sumiu.png");
    show();
    const QSignalSpy changes(view.get(), &MenuBarContentView::statusMessageChanged);

    row(0)->handleRowClick(1);

    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(view->statusMessage(), "Não foi possível recuperar este item");
}

TEST_F(MenuBarContentViewTest, ShowsAStorageErrorUntilItIsCured) {
    show();
    EXPECT_EQ(view->persistenceError(), "");

    history.fake.files.fail(FileOperation::write, "No space left on device");
    history.app.store().persist();
    EXPECT_EQ(view->persistenceError(), "Não foi possível salvar o histórico: No space left on device");

    history.fake.files.stopFailing(FileOperation::write);
    history.app.store().persist();
    EXPECT_EQ(view->persistenceError(), "");
}

TEST_F(MenuBarContentViewTest, ShowsBothOfTwoEntriesWithOneIdentity) {
    const ClipboardEntry first = history.add("um", 1h);
    ClipboardEntry second = first;
    second.text = "dois";
    second.createdAt = history.ago(2h);
    history.add(second);
    show();

    view->moveCurrentSelection(-1);

    EXPECT_EQ(summaries(), (QStringList{"um", "dois"}));
    EXPECT_FALSE(row(0)->isKeyboardSelected());
    EXPECT_TRUE(row(1)->isKeyboardSelected());
}

TEST_F(MenuBarContentViewTest, TellsWhatTheModelSays) {
    history.add("um");
    show();
    EXPECT_EQ(view->statusMessage(), "");

    row(0)->handleRowClick(1);

    EXPECT_EQ(view->statusMessage(), "Copiado — use ⌘V para colar");
}

TEST_F(MenuBarContentViewTest, MasksSensitiveRowsAsSoonAsProtectionIsOn) {
    history.app.updatePreferences([](AppPreferences& edited) { edited.protectSensitiveContent = false; });
    history.addSensitive("segredo", SensitiveContentKind::secret);
    show();
    EXPECT_EQ(summaries(), (QStringList{"segredo"}));
    const QSignalSpy changes(row(0), &ClipboardEntryRow::entryChanged);

    history.app.updatePreferences([](AppPreferences& edited) { edited.protectSensitiveContent = true; });

    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(summaries(), (QStringList{"se••••••"}));
}

TEST_F(MenuBarContentViewTest, APreviewGoesWithTheRowThatIsDeleted) {
    const ClipboardEntry entry = history.add("um");
    show();
    const ClipboardEntryRow* leaving = row(0);
    view->moveCurrentSelection(1);
    history.fake.time.advance(0.15s);
    EXPECT_TRUE(leaving->isShowingPreview());

    history.app.store().remove(entry);

    EXPECT_FALSE(leaving->isShowingPreview());
}

TEST_F(MenuBarContentViewTest, ThePreviewOfARowThatNobodyHasLookedAtOpensToo) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();

    view->moveCurrentSelection(-1);
    history.fake.time.advance(0.15s);

    EXPECT_TRUE(row(1)->isShowingPreview());
}

TEST_F(MenuBarContentViewTest, WhereThePointerRestsWhenItAppearsNoHoverStarts) {
    history.add("um");
    show();
    view->pointerRestsAt({10, 70});

    row(0)->pointerAt({10, 70});
    history.fake.time.advance(1s);

    EXPECT_FALSE(row(0)->isShowingPreview());
}

TEST_F(MenuBarContentViewTest, APointerThatLeftThePanelComesBackToTheSamePlace) {
    history.add("um");
    show();
    row(0)->pointerAt({10, 70});
    row(0)->pointerLeft();
    history.fake.time.advance(1s);

    view->pointerLeft();
    row(0)->pointerAt({10, 70});
    history.fake.time.advance(0.3s);

    EXPECT_TRUE(row(0)->isShowingPreview());
}

}  // namespace
}  // namespace nettlecap
