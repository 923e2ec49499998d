#pragma once

#include "platform/Windows.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace nettlecap {

/// The window of a preview: above everything, on every desktop, under the pointer if need
/// be, and never with the keyboard. No window manager knows of it.
class QuickPreview final : public QQuickWindow {
    Q_OBJECT

public:
    /// The frame has a property `isComposited`, and the content within it.
    struct Parts {
        std::unique_ptr<QQuickItem> content;  // outlives what looks at its size
        std::unique_ptr<QQuickItem> frame;
    };

    explicit QuickPreview(const NativeWindows& windows);

    void setContent(Parts parts);
    void orderFront();
    void orderOut();  ///< the content is gone then; from no event of its own

    QSizeF contentSize() const;  ///< that it wants to have, in points

Q_SIGNALS:
    void hoverChanged(bool inside);
    void contentSizeChanged();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateMask();

    const NativeWindows& windows_;
    Parts parts_;
};

}  // namespace nettlecap
