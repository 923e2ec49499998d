#pragma once

#include "ui/qml/PreviewPlace.h"
#include "ui/qml/QuickHostedView.h"
#include "ui/qml/SheetPlace.h"

#include <QQuickWindow>

namespace nettlecap {

/// The floating panel, of a fixed size. It keeps its window of the window system when it is
/// hidden.
class QuickPanel final : public QQuickWindow, public TitledPanel {
    Q_OBJECT

public:
    QuickPanel(NativeWindows& windows, const Screens& screens);
    ~QuickPanel() override;

    void setContent(std::unique_ptr<HostedView> content) override;
    void dropContent() override;
    void setContentSize(Size size) override;
    void setTitle(std::string_view title) override;
    /// Of the content: what the window manager draws stands around it.
    void setOrigin(Point origin) override;
    void center() override;
    void orderFrontRegardless() override;
    void makeKeyAndOrderFront() override;
    void orderOut() override;

    bool isVisible() const override { return QQuickWindow::isVisible(); }
    Subscription onOrderedOut(Task handler) override { return orderedOut_.subscribe(std::move(handler)); }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    NativeWindows& windows_;
    Signal<> orderedOut_;
    QuickContent content_{*contentItem()};
    PreviewPlace previews_;
    SheetPlace sheets_;
};

}  // namespace nettlecap
