#pragma once

#include "ui/qml/QuickHostedView.h"

#include <QQuickWindow>

namespace nettlecap {

/// The floating panel: titled, closable, of a fixed size, above ordinary windows, on every
/// desktop. Escape and its close button hide it and destroy nothing.
class QuickPanel : public QQuickWindow {
    Q_OBJECT

public:
    QuickPanel(QSize size, NativeWindows& windows);
    ~QuickPanel() override;

    void setContent(std::unique_ptr<HostedView> content);
    void dropContent();  ///< from no event of its own
    /// With the keyboard in it. In the middle of the screen where the pointer is, unless it
    /// is shown already.
    void makeKeyAndOrderFront();
    void orderOut();

Q_SIGNALS:
    void orderedOut();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void positionOnCurrentScreen();

    NativeWindows& windows_;
    QuickContent content_{*contentItem()};
};

}  // namespace nettlecap
