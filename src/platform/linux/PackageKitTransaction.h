#pragma once

#include "platform/Values.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <vector>

namespace nettlecap {

/// A version of a package, as PackageKit offers it.
struct PackageOffer {
    std::string name;
    std::string version;

    bool operator==(const PackageOffer&) const = default;
};

/// One piece of work that PackageKit does (org.freedesktop.PackageKit.Transaction). Answers
/// once, never within a call, unless it is destroyed before, which calls the work off.
class PackageKitTransaction final : public QObject {
    Q_OBJECT

public:
    struct Work {
        QString method;  ///< RefreshCache, GetUpdates, …
        QVariantList arguments;
        bool isForUser = false;  ///< who waits for it, and may be asked for a password
    };
    /// May destroy the transaction.
    using Answer = std::function<void(const Result<std::vector<PackageOffer>>&)>;

    PackageKitTransaction(QDBusConnection bus, Work work, Answer answer);
    ~PackageKitTransaction() override;

private Q_SLOTS:
    void package(uint kind, const QString& identifier, const QString& summary);
    void errorCode(uint code, const QString& details);
    void finished(uint exit, uint runtime);
    void disappeared();  // the service
    void tell();

private:
    void begin(const QString& owner, const QString& path);
    void call(const QString& method, const QVariantList& arguments);
    void end(Result<std::vector<PackageOffer>> result);

    QDBusConnection bus_;
    Work work_;
    Answer answer_;
    QDBusServiceWatcher presence_;  // of the service
    QString path_;                  // empty: it has not begun
    QString error_;
    std::vector<PackageOffer> offers_;
    std::optional<Result<std::vector<PackageOffer>>> result_;  // until it is told
};

}  // namespace nettlecap
