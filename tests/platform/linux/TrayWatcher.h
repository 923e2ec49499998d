#pragma once

#include <QDBusConnection>
#include <QObject>

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
    int timesAsked() const { return timesAsked_; }  ///< for a host

Q_SIGNALS:
    void StatusNotifierHostRegistered();

private:
    bool isHostRegistered();

    QDBusConnection bus_;
    bool hasHost_;
    int timesAsked_ = 0;
};

}  // namespace nettlecap
