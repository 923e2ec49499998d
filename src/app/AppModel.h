#pragma once

#include "app/AppServices.h"
#include "app/AppWindows.h"
#include "app/HotKeyNavigation.h"
#include "platform/Platform.h"

namespace nettlecap {

/// Ties history, capture, hot keys, windows and settings together; one for the life of the
/// program.
class AppModel {
public:
    /// Both are there.
    struct Windows {
        std::unique_ptr<NavigationHUD> hud;
        std::unique_ptr<SearchPanel> searchPanel;
    };

    /// Null where the system has none.
    struct Services {
        std::unique_ptr<AppUpdates> updates;
        std::unique_ptr<LoginItemSync> loginItem;
    };

    /// Loads preferences and history. The platform's ports must outlive the model.
    AppModel(const Platform& platform, Windows windows, Services services);

    void start();  ///< begins to capture and to answer hot keys; a second call does nothing

    /// The only way to change a preference: `edit` changes the record in place.
    void updatePreferences(const std::function<void(AppPreferences&)>& edit);

    /// Puts the item on the pasteboard, pastes it where `pasteImmediately`, or else the
    /// preference, says so, and says in `statusMessage` what came of it.
    void copy(const ClipboardEntry& entry, std::optional<bool> pasteImmediately = std::nullopt);
    void copy(const SavedSnippet& snippet, std::optional<bool> pasteImmediately = std::nullopt);

    void toggleFavorite(const ClipboardEntry& entry);  ///< and says so in `statusMessage`
    void setNavigationEntryID(const Uuid& id);         ///< the next navigation starts from there
    void purgeHistory();                               ///< favourites and snippets stay
    void openSettings();
    void openNettlecap();
    void checkForUpdates() const;  ///< nothing happens while `updates` can't
    void synchronizeUpdates() const;
    void syncLaunchAtLogin(bool showStatus);  ///< with the preference
    void openLoginItems() const;              ///< in the system's own settings
    void setMonitoring(bool isOn);            ///< and says so in `statusMessage`

    bool canPaste() { return paste_.isTrusted(false); }  ///< into others; the user is not asked
    ClipboardStore& store() { return store_; }
    const Published<AppPreferences>& preferences() const { return state_.preferences; }
    const Published<bool>& isMonitoring() const { return state_.isMonitoring; }
    const Published<std::optional<std::string>>& statusMessage() const { return state_.statusMessage; }
    const Published<bool>& launchAtLoginRequiresApproval() const {
        return state_.launchAtLoginRequiresApproval;
    }
    const AppUpdates* updates() const { return services_.updates.get(); }  ///< null: there are none
    const std::optional<Uuid>& navigationEntryID() const { return state_.navigationEntryID; }

    /// Anything of the model, the history or the updates has changed.
    Subscription onChange(Task handler) const { return changed_.subscribe(std::move(handler)); }
    /// The popover is to close, so that another window can have the keyboard.
    Subscription onPopoverShouldClose(Task handler) const {
        return state_.popoverShouldClose.subscribe(std::move(handler));
    }

private:
    void forwardChanges();

    UserDefaults& defaults_;
    AppState state_;
    ClipboardStore store_;
    Services services_;
    Windows windows_;  // after what its views look at
    ClipboardMonitor monitor_;
    PasteService paste_;
    ItemDelivery delivery_;
    HotKeyNavigation navigation_;
    bool hasStarted_ = false;
    Signal<> changed_;
    std::vector<Subscription> changes_;
};

}  // namespace nettlecap
