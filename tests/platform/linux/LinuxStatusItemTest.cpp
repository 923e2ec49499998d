#include "platform/linux/LinuxStatusItem.h"

#include "platform/contracts/StatusItemContract.h"
#include "platform/linux/StatusItemDesk.h"

namespace nettlecap::test {
namespace {

using namespace std::chrono_literals;

[[maybe_unused]] const bool drawsWithoutOpenGl = [] {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return true;
}();

constexpr xcb_keycode_t comma = 59, q = 24, escape = 9;

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
    StatusItemDesk desk_;
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

    StatusItemDesk desk;
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
    StatusItemDesk desk(StatusItemDesk::Tray::none);
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

}  // namespace
}  // namespace nettlecap::test
