#include "platform/linux/SingleInstance.h"
#include "platform/linux/QtApplication.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariantMap>
#include <gmock/gmock.h>

namespace nettlecap {
namespace {

/// The bus with this process on it, and somebody else who activates it.
class SingleInstanceTest : public testing::Test {
protected:
    SingleInstanceTest() { forgetStarter(); }
    ~SingleInstanceTest() override {
        forgetStarter();
        QDBusConnection::disconnectFromBus("somebody");
    }

    static void forgetStarter() {
        qunsetenv("DBUS_STARTER_ADDRESS");
        qunsetenv("DBUS_STARTER_BUS_TYPE");
    }
    void claim() {
        auto claimed = SingleInstance::claim();
        ASSERT_TRUE(claimed && *claimed);
        instance = std::move(*claimed);
        opened = instance->onOpenEvent([this](OpenEvent event) { events.push_back(event); });
    }
    void call(const QString& method, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall("com.nettlecap.Nettlecap", "/com/nettlecap/Nettlecap",
                                                      "org.freedesktop.Application", method);
        message.setArguments(arguments);
        const auto before = events.size();
        somebody.asyncCall(message);
        EXPECT_TRUE(runMainLoopUntil([&] { return events.size() > before; })) << method.toStdString();
    }
    void activate() { call("Activate", {QVariantMap()}); }

    QDBusConnection somebody = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "somebody");
    std::unique_ptr<SingleInstance> instance;
    std::vector<OpenEvent> events;
    Subscription opened;
};

TEST_F(SingleInstanceTest, AProcessThatTheBusStartedIsOpenedOnceAndThenReopened) {
    qputenv("DBUS_STARTER_ADDRESS", "unix:path=/run/bus");
    qputenv("DBUS_STARTER_BUS_TYPE", "session");
    claim();

    activate();
    activate();

    EXPECT_THAT(events, testing::ElementsAre(OpenEvent::open, OpenEvent::reopen));
}

TEST_F(SingleInstanceTest, AProcessThatSomebodyElseStartedIsReopenedOnly) {
    claim();

    activate();
    call("Open", {QStringList("file:///etc/hostname"), QVariantMap()});

    EXPECT_THAT(events, testing::ElementsAre(OpenEvent::reopen, OpenEvent::reopen));
}

TEST_F(SingleInstanceTest, EitherWordOfTheBusIsEnoughAndNoneReachesTheChildren) {
    for (const char* word : {"DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE"}) {
        events.clear();
        qputenv(word, "session");
        claim();
        EXPECT_FALSE(qEnvironmentVariableIsSet(word));

        activate();

        EXPECT_THAT(events, testing::ElementsAre(OpenEvent::open));
        instance.reset();
    }
}

}  // namespace
}  // namespace nettlecap
