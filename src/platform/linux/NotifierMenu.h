#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/NotifierTypes.h"

#include <QDBusContext>
#include <QObject>
#include <QTimer>
#include <deque>

namespace nettlecap {

/// The menu as a panel reads it over the bus and shows it itself (com.canonical.dbusmenu,
/// version 3). The root has the number 0, the lines are counted from 1.
class NotifierMenu : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    /// The menu must outlive this.
    explicit NotifierMenu(Menu& menu);

    void menuChanged();  ///< it is another one now

    uint version() const { return 3; }
    QString textDirection() const { return QStringLiteral("ltr"); }
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    // The protocol's own names and shapes. A list without names asks for all properties.
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   nettlecap::NotifierMenuLayout& layout);
    nettlecap::NotifierMenuItems GetGroupProperties(const QList<int>& ids, const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const nettlecap::NotifierMenuEvents& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const nettlecap::NotifierMenuItems& updatedProps,
                                const nettlecap::NotifierMenuKeyList& removedProps);
    void LayoutUpdated(uint revision, int parent);
    void ItemActivationRequested(int id, uint timestamp);

private:
    bool has(int id) const { return id >= 0 && static_cast<std::size_t>(id) <= menu_.items.size(); }
    QVariantMap propertiesOf(int id, const QStringList& wanted) const;
    void tell(int id, const QString& event);
    void open();
    void chooseNext();
    void choose(int id);

    Menu& menu_;
    std::deque<int> chosen_;
    QTimer later_;
    uint revision_ = 1;
    bool isOpen_ = false;
};

}  // namespace nettlecap
