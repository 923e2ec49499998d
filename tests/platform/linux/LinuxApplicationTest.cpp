#include "platform/linux/LinuxApplication.h"
#include "platform/linux/QtApplication.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <gmock/gmock.h>

namespace nettlecap {
namespace {

QIcon iconOfSide(int side) { return QIcon(QPixmap(side, side)); }

class LinuxApplicationTest : public testing::Test {
protected:
    void SetUp() override {
        auto opened = X11Connection::open();
        auto claimed = SingleInstance::claim();
        ASSERT_TRUE(opened && claimed && *claimed);
        connection = std::move(*opened);
        instance = std::move(*claimed);
        bell.emplace(*connection);
        application.emplace(*bell, *instance, [this](const QString& name) { return drawings.value(name); });
    }
    void TearDown() override { QGuiApplication::setWindowIcon({}); }

    static QList<QSize> sizesOfIcon() { return QGuiApplication::windowIcon().availableSizes(); }

    QMap<QString, QIcon> drawings{{"Nettlecap", iconOfSide(48)}, {"clipboard.fill", iconOfSide(16)}};
    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<SingleInstance> instance;
    std::optional<X11Bell> bell;
    std::optional<LinuxApplication> application;
};

TEST_F(LinuxApplicationTest, ItsWindowsHaveItsIcon) {
    application->setIcon("Nettlecap", "clipboard.fill");

    EXPECT_EQ(sizesOfIcon(), QList{QSize(48, 48)});
}

TEST_F(LinuxApplicationTest, WithoutThatTheyHaveTheSymbolAndWithoutEitherNone) {
    drawings.remove("Nettlecap");
    application->setIcon("Nettlecap", "clipboard.fill");
    EXPECT_EQ(sizesOfIcon(), QList{QSize(16, 16)});

    drawings.clear();
    application->setIcon("Nettlecap", "clipboard.fill");
    EXPECT_TRUE(QGuiApplication::windowIcon().isNull());
}

TEST_F(LinuxApplicationTest, EndsItsMainLoopInGoodOrder) {
    QMetaObject::invokeMethod(
        qGuiApp, [this] { application->terminate(); }, Qt::QueuedConnection);

    EXPECT_EQ(QGuiApplication::exec(), 0);
}

TEST_F(LinuxApplicationTest, TellsWhoeverListensThatItIsToOpenAgain) {
    std::vector<OpenEvent> events;
    auto listening = application->onOpenEvent([&](OpenEvent event) { events.push_back(event); });
    auto activation = QDBusMessage::createMethodCall("com.nettlecap.Nettlecap", "/com/nettlecap/Nettlecap",
                                                     "org.freedesktop.Application", "Activate");
    activation << QVariantMap();

    QDBusConnection::sessionBus().asyncCall(activation);

    EXPECT_TRUE(runMainLoopUntil([&] { return !events.empty(); }));
    EXPECT_THAT(events, testing::ElementsAre(OpenEvent::reopen));
}

}  // namespace
}  // namespace nettlecap
