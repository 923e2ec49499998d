#include "app/AppDelegate.h"

#include "app/AppIconProvider.h"

namespace nettlecap {

void AppDelegate::applicationWillFinishLaunching() {
    openEvents_ =
        with_.application.onOpenEvent(guard_([this](OpenEvent event) { handleApplicationOpenEvent(event); }));
}

void AppDelegate::applicationDidFinishLaunching() {
    with_.application.setAccessory();
    with_.application.setIcon(AppIconProvider::image.name, AppIconProvider::image.fallbackSymbol);
    with_.app.start();
    statusBarController_ = std::make_unique<StatusBarController>(
        StatusBarController::Collaborators{.app = with_.app,
                                           .application = with_.application,
                                           .statusItem = with_.statusItem,
                                           .popover = with_.popover,
                                           .content = with_.content});
    with_.scheduler.after(openEventPatience, guard_([this] {
                              if (!receivedInitialOpenEvent_) with_.app.openNettlecap();
                          }));
}

void AppDelegate::applicationShouldHandleReopen() { with_.app.openNettlecap(); }

void AppDelegate::applicationWillTerminate() {
    openEvents_.reset();
    with_.app.store().persistUnsaved();
}

void AppDelegate::handleApplicationOpenEvent(OpenEvent event) {
    if (event == OpenEvent::open) receivedInitialOpenEvent_ = true;
    with_.scheduler.post(guard_([this] { with_.app.openNettlecap(); }));
}

}  // namespace nettlecap
