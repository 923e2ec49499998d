#include "ui/qml/PreviewHost.h"

#include "ui/EntryPreviewPopover.h"
#include "ui/qml/PreviewPlace.h"

namespace nettlecap {

PreviewHost::~PreviewHost() {
    if (place_) place_->close(*this);
}

void PreviewHost::componentComplete() {
    isComplete_ = true;
    connect(anchor_, &QQuickItem::windowChanged, this, &PreviewHost::update);
    update();
}

void PreviewHost::setPreview(QObject* preview) {
    preview_ = preview;
    if (isComplete_) update();
}

void PreviewHost::setCovered(bool isCovered) {
    if (isCovered == isCovered_) return;
    isCovered_ = isCovered;
    if (!isComplete_ || !preview_) return;
    if (isCovered) handleHover(false);
    update();
}

void PreviewHost::update() {
    if (place_) place_->close(*this);
    place_ = preview_ && !isCovered_ ? PreviewPlace::of(anchor_->window()) : nullptr;
    if (place_) place_->show(*this);
}

void PreviewHost::handleHover(bool inside) {
    // A saved message's preview has no use for it.
    if (auto* entryPreview = qobject_cast<EntryPreviewPopover*>(preview_))
        entryPreview->onHoverChanged(inside);
}

void PreviewHost::handleDisappearance() {
    place_ = nullptr;
    // The rows of the two lists have no class in common.
    QMetaObject::invokeMethod(row_, "previewDisappeared");
}

}  // namespace nettlecap
