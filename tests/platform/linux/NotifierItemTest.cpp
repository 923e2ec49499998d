#include "platform/linux/NotifierItem.h"

#include "platform/linux/NotifierPanel.h"
#include "platform/linux/QtApplication.h"
#include "platform/linux/TrayWatcher.h"

#include <QDBusConnectionInterface>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// Hears what an item says to the panels.
class Listener : public QObject {
    Q_OBJECT

public:
    explicit Listener(const QString& item) {
        auto bus = QDBusConnection::sessionBus();
        for (const char* signal : {"NewIcon", "NewToolTip"})
            EXPECT_TRUE(bus.connect(item, "/StatusNotifierItem", "org.kde.StatusNotifierItem",
                                    QString::fromLatin1(signal), this, SLOT(hear(QDBusMessage))));
        EXPECT_TRUE(bus.interface()->isServiceRegistered(item));  // answered once the bus knows that
    }

    QStringList heard;

public Q_SLOTS:
    void hear(const QDBusMessage& message) { heard << message.member(); }
};

/// An item that was announced to a watcher, and the panel that shows it.
class NotifierItemTest : public testing::Test {
protected:
    NotifierItemTest() {
        item->announce();
        EXPECT_TRUE(runMainLoopUntil([this] { return watcher.items().size() == 1; }));
        panel = std::make_unique<NotifierPanel>(name());
    }

    QString name() const { return watcher.items().value(0); }
    static bool isOnBus(const QString& service) {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(service);
    }

    TrayWatcher watcher{true};
    Menu menu{.title = "Nettlecap", .items = {{.title = "Quit"}}, .willOpen = {}, .didClose = {}};
    std::unique_ptr<NotifierItem> item = std::make_unique<NotifierItem>("Nettlecap", menu);
    std::unique_ptr<NotifierPanel> panel;
    std::string clicks;
    Subscription clicking = item->onClick(
        [this](StatusItemClick click) { clicks += click == StatusItemClick::left ? 'l' : 'r'; });
};

TEST_F(NotifierItemTest, IsKnownByANameOfItsOwnOnTheBus) {
    EXPECT_TRUE(isOnBus(name()));
    EXPECT_NE(name(), QDBusConnection::sessionBus().baseService());

    item.reset();

    EXPECT_TRUE(runMainLoopUntil([this] { return !isOnBus(name()); }));
}

TEST_F(NotifierItemTest, SaysWhatItIs) {
    for (const auto& [property, value] : {std::pair("Category", "ApplicationStatus"),
                                          {"Id", "Nettlecap"},
                                          {"Title", "Nettlecap"},
                                          {"Status", "Active"},
                                          {"IconName", ""},
                                          {"IconThemePath", ""},
                                          {"OverlayIconName", ""},
                                          {"AttentionIconName", ""},
                                          {"AttentionMovieName", ""}})
        EXPECT_EQ(panel->property(property), QString::fromLatin1(value)) << property;
    EXPECT_EQ(panel->property("ItemIsMenu"), false);
    EXPECT_EQ(panel->property("WindowId"), 0);
    EXPECT_EQ(panel->property<NotifierPictures>("OverlayIconPixmap").size(), 0);
    EXPECT_EQ(panel->property<NotifierPictures>("AttentionIconPixmap").size(), 0);
}

TEST_F(NotifierItemTest, HasItsPicturesAndTellsOfNewOnes) {
    const Listener listener(name());

    item->setPictures(
        {{.width = 1, .height = 2, .pixels = "12345678"}, {.width = 1, .height = 1, .pixels = "abcd"}});

    EXPECT_TRUE(runMainLoopUntil([&] { return listener.heard == QStringList("NewIcon"); }));
    const auto pictures = panel->property<NotifierPictures>("IconPixmap");
    ASSERT_EQ(pictures.size(), 2);
    EXPECT_EQ(pictures[0].width, 1);
    EXPECT_EQ(pictures[0].height, 2);
    EXPECT_EQ(pictures[0].pixels, "12345678");
    EXPECT_EQ(pictures[1].pixels, "abcd");
}

TEST_F(NotifierItemTest, HasItsToolTipAndTellsOfANewOne) {
    const Listener listener(name());

    item->setToolTip("dica");

    EXPECT_TRUE(runMainLoopUntil([&] { return listener.heard == QStringList("NewToolTip"); }));
    const auto tip = panel->property<NotifierToolTip>("ToolTip");
    EXPECT_EQ(tip.title, "dica");
    EXPECT_EQ(tip.text, "");
    EXPECT_EQ(tip.iconName, "");
    EXPECT_EQ(tip.pictures.size(), 0);
}

TEST_F(NotifierItemTest, TellsOfBothKindsOfClicks) {
    panel->click("Activate");
    panel->click("ContextMenu");
    panel->click("Activate");

    EXPECT_TRUE(runMainLoopUntil([this] { return clicks == "lrl"; })) << clicks;
}

TEST_F(NotifierItemTest, OtherButtonsAndTheWheelSayNothing) {
    EXPECT_EQ(panel->click("SecondaryActivate").type(), QDBusMessage::ReplyMessage);
    panel->click("Activate");

    EXPECT_TRUE(runMainLoopUntil([this] { return clicks == "l"; })) << clicks;
}

TEST_F(NotifierItemTest, ThePanelHasItsAnswerBeforeTheClickActs) {
    bool wasAnswered = false;
    bool wasAnsweredBefore = true;
    const auto other = item->onClick([&](StatusItemClick) { wasAnsweredBefore = wasAnswered; });
    item->Activate(0, 0);
    wasAnswered = true;

    EXPECT_TRUE(runMainLoopUntil([this] { return clicks == "l"; }));
    EXPECT_TRUE(wasAnsweredBefore);
}

TEST_F(NotifierItemTest, ItsMenuIsWhereItSays) { EXPECT_EQ(panel->lines(), QStringList("Quit")); }

TEST_F(NotifierItemTest, IsAnnouncedAgainWhereItIsWanted) {
    item->announce();

    EXPECT_TRUE(runMainLoopUntil([this] { return watcher.items() == QStringList({name(), name()}); }));
}

}  // namespace
}  // namespace nettlecap

#include "NotifierItemTest.moc"
