#include "ui/qml/QuickHostedView.h"

#include <QQuickWindow>

namespace nettlecap {

namespace {

/// A layout knows its size only once those within it know theirs.
void polish(QQuickItem& item) {
    for (QQuickItem* child : item.childItems()) polish(*child);
    item.ensurePolished();
}

/// Goes with the next turn, or with its parent if there is none.
struct Leaving : QObject {
    Leaving(std::unique_ptr<QuickHostedView> gone, QObject& parent)
        : QObject(&parent), view(std::move(gone)) {
        deleteLater();
    }

    std::unique_ptr<QuickHostedView> view;
};

}  // namespace

QuickHostedView::QuickHostedView(std::unique_ptr<QQuickItem> item, std::unique_ptr<QObject> view)
    : view_(std::move(view)), item_(std::move(item)) {}

double QuickHostedView::fittingHeight(double width) {
    item_->setWidth(width);
    polish(*item_);
    return item_->implicitHeight();
}

void QuickContent::replace(std::unique_ptr<HostedView> content) {
    if (view_) {
        view_->item().setParentItem(nullptr);
        new Leaving(std::move(view_), parent_);
    }
    view_.reset(static_cast<QuickHostedView*>(content.release()));
    view_->item().setParentItem(&parent_);
    view_->item().setSize(size_);
    view_->item().setFocus(true);
}

void QuickContent::dropWithDrawing() {
    if (!view_) return;
    drop();
    QQuickWindow& window = *parent_.window();
    // What painted the items goes with the next frame, which a hidden window has only when
    // asked for its picture; the picture itself is as large as the window.
    window.setMinimumSize({1, 1});
    window.resize(1, 1);
    window.grabWindow();
    window.releaseResources();
}

void QuickContent::setSize(QSizeF size) {
    size_ = size;
    if (view_) view_->item().setSize(size);
}

}  // namespace nettlecap
