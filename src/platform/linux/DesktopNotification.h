#pragma once

#include "platform/Values.h"

#include <QDBusConnection>
#include <QObject>

namespace nettlecap {

/// The desktop's own notices (org.freedesktop.Notifications), one at a time: the next takes
/// the place of the one before. Many a desktop has none.
class DesktopNotification final : public QObject {
    Q_OBJECT

public:
    struct Text {
        QString summary;
        QString body;
        QString button;  ///< empty: none
    };

    struct Reactions {
        Task toButton;
        Task toNobodySeeingIt;
    };

    explicit DesktopNotification(QDBusConnection bus);

    void show(const Text& text, Reactions reactions);

private Q_SLOTS:
    void actionInvoked(uint id, const QString& action);

private:
    void nobodySeesIt();

    QDBusConnection bus_;
    uint shown_ = 0;  // 0: none yet
    Reactions reactions_;
};

}  // namespace nettlecap
