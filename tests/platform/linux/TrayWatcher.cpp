#include "platform/linux/TrayWatcher.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

const QString busName = QStringLiteral("tray watcher");
const QString name = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString path = QStringLiteral("/StatusNotifierWatcher");

}  // namespace

TrayWatcher::TrayWatcher(bool hasHost)
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, busName)), hasHost_(hasHost) {
    EXPECT_TRUE(bus_.registerObject(path, this,
                                    QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots |
                                        QDBusConnection::ExportAllSignals));
    EXPECT_TRUE(bus_.registerService(name));
}

TrayWatcher::~TrayWatcher() {
    EXPECT_TRUE(bus_.unregisterService(name));
    QDBusConnection::disconnectFromBus(busName);
}

void TrayWatcher::addHost() {
    hasHost_ = true;
    Q_EMIT StatusNotifierHostRegistered();
}

void TrayWatcher::removeHost() {
    hasHost_ = false;
    Q_EMIT StatusNotifierHostUnregistered();
}

bool TrayWatcher::isHostRegistered() {
    ++timesAsked_;
    return hasHost_;
}

}  // namespace nettlecap
