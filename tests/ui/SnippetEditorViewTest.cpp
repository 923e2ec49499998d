#include "ui/SnippetEditorView.h"
#include "platform/fake/FakePasteboard.h"
#include "ui/PrintQt.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

class SnippetEditorViewTest : public testing::Test {
protected:
    void open(const std::optional<SavedSnippet>& snippet) {
        view = std::make_unique<SnippetEditorView>(
            snippet, pasteboard,
            SnippetEditorView::Actions{.save =
                                           [this](std::string_view title, std::string_view content) {
                                               saved = {std::string(title), std::string(content)};
                                           },
                                       .dismiss = [this] { view.reset(); }});
    }

    FakePasteboard pasteboard;
    std::unique_ptr<SnippetEditorView> view;
    std::optional<std::pair<std::string, std::string>> saved;
};

TEST_F(SnippetEditorViewTest, ANewMessageStartsEmpty) {
    open(std::nullopt);

    EXPECT_EQ(view->heading(), "Nova mensagem salva");
    EXPECT_EQ(view->title(), "");
    EXPECT_EQ(view->content(), "");
    EXPECT_FALSE(view->canSave());
}

TEST_F(SnippetEditorViewTest, AnExistingOneIsThereToBeEdited) {
    open(SavedSnippet{.title = "Saudação", .content = "Olá!"});

    EXPECT_EQ(view->heading(), "Editar mensagem");
    EXPECT_EQ(view->title(), "Saudação");
    EXPECT_EQ(view->content(), "Olá!");
    EXPECT_TRUE(view->canSave());
}

TEST_F(SnippetEditorViewTest, ContentOfBlanksAloneCannotBeSaved) {
    open(std::nullopt);
    view->setTitle("Título");

    for (const QString blanks : {" ", "\n\n", " \t\r\n", "\u00a0\u2028"}) {
        view->setContent(blanks);
        EXPECT_FALSE(view->canSave());
        view->save();
    }

    EXPECT_FALSE(saved);
    EXPECT_NE(view, nullptr);
}

TEST_F(SnippetEditorViewTest, AnEmptyTitleCanBeSaved) {
    open(std::nullopt);

    view->setContent("x");
    EXPECT_TRUE(view->canSave());
    view->save();

    EXPECT_EQ(saved, std::pair(std::string(), std::string("x")));
}

TEST_F(SnippetEditorViewTest, SavesWhatWasTypedAsItStandsAndCloses) {
    open(SavedSnippet{.title = "velho", .content = "velho"});
    view->setTitle("  novo ");
    view->setContent("\n a\u00a0b\t\n\n");

    view->save();

    EXPECT_EQ(saved, std::pair(std::string("  novo "), std::string("\n a\u00a0b\t\n\n")));
    EXPECT_EQ(view, nullptr);
}

TEST_F(SnippetEditorViewTest, CancellingClosesWithoutSaving) {
    open(SavedSnippet{.title = "velho", .content = "velho"});
    view->setContent("novo");

    view->cancel();

    EXPECT_FALSE(saved);
    EXPECT_EQ(view, nullptr);
}

TEST_F(SnippetEditorViewTest, TellsOfContentThatBecomesWorthSaving) {
    open(std::nullopt);
    const QSignalSpy changes(view.get(), &SnippetEditorView::contentChanged);

    view->setContent("x");
    view->setContent("x");

    EXPECT_EQ(changes.count(), 1);
}

TEST_F(SnippetEditorViewTest, PastesFromOurPasteboard) {
    open(std::nullopt);
    EXPECT_EQ(view->pasteSource()->text(), "");

    pasteboard.setIgnoresInterest(true);
    pasteboard.copyFromOutside(std::string("um\r\ndois\ntrês"));

    EXPECT_EQ(view->pasteSource()->text(), "um\r\ndois\ntrês");
    EXPECT_EQ(view->pasteSource()->line(), "um dois três");
}

}  // namespace
}  // namespace nettlecap
