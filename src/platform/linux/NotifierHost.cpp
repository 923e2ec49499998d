#include "platform/linux/NotifierHost.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace nettlecap {

namespace {

constexpr int patience = 2'000;  // milliseconds, with a panel that is busy

}  // namespace

NotifierHost::NotifierHost()
    : watchers_(watcherName, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&watchers_, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] {
        if (isThere_) set(false);  // what the last one said is no longer true
        ask();
    });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        QDBusConnection::sessionBus().connect(watcherName, watcherPath, watcherName,
                                              QString::fromLatin1(signal), this, SLOT(ask()));
    ask();
}

void NotifierHost::ask() {
    auto question = QDBusMessage::createMethodCall(
        watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    auto* const answer =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question, patience), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, number = ++questions_] {
        answer->deleteLater();
        if (number != questions_) return;
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        set(reply.isValid() && reply.value().variant().toBool());
    });
}

void NotifierHost::set(bool isThere) {
    if (std::exchange(isThere_, isThere) != isThere) changed_.emit();
}

}  // namespace nettlecap
