#pragma once

#include "platform/Windows.h"

#include <QQuickItem>

namespace nettlecap {

/// An item and the view logic that it shows, as one.
class QuickHostedView final : public HostedView {
public:
    QuickHostedView(std::unique_ptr<QQuickItem> item, std::unique_ptr<QObject> view);

    double fittingHeight(double width) override;

    QQuickItem& item() { return *item_; }

private:
    std::unique_ptr<QObject> view_;  // outlives what shows it
    std::unique_ptr<QQuickItem> item_;
};

/// What a window shows. What is replaced is out of sight at once and goes with the next
/// turn of the main loop, since it may be handling the very event that replaced it.
class QuickContent {
public:
    explicit QuickContent(QQuickItem& parent) : parent_(parent) {}

    void replace(std::unique_ptr<HostedView> content);  ///< what QuickViewFactory made
    void drop() { view_.reset(); }                      ///< at once; from no event of its own
    /// The same in a hidden window, which also gives back what it drew and has its size set anew
    /// before it is shown.
    void dropWithDrawing();
    void setSize(QSizeF size);

    QQuickItem* item() const { return view_ ? &view_->item() : nullptr; }

private:
    QQuickItem& parent_;
    QSizeF size_;
    std::unique_ptr<QuickHostedView> view_;
};

}  // namespace nettlecap
