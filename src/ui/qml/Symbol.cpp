#include "ui/qml/Symbol.h"

#include <QPainter>
#include <QSvgRenderer>

namespace nettlecap {

void Symbol::setName(const QString& name) {
    if (name == name_) return;
    name_ = name;
    update();
    Q_EMIT nameChanged();
}

void Symbol::setColor(const QColor& color) {
    if (color == color_) return;
    color_ = color;
    update();
    Q_EMIT colorChanged();
}

void Symbol::paint(QPainter* painter) {
    if (name_.isEmpty() || color_.alpha() == 0) return;  // not worth its drawing, in rows by the dozen
    QSvgRenderer symbol(QStringLiteral(":/nettlecap/symbols/%1.svg").arg(name_));
    symbol.setAspectRatioMode(Qt::KeepAspectRatio);
    symbol.render(painter, boundingRect());
    // The drawing is opaque where the symbol is, in whatever colour.
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(boundingRect(), color_);
}

}  // namespace nettlecap
