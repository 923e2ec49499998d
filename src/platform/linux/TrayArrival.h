#pragma once

#include "platform/linux/x11/X11EmbeddingTray.h"

#include <QDBusServiceWatcher>

namespace nettlecap {

/// Waits until the desktop has a tray, of whichever kind. Qt looks for one at the first icon
/// and stays with the kind that it found: an icon that is made when the session starts, before
/// its panel, would never be seen in a panel of the new kind.
class TrayArrival : public QObject {
    Q_OBJECT

public:
    /// The connection must outlive this.
    explicit TrayArrival(X11Connection& connection);

    /// At most once, from the main loop.
    Subscription onArrival(Task handler) { return arrived_.subscribe(std::move(handler)); }

private Q_SLOTS:
    void askForHost();
    void arrive();

private:
    bool hasArrived_ = false;
    Signal<> arrived_;
    std::unique_ptr<X11EmbeddingTray> embedding_;
    Subscription embeddingArrivals_;
    QDBusServiceWatcher watchers_;
};

}  // namespace nettlecap
