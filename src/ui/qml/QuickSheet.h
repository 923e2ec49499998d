#pragma once

#include "platform/Windows.h"
#include "ui/qml/QuickHostedView.h"

#include <QKeyEvent>
#include <QQuickWindow>
#include <vector>

namespace nettlecap {

/// The window of a sheet: over another one and part of it, without a frame, and with the
/// keyboard. Its size and its `title` are those of its content, which has round corners and a
/// property `isComposited`.
class QuickSheet final : public QQuickWindow {
    Q_OBJECT

public:
    QuickSheet(QQuickWindow& panel, NativeWindows& windows, std::unique_ptr<QQuickItem> content);

    void orderFront();
    void takeKeyboard();
    /// What was typed while another window had the keyboard: taken as soon as this one has it.
    void takeKey(const QKeyEvent& key);

Q_SIGNALS:
    void contentSizeChanged();
    void closeRequested();  ///< as by the window manager; it stays

protected:
    bool event(QEvent* event) override;

private:
    void fit();
    void takeEarlyKeys();

    NativeWindows& windows_;
    QuickHostedView content_;
    std::vector<std::unique_ptr<QKeyEvent>> early_;
};

}  // namespace nettlecap
