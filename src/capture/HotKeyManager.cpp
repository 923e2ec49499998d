#include "capture/HotKeyManager.h"

#include <array>

namespace nettlecap {
namespace {

/// eventNotHandledErr of the Carbon event manager.
constexpr Status notHandled = -9874;

constexpr std::array allActions = {HotKeyAction::previous, HotKeyAction::next, HotKeyAction::openSearch,
                                   HotKeyAction::toggleFavorite};

std::uint32_t idOf(HotKeyAction action) { return static_cast<std::uint32_t>(action); }

std::optional<HotKeyAction> actionOf(std::uint32_t id) {
    for (const HotKeyAction action : allActions)
        if (idOf(action) == id) return action;
    return std::nullopt;
}

const ShortcutDefinition& shortcutOf(HotKeyAction action, const HotKeyShortcuts& shortcuts) {
    switch (action) {
    case HotKeyAction::previous: return shortcuts.previous;
    case HotKeyAction::next: return shortcuts.next;
    case HotKeyAction::openSearch: return shortcuts.openSearch;
    case HotKeyAction::toggleFavorite: break;
    }
    return shortcuts.toggleFavorite;
}

std::uint32_t hotKeyModifiers(ModifierFlags flags) {
    std::uint32_t modifiers = 0;
    if ((flags & modifier::command) != 0) modifiers |= hotKeyModifier::command;
    if ((flags & modifier::shift) != 0) modifiers |= hotKeyModifier::shift;
    if ((flags & modifier::option) != 0) modifiers |= hotKeyModifier::option;
    if ((flags & modifier::control) != 0) modifiers |= hotKeyModifier::control;
    return modifiers;
}

}  // namespace

HotKeyManager::HotKeyManager(HotKeyService& service, Scheduler& scheduler)
    : service_(service), scheduler_(scheduler) {}

HotKeyManager::~HotKeyManager() {
    unregisterAll();
    if (eventHandler_) service_.removeHandler(*eventHandler_);
}

std::vector<HotKeyAction> HotKeyManager::registerShortcuts(const HotKeyShortcuts& shortcuts,
                                                           ActionHandler handler) {
    unregisterAll();
    actionHandler_ = std::move(handler);
    if (!installHandlerIfNeeded()) return {allActions.begin(), allActions.end()};

    lastRegistrationStatuses_.clear();
    std::vector<HotKeyAction> failed;
    for (const HotKeyAction action : allActions) {
        const ShortcutDefinition& shortcut = shortcutOf(action, shortcuts);
        const auto registered = service_.registerHotKey({.keyCode = shortcut.keyCode,
                                                         .modifiers = hotKeyModifiers(shortcut.modifiers),
                                                         .id = {.signature = signature, .id = idOf(action)}});
        if (registered.status == 0 && registered.reference) registrations_.push_back(*registered.reference);
        lastRegistrationStatuses_[action] = registered.status;
        if (registered.status != 0) failed.push_back(action);
    }
    return failed;
}

void HotKeyManager::unregisterAll() {
    for (const HotKeyReference hotKey : std::exchange(registrations_, {})) service_.unregisterHotKey(hotKey);
}

bool HotKeyManager::installHandlerIfNeeded() {
    if (eventHandler_) return true;
    const auto installed =
        service_.installHandler([this](const HotKeyEvent* event) { return handle(event); });
    lastHandlerStatus_ = installed.status;
    eventHandler_ = installed.reference;
    return installed.status == 0 && eventHandler_;
}

// The signature is not compared: whatever hot key comes here counts by its id alone.
Status HotKeyManager::handle(const HotKeyEvent* event) {
    if (!event) return notHandled;
    if (event->idStatus != 0) return event->idStatus;
    dispatch(event->id.id,
             event->kind == HotKeyEvent::released ? HotKeyPhase::released : HotKeyPhase::pressed);
    return 0;
}

void HotKeyManager::dispatch(std::uint32_t id, HotKeyPhase phase) {
    const auto action = actionOf(id);
    if (!action) return;
    ++untold_;
    scheduler_.post(guard_([this, action = *action, phase] {
        --untold_;
        // A copy: it may register anew, and so replace itself, or end the manager.
        const ActionHandler handler = actionHandler_;
        if (handler) handler(action, phase);
    }));
}

}  // namespace nettlecap
