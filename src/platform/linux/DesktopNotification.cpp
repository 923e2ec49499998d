#include "platform/linux/DesktopNotification.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace nettlecap {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString button = QStringLiteral("button");

}  // namespace

DesktopNotification::DesktopNotification(QDBusConnection bus) : bus_(std::move(bus)) {
    // Of whoever shows them: to listen to the name, Qt would wait for the bus to say whose it is.
    bus_.connect(QString(), path, service, QStringLiteral("ActionInvoked"), this,
                 SLOT(actionInvoked(uint, QString)));
}

void DesktopNotification::show(const Text& text, Reactions reactions) {
    reactions_ = std::move(reactions);
    if (!bus_.isConnected()) return nobodySeesIt();
    QStringList actions;
    // A click on the notice itself is the action "default".
    if (!text.button.isEmpty()) actions = {QStringLiteral("default"), text.button, button, text.button};
    auto call = QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Notify"));
    call.setArguments(
        {QStringLiteral("Nettlecap"), shown_, QStringLiteral("com.nettlecap.Nettlecap"), text.summary,
         text.body.toHtmlEscaped(), actions,
         QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("com.nettlecap.Nettlecap")}}, -1});
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError())
            nobodySeesIt();
        else
            shown_ = reply.value();
    });
}

void DesktopNotification::actionInvoked(uint id, const QString&) {
    if (id == shown_)
        if (const Task task = std::exchange(reactions_, {}).toButton) task();
}

void DesktopNotification::nobodySeesIt() {
    if (const Task task = std::exchange(reactions_, {}).toNobodySeeingIt) task();
}

}  // namespace nettlecap
