#include "platform/linux/NotifierTypes.h"

#include <QDBusMetaType>

namespace nettlecap {

namespace {

/// The fields, one after the other, in one structure.
template <class... Fields>
QDBusArgument& write(QDBusArgument& to, const Fields&... fields) {
    to.beginStructure();
    (to << ... << fields);
    to.endStructure();
    return to;
}

template <class... Fields>
const QDBusArgument& read(const QDBusArgument& from, Fields&... fields) {
    from.beginStructure();
    (from >> ... >> fields);
    from.endStructure();
    return from;
}

/// Also under the name that signals and slots call it by.
template <class List>
void registerAs(const char* name) {
    qDBusRegisterMetaType<List>();
    qRegisterMetaType<List>(name);
}

/// av
struct Children {
    QList<NotifierMenuLayout> layouts;
};

QDBusArgument& operator<<(QDBusArgument& to, const Children& children) {
    to.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const NotifierMenuLayout& child : children.layouts) to << QDBusVariant(QVariant::fromValue(child));
    to.endArray();
    return to;
}

const QDBusArgument& operator>>(const QDBusArgument& from, Children& children) {
    from.beginArray();
    while (!from.atEnd()) {
        QDBusVariant child;
        from >> child;
        children.layouts << qdbus_cast<NotifierMenuLayout>(child.variant());
    }
    from.endArray();
    return from;
}

}  // namespace

void registerNotifierTypes() {
    qDBusRegisterMetaType<NotifierPicture>();
    registerAs<NotifierPictures>("nettlecap::NotifierPictures");
    qDBusRegisterMetaType<NotifierToolTip>();
    qDBusRegisterMetaType<NotifierMenuItem>();
    registerAs<NotifierMenuItems>("nettlecap::NotifierMenuItems");
    qDBusRegisterMetaType<NotifierMenuLayout>();
    qDBusRegisterMetaType<NotifierMenuKeys>();
    registerAs<NotifierMenuKeyList>("nettlecap::NotifierMenuKeyList");
    qDBusRegisterMetaType<NotifierMenuEvent>();
    registerAs<NotifierMenuEvents>("nettlecap::NotifierMenuEvents");
    qDBusRegisterMetaType<QList<QStringList>>();  // the keys of a line
}

QDBusArgument& operator<<(QDBusArgument& to, const NotifierPicture& picture) {
    return write(to, picture.width, picture.height, picture.pixels);
}

const QDBusArgument& operator>>(const QDBusArgument& from, NotifierPicture& picture) {
    return read(from, picture.width, picture.height, picture.pixels);
}

QDBusArgument& operator<<(QDBusArgument& to, const NotifierToolTip& tip) {
    return write(to, tip.iconName, tip.pictures, tip.title, tip.text);
}

const QDBusArgument& operator>>(const QDBusArgument& from, NotifierToolTip& tip) {
    return read(from, tip.iconName, tip.pictures, tip.title, tip.text);
}

QDBusArgument& operator<<(QDBusArgument& to, const NotifierMenuItem& item) {
    return write(to, item.id, item.properties);
}

const QDBusArgument& operator>>(const QDBusArgument& from, NotifierMenuItem& item) {
    return read(from, item.id, item.properties);
}

QDBusArgument& operator<<(QDBusArgument& to, const NotifierMenuLayout& layout) {
    return write(to, layout.id, layout.properties, Children{layout.children});
}

const QDBusArgument& operator>>(const QDBusArgument& from, NotifierMenuLayout& layout) {
    Children children;
    read(from, layout.id, layout.properties, children);
    layout.children = children.layouts;
    return from;
}

QDBusArgument& operator<<(QDBusArgument& to, const NotifierMenuKeys& keys) {
    return write(to, keys.id, keys.names);
}

const QDBusArgument& operator>>(const QDBusArgument& from, NotifierMenuKeys& keys) {
    return read(from, keys.id, keys.names);
}

QDBusArgument& operator<<(QDBusArgument& to, const NotifierMenuEvent& event) {
    return write(to, event.id, event.name, event.data, event.time);
}

const QDBusArgument& operator>>(const QDBusArgument& from, NotifierMenuEvent& event) {
    return read(from, event.id, event.name, event.data, event.time);
}

}  // namespace nettlecap
