#pragma once

#include <QQuickItem>
#include <QQuickWindow>

namespace nettlecap {

/// The floating panel: titled, closable, of a fixed size, above ordinary windows. Escape
/// and its close button hide it and destroy nothing.
class QuickPanel : public QQuickWindow {
    Q_OBJECT

public:
    explicit QuickPanel(QSize size);
    ~QuickPanel() override;

    void setContent(std::unique_ptr<QQuickItem> content);
    /// In the middle of the screen where the pointer is, unless it is shown already.
    void makeKeyAndOrderFront();
    void orderOut();

Q_SIGNALS:
    void orderedOut();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void positionOnCurrentScreen();

    std::unique_ptr<QQuickItem> content_;
};

}  // namespace nettlecap
