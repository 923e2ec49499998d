#pragma once

#include "platform/linux/NotifierMenu.h"
#include "platform/linux/NotifierTypes.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QTimer>
#include <deque>

namespace nettlecap {

/// The icon as a panel reads it over the bus and draws it itself (freedesktop.org,
/// StatusNotifierItem, in the form that KDE gave it). It is on a connection of its own to the
/// session bus: when that ends, the icon is gone from every panel.
class NotifierItem : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconThemePath READ none)
    Q_PROPERTY(QString IconName READ none)
    Q_PROPERTY(nettlecap::NotifierPictures IconPixmap READ pictures)
    Q_PROPERTY(QString OverlayIconName READ none)
    Q_PROPERTY(nettlecap::NotifierPictures OverlayIconPixmap READ noPictures)
    Q_PROPERTY(QString AttentionIconName READ none)
    Q_PROPERTY(nettlecap::NotifierPictures AttentionIconPixmap READ noPictures)
    Q_PROPERTY(QString AttentionMovieName READ none)
    Q_PROPERTY(nettlecap::NotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menuPath)

public:
    static constexpr const char* path = "/StatusNotifierItem";

    /// The menu must outlive this.
    NotifierItem(QString title, Menu& menu);
    ~NotifierItem() override;

    void setPictures(NotifierPictures pictures);
    void setToolTip(const QString& text);
    void menuChanged() { menu_.menuChanged(); }
    /// With a watcher that has come.
    void announce();

    Subscription onClick(std::function<void(StatusItemClick)> handler) const {
        return clicked_.subscribe(std::move(handler));
    }

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return title_; }
    QString title() const { return title_; }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString none() const { return {}; }
    NotifierPictures pictures() const { return pictures_; }
    NotifierPictures noPictures() const { return {}; }
    NotifierToolTip toolTip() const;
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menuPath() const;

public Q_SLOTS:
    // The protocol's own names. Where on the screen it was, the pointer tells better.
    void Activate(int x, int y);
    void ContextMenu(int x, int y);
    void SecondaryActivate(int, int) {}
    void Scroll(int, const QString&) {}

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewAttentionIcon();
    void NewOverlayIcon();
    void NewToolTip();
    void NewStatus(const QString& status);
    void NewMenu();

private:
    void tellLater(StatusItemClick click);
    void tellNext();

    QString title_;
    QString toolTip_;
    NotifierPictures pictures_;
    NotifierMenu menu_;
    Signal<StatusItemClick> clicked_;
    std::deque<StatusItemClick> untold_;
    QTimer later_;
    QString connectionName_;
    QDBusConnection bus_;
};

}  // namespace nettlecap
