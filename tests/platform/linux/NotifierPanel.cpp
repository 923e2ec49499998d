#include "platform/linux/NotifierPanel.h"

#include "platform/linux/QtApplication.h"

#include <QDBusPendingCall>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

const QString connectionName = QStringLiteral("panel");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

}  // namespace

NotifierPanel::NotifierPanel(QString item)
    : item_(std::move(item)),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)) {
    registerNotifierTypes();
}

NotifierPanel::~NotifierPanel() { QDBusConnection::disconnectFromBus(connectionName); }

QVariant NotifierPanel::property(const char* name) {
    const auto answer =
        call(QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.freedesktop.DBus.Properties"), "Get",
             {itemInterface, QString::fromLatin1(name)});
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << name;
    return answer.arguments().value(0).value<QDBusVariant>().variant();
}

QDBusMessage NotifierPanel::click(const char* method) {
    return call(QStringLiteral("/StatusNotifierItem"), itemInterface, method, {1250, 784});
}

QDBusMessage NotifierPanel::menu(const char* method, const QVariantList& arguments) {
    const auto path = property<QDBusObjectPath>("Menu").path();
    return call(path, menuInterface, method, arguments);
}

NotifierMenuLayout NotifierPanel::layout(int of, int depth, const QStringList& names) {
    return qdbus_cast<NotifierMenuLayout>(menu("GetLayout", {of, depth, names}).arguments().value(1));
}

QStringList NotifierPanel::lines() {
    QStringList result;
    for (const NotifierMenuLayout& line : layout().children)
        result << (line.properties.value("type") == "separator" ? QStringLiteral("-")
                                                                : line.properties.value("label").toString());
    return result;
}

void NotifierPanel::tell(int line, const char* event) {
    const auto answer = menu("Event", {line, QString::fromLatin1(event),
                                       QVariant::fromValue(QDBusVariant(QString())), QVariant(uint{0})});
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage);
}

QDBusMessage NotifierPanel::call(const QString& path, const QString& interface, const char* method,
                                 const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(item_, path, interface, QString::fromLatin1(method));
    message.setArguments(arguments);
    const QDBusPendingCall answer = bus_.asyncCall(message);
    EXPECT_TRUE(runMainLoopUntil([&] { return answer.isFinished(); })) << method;
    return answer.reply();
}

}  // namespace nettlecap
