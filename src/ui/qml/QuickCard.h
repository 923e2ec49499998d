#pragma once

#include "ui/qml/QuickHostedView.h"

#include <QQuickWindow>

namespace nettlecap {

/// A window without a title that nobody can click or type into, on every desktop and above
/// everything. No window manager knows of it: a managed one would take clicks, and hide
/// behind full-screen windows.
class QuickCard final : public Panel {
public:
    explicit QuickCard(const NativeWindows& windows);

    void setContent(std::unique_ptr<HostedView> content) override;
    void setContentSize(Size size) override;
    void setOrigin(Point origin) override;
    void orderFrontRegardless() override;
    void orderOut() override;
    void dropContent() override;

    bool isVisible() const override { return window_.isVisible(); }
    const QQuickWindow& window() const { return window_; }

private:
    void place();

    const NativeWindows& windows_;
    QQuickWindow window_;
    QuickContent content_{*window_.contentItem()};
    Size size_;
    Point origin_;
};

}  // namespace nettlecap
