#include "app/StatusBarController.h"
#include "platform/fake/FakeWindows.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/StatusBarPopoverContent.h"
#include "ui/Waiting.h"
#include "ui/qml/QuickPopover.h"
#include "ui/qml/QuickViewFactory.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// The status item with the popover that the program has, over the history "um", "dois".
class StatusBarPopoverTest : public testing::Test {
protected:
    StatusBarPopoverTest() {
        history.add("um", 1h);
        history.add("dois", 2h);
        makeController();
    }
    ~StatusBarPopoverTest() override {
        controller.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void makeController() {
        controller.emplace(StatusBarController::Collaborators{.app = history.app,
                                                              .application = history.fake.application,
                                                              .statusItem = history.fake.statusItem,
                                                              .popover = popover,
                                                              .content = content});
    }
    void click() { history.fake.statusItem.click(StatusItemClick::left); }
    void open() {
        click();
        ASSERT_TRUE(waitUntil([this] { return popover.isActive(); }));
    }
    void key(int key) { QTest::keyClick(&popover, static_cast<Qt::Key>(key)); }
    QQuickItem* item() const { return popover.contentItem()->childItems().value(0); }
    MenuBarContentView& view() const { return *item()->property("view").value<MenuBarContentView*>(); }

    HistoryOnFakes history;
    QuickViewFactory views{history.app.store().imagesDirectory()};
    FakeNativeWindows native;
    FakeScreens screens;
    QuickPopover popover{{.windows = native,
                          .screens = screens,
                          .scheduler = history.fake.time,
                          .events = history.fake.events},
                         [] { return QRect(); }};
    StatusBarPopoverContent content{contentPorts(history.fake), views};
    std::optional<StatusBarController> controller;
};

TEST_F(StatusBarPopoverTest, HasTheSizeAndTheNameOfThePopover) {
    open();

    EXPECT_EQ(popover.size(), QSize(430, 560));
    EXPECT_EQ(item()->size(), QSizeF(430, 560));
    EXPECT_EQ(popover.title(), "Nettlecap");
}

TEST_F(StatusBarPopoverTest, TheFirstKeyGoesToTheSearchFieldAtEachShowing) {
    open();
    key(Qt::Key_D);
    EXPECT_EQ(view().searchField()->text(), "d");

    click();
    open();
    key(Qt::Key_O);

    EXPECT_EQ(view().searchField()->text(), "do");
    EXPECT_EQ(view().filteredEntries().size(), 1U);
}

TEST_F(StatusBarPopoverTest, ReturnPastesAndClosesItAndLeavesTheSelection) {
    open();
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Return);

    EXPECT_FALSE(popover.isShown());
    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "dois");

    open();
    EXPECT_EQ(view().selectedHistoryRow(), 1);
}

TEST_F(StatusBarPopoverTest, AHiddenPopoverHasNoTimer) {
    const std::size_t before = history.fake.time.waitingTasks();
    open();

    click();
    history.fake.time.advance(61s);

    EXPECT_EQ(history.fake.time.waitingTasks(), before);
}

TEST_F(StatusBarPopoverTest, TheContentIsGoneBeforeTheModel) {
    open();
    const QPointer<MenuBarContentView> shown = &view();

    controller.reset();

    EXPECT_FALSE(shown);
    EXPECT_FALSE(popover.isShown());
}

}  // namespace
}  // namespace nettlecap
