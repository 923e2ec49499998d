#pragma once

#include "app/AppModel.h"
#include "platform/StatusItem.h"

namespace nettlecap {

/// The status item with the popover and the menu that open below it. The popover's content
/// is made when it is first wanted and kept, so that it reopens as it was left.
class StatusBarController {
public:
    struct Collaborators {
        AppModel& app;
        Application& application;
        StatusItem& statusItem;
        Popover& popover;
        StatusBarContent& content;
    };

    /// The collaborators must outlive the controller.
    explicit StatusBarController(Collaborators with);
    ~StatusBarController();
    StatusBarController(const StatusBarController&) = delete;
    StatusBarController& operator=(const StatusBarController&) = delete;

    void handleStatusItemClick(StatusItemClick click);

private:
    void configurePopover();
    Menu makeContextMenu();
    void menuWillOpen(Menu& menu);
    void togglePopover();

    Collaborators with_;
    bool hasContent_ = false;
    Subscription popoverClosing_;
    Subscription clicks_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
