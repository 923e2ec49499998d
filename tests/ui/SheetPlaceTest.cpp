#include "ui/qml/SheetPlace.h"
#include "platform/fake/FakeWindows.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"
#include "ui/Waiting.h"
#include "ui/qml/QuickPanel.h"
#include "ui/qml/QuickViewFactory.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// A panel that shows a saved message, "Oi", and can have a sheet over it.
class SheetPlaceTest : public testing::Test {
protected:
    SheetPlaceTest() {
        history.app.store().addSnippet("Oi", "Olá");
        native.setComposited(true);
        panel.setContentSize({430, 560});
        panel.setPosition(100, 120);
        setContent();
    }
    ~SheetPlaceTest() override {
        panel.dropContent();
        endTurn();
    }

    void setContent() {
        auto content = std::make_unique<MenuBarContentView>(history.app, contentPorts(history.fake));
        view = content.get();
        panel.setContent(views.menuBarContent(std::move(content)));
        panel.makeKeyAndOrderFront();
        view->showSection(1);
    }
    void SetUp() override { ASSERT_TRUE(waitUntilActive(panel)); }

    static void endTurn() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    static QList<QuickSheet*> sheets() {
        QList<QuickSheet*> result;
        for (QWindow* window : QGuiApplication::topLevelWindows())
            if (auto* sheet = qobject_cast<QuickSheet*>(window)) result << sheet;
        return result;
    }
    QuickSheet* sheet() const { return SheetPlace::of(&panel)->window(); }
    void open() {
        view->createSnippet();
        ASSERT_TRUE(waitUntil([this] { return hasKeyboard(*sheet()); }));
    }
    static bool hasKeyboard(const QWindow& window) { return QGuiApplication::focusWindow() == &window; }
    void type(QWindow& window, const char* text) {
        for (; *text; ++text) QTest::keyClick(&window, *text);
    }
    SnippetEditorView& editor() const { return *view->snippetEditor(); }

    HistoryOnFakes history;
    QuickViewFactory views{history.app.store().imagesDirectory()};
    FakeNativeWindows native;
    FakeScreens screens;
    QuickPanel panel{native, screens};
    MenuBarContentView* view = nullptr;
};

TEST_F(SheetPlaceTest, ThereIsNoWindowUntilThereIsASheetAndNoneAfterIt) {
    EXPECT_EQ(sheet(), nullptr);

    open();
    EXPECT_EQ(sheets(), QList<QuickSheet*>{sheet()});

    editor().cancel();
    EXPECT_EQ(sheet(), nullptr);
    endTurn();
    EXPECT_EQ(sheets(), QList<QuickSheet*>());
}

TEST_F(SheetPlaceTest, IsADialogOfThePanelWithoutAFrameAndAboveTheOthers) {
    open();

    EXPECT_EQ(sheet()->type(), Qt::Dialog);
    EXPECT_TRUE(sheet()->flags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(sheet()->flags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(sheet()->transientParent(), &panel);
    EXPECT_EQ(sheet()->title(), "Nova mensagem salva");
    EXPECT_EQ(native.covering(), std::vector<std::uint64_t>{sheet()->winId()});
    EXPECT_EQ(native.prepared(), (std::vector<std::uint64_t>{panel.winId(), sheet()->winId()}));
    EXPECT_EQ(native.brought().back(), sheet()->winId());
}

TEST_F(SheetPlaceTest, Is440PointsWideAndAsHighAsItsContentFromTheStart) {
    view->createSnippet();

    EXPECT_EQ(sheet()->width(), 440);
    EXPECT_EQ(sheet()->height(), sheet()->contentItem()->childItems().value(0)->implicitHeight());
    EXPECT_GT(sheet()->height(), 300);
}

TEST_F(SheetPlaceTest, StandsOverThePanelAndFollowsIt) {
    open();
    EXPECT_EQ(sheet()->position(), QPoint(95, 168));

    panel.setPosition(300, 60);

    EXPECT_TRUE(waitUntil([this] { return sheet()->position() == QPoint(295, 108); }));
}

TEST_F(SheetPlaceTest, StaysOnThePanelsScreen) {
    const QSize screen = QGuiApplication::primaryScreen()->size();
    const double width = screen.width(), height = screen.height();
    screens.setAll(
        {{.frame = {.size = {width, height}}, .visibleFrame = {.origin = {97, 0}, .size = {500, height}}}});

    open();

    EXPECT_EQ(sheet()->position(), QPoint(97, 168));
}

TEST_F(SheetPlaceTest, HasRoundCornersAndIsCutWhereNothingIsTranslucent) {
    open();
    EXPECT_TRUE(sheet()->mask().isEmpty());
    editor().cancel();

    native.setComposited(false);
    open();
    EXPECT_FALSE(sheet()->mask().contains(QPoint(1, 1)));
    EXPECT_TRUE(sheet()->mask().contains(QPoint(12, 0)));
    EXPECT_EQ(sheet()->mask().boundingRect().size(), sheet()->size());
}

TEST_F(SheetPlaceTest, WhatIsTypedBeforeItHasTheKeyboardIsNotForThePanel) {
    view->createSnippet();

    type(panel, "oi");
    QTest::keyClick(&panel, Qt::Key_Left);

    EXPECT_EQ(view->searchField()->text(), "");
    EXPECT_FALSE(view->isHistory());
    EXPECT_TRUE(panel.isVisible());
}

TEST_F(SheetPlaceTest, WhatIsTypedBeforeItHasTheKeyboardIsForIt) {
    view->createSnippet();

    type(panel, "oi");

    EXPECT_TRUE(waitUntil([this] { return editor().title() == "oi"; }));
    type(*sheet(), "!");
    EXPECT_EQ(editor().title(), "oi!");
}

TEST_F(SheetPlaceTest, EscapeClosesItAloneWhicheverWindowItComesTo) {
    for (const bool isForPanel : {true, false}) {
        open();
        editor().setContent("x");

        QTest::keyClick(isForPanel ? static_cast<QWindow*>(&panel) : sheet(), Qt::Key_Escape);

        EXPECT_EQ(sheet(), nullptr);
        EXPECT_TRUE(panel.isVisible());
    }
    EXPECT_EQ(history.app.store().snippets()->size(), 1U);
}

TEST_F(SheetPlaceTest, ReturnSavesAndClosesIt) {
    open();
    editor().setContent("x");

    QTest::keyClick(sheet(), Qt::Key_Return);

    EXPECT_EQ(sheet(), nullptr);
    EXPECT_EQ(history.app.store().snippets()->size(), 2U);
}

TEST_F(SheetPlaceTest, ThePanelBelowHandsTheKeyboardOn) {
    open();
    bool hadIt = false;
    const QObject listener;
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &listener,
                     [&](const QWindow* window) { hadIt = hadIt || window == &panel; });

    panel.requestActivate();

    EXPECT_TRUE(waitUntil([&] { return hadIt && hasKeyboard(*sheet()); }));
}

TEST_F(SheetPlaceTest, AClickOnThePanelBringsTheSheetToTheFront) {
    open();
    const std::size_t before = native.brought().size();

    QTest::mouseClick(&panel, Qt::LeftButton, {}, {200, 540});

    EXPECT_EQ(native.brought().size(), before + 1);
    EXPECT_EQ(native.brought().back(), sheet()->winId());
}

TEST_F(SheetPlaceTest, ThePanelHasTheKeyboardAfterwards) {
    open();
    type(*sheet(), "x");

    QTest::keyClick(sheet(), Qt::Key_Escape);

    EXPECT_TRUE(waitUntil([this] { return hasKeyboard(panel); }));
    EXPECT_EQ(native.brought().back(), panel.winId());
    type(panel, "o");
    EXPECT_EQ(view->searchField()->text(), "o");
}

TEST_F(SheetPlaceTest, ClosedWhileAnotherWindowHasTheKeyboardItLeavesItThere) {
    open();
    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(other); }));
    const std::size_t before = native.brought().size();

    editor().cancel();

    QCoreApplication::processEvents();  // among them what the sheet might have asked for
    EXPECT_TRUE(hasKeyboard(other));
    EXPECT_EQ(native.brought().size(), before);
}

TEST_F(SheetPlaceTest, ACloseRequestCancels) {
    open();
    QCloseEvent event;

    QCoreApplication::sendEvent(sheet(), &event);

    EXPECT_FALSE(event.isAccepted());
    EXPECT_EQ(view->snippetEditor(), nullptr);
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(SheetPlaceTest, ClosesWithThePanel) {
    open();
    QCloseEvent event;

    QCoreApplication::sendEvent(&panel, &event);

    EXPECT_FALSE(panel.isVisible());
    EXPECT_FALSE(sheet()->isVisible());
    panel.dropContent();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(SheetPlaceTest, OfAPanelThatKeepsItsContentItComesBackWithWhatWasTyped) {
    open();
    type(*sheet(), "oi");
    panel.orderOut();

    panel.makeKeyAndOrderFront();

    ASSERT_TRUE(waitUntil([this] { return sheet()->isVisible() && hasKeyboard(*sheet()); }));
    type(*sheet(), "!");
    EXPECT_EQ(editor().title(), "oi!");
}

TEST_F(SheetPlaceTest, GoesWithTheContentThatItBelongsTo) {
    open();

    setContent();

    EXPECT_EQ(sheet(), nullptr);
    EXPECT_TRUE(panel.isVisible());
}

TEST_F(SheetPlaceTest, AnotherRequestIsAnotherSheet) {
    open();
    type(*sheet(), "oi");
    const QPointer<QuickSheet> first = sheet();

    view->createSnippet();
    endTurn();

    EXPECT_FALSE(first);
    EXPECT_EQ(sheets(), QList<QuickSheet*>{sheet()});
    EXPECT_EQ(editor().title(), "");
}

}  // namespace
}  // namespace nettlecap
