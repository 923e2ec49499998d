#pragma once

#include "model/ShortcutDefinition.h"
#include "platform/HotKeyService.h"
#include "platform/Signal.h"
#include "platform/Time.h"

#include <map>

namespace nettlecap {

/// The values are the hot keys' identifiers.
enum class HotKeyAction : std::uint32_t { previous = 1, next = 2, openSearch = 3, toggleFavorite = 4 };
enum class HotKeyPhase { pressed, released };

struct HotKeyShortcuts {
    ShortcutDefinition previous;
    ShortcutDefinition next;
    ShortcutDefinition openSearch;
    ShortcutDefinition toggleFavorite;
};

/// The four shortcuts that work whatever is in front. A press and its release are told from
/// the main loop, in their order, never within the system's call.
class HotKeyManager {
public:
    using ActionHandler = std::function<void(HotKeyAction, HotKeyPhase)>;

    /// Marks every hot key that this program registers: "NTLC".
    static constexpr std::uint32_t signature = 0x4E544C43;

    /// The ports must outlive the manager.
    HotKeyManager(HotKeyService& service, Scheduler& scheduler);
    ~HotKeyManager();
    HotKeyManager(const HotKeyManager&) = delete;
    HotKeyManager& operator=(const HotKeyManager&) = delete;

    /// Replaces whatever was registered. Answers which actions could not be, in the order of
    /// the shortcuts; the others work.
    std::vector<HotKeyAction> registerShortcuts(const HotKeyShortcuts& shortcuts, ActionHandler handler);
    void unregisterAll();

    /// Whether a shortcut was pressed or let go by now that is not told yet.
    bool isBehind() { return untold_ != 0 || service_.isBehind(); }

    Status lastHandlerStatus() const { return lastHandlerStatus_; }
    const std::map<HotKeyAction, Status>& lastRegistrationStatuses() const {
        return lastRegistrationStatuses_;
    }

private:
    bool installHandlerIfNeeded();
    Status handle(const HotKeyEvent* event);
    void dispatch(std::uint32_t id, HotKeyPhase phase);

    HotKeyService& service_;
    Scheduler& scheduler_;
    std::optional<HandlerReference> eventHandler_;
    std::vector<HotKeyReference> registrations_;
    ActionHandler actionHandler_;
    std::size_t untold_ = 0;
    Status lastHandlerStatus_ = 0;
    std::map<HotKeyAction, Status> lastRegistrationStatuses_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
