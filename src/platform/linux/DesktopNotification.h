#pragma once

#include "platform/Values.h"

#include <QDBusConnection>
#include <QObject>

namespace nettlecap {

/// The desktop's own notices (org.freedesktop.Notifications), one at a time: the next takes
/// the place of the one before. Where the desktop has none, nobody sees them.
class DesktopNotification final : public QObject {
    Q_OBJECT

public:
    struct Text {
        QString summary;
        QString body;
        QString button;  ///< empty: none
    };

    explicit DesktopNotification(QDBusConnection bus);

    void show(const Text& text, Task onButton = {});

private Q_SLOTS:
    void actionInvoked(uint id, const QString& action);

private:
    QDBusConnection bus_;
    uint shown_ = 0;  // 0: none yet
    Task onButton_;
};

}  // namespace nettlecap
