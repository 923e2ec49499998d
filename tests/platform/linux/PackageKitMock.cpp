#include "platform/linux/PackageKitMock.h"

#include <stdexcept>

namespace nettlecap {
namespace {

constexpr auto exported = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals;

}  // namespace

PrivateBus::PrivateBus() {
    daemon_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                  QStringLiteral("--print-address")});
    while (!daemon_.canReadLine())
        if (!daemon_.waitForReadyRead(10'000)) throw std::runtime_error("no bus");
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    for (const QString& name : names_) QDBusConnection::disconnectFromBus(name);
    stop();
}

QDBusConnection PrivateBus::connect(const QString& name) {
    names_ += name;
    return QDBusConnection::connectToBus(address_, name);
}

void PrivateBus::stop() {
    daemon_.terminate();  // killed, it would leave its socket behind
    daemon_.waitForFinished();
}

void MockTransaction::RefreshCache(bool) {
    archive_.askedFor += QStringLiteral("RefreshCache");
    if (!archive_.refusal.isEmpty())
        sendErrorReply(QStringLiteral("org.freedesktop.PackageKit.Transaction.RefusedByPolicy"),
                       archive_.refusal);
    else if (archive_.isCancelled)
        Q_EMIT Finished(3, 10);
    else if (archive_.answers)
        finish(archive_.refreshError);
}

void MockTransaction::GetUpdates(qulonglong) {
    archive_.askedFor += QStringLiteral("GetUpdates");
    for (const QString& identifier : archive_.updates)
        Q_EMIT Package(5, identifier, QStringLiteral("summary"));
    for (const QString& identifier : archive_.heldBack)
        Q_EMIT Package(9, identifier, QStringLiteral("summary"));
    finish(archive_.listError);
}

void MockTransaction::finish(const QString& error) {
    if (!error.isEmpty()) Q_EMIT ErrorCode(2, error);
    Q_EMIT Finished(error.isEmpty() ? 1 : 2, 10);
}

MockPackageKit::MockPackageKit(QDBusConnection bus, MockArchive& archive)
    : bus_(std::move(bus)), archive_(archive) {
    bus_.registerObject(QStringLiteral("/org/freedesktop/PackageKit"), this, exported);
    bus_.registerService(QStringLiteral("org.freedesktop.PackageKit"));
}

MockPackageKit::~MockPackageKit() { bus_.unregisterService(QStringLiteral("org.freedesktop.PackageKit")); }

QDBusObjectPath MockPackageKit::CreateTransaction() {
    const auto path = QStringLiteral("/transaction_%1").arg(transactions_.size());
    transactions_.push_back(std::make_unique<MockTransaction>(archive_));
    bus_.registerObject(path, transactions_.back().get(), exported);
    return QDBusObjectPath(path);
}

MockNotifications::MockNotifications(QDBusConnection bus) {
    bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this, exported);
    bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
}

uint MockNotifications::Notify(const QString&, uint, const QString&, const QString& summary,
                               const QString& body, const QStringList& actions, const QVariantMap&, int) {
    shown_ += summary + '|' + body + '|' + actions.join(',');
    return 7;
}

}  // namespace nettlecap
