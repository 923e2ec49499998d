#include "platform/linux/TrayArrival.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace nettlecap {

namespace {

// freedesktop.org, StatusNotifierItem: the watcher knows whether somebody shows the icons.
constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";

}  // namespace

TrayArrival::TrayArrival(X11Connection& connection)
    : watchers_(watcherName, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForRegistration) {
    connect(&watchers_, &QDBusServiceWatcher::serviceRegistered, this, &TrayArrival::askForHost);
    QDBusConnection::sessionBus().connect(watcherName, watcherPath, watcherName,
                                          QStringLiteral("StatusNotifierHostRegistered"), this,
                                          SLOT(askForHost()));
    askForHost();
    if (auto embedding = X11EmbeddingTray::open(connection)) embedding_ = std::move(*embedding);
    if (embedding_) embeddingArrivals_ = embedding_->onArrival([this] { arrive(); });
    // Where nobody can tell, waiting would be in vain.
    if (!embedding_ || embedding_->isThere()) QMetaObject::invokeMethod(this, "arrive", Qt::QueuedConnection);
}

void TrayArrival::askForHost() {
    auto question = QDBusMessage::createMethodCall(
        watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    auto* const answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid() && reply.value().variant().toBool()) arrive();
    });
}

void TrayArrival::arrive() {
    if (!std::exchange(hasArrived_, true)) arrived_.emit();
}

}  // namespace nettlecap
