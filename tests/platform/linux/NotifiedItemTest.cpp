#include "platform/linux/NotifierPanel.h"
#include "platform/linux/StatusItemDesk.h"
#include "platform/linux/TrayWatcher.h"

#include <QDBusConnectionInterface>

namespace nettlecap::test {
namespace {

using namespace std::chrono_literals;

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
    StatusItemDesk desk{StatusItemDesk::Tray::none};
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
    ASSERT_TRUE(waitForItems(1));
    const QString told = watcher->items()[0];
    watcher.reset();
    ASSERT_TRUE(isGone(told));
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
