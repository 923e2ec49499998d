#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// One of our symbols in one colour, as large as the item. Without a name it is nothing.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged REQUIRED)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged REQUIRED)

public:
    explicit Symbol(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

    void setName(const QString& name);
    void setColor(const QColor& color);

    QString name() const { return name_; }
    QColor color() const { return color_; }

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

private:
    QString name_;
    QColor color_;
};

}  // namespace nettlecap
