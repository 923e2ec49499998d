#pragma once

#include "platform/Windows.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace nettlecap {

/// A small window beside the status item, as large as its one item wants to be, on every
/// desktop and above everything. No window manager knows of it. It never has the focus; the
/// keyboard and the pointer can be taken for it nevertheless.
class StatusItemWindow final : public QQuickWindow {
    Q_OBJECT

public:
    struct Ports {
        const NativeWindows& windows;
        const Screens& screens;
    };

    /// The item has a property `radius`, of its corners.
    StatusItemWindow(Ports ports, std::unique_ptr<QQuickItem> content);
    ~StatusItemWindow() override;

    /// Without a size: at a place that was pointed at.
    void showBeside(const Rect& item);
    /// Whatever the user does is told to this window from then on. False: somebody else has
    /// the pointer.
    bool takeInput();
    void dismiss();

    const QQuickItem& content() const { return *content_; }

Q_SIGNALS:
    void keyPressed(int key, Qt::KeyboardModifiers modifiers);
    void pressedOutside();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void giveInputBack();

    Ports ports_;
    std::unique_ptr<QQuickItem> content_;
    bool hasInput_ = false;
};

}  // namespace nettlecap
