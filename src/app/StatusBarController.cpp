#include "app/StatusBarController.h"

#include "app/AppIconProvider.h"

namespace nettlecap {

namespace {

constexpr const char* programName = "Nettlecap";
constexpr Size popoverSize{430, 560};
constexpr std::size_t updatesItem = 0;  ///< its place in the menu

const MenuItem separator;

}  // namespace

StatusBarController::StatusBarController(Collaborators with) : with_(with) {
    with_.statusItem.setImage(AppIconProvider::menuBarImage());
    with_.statusItem.setToolTip(programName);
    with_.statusItem.setMenu(makeContextMenu());
    configurePopover();
    clicks_ =
        with_.statusItem.onClick(guard_([this](StatusItemClick click) { handleStatusItemClick(click); }));
}

StatusBarController::~StatusBarController() {
    // Both ports outlive the model, which the content looks at and the menu acts on.
    with_.popover.close();
    with_.popover.setContent(nullptr);
    with_.statusItem.setMenu({});
}

void StatusBarController::configurePopover() {
    with_.popover.setTitle(programName);
    with_.popover.setContentSize(popoverSize);
    popoverClosing_ = with_.app.onPopoverShouldClose([this] { with_.popover.close(); });
}

Menu StatusBarController::makeContextMenu() {
    return {.title = programName,
            .items = {{.title = "Buscar atualizações…", .keyEquivalent = {}, .action = guard_([this] {
                                                                                 with_.app.checkForUpdates();
                                                                             })},
                      separator,
                      {.title = "Settings…", .keyEquivalent = ",", .action = guard_([this] {
                                                                       with_.app.openSettings();
                                                                   })},
                      separator,
                      {.title = "Quit Nettlecap", .keyEquivalent = "q", .action = guard_([this] {
                                                                            with_.application.terminate();
                                                                        })}},
            .willOpen = guard_([this](Menu& menu) { menuWillOpen(menu); }),
            .didClose = nullptr};
}

void StatusBarController::handleStatusItemClick(StatusItemClick click) {
    if (click == StatusItemClick::left) {
        togglePopover();
        return;
    }
    with_.popover.close();
    with_.statusItem.popUpMenu();
}

void StatusBarController::menuWillOpen(Menu& menu) {
    with_.popover.close();  // no click was reported where the system opens the menu by itself
    const AppUpdates* updates = with_.app.updates();
    menu.items[updatesItem].isEnabled = updates && updates->canCheckForUpdates();
}

void StatusBarController::togglePopover() {
    if (with_.popover.isShown()) {
        with_.popover.close();
        return;
    }
    if (!std::exchange(hasContent_, true)) with_.popover.setContent(with_.content.make(with_.app));
    with_.popover.showBelowStatusItem();
}

}  // namespace nettlecap
