#pragma once

#include "platform/linux/NotifierTypes.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace nettlecap {

/// A panel that shows an icon it is told of over the bus (freedesktop.org, StatusNotifierItem),
/// and its menu (com.canonical.dbusmenu). Everything waits for the answer in the main loop.
class NotifierPanel {
public:
    explicit NotifierPanel(QString item);  ///< the name that it was registered with
    ~NotifierPanel();

    QVariant property(const char* name);
    template <class Type>
    Type property(const char* name) {
        return qdbus_cast<Type>(property(name));
    }
    QDBusMessage click(const char* method);  ///< that the user clicked somewhere on it

    QDBusMessage menu(const char* method, const QVariantList& arguments = {});
    NotifierMenuLayout layout(int of = 0, int depth = -1, const QStringList& names = {});
    QStringList lines();  ///< the labels; "-" for what is between groups
    void tell(int line, const char* event);

private:
    QDBusMessage call(const QString& path, const QString& interface, const char* method,
                      const QVariantList& arguments);

    QString item_;
    QDBusConnection bus_;
};

}  // namespace nettlecap
