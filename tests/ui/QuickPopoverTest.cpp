#include "ui/qml/QuickPopover.h"
#include "platform/fake/FakeWindows.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"
#include "ui/Waiting.h"
#include "ui/qml/QuickViewFactory.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// A status item in a bar at the top of the screen, with the pointer on it, and another
/// window that can have the keyboard.
class QuickPopoverTest : public testing::Test {
protected:
    QuickPopoverTest() {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        width = screen.width();
        height = screen.height();
        native.setComposited(true);
        screens.setAll(
            {{.frame = {.size = {width, height}}, .visibleFrame = {.size = {width, height - 30}}}});
        pointAtItem();
        popover.setContentSize({430, 560});
        popover.setTitle("Nettlecap");
        auto content = std::make_unique<MenuBarContentView>(history.app, contentPorts(history.fake));
        view = content.get();
        popover.setContent(views.menuBarContent(std::move(content)));
        other.resize(50, 50);
    }
    ~QuickPopoverTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    /// As the status bar does at a click.
    void click() {
        if (popover.isShown()) return popover.close();
        popover.showBelowStatusItem();
        ASSERT_TRUE(waitUntil([this] { return popover.isActive(); }));
    }
    void takeKeyboard() {
        other.show();
        other.requestActivate();
        ASSERT_TRUE(waitUntil([this] { return !popover.isActive(); }));
    }
    void pointAtItem() { screens.movePointer({item.x() + 5.0, height - 10}); }
    void pointElsewhere() { screens.movePointer({300, 20}); }
    void drag(QPoint from, QPoint to) {
        QTest::mousePress(&popover, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 5; ++step) QTest::mouseMove(&popover, from + (to - from) * step / 5);
        QTest::mouseRelease(&popover, Qt::LeftButton, {}, to);
    }
    void openSheet() {
        if (!sheet()) view->createSnippet();
        ASSERT_TRUE(waitUntil([this] { return QGuiApplication::focusWindow() == sheet(); }));
    }
    QuickSheet* sheet() const { return SheetPlace::of(&popover)->window(); }
    void advance(Seconds time) { history.fake.time.advance(time); }
    void clickElsewhere(InputKind kind = InputKind::leftMouseDown) {
        history.fake.events.sendGlobal({.kind = kind});
    }

    HistoryOnFakes history;
    QuickViewFactory views{history.app.store().imagesDirectory()};
    FakeNativeWindows native;
    FakeScreens screens;
    double width = 0;
    double height = 0;
    QRect item{500, 3, 24, 24};
    QuickPopover popover{{.windows = native,
                          .screens = screens,
                          .scheduler = history.fake.time,
                          .events = history.fake.events},
                         [this] { return item; }};
    MenuBarContentView* view = nullptr;
    QWindow other;
};

TEST_F(QuickPopoverTest, IsAWindowWithoutAFrameAboveTheOthersAndWithTheKeyboard) {
    click();

    EXPECT_EQ(popover.type(), Qt::Tool);
    EXPECT_TRUE(popover.flags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(popover.flags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(popover.title(), "Nettlecap");
    EXPECT_EQ(native.prepared(), std::vector<std::uint64_t>{popover.winId()});
    EXPECT_EQ(native.brought(), std::vector<std::uint64_t>{popover.winId()});
}

TEST_F(QuickPopoverTest, NoBarListsItAtAnyShowing) {
    click();
    popover.showBelowStatusItem();  // as it is
    click();
    click();

    EXPECT_EQ(native.keptOffTaskbars(), std::vector<std::uint64_t>(2, popover.winId()));
}

TEST_F(QuickPopoverTest, HangsFromTheItemBelowItsBar) {
    click();

    EXPECT_EQ(popover.geometry(), QRect(297, 30, 430, 560));
}

TEST_F(QuickPopoverTest, HangsFromTheBarAtThePointerWhereNobodyKnowsTheItem) {
    item = {};
    screens.movePointer({width - 40, height - 15});

    click();

    EXPECT_EQ(popover.geometry(), QRect(static_cast<int>(width) - 430, 30, 430, 560));
}

TEST_F(QuickPopoverTest, TheNextClickClosesIt) {
    click();
    click();
    EXPECT_FALSE(popover.isShown());

    click();
    EXPECT_TRUE(popover.isShown());
}

TEST_F(QuickPopoverTest, AClickOnTheItemThatHasTakenTheKeyboardClosesItToo) {
    click();

    takeKeyboard();
    advance(QuickPopover::itemPatience - 1ms);
    EXPECT_TRUE(popover.isShown());
    click();

    EXPECT_FALSE(popover.isShown());
    advance(1s);
    EXPECT_FALSE(popover.isShown());
}

TEST_F(QuickPopoverTest, AClickOnTheItemThatTakesTheKeyboardAfterwardsClosesItToo) {
    click();
    click();
    takeKeyboard();

    EXPECT_FALSE(popover.isShown());
    click();
    EXPECT_TRUE(popover.isShown());
}

TEST_F(QuickPopoverTest, ClosesWhenNoClickFollowsTheLossOfTheKeyboard) {
    click();

    takeKeyboard();
    advance(QuickPopover::itemPatience);

    EXPECT_FALSE(popover.isShown());
}

TEST_F(QuickPopoverTest, WhatItWaitedForAtOneShowingDoesNotCloseTheNext) {
    click();
    takeKeyboard();
    click();
    popover.showBelowStatusItem();

    advance(QuickPopover::itemPatience);

    EXPECT_TRUE(popover.isShown());
}

TEST_F(QuickPopoverTest, StaysWhenItHasTheKeyboardBackInTime) {
    click();
    takeKeyboard();
    popover.requestActivate();
    ASSERT_TRUE(waitUntil([this] { return popover.isActive(); }));

    advance(1s);

    EXPECT_TRUE(popover.isShown());
}

TEST_F(QuickPopoverTest, ClosesAtOnceWhenTheUserGoesElsewhere) {
    click();
    pointElsewhere();

    takeKeyboard();

    EXPECT_FALSE(popover.isShown());
}

TEST_F(QuickPopoverTest, ClosesAtAClickThatLeavesItTheKeyboard) {
    for (const InputKind kind : {InputKind::leftMouseDown, InputKind::rightMouseDown}) {
        click();
        pointElsewhere();

        clickElsewhere(kind);

        EXPECT_FALSE(popover.isShown());
    }
}

TEST_F(QuickPopoverTest, LeavesAClickOnTheItemToTheItem) {
    item = {};
    click();

    clickElsewhere();

    EXPECT_TRUE(popover.isShown());
}

TEST_F(QuickPopoverTest, LooksAtNoClicksWhileItIsClosed) {
    click();
    click();
    popover.show();
    pointElsewhere();

    clickElsewhere();

    EXPECT_TRUE(popover.isVisible());
}

TEST_F(QuickPopoverTest, EscapeAndACloseRequestHideIt) {
    click();
    QTest::keyClick(&popover, Qt::Key_Escape);
    EXPECT_FALSE(popover.isShown());

    click();
    QCloseEvent event;
    QCoreApplication::sendEvent(&popover, &event);
    EXPECT_FALSE(popover.isShown());
    EXPECT_FALSE(event.isAccepted());
}

TEST_F(QuickPopoverTest, EscapeBelongsFirstToWhatOpensOverTheList) {
    history.add("um");
    click();
    view->moveCurrentSelection(1);
    view->requestSelectedHistoryDeletion();

    QTest::keyClick(&popover, Qt::Key_Escape);

    EXPECT_TRUE(popover.isShown());
    EXPECT_FALSE(view->historyDeletion().isShown);
}

TEST_F(QuickPopoverTest, StaysWhileASheetOverItHasTheKeyboardAndWhenItIsGone) {
    click();
    pointElsewhere();

    openSheet();
    EXPECT_TRUE(popover.isShown());

    view->dismissSnippetEditor();
    EXPECT_TRUE(waitUntil([this] { return QGuiApplication::focusWindow() == &popover; }));
    EXPECT_TRUE(popover.isShown());
}

TEST_F(QuickPopoverTest, ClosesWithItsSheetWhenTheUserGoesElsewhereAndOpensWithIt) {
    for (const auto& goElsewhere : {std::function<void()>([this] { takeKeyboard(); }),
                                    std::function<void()>([this] { clickElsewhere(); })}) {
        click();
        openSheet();
        pointElsewhere();

        goElsewhere();
        EXPECT_FALSE(popover.isShown());
        EXPECT_FALSE(sheet()->isVisible());

        pointAtItem();
        click();
        EXPECT_TRUE(waitUntil([this] { return sheet()->isVisible(); }));
        click();
    }
}

TEST_F(QuickPopoverTest, TheSearchFieldHasTheKeyboardAtEachShowing) {
    for (const char* typed : {"a", "ab"}) {
        click();
        QTest::keyClick(&popover, typed[view->searchField()->text().size()]);
        EXPECT_EQ(view->searchField()->text(), typed);
        QTest::keyClick(&popover, Qt::Key_Tab);
        click();
    }
}

TEST_F(QuickPopoverTest, KeepsItsContentAndWhatWasDoneInIt) {
    click();
    view->searchField()->setProperty("text", "dois");
    view->showSection(1);
    click();

    click();

    EXPECT_EQ(view->searchField()->text(), "dois");
    EXPECT_FALSE(view->isHistory());
}

TEST_F(QuickPopoverTest, ContentLooksAtNothingWhileItIsHiddenAndCatchesUp) {
    click();
    click();
    history.add("um");
    EXPECT_TRUE(view->filteredEntries().empty());

    click();

    EXPECT_EQ(view->filteredEntries().size(), 1U);
}

TEST_F(QuickPopoverTest, ADragOfItsGroundLeavesItWhereItHangs) {
    click();
    const QPoint place = popover.position();

    drag({180, 20}, {280, 70});
    EXPECT_EQ(popover.position(), place);

    // As in a window that has a frame of its own, which shows that it was held by its ground.
    popover.contentItem()->childItems().constFirst()->setProperty("cornerRadius", 0);
    drag({180, 20}, {280, 70});
    EXPECT_NE(popover.position(), place);
}

TEST_F(QuickPopoverTest, HasRoundCornersAndIsCutWhereNothingIsTranslucent) {
    click();
    EXPECT_TRUE(popover.mask().isEmpty());
    click();

    native.setComposited(false);
    click();
    EXPECT_FALSE(popover.mask().contains(QPoint(1, 1)));
    EXPECT_TRUE(popover.mask().contains(QPoint(12, 0)));
}

TEST_F(QuickPopoverTest, LetsGoOfItsContent) {
    const QPointer<MenuBarContentView> content = view;

    popover.setContent(nullptr);

    EXPECT_FALSE(content);
    click();
    EXPECT_TRUE(popover.isShown());
}

}  // namespace
}  // namespace nettlecap
