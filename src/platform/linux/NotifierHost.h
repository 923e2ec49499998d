#pragma once

#include "platform/Signal.h"

#include <QDBusServiceWatcher>

namespace nettlecap {

/// Whether somebody shows the icons that are told over the bus (freedesktop.org,
/// StatusNotifierItem): a watcher knows the icons, and whether anybody shows them.
class NotifierHost : public QObject {
    Q_OBJECT

public:
    static constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
    static constexpr const char* watcherPath = "/StatusNotifierWatcher";

    NotifierHost();

    /// Absent: that is not known yet.
    std::optional<bool> isThere() const { return isThere_; }
    /// From the main loop, once it is known too. When another watcher takes the place of one
    /// that had a host, it tells of the one and of the other.
    Subscription onChange(Task handler) const { return changed_.subscribe(std::move(handler)); }

private Q_SLOTS:
    void ask();

private:
    void set(bool isThere);

    std::optional<bool> isThere_;
    int questions_ = 0;
    Signal<> changed_;
    QDBusServiceWatcher watchers_;
};

}  // namespace nettlecap
