#include "platform/linux/NotifierItem.h"

#include "platform/linux/NotifierHost.h"

#include <QDBusMessage>
#include <QDBusPendingCall>

namespace nettlecap {

namespace {

constexpr const char* menuObject = "/MenuBar";

/// Another one for each item, since one may come while the last is still going.
QString newConnectionName() {
    static int count = 0;
    return QStringLiteral("status notifier item %1").arg(++count);
}

}  // namespace

NotifierItem::NotifierItem(QString title, Menu& menu)
    : title_(std::move(title)), menu_(menu), connectionName_(newConnectionName()),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName_)) {
    registerNotifierTypes();
    later_.setSingleShot(true);
    later_.callOnTimeout(this, [this] { tellNext(); });
    const auto all = QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots |
                     QDBusConnection::ExportAllSignals;
    bus_.registerObject(QString::fromLatin1(path), this, all);
    bus_.registerObject(QString::fromLatin1(menuObject), &menu_, all);
}

NotifierItem::~NotifierItem() { QDBusConnection::disconnectFromBus(connectionName_); }

void NotifierItem::announce() {
    auto call = QDBusMessage::createMethodCall(NotifierHost::watcherName, NotifierHost::watcherPath,
                                               NotifierHost::watcherName,
                                               QStringLiteral("RegisterStatusNotifierItem"));
    call << bus_.baseService();
    call.setAutoStartService(false);
    bus_.asyncCall(call);
}

void NotifierItem::setPictures(NotifierPictures pictures) {
    pictures_ = std::move(pictures);
    Q_EMIT NewIcon();
}

void NotifierItem::setToolTip(const QString& text) {
    toolTip_ = text;
    Q_EMIT NewToolTip();
}

NotifierToolTip NotifierItem::toolTip() const {
    return {.iconName = {}, .pictures = {}, .title = toolTip_, .text = {}};
}

QDBusObjectPath NotifierItem::menuPath() const { return QDBusObjectPath(menuObject); }

void NotifierItem::Activate(int, int) { tellLater(StatusItemClick::left); }

void NotifierItem::ContextMenu(int, int) { tellLater(StatusItemClick::right); }

/// The panel has its answer first, whatever the click does.
void NotifierItem::tellLater(StatusItemClick click) {
    untold_.push_back(click);
    later_.start(0);
}

void NotifierItem::tellNext() {
    const StatusItemClick click = untold_.front();
    untold_.pop_front();
    if (!untold_.empty()) later_.start(0);
    clicked_.emit(click);  // which may be the end of this
}

}  // namespace nettlecap
