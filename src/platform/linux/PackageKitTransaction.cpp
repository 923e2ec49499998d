#include "platform/linux/PackageKitTransaction.h"

#include "platform/linux/FileDescriptor.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace nettlecap {
namespace {

const QString service = QStringLiteral("org.freedesktop.PackageKit");
const QString transactionInterface = QStringLiteral("org.freedesktop.PackageKit.Transaction");
constexpr uint success = 1;  // PK_EXIT_ENUM_SUCCESS
constexpr uint blocked = 9;  // PK_INFO_ENUM_BLOCKED: the administrator holds it back

Failure failure(const QString& description, std::errc otherwise) {
    return description.isEmpty() ? systemFailure(otherwise) : Failure{description.toStdString()};
}

QString text(bool isTrue) { return isTrue ? QStringLiteral("true") : QStringLiteral("false"); }

}  // namespace

PackageKitTransaction::PackageKitTransaction(QDBusConnection bus, Work work, Answer answer)
    : bus_(std::move(bus)), work_(std::move(work)), answer_(std::move(answer)) {
    if (!bus_.isConnected()) {
        end(failure(bus_.lastError().message(), std::errc::not_connected));
        return;
    }
    const auto create = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/PackageKit"),
                                                       service, QStringLiteral("CreateTransaction"));
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(create), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError())
            end(failure(reply.error().message(), std::errc::connection_reset));
        else
            begin(reply.reply().service(), reply.value().path());
    });
}

PackageKitTransaction::~PackageKitTransaction() {
    if (!answer_ || result_ || path_.isEmpty() || !bus_.isConnected()) return;
    bus_.send(QDBusMessage::createMethodCall(service, path_, transactionInterface, QStringLiteral("Cancel")));
}

/// Listens to the owner of the name: to listen to the name, Qt would wait for the bus to say
/// whose it is.
void PackageKitTransaction::begin(const QString& owner, const QString& path) {
    path_ = path;
    const auto listen = [&](const char* signal, const char* slot) {
        bus_.connect(owner, path, transactionInterface, QLatin1String(signal), this, slot);
    };
    listen("Package", SLOT(package(uint, QString, QString)));
    listen("ErrorCode", SLOT(errorCode(uint, QString)));
    listen("Finished", SLOT(finished(uint, uint)));
    presence_.setConnection(bus_);
    presence_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    presence_.addWatchedService(service);
    connect(&presence_, &QDBusServiceWatcher::serviceUnregistered, this, &PackageKitTransaction::disappeared);
    const QStringList hints{QStringLiteral("background=") + text(!work_.isForUser),
                            QStringLiteral("interactive=") + text(work_.isForUser),
                            QStringLiteral("locale=pt_BR.UTF-8")};
    call(QStringLiteral("SetHints"), {hints});
    call(work_.method, work_.arguments);
}

void PackageKitTransaction::call(const QString& method, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(service, path_, transactionInterface, method);
    message.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError()) end(failure(watcher->error().message(), std::errc::connection_reset));
    });
}

void PackageKitTransaction::package(uint kind, const QString& identifier, const QString&) {
    // name;version;architecture;origin
    const QStringList parts = identifier.split(QLatin1Char(';'));
    if (parts.size() == 4 && kind != blocked)
        offers_.push_back({.name = parts[0].toStdString(), .version = parts[1].toStdString()});
}

void PackageKitTransaction::errorCode(uint, const QString& details) { error_ = details; }

void PackageKitTransaction::finished(uint exit, uint) {
    if (exit == success)
        end(std::move(offers_));
    else
        end(failure(error_, std::errc::operation_canceled));
}

void PackageKitTransaction::disappeared() { end(failure(error_, std::errc::connection_reset)); }

void PackageKitTransaction::end(Result<std::vector<PackageOffer>> result) {
    if (!answer_ || result_) return;
    result_ = std::move(result);
    // Not within the call, which may be that of the constructor.
    QMetaObject::invokeMethod(this, "tell", Qt::QueuedConnection);
}

void PackageKitTransaction::tell() {
    const auto result = std::move(*result_);
    std::exchange(answer_, nullptr)(result);
}

}  // namespace nettlecap
