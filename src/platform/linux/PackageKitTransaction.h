#pragma once

#include "platform/Values.h"

#include <QDBusConnection>
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
/// once, unless it is destroyed before, which calls the work off.
class PackageKitTransaction final : public QObject {
    Q_OBJECT

public:
    using Answer = std::function<void(Result<std::vector<PackageOffer>>)>;

    /// The method and its arguments: RefreshCache, GetUpdates, …
    PackageKitTransaction(QDBusConnection bus, QString method, QVariantList arguments, Answer answer);
    ~PackageKitTransaction() override;

private Q_SLOTS:
    void package(uint kind, const QString& identifier, const QString& summary);
    void errorCode(uint code, const QString& details);
    void finished(uint exit, uint runtime);
    void disappeared();  // the service

private:
    void begin(const QString& path);
    void call(const QString& path, const QString& method, const QVariantList& arguments);
    void fail(const QString& description);
    void end(Result<std::vector<PackageOffer>> result);

    QDBusConnection bus_;
    QString method_;
    QVariantList arguments_;
    Answer answer_;
    QString path_;
    QString error_;
    std::vector<PackageOffer> offers_;
};

}  // namespace nettlecap
