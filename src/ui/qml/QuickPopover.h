#pragma once

#include "platform/InputEvents.h"
#include "platform/StatusItem.h"
#include "platform/Time.h"
#include "ui/qml/PreviewPlace.h"
#include "ui/qml/QuickHostedView.h"
#include "ui/qml/SheetPlace.h"

#include <QQuickWindow>

namespace nettlecap {

/// The popover as a window without a title. Its content has a property `cornerRadius`. What
/// opens over the content opens within the window or, as a sheet, in one that belongs to it:
/// with either of them the popover is active.
class QuickPopover final : public QQuickWindow, public Popover {
    Q_OBJECT

public:
    struct Ports {
        NativeWindows& windows;
        const Screens& screens;
        Scheduler& scheduler;
        EventMonitors& events;
    };

    /// Where the status item is on the screen, as Qt has it; empty: nobody knows, and the
    /// pointer that clicked it is still there.
    using ItemGeometry = std::function<QRect()>;

    /// How long a click on the status item may take to be told after it took the keyboard.
    static constexpr Seconds itemPatience{0.4};

    QuickPopover(Ports ports, ItemGeometry itemGeometry);
    ~QuickPopover() override;

    void setContent(std::unique_ptr<HostedView> content) override;
    void setContentSize(Size size) override;
    void setTitle(std::string_view title) override;
    void showBelowStatusItem() override;
    void close() override;

    bool isShown() const override { return isVisible(); }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    Rect itemPlace() const;
    bool isPointerOnItem() const { return item_.contains(ports_.screens.pointerLocation()); }
    void place();
    void round();
    void handleActivity();
    void handleClickElsewhere();

    Ports ports_;
    ItemGeometry itemGeometry_;
    QuickContent content_{*contentItem()};
    PreviewPlace previews_;
    SheetPlace sheets_;
    Rect item_;
    std::int64_t showing_ = 0;  ///< counts them, so that a late task knows its own
    Subscription clicks_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
