#pragma once

#include "app/StatusBarController.h"

namespace nettlecap {

/// The life of the program from its start to its end. Every launch shows the history once:
/// at the request of the desktop, or by itself where that does not come.
class AppDelegate {
public:
    struct Collaborators {
        AppModel& app;
        Application& application;
        Scheduler& scheduler;
        StatusItem& statusItem;
        Popover& popover;
        StatusBarContent& content;
    };

    /// How long a launch waits for the desktop to ask for the window.
    static constexpr Seconds openEventPatience{0.75};

    /// The collaborators must outlive the delegate.
    explicit AppDelegate(Collaborators with) : with_(with) {}

    void applicationWillFinishLaunching();  ///< before the main loop runs
    void applicationDidFinishLaunching();
    void applicationShouldHandleReopen();
    void applicationWillTerminate();
    void handleApplicationOpenEvent(OpenEvent event);

private:
    Collaborators with_;
    bool receivedInitialOpenEvent_ = false;
    std::unique_ptr<StatusBarController> statusBarController_;
    Subscription openEvents_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
