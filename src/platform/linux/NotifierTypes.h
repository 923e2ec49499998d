#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QVariantMap>

namespace nettlecap {

// What is said of an icon and its menu over the bus, in the protocols' own shapes.

/// (iiay): four bytes a pixel, ARGB in this order, not premultiplied.
struct NotifierPicture {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using NotifierPictures = QList<NotifierPicture>;

/// (sa(iiay)ss)
struct NotifierToolTip {
    QString iconName;
    NotifierPictures pictures;
    QString title;
    QString text;
};

/// (ia{sv})
struct NotifierMenuItem {
    int id = 0;
    QVariantMap properties;
};
using NotifierMenuItems = QList<NotifierMenuItem>;

/// (ia{sv}av)
struct NotifierMenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<NotifierMenuLayout> children;
};

/// (ias)
struct NotifierMenuKeys {
    int id = 0;
    QStringList names;
};
using NotifierMenuKeyList = QList<NotifierMenuKeys>;

/// (isvu)
struct NotifierMenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint time = 0;
};
using NotifierMenuEvents = QList<NotifierMenuEvent>;

/// Before the first of them is sent or received.
void registerNotifierTypes();

QDBusArgument& operator<<(QDBusArgument& to, const NotifierPicture& picture);
const QDBusArgument& operator>>(const QDBusArgument& from, NotifierPicture& picture);
QDBusArgument& operator<<(QDBusArgument& to, const NotifierToolTip& tip);
const QDBusArgument& operator>>(const QDBusArgument& from, NotifierToolTip& tip);
QDBusArgument& operator<<(QDBusArgument& to, const NotifierMenuItem& item);
const QDBusArgument& operator>>(const QDBusArgument& from, NotifierMenuItem& item);
QDBusArgument& operator<<(QDBusArgument& to, const NotifierMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& from, NotifierMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& to, const NotifierMenuKeys& keys);
const QDBusArgument& operator>>(const QDBusArgument& from, NotifierMenuKeys& keys);
QDBusArgument& operator<<(QDBusArgument& to, const NotifierMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& from, NotifierMenuEvent& event);

}  // namespace nettlecap

Q_DECLARE_METATYPE(nettlecap::NotifierPicture)
Q_DECLARE_METATYPE(nettlecap::NotifierToolTip)
Q_DECLARE_METATYPE(nettlecap::NotifierMenuItem)
Q_DECLARE_METATYPE(nettlecap::NotifierMenuLayout)
Q_DECLARE_METATYPE(nettlecap::NotifierMenuKeys)
Q_DECLARE_METATYPE(nettlecap::NotifierMenuEvent)
