#include "platform/linux/QtStatusItem.h"

#include "platform/contracts/StatusItemContract.h"
#include "platform/linux/EmbeddingTray.h"
#include "platform/linux/x11/DesktopUser.h"
#include "platform/linux/x11/X11Connection.h"

#include <QApplication>
#include <QMenu>
#include <QScreen>
#include <QWindow>
#include <optional>
#include <xcb/xtest.h>

namespace nettlecap::test {
namespace {

/// The tests' own application object: menus are widgets.
class Application final : public testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<QApplication>(count_, arguments_); }
    void TearDown() override { application_.reset(); }

private:
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    int count_ = 1;
    std::unique_ptr<QApplication> application_;
};

[[maybe_unused]] const auto* const environment = testing::AddGlobalTestEnvironment(new Application);

constexpr xcb_keycode_t comma = 59, q = 24, escape = 9;

/// The item in a tray that takes windows, with a user before it. The panel is alive only
/// while somebody waits.
class Desk {
public:
    enum class Tray { embedding, none };

    explicit Desk(Tray kind = Tray::embedding) {
        user.moveTo(640, 400);
        item.setImage({.size = {18, 18},
                       .rectangles = {{.frame = {.origin = {3, 3}, .size = {12, 12}}}},
                       .strokes = {}});
        if (kind == Tray::none) return;
        tray.emplace();
        EXPECT_TRUE(until([this] { return isIconThere(); }));
    }
    ~Desk() {
        user.moveTo(640, 400);
        if (auto* menu = openMenu()) menu->close();
    }

    bool until(const std::function<bool()>& condition) {
        return waitFor([&] {
            if (tray) tray->pump();
            return condition();
        });
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
    static QMenu* openMenu() {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu && menu->windowHandle()->isExposed() ? menu : nullptr;
    }

    std::unique_ptr<X11Connection> connection = std::move(*X11Connection::open());
    std::optional<EmbeddingTray> tray;
    DesktopUser user;
    QtStatusItem item{*connection};
};

class QtStatusItemHarness final : public StatusItemHarness {
public:
    StatusItem& item() override { return desk_.item; }
    void click(StatusItemClick button) override { desk_.click(button == StatusItemClick::left ? 1 : 3); }
    bool isMenuOpen() override { return Desk::openMenu() != nullptr; }
    void choose(const std::string& title) override {
        QMenu* const menu = Desk::openMenu();
        for (QAction* action : menu->actions()) {
            if (action->text().toStdString() != title) continue;
            desk_.pointAt(menu->mapToGlobal(menu->actionGeometry(action).center()));
            desk_.user.click(1);
        }
    }
    void pressCommand(char key) override { desk_.user.type({key::control, key == ',' ? comma : q}); }
    void leaveMenu() override { desk_.user.type({escape}); }
    bool runUntil(const std::function<bool()>& condition) override { return desk_.until(condition); }

private:
    Desk desk_;
};

INSTANTIATE_TEST_SUITE_P(Embedded, StatusItemContract,
                         testing::Values([]() -> std::unique_ptr<StatusItemHarness> {
                             return std::make_unique<QtStatusItemHarness>();
                         }));

class QtStatusItemTest : public testing::Test {
protected:
    QtStatusItemTest() {
        desk.item.setMenu({.title = "Nettlecap",
                           .items = {{.title = "Settings", .keyEquivalent = ",", .action = {}},
                                     {},
                                     {.title = "Quit", .keyEquivalent = "q", .action = {}}},
                           .willOpen = {},
                           .didClose = {}});
    }

    QMenu& openMenu() {
        desk.item.popUpMenu();
        EXPECT_TRUE(desk.until([] { return Desk::openMenu() != nullptr; }));
        return *Desk::openMenu();
    }
    void press() {
        desk.pointAt(desk.item.geometry().center());
        desk.sendButton(XCB_BUTTON_PRESS);
        ASSERT_TRUE(desk.until([] { return QGuiApplication::mouseButtons() == Qt::LeftButton; }));
    }
    void release() {
        desk.sendButton(XCB_BUTTON_RELEASE);
        ASSERT_TRUE(desk.until([] { return QGuiApplication::mouseButtons() == Qt::NoButton; }));
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

TEST_F(QtStatusItemTest, AClickIsToldWhenTheButtonGoesUp) {
    press();
    EXPECT_EQ(clicks, "");

    release();

    EXPECT_TRUE(waitForClicks("l")) << clicks;
}

TEST_F(QtStatusItemTest, AButtonThatGoesUpElsewhereHasNotClicked) {
    press();
    desk.pointAt({640, 400});
    release();

    desk.click(3);

    EXPECT_TRUE(waitForClicks("r")) << clicks;
}

TEST_F(QtStatusItemTest, EachOfTwoQuickClicksIsTold) {
    desk.click(1);
    desk.click(1);

    EXPECT_TRUE(waitForClicks("ll")) << clicks;
}

TEST_F(QtStatusItemTest, OtherButtonsSayNothing) {
    desk.click(2);
    desk.click(1);

    EXPECT_TRUE(waitForClicks("l")) << clicks;
}

TEST_F(QtStatusItemTest, AClickTakesTheKeyboardFromNobody) {
    const OtherWindow other({.windowClass = std::string("editor\0Editor\0", 14), .x = 300, .y = 300});
    desk.user.activate(other.id());

    desk.click(1);

    EXPECT_TRUE(waitForClicks("l")) << clicks;
    desk.user.waitForManager();
    EXPECT_EQ(desk.user.active(), other.id());
}

TEST_F(QtStatusItemTest, ShowsThePictureThatItWasGivenLast) {
    EXPECT_TRUE(desk.until([] { return colourInTheMiddle() == QColor(Qt::white); }));

    desk.item.setImage({.size = {18, 18}, .rectangles = {}, .strokes = {}});

    EXPECT_TRUE(desk.until([] { return colourInTheMiddle() == QColor(Qt::black); }));
}

TEST_F(QtStatusItemTest, ItsMenuHangsFromItAndShowsTheKeys) {
    const QMenu& menu = openMenu();

    EXPECT_EQ(menu.geometry().topLeft(), QPoint(100, 24));
    ASSERT_EQ(menu.actions().size(), 3);
    EXPECT_EQ(menu.actions()[0]->shortcut(), QKeySequence(QStringLiteral("Ctrl+,")));
    EXPECT_TRUE(menu.actions()[0]->isShortcutVisibleInContextMenu());
    EXPECT_TRUE(menu.actions()[1]->isSeparator());
    EXPECT_EQ(menu.actions()[2]->shortcut(), QKeySequence(QStringLiteral("Ctrl+Q")));
    EXPECT_EQ(menu.accessibleName(), "Nettlecap");
}

TEST_F(QtStatusItemTest, ComesBackWithTheTray) {
    desk.tray.reset();
    EXPECT_TRUE(desk.until([this] { return !desk.isIconThere(); }));
    desk.tray.emplace();
    EXPECT_TRUE(desk.until([this] { return desk.isIconThere(); }));

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
    EXPECT_TRUE(desk.until([&] { return desk.isIconThere(); }));

    desk.click(1);
    EXPECT_TRUE(desk.until([&] { return clicks == 1; }));
    desk.item.popUpMenu();
    EXPECT_TRUE(desk.until([] { return Desk::openMenu() != nullptr; }));
}

}  // namespace
}  // namespace nettlecap::test
