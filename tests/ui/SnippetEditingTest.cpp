#include "ui/SnippetEditing.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"

#include <QCoreApplication>
#include <QPointer>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

class SnippetEditingTest : public testing::Test {
protected:
    ~SnippetEditingTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    const std::vector<SavedSnippet>& saved() { return *history.app.store().snippets(); }

    HistoryOnFakes history;
    int changes = 0;
    Task whenChanged = [] {};
    SnippetEditing editing{{.store = history.app.store(),
                            .pasteboard = history.fake.pasteboard,
                            .identifiers = history.fake.identifiers},
                           [this] {
                               ++changes;
                               whenChanged();
                           }};
};

TEST_F(SnippetEditingTest, ANewMessageIsAddedToTheStore) {
    editing.open(std::nullopt);
    editing.editor()->setTitle("Saudação");
    editing.editor()->setContent("Bom dia");

    editing.editor()->save();

    ASSERT_EQ(saved().size(), 1U);
    EXPECT_EQ(saved()[0].title, "Saudação");
    EXPECT_EQ(saved()[0].content, "Bom dia");
}

TEST_F(SnippetEditingTest, AnEditedMessageKeepsItsPlace) {
    history.app.store().addSnippet("Primeira", "um");
    history.app.store().addSnippet("Segunda", "dois");
    editing.open(saved()[1]);
    EXPECT_EQ(editing.editor()->title(), "Primeira");
    editing.editor()->setContent("três");

    editing.editor()->save();

    ASSERT_EQ(saved().size(), 2U);
    EXPECT_EQ(saved()[1].title, "Primeira");
    EXPECT_EQ(saved()[1].content, "três");
}

TEST_F(SnippetEditingTest, CancellingChangesNothing) {
    history.app.store().addSnippet("Primeira", "um");
    editing.open(saved()[0]);
    editing.editor()->setContent("outra coisa");

    editing.editor()->cancel();

    EXPECT_EQ(saved()[0].content, "um");
    EXPECT_EQ(editing.editor(), nullptr);
}

TEST_F(SnippetEditingTest, TheSheetClosesOnceItIsSaved) {
    editing.open(std::nullopt);
    editing.editor()->setContent("Bom dia");
    EXPECT_EQ(changes, 1);

    editing.editor()->save();

    EXPECT_EQ(editing.editor(), nullptr);
    EXPECT_EQ(editing.request(), std::nullopt);
    EXPECT_EQ(changes, 2);
}

TEST_F(SnippetEditingTest, WhatShowsTheEditorMayGoBeforeIt) {
    editing.open(std::nullopt);
    const QPointer<SnippetEditorView> editor = editing.editor();
    bool isEditorThere = false;
    auto* const sheet = new QObject;
    QObject::connect(sheet, &QObject::destroyed, [&] { isEditorThere = !editor.isNull(); });
    whenChanged = [&] { sheet->deleteLater(); };

    editing.dismiss();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_TRUE(isEditorThere);
    EXPECT_FALSE(editor);
}

TEST_F(SnippetEditingTest, EachOpeningIsARequestOfItsOwn) {
    history.app.store().addSnippet("Primeira", "um");
    editing.open(saved()[0]);
    const SnippetEditorRequest first = *editing.request();
    EXPECT_EQ(first.snippet, saved()[0]);

    editing.dismiss();
    editing.open(saved()[0]);

    EXPECT_NE(editing.request()->id, first.id);
    EXPECT_EQ(editing.request()->snippet, first.snippet);
}

TEST_F(SnippetEditingTest, DismissingWhatIsNotOpenSaysNothing) {
    editing.dismiss();

    EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace nettlecap
