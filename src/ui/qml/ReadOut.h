#pragma once

#include <QPointer>
#include <QQuickItem>

namespace nettlecap {

/// Has screen readers read an item out that is walked to while something else has the
/// keyboard, like the selected row below a search field. They speak only of what is said to
/// have got the focus, so that is what is said.
class ReadOut : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* item READ item WRITE setItem NOTIFY itemChanged REQUIRED)
    Q_PROPERTY(bool isWanted READ isWanted WRITE setWanted NOTIFY isWantedChanged REQUIRED)

public:
    void setItem(QQuickItem* item);
    void setWanted(bool isWanted);  ///< it is read out soon after this has become true

    QQuickItem* item() const { return item_; }
    bool isWanted() const { return isWanted_; }

Q_SIGNALS:
    void itemChanged();
    void isWantedChanged();

private:
    Q_INVOKABLE void tell() const;

    QPointer<QQuickItem> item_;
    bool isWanted_ = false;
};

}  // namespace nettlecap
