#include "platform/linux/PackageKitTransaction.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace nettlecap {
namespace {

const QString service = QStringLiteral("org.freedesktop.PackageKit");
const QString transactionInterface = QStringLiteral("org.freedesktop.PackageKit.Transaction");
constexpr uint success = 1;  // PK_EXIT_ENUM_SUCCESS

}  // namespace

PackageKitTransaction::PackageKitTransaction(QDBusConnection bus, QString method, QVariantList arguments,
                                             Answer answer)
    : bus_(std::move(bus)), method_(std::move(method)), arguments_(std::move(arguments)),
      answer_(std::move(answer)) {
    const auto create = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/PackageKit"),
                                                       service, QStringLiteral("CreateTransaction"));
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(create), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError())
            fail(reply.error().message());
        else
            begin(reply.value().path());
    });
}

PackageKitTransaction::~PackageKitTransaction() {
    if (!answer_ || path_.isEmpty()) return;
    bus_.send(QDBusMessage::createMethodCall(service, path_, transactionInterface, QStringLiteral("Cancel")));
}

void PackageKitTransaction::begin(const QString& path) {
    path_ = path;
    const auto listen = [&](const char* signal, const char* slot) {
        bus_.connect(service, path, transactionInterface, QLatin1String(signal), this, slot);
    };
    listen("Package", SLOT(package(uint, QString, QString)));
    listen("ErrorCode", SLOT(errorCode(uint, QString)));
    listen("Finished", SLOT(finished(uint, uint)));
    listen("Destroy", SLOT(disappeared()));
    auto* watcher = new QDBusServiceWatcher(service, bus_, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &PackageKitTransaction::disappeared);
    const QStringList hints{QStringLiteral("background=true"), QStringLiteral("interactive=false"),
                            QStringLiteral("locale=pt_BR.UTF-8")};
    call(path, QStringLiteral("SetHints"), {hints});
    call(path, method_, arguments_);
}

void PackageKitTransaction::call(const QString& path, const QString& method, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(service, path, transactionInterface, method);
    message.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError()) fail(watcher->error().message());
    });
}

void PackageKitTransaction::package(uint, const QString& identifier, const QString&) {
    // name;version;architecture;origin
    const QStringList parts = identifier.split(QLatin1Char(';'));
    if (parts.size() == 4)
        offers_.push_back({.name = parts[0].toStdString(), .version = parts[1].toStdString()});
}

void PackageKitTransaction::errorCode(uint, const QString& details) { error_ = details; }

void PackageKitTransaction::finished(uint exit, uint) {
    if (exit == success)
        end(std::move(offers_));
    else
        fail(error_);
}

void PackageKitTransaction::disappeared() { fail(error_); }

void PackageKitTransaction::fail(const QString& description) { end(Failure{description.toStdString()}); }

void PackageKitTransaction::end(Result<std::vector<PackageOffer>> result) {
    if (const auto answer = std::exchange(answer_, nullptr)) answer(std::move(result));
}

}  // namespace nettlecap
