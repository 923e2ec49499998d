#include "ui/SnippetRow.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

class SnippetRowTest : public testing::Test {
protected:
    ~SnippetRowTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    /// Of a message that is in the store.
    std::unique_ptr<SnippetRow> rowOf(const std::string& title, const std::string& content) {
        history.app.store().addSnippet(title, content);
        return std::make_unique<SnippetRow>(
            SnippetRow::Collaborators{
                .app = history.app, .scheduler = history.fake.time, .identifiers = history.fake.identifiers},
            history.app.store().snippets()->front(),
            [this](const SavedSnippet& snippet) { edited.push_back(snippet.title); }, false);
    }
    void preferPasting(bool autoPaste) {
        history.app.updatePreferences(
            [&](AppPreferences& preferences) { preferences.autoPaste = autoPaste; });
    }
    bool pasted() {
        history.fake.time.advance(1s);
        return !history.fake.keyboard.typed().empty();
    }
    std::optional<std::string> pasteboard() { return history.fake.pasteboard.string(pasteboardType::text); }

    HistoryOnFakes history;
    std::vector<std::string> edited;
};

TEST_F(SnippetRowTest, ShowsTheTitleAndTheContentOnOneLine) {
    const auto row = rowOf("Saudação", "Bom dia,\ntudo bem?");

    EXPECT_EQ(row->symbol(), "text.quote");
    EXPECT_EQ(row->title(), "Saudação");
    EXPECT_EQ(row->summary(), "Bom dia, tudo bem?");
}

TEST_F(SnippetRowTest, LooksAtTwelveHundredCharactersOnly) {
    EXPECT_EQ(rowOf("Longa", std::string(1201, 'a'))->summary(), QString(1200, 'a') + "...");
}

TEST_F(SnippetRowTest, SaysWhatItsButtonsDo) {
    const auto row = rowOf("Saudação", "Bom dia");

    EXPECT_EQ(row->help(), "Clique para colar esta mensagem");
    EXPECT_EQ(row->editSymbol(), "pencil");
    EXPECT_EQ(row->editHelp(), "Editar mensagem");
}

TEST_F(SnippetRowTest, AClickCopiesAndPastesWhereThatIsPreferred) {
    preferPasting(true);

    rowOf("Saudação", "Bom dia")->handleClick();

    EXPECT_EQ(pasteboard(), "Bom dia");
    EXPECT_TRUE(pasted());
}

TEST_F(SnippetRowTest, AClickOnlyCopiesWherePastingIsOff) {
    preferPasting(false);

    rowOf("Saudação", "Bom dia")->handleClick();

    EXPECT_EQ(pasteboard(), "Bom dia");
    EXPECT_FALSE(pasted());
    EXPECT_EQ(*history.app.statusMessage(), "Copiado — use ⌘V para colar");
}

TEST_F(SnippetRowTest, ItsPencilEditsIt) {
    rowOf("Saudação", "Bom dia")->edit();

    EXPECT_EQ(edited, std::vector<std::string>{"Saudação"});
}

TEST_F(SnippetRowTest, ItsMenuHasFourLines) {
    QStringList labels;
    const auto row = rowOf("Saudação", "Bom dia");
    for (const QVariant& item : row->menuItems()) {
        const auto line = item.value<RowMenuItem>();
        labels << (line.isDivider ? "—" : line.label);
    }

    EXPECT_EQ(labels, (QStringList{"Colar agora", "Copiar", "Editar", "—", "Excluir"}));
    EXPECT_TRUE(row->menuItems().last().value<RowMenuItem>().isDestructive);
}

TEST_F(SnippetRowTest, ItsMenuPastesWhateverIsPreferred) {
    preferPasting(false);

    rowOf("Saudação", "Bom dia")->performMenuItem(0);

    EXPECT_EQ(pasteboard(), "Bom dia");
    EXPECT_TRUE(pasted());
}

TEST_F(SnippetRowTest, ItsMenuCopiesWithoutPastingWhateverIsPreferred) {
    preferPasting(true);

    rowOf("Saudação", "Bom dia")->performMenuItem(1);

    EXPECT_EQ(pasteboard(), "Bom dia");
    EXPECT_FALSE(pasted());
}

TEST_F(SnippetRowTest, ItsMenuEditsIt) {
    rowOf("Saudação", "Bom dia")->performMenuItem(2);

    EXPECT_EQ(edited, std::vector<std::string>{"Saudação"});
}

TEST_F(SnippetRowTest, ItsMenuDeletesItAtOnceAndSaves) {
    const auto row = rowOf("Saudação", "Bom dia");
    rowOf("Outra", "Boa noite");
    const int writes = history.fake.files.writes();

    row->performMenuItem(4);

    ASSERT_EQ(history.app.store().snippets()->size(), 1U);
    EXPECT_EQ(history.app.store().snippets()->front().title, "Outra");
    EXPECT_EQ(history.fake.files.writes(), writes + 1);
}

TEST_F(SnippetRowTest, ShowsItsPreviewOnceItHasBeenSelectedForFifteenHundredths) {
    const auto row = rowOf("Saudação", "Bom dia");
    row->setKeyboardSelected(true);

    history.fake.time.advance(0.149s);
    EXPECT_FALSE(row->isShowingKeyboardPreview());

    history.fake.time.advance(0.001s);
    ASSERT_TRUE(row->isShowingKeyboardPreview());
    EXPECT_EQ(row->preview()->text(), "Bom dia");
}

TEST_F(SnippetRowTest, HidesItsPreviewAtOnceWhenItIsNoLongerSelected) {
    const auto row = rowOf("Saudação", "Bom dia");
    row->setKeyboardSelected(true);
    history.fake.time.advance(0.15s);

    row->setKeyboardSelected(false);

    EXPECT_FALSE(row->isShowingKeyboardPreview());
    EXPECT_EQ(row->preview(), nullptr);
}

TEST_F(SnippetRowTest, OpensNothingWhenTheSelectionHasMovedOn) {
    const auto row = rowOf("Saudação", "Bom dia");
    const QSignalSpy changes(row.get(), &SnippetRow::previewChanged);
    row->setKeyboardSelected(true);
    history.fake.time.advance(0.1s);
    row->setKeyboardSelected(false);
    row->setKeyboardSelected(true);

    history.fake.time.advance(0.1s);
    EXPECT_EQ(changes.count(), 0);

    history.fake.time.advance(0.05s);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(SnippetRowTest, ItsPreviewGoesWithIt) {
    const auto row = rowOf("Saudação", "Bom dia");
    row->setKeyboardSelected(true);
    row->disappear();
    history.fake.time.advance(1s);
    EXPECT_FALSE(row->isShowingKeyboardPreview());

    row->setKeyboardSelected(false);
    row->setKeyboardSelected(true);
    history.fake.time.advance(0.15s);
    row->previewDisappeared();
    EXPECT_FALSE(row->isShowingKeyboardPreview());
}

TEST_F(SnippetRowTest, FollowsItsMessage) {
    const auto row = rowOf("Saudação", "Bom dia");
    row->setKeyboardSelected(true);
    history.fake.time.advance(0.15s);
    SavedSnippet snippet = history.app.store().snippets()->front();
    const QSignalSpy changes(row.get(), &SnippetRow::snippetChanged);

    row->setRecord(snippet);
    EXPECT_EQ(changes.count(), 0);

    snippet.content = "Boa tarde";
    row->setRecord(snippet);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(row->summary(), "Boa tarde");
    EXPECT_EQ(row->preview()->text(), "Boa tarde");
}

}  // namespace
}  // namespace nettlecap
