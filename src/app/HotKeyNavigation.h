#pragma once

#include "app/ItemDelivery.h"
#include "capture/HotKeyManager.h"
#include "model/ClipboardStore.h"
#include "platform/Application.h"

namespace nettlecap {

/// Walks the history while a chord is held: each press selects an entry, puts it on the
/// pasteboard and shows it on the card; once the chord's key and then its modifiers are let
/// go, the entry is pasted.
class HotKeyNavigation {
public:
    struct Collaborators {
        AppState& state;
        const ClipboardStore& store;
        ItemDelivery& delivery;
        PasteService& paste;
        NavigationHUD& hud;
        HotKeyService& hotKeys;
        Application& application;
        FileSystem& files;
        Clock& clock;
        Scheduler& scheduler;
        Identifiers& identifiers;
    };

    struct Actions {
        Task openSearch;  ///< closes the popover and shows the history in the floating panel
        std::function<void(const ClipboardEntry&)> toggleFavorite;  ///< and says so
    };

    static constexpr Seconds releasePollInterval{0.02};

    HotKeyNavigation(Collaborators with, Actions actions);

    void registerHotKeys();              ///< from the preferences, in place of earlier ones
    bool navigate(HotKeyAction action);  ///< one step; false: no entry was selected
    void toggleFavoriteForNavigationSelection();

private:
    void handle(HotKeyAction action, HotKeyPhase phase);
    void navigationPressed(HotKeyAction action);
    void navigationReleased(HotKeyAction action);
    void openSearchPressed();
    void pollModifierRelease(ModifierFlags modifiers, Uuid pasteID);
    void writeHotKeyDiagnostics();

    Collaborators with_;
    Actions actions_;
    HotKeyManager hotKeys_;
    std::optional<HotKeyAction> activeHotKeyAction_;
    bool hotKeyHasSelection_ = false;
    std::optional<Uuid> pendingHotKeyPasteID_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
