#include "ui/qml/SheetHost.h"

#include "ui/qml/SheetPlace.h"

namespace nettlecap {

SheetHost::~SheetHost() {
    if (place_) place_->close(*this);
}

void SheetHost::setView(QObject* view) {
    if (view == view_) return;
    view_ = view;
    update();
    Q_EMIT viewChanged();
}

void SheetHost::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange) update();
}

void SheetHost::update() {
    if (place_) place_->close(*this);
    place_ = view_ ? SheetPlace::of(window()) : nullptr;
    if (place_) place_->open(*this);
}

}  // namespace nettlecap
