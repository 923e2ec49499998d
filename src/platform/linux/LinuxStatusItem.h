#pragma once

#include "platform/Time.h"
#include "platform/linux/NotifierHost.h"
#include "platform/linux/NotifierItem.h"
#include "platform/linux/x11/X11EmbeddedIcon.h"
#include "platform/linux/x11/X11EmbeddingTray.h"

#include <QIcon>

namespace nettlecap {

/// The icon in the panel's tray, of the old kind (XEmbed) or the new one (StatusNotifierItem),
/// whichever the desktop has; of the new one where it has both. Either may come when the
/// program has long been running, and go and come again. Needs a QGuiApplication.
class LinuxStatusItem final : public StatusItem {
public:
    /// For a panel that has begun to take icons of the old kind to say whether it takes those
    /// of the new kind, too.
    static constexpr Seconds panelPatience{0.3};
    static constexpr Seconds toolTipDelay{0.7};

    /// Both must outlive this.
    LinuxStatusItem(X11Connection& connection, Scheduler& scheduler);
    ~LinuxStatusItem() override;

    /// A tray of the old kind leaves the menu and the tool tip to the program. They are shown
    /// there as long as the subscription lasts.
    Subscription showIn(StatusItemWindows& windows);

    void setImage(const TemplateDrawing& image) override;
    void setToolTip(std::string_view text) override;
    /// A tray of the new kind shows the menu itself, in the panel's own style.
    void setMenu(Menu menu) override;
    void popUpMenu() override;

    Subscription onClick(std::function<void(StatusItemClick)> handler) override {
        return clicked_.subscribe(std::move(handler));
    }

    /// On the screen, as Qt has it. Empty: a tray of the new kind tells nobody.
    QRect geometry() const;

private:
    void followHost();
    void notify();
    void embedSoon();
    void embed();
    void hover(bool isInside);
    NotifierPictures pictures() const;

    X11Connection& connection_;
    Scheduler& scheduler_;
    StatusItemWindows* windows_ = nullptr;
    Signal<StatusItemClick> clicked_;
    QIcon image_;
    std::string toolTip_;
    Menu menu_;
    std::unique_ptr<NotifierItem> notifier_;  // these two: at most one is there
    std::unique_ptr<X11EmbeddedIcon> embedded_;
    std::vector<Subscription> told_;  // by that one
    bool hasChosen_ = false;
    std::int64_t waits_ = 0;  // these two count, so that a late task knows its own
    std::int64_t hovers_ = 0;
    NotifierHost host_;
    std::unique_ptr<X11EmbeddingTray> tray_;
    std::vector<Subscription> trays_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
