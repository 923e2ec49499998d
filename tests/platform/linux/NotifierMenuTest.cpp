#include "platform/linux/NotifierItem.h"

#include "platform/linux/NotifierPanel.h"
#include "platform/linux/QtApplication.h"
#include "platform/linux/TrayWatcher.h"

#include <QDBusConnectionInterface>
#include <QTimer>
#include <gmock/gmock.h>

namespace nettlecap {
namespace {

using testing::ElementsAre;

/// Hears what a menu says to the panels.
class MenuListener : public QObject {
    Q_OBJECT

public:
    explicit MenuListener(const QString& item) {
        auto bus = QDBusConnection::sessionBus();
        for (const char* signal : {"LayoutUpdated", "ItemsPropertiesUpdated"})
            EXPECT_TRUE(bus.connect(item, "/MenuBar", "com.canonical.dbusmenu", QString::fromLatin1(signal),
                                    this, SLOT(hear(QDBusMessage))));
        EXPECT_TRUE(bus.interface()->isServiceRegistered(item));  // answered once the bus knows that
    }

    QList<QDBusMessage> heard;

public Q_SLOTS:
    void hear(const QDBusMessage& message) { heard << message; }
};

/// A menu on the bus, and the panel that shows it.
class NotifierMenuTest : public testing::Test {
protected:
    NotifierMenuTest() {
        item.announce();
        EXPECT_TRUE(runMainLoopUntil([this] { return watcher.items().size() == 1; }));
        panel = std::make_unique<NotifierPanel>(watcher.items().value(0));
    }

    MenuItem line(const std::string& title, const std::string& key) {
        return {.title = title, .keyEquivalent = key, .action = [this, title] { told.push_back(title); }};
    }
    /// It is not to be read again then.
    void aboutToShow() { EXPECT_EQ(panel->menu("AboutToShow", {0}).arguments().value(0), false); }
    bool waitUntilTold(const std::string& last) {
        return runMainLoopUntil([&] { return !told.empty() && told.back() == last; });
    }

    TrayWatcher watcher{true};
    bool isFirstEnabled = true;
    std::vector<std::string> told;
    Menu menu{.title = "Nettlecap",
              .items = {line("Buscar", ""), {}, line("Set_tings", ","), line("Quit", "q")},
              .willOpen =
                  [this](Menu& opening) {
                      told.push_back("opens");
                      opening.items[0].isEnabled = isFirstEnabled;
                  },
              .didClose = [this] { told.push_back("closed"); }};
    NotifierItem item{"Nettlecap", menu};
    std::unique_ptr<NotifierPanel> panel;
};

TEST_F(NotifierMenuTest, TellsItsLinesWithTheirKeys) {
    const NotifierMenuLayout root = panel->layout();

    EXPECT_EQ(root.id, 0);
    EXPECT_EQ(root.properties.value("children-display"), "submenu");
    ASSERT_EQ(root.children.size(), 4);
    EXPECT_EQ(root.children[0].id, 1);
    EXPECT_EQ(root.children[0].properties.value("label"), "Buscar");
    EXPECT_EQ(root.children[0].properties.value("enabled"), true);
    EXPECT_FALSE(root.children[0].properties.contains("shortcut"));
    EXPECT_EQ(root.children[1].properties.value("type"), "separator");
    EXPECT_EQ(root.children[3].id, 4);
    EXPECT_EQ(qdbus_cast<QList<QStringList>>(root.children[3].properties.value("shortcut")),
              (QList<QStringList>{{"Control", "q"}}));
}

TEST_F(NotifierMenuTest, AnUnderscoreInALineIsNoMnemonic) {
    EXPECT_EQ(panel->lines(), QStringList({"Buscar", "-", "Set__tings", "Quit"}));
}

TEST_F(NotifierMenuTest, TellsNoMoreThanItIsAskedFor) {
    EXPECT_TRUE(panel->layout(0, 0).children.isEmpty());
    EXPECT_EQ(panel->layout(0, 1).children.size(), 4);
    EXPECT_TRUE(panel->layout(3).children.isEmpty());
    EXPECT_EQ(panel->layout(3).properties.value("label"), "Set__tings");
    EXPECT_EQ(panel->layout(0, -1, {"label", "nothing"}).children[3].properties,
              (QVariantMap{{"label", "Quit"}}));
}

TEST_F(NotifierMenuTest, TellsThePropertiesOfSomeLines) {
    const auto some = qdbus_cast<NotifierMenuItems>(
        panel->menu("GetGroupProperties", {QVariant::fromValue(QList<int>{4, 9}), QStringList("label")})
            .arguments()
            .value(0));
    ASSERT_EQ(some.size(), 1);
    EXPECT_EQ(some[0].id, 4);
    EXPECT_EQ(some[0].properties, (QVariantMap{{"label", "Quit"}}));

    const auto all = qdbus_cast<NotifierMenuItems>(
        panel->menu("GetGroupProperties", {QVariant::fromValue(QList<int>()), QStringList()})
            .arguments()
            .value(0));
    EXPECT_EQ(all.size(), 5);

    const auto one = panel->menu("GetProperty", {4, QStringLiteral("label")}).arguments().value(0);
    EXPECT_EQ(one.value<QDBusVariant>().variant(), "Quit");
}

TEST_F(NotifierMenuTest, RefusesWhatThereIsNot) {
    for (const auto& [method, arguments] :
         {std::pair<const char*, QVariantList>("GetLayout", {7, -1, QStringList()}),
          {"GetProperty", {7, QStringLiteral("label")}},
          {"GetProperty", {1, QStringLiteral("nothing")}},
          {"AboutToShow", {-1}},
          {"Event", {7, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), QVariant(0U)}}})
        EXPECT_EQ(panel->menu(method, arguments).type(), QDBusMessage::ErrorMessage) << method;
}

TEST_F(NotifierMenuTest, AClickOnALineActs) {
    panel->tell(4, "clicked");

    EXPECT_TRUE(waitUntilTold("Quit"));
}

TEST_F(NotifierMenuTest, AClickOnWhatCannotBeChosenDoesNothing) {
    isFirstEnabled = false;
    aboutToShow();
    for (const int line : {0, 1, 2}) panel->tell(line, "clicked");

    panel->tell(4, "clicked");

    EXPECT_TRUE(waitUntilTold("Quit"));
    EXPECT_THAT(told, ElementsAre("opens", "Quit"));
}

TEST_F(NotifierMenuTest, SeveralEventsMayComeTogether) {
    const QDBusVariant nothing(0);
    const NotifierMenuEvents events{{.id = 4, .name = "clicked", .data = nothing},
                                    {.id = 7, .name = "clicked", .data = nothing}};

    const auto answer = panel->menu("EventGroup", {QVariant::fromValue(events)});

    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().value(0)), QList<int>{7});
    EXPECT_TRUE(waitUntilTold("Quit"));
}

TEST_F(NotifierMenuTest, OpensOnceHoweverThePanelSaysIt) {
    aboutToShow();
    panel->tell(0, "opened");
    panel->tell(0, "closed");
    EXPECT_THAT(told, ElementsAre("opens", "closed"));

    panel->tell(0, "opened");
    panel->tell(0, "closed");
    panel->tell(0, "closed");
    EXPECT_THAT(told, ElementsAre("opens", "closed", "opens", "closed"));
}

TEST_F(NotifierMenuTest, LinesOpenNothing) {
    EXPECT_FALSE(panel->menu("AboutToShow", {1}).arguments().value(0).toBool());
    panel->tell(1, "opened");
    panel->tell(1, "hovered");
    panel->tell(1, "closed");

    EXPECT_TRUE(told.empty());
}

TEST_F(NotifierMenuTest, WhatChangesAtAnOpeningIsToldBeforeItIsShown) {
    const MenuListener listener(watcher.items().value(0));
    aboutToShow();
    isFirstEnabled = false;

    aboutToShow();

    EXPECT_EQ(panel->layout().children[0].properties.value("enabled"), false);
    ASSERT_TRUE(runMainLoopUntil([&] { return listener.heard.size() == 1; }));
    const auto changed = qdbus_cast<NotifierMenuItems>(listener.heard[0].arguments().value(0));
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0].id, 1);
    EXPECT_EQ(changed[0].properties, (QVariantMap{{"enabled", false}}));
}

TEST_F(NotifierMenuTest, SeveralMenusMayOpenTogether) {
    isFirstEnabled = false;

    const auto answer = panel->menu("AboutToShowGroup", {QVariant::fromValue(QList<int>{0, 1, 7})});

    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().value(0)), QList<int>());
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().value(1)), QList<int>{7});
    EXPECT_THAT(told, ElementsAre("opens"));
}

TEST_F(NotifierMenuTest, AnotherMenuIsToldOf) {
    const MenuListener listener(watcher.items().value(0));
    menu.items = {line("Outro", "")};

    item.menuChanged();

    ASSERT_TRUE(runMainLoopUntil([&] { return listener.heard.size() == 1; }));
    EXPECT_EQ(listener.heard[0].member(), "LayoutUpdated");
    EXPECT_EQ(panel->menu("GetLayout", {0, -1, QStringList()}).arguments().value(0), 2U);
    EXPECT_EQ(panel->lines(), QStringList("Outro"));
}

TEST_F(NotifierMenuTest, AClickOnALineOfTheMenuBeforeDoesNothing) {
    NotifierMenu shown(menu);
    shown.Event(4, "clicked", QDBusVariant(QString()), 0);  // which acts a turn later

    menu.items.clear();
    shown.menuChanged();

    bool isPast = false;
    QTimer::singleShot(1, &shown, [&] { isPast = true; });
    ASSERT_TRUE(runMainLoopUntil([&] { return isPast; }));
    EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace nettlecap

#include "NotifierMenuTest.moc"
