#include "ui/qml/QuickStatusItemWindows.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeWindows.h"
#include "ui/PrintQt.h"
#include "ui/Waiting.h"
#include "ui/qml/QuickViewFactory.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <gmock/gmock.h>

namespace nettlecap {
namespace {

using testing::ElementsAre;

/// A status item near the top left of the screen, where nobody can have the pointer alone.
class QuickStatusItemWindowsTest : public testing::Test {
protected:
    QuickStatusItemWindowsTest() {
        const QSize screen = QGuiApplication::primaryScreen()->size();
        const Rect frame{.size = {static_cast<double>(screen.width()), static_cast<double>(screen.height())}};
        screens.setAll({{.frame = frame, .visibleFrame = frame}});
        top = frame.size.height;
    }
    ~QuickStatusItemWindowsTest() override {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    MenuItem line(const std::string& title) {
        return {.title = title, .action = [this, title] { told.push_back(title); }};
    }
    StatusItemWindow* open() {
        windows.popUpMenu(menu);
        return const_cast<StatusItemWindow*>(windows.menuWindow());
    }
    const QQuickItem* lineItem(int number) const {
        return windows.menuWindow()->content().childItems().constFirst()->childItems().at(number);
    }
    QPoint middleOf(int number) const {
        const QQuickItem* shown = lineItem(number);
        return shown->mapToScene(QPointF(shown->width() / 2, shown->height() / 2)).toPoint();
    }

    FakeNativeWindows native;
    FakeScreens screens;
    FakeEventMonitors events;
    double top = 0;
    QRect item{100, 0, 24, 24};
    std::vector<std::string> told;
    Menu menu{.title = "Nettlecap",
              .items = {line("Buscar"), {}, line("Quit")},
              .willOpen =
                  [this](Menu& opening) {
                      told.push_back("opens");
                      opening.items[0].isEnabled = false;
                  },
              .didClose = [this] { told.push_back("closed"); }};
    QuickViewFactory views{"/nowhere"};
    QuickStatusItemWindows windows{
        {.windows = native, .screens = screens, .events = events}, views.engine(), [this] { return item; }};
};

TEST_F(QuickStatusItemWindowsTest, TheMenuIsAWindowThatNoManagerKnows) {
    const StatusItemWindow* window = open();

    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->type(), Qt::Tool);
    for (const Qt::WindowType flag : {Qt::FramelessWindowHint, Qt::WindowStaysOnTopHint,
                                      Qt::WindowDoesNotAcceptFocus, Qt::X11BypassWindowManagerHint})
        EXPECT_TRUE(window->flags().testFlag(flag)) << flag;
    EXPECT_EQ(window->color().alpha(), 0);
}

TEST_F(QuickStatusItemWindowsTest, TheMenuHangsFromTheItemWithAllOfItsLines) {
    const StatusItemWindow* window = open();

    EXPECT_EQ(window->position(), QPoint(100, 24));
    EXPECT_EQ(window->size(), window->content().size().toSize());
    EXPECT_GE(window->height(), lineItem(2)->y() + lineItem(2)->height());
}

TEST_F(QuickStatusItemWindowsTest, TheMenuIsAtThePointerWhereNobodyKnowsTheItem) {
    item = {};
    screens.movePointer({300, top - 200});

    EXPECT_EQ(open()->position(), QPoint(300, 200));
}

TEST_F(QuickStatusItemWindowsTest, WithoutACompositorItsCornersAreCutOff) {
    native.setComposited(false);
    const StatusItemWindow* window = open();
    EXPECT_FALSE(window->mask().contains(QPoint(0, 0)));
    EXPECT_TRUE(window->mask().contains(QPoint(0, 20)));

    native.setComposited(true);
    EXPECT_TRUE(open()->mask().isEmpty());
}

TEST_F(QuickStatusItemWindowsTest, AClickOnALineClosesTheMenuAndActsThen) {
    StatusItemWindow* window = open();
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(2));

    EXPECT_THAT(told, ElementsAre("opens", "closed", "Quit"));
    EXPECT_EQ(windows.menuWindow(), nullptr);
}

TEST_F(QuickStatusItemWindowsTest, AClickOnWhatCannotBeChosenDoesNothing) {
    StatusItemWindow* window = open();

    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(0));
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(1));

    EXPECT_THAT(told, ElementsAre("opens"));
}

TEST_F(QuickStatusItemWindowsTest, AnyPressBesideTheMenuClosesIt) {
    for (const auto button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
        told.clear();
        QTest::mousePress(open(), button, {}, QPoint(-5, 10));
        EXPECT_THAT(told, ElementsAre("opens", "closed"));
    }
}

TEST_F(QuickStatusItemWindowsTest, AClickThatOthersAreToldOfClosesIt) {
    open();

    events.sendGlobal({.kind = InputKind::rightMouseDown});

    EXPECT_THAT(told, ElementsAre("opens", "closed"));
}

TEST_F(QuickStatusItemWindowsTest, KeysChooseInTheMenu) {
    StatusItemWindow* window = open();

    QTest::keyClick(window, Qt::Key_Down);
    QTest::keyClick(window, Qt::Key_Return);

    EXPECT_THAT(told, ElementsAre("opens", "closed", "Quit"));
}

TEST_F(QuickStatusItemWindowsTest, ThePointerHighlightsOnceItHasMoved) {
    StatusItemWindow* window = open();
    auto* view = window->content().property("view").value<StatusItemMenu*>();

    QTest::mouseMove(window, middleOf(0));  // another test may have left it on the line below
    QTest::mouseMove(window, middleOf(2));
    EXPECT_TRUE(waitUntil([&] { return view->current() == 2; }));

    QTest::mouseMove(window, middleOf(1));
    EXPECT_TRUE(waitUntil([&] { return view->current() == -1; }));
}

TEST_F(QuickStatusItemWindowsTest, OneOpeningClosesTheLast) {
    open();
    open();

    EXPECT_THAT(told, ElementsAre("opens", "closed", "opens"));
}

TEST_F(QuickStatusItemWindowsTest, ClosingWhatIsClosedTellsNobody) {
    windows.closeMenu();

    EXPECT_TRUE(told.empty());
}

TEST_F(QuickStatusItemWindowsTest, AnActionMayOpenTheMenuAgain) {
    menu.items[2].action = [this] { open(); };

    StatusItemWindow* window = open();
    QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(2));

    ASSERT_NE(windows.menuWindow(), nullptr);
    EXPECT_TRUE(windows.menuWindow()->isVisible());
}

TEST_F(QuickStatusItemWindowsTest, AScreenReaderKnowsTheMenuAndItsLines) {
    QAccessible::setActive(true);
    open();

    QAccessibleInterface* found =
        QAccessible::queryAccessibleInterface(const_cast<QQuickItem*>(&windows.menuWindow()->content()));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->role(), QAccessible::PopupMenu);
    EXPECT_EQ(found->text(QAccessible::Name), "Nettlecap");
    ASSERT_EQ(found->childCount(), 3);
    EXPECT_EQ(found->child(0)->role(), QAccessible::MenuItem);
    EXPECT_EQ(found->child(1)->role(), QAccessible::Separator);
    EXPECT_EQ(found->child(2)->text(QAccessible::Name), "Quit");
    found->child(2)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(told, ElementsAre("opens", "closed", "Quit"));
}

TEST_F(QuickStatusItemWindowsTest, TheToolTipIsBesideTheItemAndLetsClicksThrough) {
    windows.showToolTip("Nettlecap");

    const StatusItemWindow* window = windows.toolTipWindow();
    EXPECT_EQ(window->position(), QPoint(100, 24));
    EXPECT_TRUE(window->flags().testFlag(Qt::WindowTransparentForInput));
    EXPECT_EQ(window->content().property("text"), "Nettlecap");

    windows.hideToolTip();
    EXPECT_EQ(windows.toolTipWindow(), nullptr);
}

TEST_F(QuickStatusItemWindowsTest, TheMenuTakesThePlaceOfTheToolTip) {
    windows.showToolTip("Nettlecap");
    open();
    EXPECT_EQ(windows.toolTipWindow(), nullptr);

    windows.showToolTip("Nettlecap");
    EXPECT_EQ(windows.toolTipWindow(), nullptr);
}

}  // namespace
}  // namespace nettlecap
