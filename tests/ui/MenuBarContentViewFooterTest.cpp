#include "ui/MenuBarContentViewFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// Footer, header, the editor of saved messages, and the time while the view is not shown.
using MenuBarContentViewFooterTest = MenuBarContentViewFixture;

TEST_F(MenuBarContentViewFooterTest, SaysWhetherTheClipboardIsWatched) {
    show();
    EXPECT_EQ(view->monitoringLabel(), "Monitorando");
    EXPECT_EQ(view->monitoringSymbol(), "record.circle");

    view->toggleMonitoring();
    EXPECT_EQ(view->monitoringLabel(), "Pausado");
    EXPECT_EQ(view->monitoringSymbol(), "pause.circle");
}

TEST_F(MenuBarContentViewFooterTest, PausesAndResumesTheMonitor) {
    history.app.start();
    show();
    const QSignalSpy changes(view.get(), &MenuBarContentView::isMonitoringChanged);

    view->toggleMonitoring();
    EXPECT_EQ(view->statusMessage(), "Monitoramento pausado");
    history.fake.pasteboard.copyFromOutside("em pausa");
    history.fake.time.advance(1s);
    EXPECT_TRUE(summaries().isEmpty());

    view->toggleMonitoring();
    EXPECT_EQ(view->statusMessage(), "Monitoramento ativado");
    history.fake.pasteboard.copyFromOutside("de novo");
    history.fake.time.advance(1s);
    EXPECT_EQ(summaries(), (QStringList{"de novo"}));
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(MenuBarContentViewFooterTest, ItsActionBelongsToTheSection) {
    show();
    EXPECT_EQ(view->footerActionLabel(), "Limpar");
    EXPECT_EQ(view->footerActionSymbol(), "trash");

    view->showSection(1);
    EXPECT_EQ(view->footerActionLabel(), "Adicionar");
    EXPECT_EQ(view->footerActionSymbol(), "plus");
    view->performFooterAction();
    EXPECT_FALSE(view->historyClearing().isShown);
    ASSERT_TRUE(view->snippetEditorRequest());
    EXPECT_EQ(view->snippetEditorRequest()->snippet, std::nullopt);
}

TEST_F(MenuBarContentViewFooterTest, QuitsTheProgram) {
    show();

    view->quit();

    EXPECT_EQ(quits, 1);
}

TEST_F(MenuBarContentViewFooterTest, OpensTheSettingsInThePanel) {
    show();

    view->openSettings();

    EXPECT_EQ(history.windows.panel, ContentKind::settings);
}

TEST_F(MenuBarContentViewFooterTest, WritesANewMessage) {
    show();
    const QSignalSpy changes(view.get(), &MenuBarContentView::snippetEditorChanged);

    view->createSnippet();
    ASSERT_NE(view->snippetEditor(), nullptr);
    EXPECT_EQ(view->snippetEditor()->heading(), "Nova mensagem salva");
    view->snippetEditor()->setContent("Bom dia");
    view->snippetEditor()->save();

    EXPECT_EQ(titles(), (QStringList{"Sem título"}));
    EXPECT_EQ(view->snippetEditor(), nullptr);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(MenuBarContentViewFooterTest, ARowsPencilEditsItsMessage) {
    history.app.store().addSnippet("Saudação", "Bom dia");
    show();

    snippetRow(0)->edit();
    ASSERT_NE(view->snippetEditor(), nullptr);
    EXPECT_EQ(view->snippetEditor()->heading(), "Editar mensagem");
    view->snippetEditor()->setTitle("Cumprimento");
    view->snippetEditor()->save();

    EXPECT_EQ(titles(), (QStringList{"Cumprimento"}));
}

TEST_F(MenuBarContentViewFooterTest, AMessageEditedTwiceIsEditedAsItIsNow) {
    history.app.store().addSnippet("Saudação", "Bom dia");
    show();
    snippetRow(0)->edit();
    view->snippetEditor()->setContent("Boa tarde");
    view->snippetEditor()->save();

    snippetRow(0)->edit();

    EXPECT_EQ(view->snippetEditor()->content(), "Boa tarde");
}

TEST_F(MenuBarContentViewFooterTest, DismissingTheEditorSavesNothing) {
    show();
    view->createSnippet();
    view->snippetEditor()->setContent("Bom dia");

    view->dismissSnippetEditor();

    EXPECT_EQ(view->snippetEditorRequest(), std::nullopt);
    EXPECT_TRUE(titles().isEmpty());
}

TEST_F(MenuBarContentViewFooterTest, CatchesUpWhenItIsShownAgain) {
    show();
    search("vo");
    view->setShown(false);

    history.add("novo");
    history.add("um");
    history.app.store().addSnippet("Novo", "texto");
    EXPECT_TRUE(summaries().isEmpty());
    EXPECT_TRUE(titles().isEmpty());

    view->setShown(true);
    EXPECT_EQ(summaries(), (QStringList{"novo"}));
    EXPECT_EQ(titles(), (QStringList{"Novo"}));
    EXPECT_EQ(view->searchField()->text(), "vo");
}

TEST_F(MenuBarContentViewFooterTest, CatchesUpWithProtectionToo) {
    history.addSensitive("segredo", SensitiveContentKind::secret);
    show();
    search("segredo");
    view->setShown(false);

    history.app.updatePreferences([](AppPreferences& edited) { edited.protectSensitiveContent = false; });
    view->setShown(true);

    EXPECT_EQ(summaries(), (QStringList{"segredo"}));
}

TEST_F(MenuBarContentViewFooterTest, NothingTicksAndNoPreviewStaysWhileItIsNotShown) {
    history.add("um");
    const std::size_t before = history.fake.time.waitingTasks();
    show();
    view->moveCurrentSelection(1);
    history.fake.time.advance(0.15s);
    EXPECT_TRUE(row(0)->isShowingPreview());

    view->setShown(false);
    EXPECT_FALSE(row(0)->isShowingPreview());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    history.fake.time.advance(60s);
    EXPECT_EQ(history.fake.time.waitingTasks(), before);

    view->setShown(true);
    const QSignalSpy ages(row(0), &ClipboardEntryRow::ageChanged);
    history.fake.time.advance(60s);
    EXPECT_EQ(ages.count(), 1);
}

}  // namespace
}  // namespace nettlecap
