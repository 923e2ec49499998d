#pragma once

#include "platform/InputEvents.h"
#include "platform/StatusItem.h"
#include "ui/DeleteLater.h"
#include "ui/StatusItemMenu.h"
#include "ui/qml/StatusItemWindow.h"

#include <QQmlEngine>

namespace nettlecap {

/// The menu and the tool tip of the status item, of Qt Quick.
class QuickStatusItemWindows final : public StatusItemWindows {
public:
    struct Ports {
        NativeWindows& windows;
        const Screens& screens;
        EventMonitors& events;
    };

    /// Where the status item is on the screen, as Qt has it; empty: nobody knows, and the
    /// pointer that clicked it is still there.
    using ItemGeometry = std::function<QRect()>;

    /// The engine knows the program's components.
    QuickStatusItemWindows(Ports ports, QQmlEngine& engine, ItemGeometry itemGeometry);
    ~QuickStatusItemWindows() override;

    void popUpMenu(Menu& menu) override;
    void closeMenu() override;
    void showToolTip(std::string_view text) override;
    void hideToolTip() override;

    const StatusItemWindow* menuWindow() const { return menuWindow_.get(); }  ///< null: closed
    const StatusItemWindow* toolTipWindow() const { return toolTip_.get(); }

private:
    void close(std::optional<std::size_t> chosen);
    Rect itemPlace() const;

    Ports ports_;
    QQmlEngine& engine_;
    ItemGeometry itemGeometry_;
    Menu* menu_ = nullptr;  ///< while it is open
    // Closed by events of their own.
    DeletedLater<StatusItemMenu> view_;
    DeletedLater<StatusItemWindow> menuWindow_;
    DeletedLater<StatusItemWindow> toolTip_;
    Subscription clicks_;
};

}  // namespace nettlecap
