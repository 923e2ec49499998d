#include "platform/fake/FakePasteboard.h"
#include "ui/PrintQt.h"
#include "ui/SnippetEditorView.h"
#include "ui/Waiting.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// The fields of the snippet editor beside the toolkit's clipboard, which holds another text
/// than our pasteboard.
class TextFieldsTest : public testing::Test {
protected:
    TextFieldsTest() {
        QGuiApplication::clipboard()->blockSignals(true);  // as the program does
        QGuiApplication::clipboard()->setText("do Qt");
        pasteboard.setIgnoresInterest(true);
        pasteboard.copyFromOutside(std::string("nosso"));
        engine.addImportPath("qrc:/qt/qml");
        QQmlComponent component(&engine, QUrl("qrc:/qt/qml/Nettlecap/SnippetEditorView.qml"));
        content.reset(qobject_cast<QQuickItem*>(
            component.createWithInitialProperties({{"view", QVariant::fromValue(&view)}})));
        content->setParentItem(window.contentItem());
        content->forceActiveFocus();
        window.resize(440, 400);
        window.show();
        window.requestActivate();
    }

    void SetUp() override { ASSERT_TRUE(waitUntilActive(window)); }
    void type(int key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(&window, static_cast<Qt::Key>(key), modifiers);
    }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    FakePasteboard pasteboard;
    SnippetEditorView view{SavedSnippet{.title = "título", .content = "conteúdo"},
                           pasteboard,
                           {.save = [](std::string_view, std::string_view) {}, .dismiss = [] {}}};
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> content;
};

TEST_F(TextFieldsTest, CopyToTheSystemsClipboard) {
    type(Qt::Key_A, Qt::ControlModifier);
    type(Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(clipboard(), "título");
    EXPECT_EQ(view.title(), "título");
}

TEST_F(TextFieldsTest, CutToTheSystemsClipboard) {
    type(Qt::Key_Tab, Qt::NoModifier);
    type(Qt::Key_A, Qt::ControlModifier);
    type(Qt::Key_X, Qt::ControlModifier);

    EXPECT_EQ(clipboard(), "conteúdo");
    EXPECT_EQ(view.content(), "");
    EXPECT_FALSE(view.canSave());
}

TEST_F(TextFieldsTest, PasteFromOurPasteboardAlone) {
    type(Qt::Key_A, Qt::ControlModifier);
    type(Qt::Key_V, Qt::ControlModifier);
    type(Qt::Key_Tab, Qt::NoModifier);
    type(Qt::Key_A, Qt::ControlModifier);
    type(Qt::Key_Insert, Qt::ShiftModifier);

    EXPECT_EQ(view.title(), "nosso");
    EXPECT_EQ(view.content(), "nosso");
    EXPECT_EQ(clipboard(), "do Qt");
}

}  // namespace
}  // namespace nettlecap
