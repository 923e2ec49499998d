#include "platform/linux/LinuxStatusItem.h"

#include "platform/contracts/StatusItemContract.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeTime.h"
#include "platform/fake/FakeWindows.h"
#include "platform/linux/EmbeddingTray.h"
#include "platform/linux/NotifierPanel.h"
#include "platform/linux/TrayWatcher.h"
#include "platform/linux/x11/DesktopUser.h"
#include "platform/linux/x11/X11Connection.h"
#include "ui/qml/QuickStatusItemWindows.h"
#include "ui/qml/QuickViewFactory.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <QScreen>
#include <optional>
#include <xcb/xtest.h>

namespace nettlecap::test {
namespace {

using namespace std::chrono_literals;

[[maybe_unused]] const bool drawsWithoutOpenGl = [] {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return true;
}();

constexpr xcb_keycode_t comma = 59, q = 24, escape = 9;

/// The item in a tray that takes windows, with a user before it. The panel is alive only
/// while somebody waits.
class Desk {
public:
    enum class Tray { embedding, none };

    explicit Desk(Tray kind = Tray::embedding) {
        const QSize screen = QGuiApplication::primaryScreen()->size();
        const Rect frame{.size = {static_cast<double>(screen.width()), static_cast<double>(screen.height())}};
        screens.setAll({{.frame = frame, .visibleFrame = frame}});
        user.moveTo(640, 400);
        item.setImage({.size = {18, 18},
                       .rectangles = {{.frame = {.origin = {3, 3}, .size = {12, 12}}}},
                       .strokes = {}});
        if (kind == Tray::none) return;
        tray.emplace();
        EXPECT_TRUE(untilEmbedded());
    }
    ~Desk() {
        user.moveTo(640, 400);
        windows.closeMenu();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    bool until(const std::function<bool()>& condition) {
        return waitFor([&] {
            if (tray) tray->pump();
            return condition();
        });
    }
    /// A panel's patience passes meanwhile, again and again.
    bool untilEmbedded() {
        return until([this] {
            time.advance(LinuxStatusItem::panelPatience);
            return isIconThere();
        });
    }
    /// All that the bus and the X server have told by now has been heard.
    void catchUp() {
        user.waitForManager();
        const auto question = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                             "org.freedesktop.DBus", "GetId");
        const QDBusPendingCall answer = QDBusConnection::sessionBus().asyncCall(question);
        EXPECT_TRUE(until([&] { return answer.isFinished(); }));
        (void)connection->serverTime();
        QCoreApplication::processEvents();
    }
    bool isIconThere() const {
        return item.geometry() == QRect(100, 0, EmbeddingTray::side, EmbeddingTray::side);
    }
    void pointAt(QPoint place) {
        user.moveTo(static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()));
    }
    void click(std::uint8_t button) {
        pointAt(item.geometry().center());
        user.click(button);
    }
    void sendButton(std::uint8_t event) {
        xcb_test_fake_input(user.xcb(), event, 1, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
        xcb_flush(user.xcb());
    }
    const StatusItemWindow* openMenu() const {
        const StatusItemWindow* const menu = windows.menuWindow();
        return menu && menu->isExposed() ? menu : nullptr;
    }
    /// The middle of a line of the open menu, on the screen.
    QPoint lineOf(const std::string& title) const {
        const auto* column = openMenu()->content().childItems().constFirst();
        for (const QQuickItem* line : column->childItems())
            if (line->property("modelData").value<StatusItemMenuLine>().label.toStdString() == title)
                return line->mapToGlobal(QPointF(line->width() / 2, line->height() / 2)).toPoint();
        ADD_FAILURE() << "no line " << title;
        return {};
    }

    std::unique_ptr<X11Connection> connection = std::move(*X11Connection::open());
    std::optional<EmbeddingTray> tray;
    DesktopUser user;
    FakeTime time;
    LinuxStatusItem item{*connection, time};
    QuickViewFactory views{"/nowhere"};
    FakeNativeWindows native;
    FakeScreens screens;
    FakeEventMonitors events;
    QuickStatusItemWindows windows{{.windows = native, .screens = screens, .events = events},
                                   views.engine(),
                                   [this] { return item.geometry(); }};
    Subscription showing = item.showIn(windows);
};

class LinuxStatusItemHarness final : public StatusItemHarness {
public:
    StatusItem& item() override { return desk_.item; }
    void click(StatusItemClick button) override { desk_.click(button == StatusItemClick::left ? 1 : 3); }
    bool isMenuOpen() override { return desk_.openMenu() != nullptr; }
    void choose(const std::string& title) override {
        desk_.pointAt(desk_.lineOf(title));
        desk_.user.click(1);
    }
    void pressCommand(char key) override { desk_.user.type({key::control, key == ',' ? comma : q}); }
    void leaveMenu() override { desk_.user.type({escape}); }
    bool runUntil(const std::function<bool()>& condition) override { return desk_.until(condition); }

private:
    Desk desk_;
};

INSTANTIATE_TEST_SUITE_P(Embedded, StatusItemContract,
                         testing::Values([]() -> std::unique_ptr<StatusItemHarness> {
                             return std::make_unique<LinuxStatusItemHarness>();
                         }));

class LinuxStatusItemTest : public testing::Test {
protected:
    LinuxStatusItemTest() {
        desk.item.setMenu({.title = "Nettlecap",
                           .items = {{.title = "Settings", .keyEquivalent = ",", .action = {}},
                                     {},
                                     {.title = "Quit", .keyEquivalent = "q", .action = {}}},
                           .willOpen = {},
                           .didClose = {}});
    }

    void rest() {
        desk.item.setToolTip("Nettlecap");
        desk.pointAt(desk.item.geometry().center());
        desk.catchUp();
    }
    void press() {
        desk.pointAt(desk.item.geometry().center());
        desk.sendButton(XCB_BUTTON_PRESS);
        desk.catchUp();
    }
    void release() {
        desk.sendButton(XCB_BUTTON_RELEASE);
        desk.catchUp();
    }
    bool waitForClicks(const std::string& wanted) {
        return desk.until([&] { return clicks.size() >= wanted.size(); }) && clicks == wanted;
    }
    static QColor colourInTheMiddle() {
        const auto picture = QGuiApplication::primaryScreen()->grabWindow(0, 100, 0, 24, 24).toImage();
        return picture.pixelColor(12, 12);
    }

    Desk desk;
    std::string clicks;
    Subscription clicking = desk.item.onClick(
        [this](StatusItemClick click) { clicks += click == StatusItemClick::left ? 'l' : 'r'; });
};

TEST_F(LinuxStatusItemTest, AClickIsToldWhenTheButtonGoesUp) {
    press();
    EXPECT_EQ(clicks, "");

    release();

    EXPECT_TRUE(waitForClicks("l")) << clicks;
}

TEST_F(LinuxStatusItemTest, AButtonThatGoesUpElsewhereHasNotClicked) {
    press();
    desk.pointAt({640, 400});
    release();

    desk.click(3);

    EXPECT_TRUE(waitForClicks("r")) << clicks;
}

TEST_F(LinuxStatusItemTest, EachOfTwoQuickClicksIsTold) {
    desk.click(1);
    desk.click(1);

    EXPECT_TRUE(waitForClicks("ll")) << clicks;
}

TEST_F(LinuxStatusItemTest, OtherButtonsSayNothing) {
    desk.click(2);
    desk.click(1);

    EXPECT_TRUE(waitForClicks("l")) << clicks;
}

TEST_F(LinuxStatusItemTest, AClickTakesTheKeyboardFromNobody) {
    const OtherWindow other({.windowClass = std::string("editor\0Editor\0", 14), .x = 300, .y = 300});
    desk.user.activate(other.id());

    desk.click(1);

    EXPECT_TRUE(waitForClicks("l")) << clicks;
    desk.user.waitForManager();
    EXPECT_EQ(desk.user.active(), other.id());
}

TEST_F(LinuxStatusItemTest, ShowsThePictureThatItWasGivenLast) {
    EXPECT_TRUE(desk.until([] { return colourInTheMiddle() == QColor(Qt::white); }));

    desk.item.setImage({.size = {18, 18}, .rectangles = {}, .strokes = {}});

    EXPECT_TRUE(desk.until([] { return colourInTheMiddle() == QColor(Qt::black); }));
}

TEST_F(LinuxStatusItemTest, ItsMenuHangsFromItAndShowsTheKeys) {
    desk.item.popUpMenu();
    ASSERT_TRUE(desk.until([this] { return desk.openMenu() != nullptr; }));

    EXPECT_EQ(desk.openMenu()->position(), QPoint(100, 24));
    EXPECT_EQ(desk.openMenu()->title(), "Nettlecap");
    const auto lines = desk.openMenu()->content().property("view").value<StatusItemMenu*>()->lines();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].value<StatusItemMenuLine>().keys, "Ctrl+,");
    EXPECT_TRUE(lines[1].value<StatusItemMenuLine>().isDivider);
    EXPECT_EQ(lines[2].value<StatusItemMenuLine>().keys, "Ctrl+Q");
}

TEST_F(LinuxStatusItemTest, ItsToolTipIsThereWhileThePointerRestsOnIt) {
    rest();
    desk.time.advance(LinuxStatusItem::toolTipDelay - 1ms);
    EXPECT_EQ(desk.windows.toolTipWindow(), nullptr);

    desk.time.advance(1ms);
    ASSERT_NE(desk.windows.toolTipWindow(), nullptr);
    EXPECT_EQ(desk.windows.toolTipWindow()->content().property("text"), "Nettlecap");

    desk.pointAt({640, 400});
    EXPECT_TRUE(desk.until([this] { return desk.windows.toolTipWindow() == nullptr; }));
}

TEST_F(LinuxStatusItemTest, APointerThatGoesOnHasNoToolTip) {
    rest();
    desk.pointAt({640, 400});
    desk.catchUp();

    desk.time.advance(LinuxStatusItem::toolTipDelay);

    EXPECT_EQ(desk.windows.toolTipWindow(), nullptr);
}

TEST_F(LinuxStatusItemTest, AClickTakesTheToolTipAway) {
    rest();
    desk.time.advance(LinuxStatusItem::toolTipDelay);
    ASSERT_NE(desk.windows.toolTipWindow(), nullptr);

    desk.user.click(1);

    EXPECT_TRUE(waitForClicks("l")) << clicks;
    desk.time.advance(LinuxStatusItem::toolTipDelay);
    EXPECT_EQ(desk.windows.toolTipWindow(), nullptr);
}

TEST_F(LinuxStatusItemTest, TheMenuKeepsKeysAndPointerWhereAToolTipWasBefore) {
    rest();
    desk.time.advance(LinuxStatusItem::toolTipDelay);
    desk.item.popUpMenu();
    ASSERT_TRUE(desk.until([this] { return desk.openMenu() != nullptr; }));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    desk.user.type({escape});

    EXPECT_TRUE(desk.until([this] { return desk.openMenu() == nullptr; }));
}

TEST_F(LinuxStatusItemTest, ComesBackWithTheTray) {
    desk.tray.reset();
    EXPECT_TRUE(desk.until([this] { return !desk.isIconThere(); }));
    desk.tray.emplace();
    EXPECT_TRUE(desk.untilEmbedded());

    desk.click(1);

    EXPECT_TRUE(waitForClicks("l")) << clicks;
}

TEST(LateTrayTest, TheItemWaitsForItAndIsAllThatItWasToldToBe) {
    Desk desk(Desk::Tray::none);
    int clicks = 0;
    const auto clicking = desk.item.onClick([&](StatusItemClick) { ++clicks; });
    desk.item.setMenu({.title = "Nettlecap", .items = {{.title = "Quit"}}, .willOpen = {}, .didClose = {}});
    EXPECT_TRUE(desk.item.geometry().isEmpty());

    desk.tray.emplace();
    EXPECT_TRUE(desk.untilEmbedded());

    desk.click(1);
    EXPECT_TRUE(desk.until([&] { return clicks == 1; }));
    desk.item.popUpMenu();
    EXPECT_TRUE(desk.until([&] { return desk.openMenu() != nullptr; }));
}

/// A desktop with a tray of the new kind, or of both.
class NotifiedItemTest : public testing::Test {
protected:
    NotifiedItemTest() {
        desk.item.setToolTip("dica");
        desk.item.setMenu(
            {.title = "Nettlecap", .items = {{.title = "Quit"}}, .willOpen = {}, .didClose = {}});
    }

    bool waitForItems(int count) {
        return desk.until([&] { return watcher->items().size() == count; });
    }
    bool isGone(const QString& item) {
        return desk.until(
            [&] { return !QDBusConnection::sessionBus().interface()->isServiceRegistered(item).value(); });
    }

    std::optional<TrayWatcher> watcher{true};
    Desk desk{Desk::Tray::none};
};

TEST_F(NotifiedItemTest, IsToldToThePanelWithAllThatItWasToldToBe) {
    ASSERT_TRUE(waitForItems(1));
    NotifierPanel panel(watcher->items()[0]);

    QList<QSize> sizes;
    for (const auto& picture : panel.property<NotifierPictures>("IconPixmap")) {
        sizes << QSize(picture.width, picture.height);
        const auto middle = 4 * (picture.height / 2 * picture.width + picture.width / 2);
        EXPECT_EQ(picture.pixels.mid(middle, 4), QByteArray(4, '\xFF')) << picture.width;
        EXPECT_EQ(picture.pixels.left(4), QByteArray(4, '\0')) << picture.width;
    }
    EXPECT_TRUE(sizes.contains(QSize(16, 16)) && sizes.contains(QSize(48, 48)));
    EXPECT_EQ(panel.property<NotifierToolTip>("ToolTip").title, "dica");
    EXPECT_EQ(panel.lines(), QStringList("Quit"));
    EXPECT_TRUE(desk.item.geometry().isEmpty());
}

TEST_F(NotifiedItemTest, TellsOfClicksAndOfWhatHasChanged) {
    std::string clicks;
    const auto clicking = desk.item.onClick(
        [&](StatusItemClick click) { clicks += click == StatusItemClick::left ? 'l' : 'r'; });
    ASSERT_TRUE(waitForItems(1));
    NotifierPanel panel(watcher->items()[0]);

    panel.click("Activate");
    panel.click("ContextMenu");
    EXPECT_TRUE(desk.until([&] { return clicks == "lr"; })) << clicks;

    desk.item.setToolTip("outra");
    EXPECT_EQ(panel.property<NotifierToolTip>("ToolTip").title, "outra");
    desk.item.setImage({.size = {18, 18}, .rectangles = {}, .strokes = {}});
    const auto pictures = panel.property<NotifierPictures>("IconPixmap");
    EXPECT_EQ(pictures[0].pixels, QByteArray(16 * 16 * 4, '\0'));
    desk.item.setMenu({.title = "Nettlecap", .items = {{.title = "Outro"}}, .willOpen = {}, .didClose = {}});
    EXPECT_EQ(panel.lines(), QStringList("Outro"));
}

TEST_F(NotifiedItemTest, ItsMenuIsAtThePointerWhereThePanelShowsNone) {
    ASSERT_TRUE(waitForItems(1));
    const double height = QGuiApplication::primaryScreen()->size().height();
    desk.screens.movePointer({500, height - 30});

    desk.item.popUpMenu();

    ASSERT_TRUE(desk.until([this] { return desk.openMenu() != nullptr; }));
    EXPECT_EQ(desk.openMenu()->position(), QPoint(500, 30));
}

TEST_F(NotifiedItemTest, IsToldAnewToAPanelThatIsRestarted) {
    ASSERT_TRUE(waitForItems(1));
    const QString first = watcher->items()[0];

    watcher.reset();
    EXPECT_TRUE(isGone(first));
    watcher.emplace(true);

    EXPECT_TRUE(waitForItems(1));
}

TEST_F(NotifiedItemTest, APanelThatTakesBothKindsHasItOnce) {
    ASSERT_TRUE(waitForItems(1));

    desk.tray.emplace();
    desk.catchUp();
    desk.time.advance(LinuxStatusItem::panelPatience);
    desk.catchUp();
    desk.tray->pump();

    EXPECT_EQ(desk.tray->icon(), XCB_WINDOW_NONE);
}

TEST_F(NotifiedItemTest, APanelMayTakeTheOldKindALittleBeforeTheNew) {
    watcher.reset();
    desk.catchUp();
    desk.tray.emplace();
    desk.catchUp();
    desk.time.advance(LinuxStatusItem::panelPatience - 1ms);

    watcher.emplace(true);
    ASSERT_TRUE(waitForItems(1));
    desk.time.advance(1ms);
    desk.catchUp();
    desk.tray->pump();

    EXPECT_EQ(desk.tray->icon(), XCB_WINDOW_NONE);
}

TEST_F(NotifiedItemTest, GoesIntoATrayOfTheOldKindWhenThePanelGoesAndBackAgain) {
    ASSERT_TRUE(waitForItems(1));
    const QString told = watcher->items()[0];
    desk.tray.emplace();

    watcher->removeHost();
    EXPECT_TRUE(desk.untilEmbedded());
    EXPECT_TRUE(isGone(told));

    watcher->addHost();
    EXPECT_TRUE(waitForItems(2));
    EXPECT_TRUE(desk.item.geometry().isEmpty());
}

}  // namespace
}  // namespace nettlecap::test
