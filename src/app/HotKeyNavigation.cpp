#include "app/HotKeyNavigation.h"

#include "app/DiagnosticsFile.h"
#include "app/KeyCatalog.h"

#include <algorithm>

namespace nettlecap {

namespace {

std::string_view spokenName(HotKeyAction action) {
    switch (action) {
    case HotKeyAction::previous: return "anterior";
    case HotKeyAction::next: return "seguinte";
    case HotKeyAction::openSearch: return "abrir Nettlecap";
    case HotKeyAction::toggleFavorite: return "alternar favorito";
    }
    return {};
}

std::string spokenNames(const std::vector<HotKeyAction>& actions) {
    std::string names;
    for (const HotKeyAction action : actions)
        names.append(names.empty() ? "" : ", ").append(spokenName(action));
    return names;
}

auto find(const StoredEntries& entries, const std::optional<Uuid>& id) {
    return std::ranges::find_if(entries, [&](const StoredEntry& entry) { return entry->id == id; });
}

/// Where a step leads that starts at `current`; the list is not empty.
std::int64_t stepped(HotKeyAction action, std::optional<std::int64_t> current, std::int64_t count) {
    if (action == HotKeyAction::next) return std::max<std::int64_t>(current.value_or(0) - 1, 0);
    // The newest entry is on the pasteboard already, so the first step leads past it.
    return std::min(current.value_or(0) + 1, count - 1);
}

}  // namespace

HotKeyNavigation::HotKeyNavigation(Collaborators with, Actions actions)
    : with_(with), actions_(std::move(actions)), hotKeys_(with.hotKeys, with.scheduler) {}

void HotKeyNavigation::registerHotKeys() {
    const AppPreferences& preferences = *with_.state.preferences;
    const auto failed = hotKeys_.registerShortcuts(
        {.previous = preferences.previousShortcut,
         .next = preferences.nextShortcut,
         .openSearch = preferences.openSearchShortcut,
         .toggleFavorite = preferences.toggleFavoriteShortcut},
        guard_([this](HotKeyAction action, HotKeyPhase phase) { handle(action, phase); }));
    writeHotKeyDiagnostics();

    auto& message = with_.state.statusMessage;
    if (!failed.empty()) {
        message = "Não foi possível registrar o atalho: " + spokenNames(failed);
    } else if (*message && (*message)->find("atalho") != std::string::npos) {
        message = std::nullopt;
    }
}

void HotKeyNavigation::handle(HotKeyAction action, HotKeyPhase phase) {
    const bool isPressed = phase == HotKeyPhase::pressed;
    switch (action) {
    case HotKeyAction::previous:
    case HotKeyAction::next:
        if (isPressed)
            navigationPressed(action);
        else
            navigationReleased(action);
        break;
    case HotKeyAction::openSearch:
        if (isPressed) openSearchPressed();
        break;
    case HotKeyAction::toggleFavorite:
        if (isPressed) toggleFavoriteForNavigationSelection();
        break;
    }
}

void HotKeyNavigation::navigationPressed(HotKeyAction action) {
    pendingHotKeyPasteID_.reset();
    if (activeHotKeyAction_ != action) {
        activeHotKeyAction_ = action;
        hotKeyHasSelection_ = false;
    }
    if (navigate(action)) hotKeyHasSelection_ = true;
}

void HotKeyNavigation::navigationReleased(HotKeyAction action) {
    if (activeHotKeyAction_ != action) return;
    activeHotKeyAction_.reset();
    if (!std::exchange(hotKeyHasSelection_, false)) {
        with_.hud.hide();
        return;
    }
    const AppPreferences& preferences = *with_.state.preferences;
    const ShortcutDefinition& shortcut =
        action == HotKeyAction::previous ? preferences.previousShortcut : preferences.nextShortcut;
    pendingHotKeyPasteID_ = with_.identifiers.next();
    pollModifierRelease(shortcut.modifiers & modifier::all, *pendingHotKeyPasteID_);
}

/// The held chord stays held: its release pastes what it selected.
void HotKeyNavigation::openSearchPressed() {
    pendingHotKeyPasteID_.reset();
    with_.hud.hide();
    actions_.openSearch();
}

bool HotKeyNavigation::navigate(HotKeyAction action) {
    const StoredEntries& entries = *with_.store.entries();
    if (entries.empty()) {
        with_.application.beep();
        return false;
    }
    if (action != HotKeyAction::previous && action != HotKeyAction::next) return false;

    const auto current = find(entries, with_.state.navigationEntryID);
    const std::int64_t total = std::ssize(entries);
    const std::int64_t index = stepped(
        action, current == entries.end() ? std::nullopt : std::optional(current - entries.begin()), total);
    // A copy: whoever hears of the message may change the list.
    const StoredEntry entry = entries[static_cast<std::size_t>(index)];
    with_.delivery.copy(*entry, false);
    const auto imageURL =
        entry->kind == ClipboardContentKind::image ? with_.store.imageFile(*entry) : std::nullopt;
    with_.hud.show({.entry = *entry,
                    .imageURL = imageURL,
                    .position = index + 1,
                    .total = total,
                    .protectSensitiveContent = with_.state.preferences->protectSensitiveContent});
    return true;
}

void HotKeyNavigation::toggleFavoriteForNavigationSelection() {
    const StoredEntries& entries = *with_.store.entries();
    const auto current = find(entries, with_.state.navigationEntryID);
    if (current == entries.end()) {
        with_.application.beep();
        with_.state.statusMessage = "Selecione um item do histórico com ↑ ou ↓";
        return;
    }
    actions_.toggleFavorite(**current);
}

void HotKeyNavigation::pollModifierRelease(ModifierFlags modifiers, Uuid pasteID) {
    if (pendingHotKeyPasteID_ != pasteID) return;
    // Where quick fingers are ahead of the program, the next press of the same gesture is on
    // its way while the modifiers are up already.
    if (with_.paste.areAnyPressed(modifiers) || hotKeys_.isBehind()) {
        with_.scheduler.after(releasePollInterval, guard_([this, modifiers, pasteID] {
                                  pollModifierRelease(modifiers, pasteID);
                              }));
        return;
    }
    pendingHotKeyPasteID_.reset();
    with_.hud.hide();
    with_.delivery.performPasteIfNeeded(true);
}

void HotKeyNavigation::writeHotKeyDiagnostics() {
    const AppPreferences& preferences = *with_.state.preferences;
    const auto status = [this](HotKeyAction action) {
        const auto& statuses = hotKeys_.lastRegistrationStatuses();
        const auto found = statuses.find(action);
        return std::to_string(found == statuses.end() ? -1 : found->second);
    };
    DiagnosticsFile::write({.files = with_.files, .clock = with_.clock}, "hotkey-diagnostics.txt",
                           {{"handler", std::to_string(hotKeys_.lastHandlerStatus())},
                            {"previous", displayText(preferences.previousShortcut)},
                            {"next", displayText(preferences.nextShortcut)},
                            {"open", displayText(preferences.openSearchShortcut)},
                            {"favorite", displayText(preferences.toggleFavoriteShortcut)},
                            {"previousStatus", status(HotKeyAction::previous)},
                            {"nextStatus", status(HotKeyAction::next)},
                            {"openStatus", status(HotKeyAction::openSearch)},
                            {"favoriteStatus", status(HotKeyAction::toggleFavorite)}});
}

}  // namespace nettlecap
