#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusObjectPath>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QVariantMap>
#include <memory>
#include <vector>

namespace nettlecap {

/// A bus with nobody on it, for one test.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

    QDBusConnection connect(const QString& name);  ///< as another program
    void stop();

private:
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

/// What a look of the updater finds.
struct MockArchive {
    QStringList updates;       ///< package identifiers
    QStringList heldBack;      ///< more of them, which the administrator does not want
    QString refreshError;      ///< empty: the refreshing succeeds
    QString listError;         ///< empty: the listing succeeds
    QString refusal;           ///< of every piece of work, before it begins; empty: none
    bool isCancelled = false;  ///< the refreshing, by somebody else, who says nothing
    bool answers = true;       ///< false: work begins and never ends
    QStringList askedFor;      ///< the methods, in order
    QStringList hints;
};

class MockTransaction final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PackageKit.Transaction")

public:
    explicit MockTransaction(MockArchive& archive) : archive_(archive) {}

public Q_SLOTS:
    void SetHints(const QStringList& hints) { archive_.hints = hints; }
    void RefreshCache(bool force);
    void GetUpdates(qulonglong filter);
    void Cancel() { archive_.askedFor += QStringLiteral("Cancel"); }

Q_SIGNALS:
    void Package(uint kind, const QString& identifier, const QString& summary);
    void ErrorCode(uint code, const QString& details);
    void Finished(uint exit, uint runtime);

private:
    void finish(const QString& error);

    MockArchive& archive_;
};

class MockPackageKit final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PackageKit")

public:
    MockPackageKit(QDBusConnection bus, MockArchive& archive);
    ~MockPackageKit() override;

public Q_SLOTS:
    QDBusObjectPath CreateTransaction();

private:
    QDBusConnection bus_;
    MockArchive& archive_;
    std::vector<std::unique_ptr<MockTransaction>> transactions_;
};

/// Remembers what was shown.
class MockNotifications final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit MockNotifications(QDBusConnection bus);

    const QStringList& shown() const { return shown_; }  ///< "summary|body|buttons"
    void forget() { shown_.clear(); }
    void press() { Q_EMIT ActionInvoked(7, QStringLiteral("button")); }

public Q_SLOTS:
    uint Notify(const QString& program, uint replaces, const QString& icon, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int timeout);

Q_SIGNALS:
    void ActionInvoked(uint id, const QString& action);

private:
    QStringList shown_;
};

}  // namespace nettlecap
