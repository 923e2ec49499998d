#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace nettlecap {

/// Where the icons of the new kind are registered (freedesktop.org, StatusNotifierItem), with
/// or without somebody who shows them. On the session bus as long as it is there.
class TrayWatcher final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)

public:
    explicit TrayWatcher(bool hasHost);
    ~TrayWatcher() override;

    void addHost();
    void removeHost();
    const QStringList& items() const { return items_; }  ///< every one that was ever registered
    int timesAsked() const { return timesAsked_; }       ///< for a host

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service) { items_ << service; }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    bool isHostRegistered();

    QDBusConnection bus_;
    bool hasHost_;
    int timesAsked_ = 0;
    QStringList items_;
};

}  // namespace nettlecap
