#pragma once

#include "model/ClipboardEntry.h"
#include "platform/Windows.h"

namespace nettlecap {

class AppModel;

/// What the card shows of a step through the history.
struct NavigationCard {
    ClipboardEntry entry;
    std::optional<Path> imageURL;  ///< where the entry's picture should be; absent for texts
    std::int64_t position = 0;     ///< from 1
    std::int64_t total = 0;
    bool protectSensitiveContent = true;
};

/// The card that floats while the user steps through the history.
class NavigationHUD {
public:
    virtual ~NavigationHUD() = default;

    virtual void show(NavigationCard card) = 0;  ///< also over one that is shown
    virtual void hide() = 0;
};

enum class ContentKind { history, settings };

/// The floating panel.
class SearchPanel {
public:
    virtual ~SearchPanel() = default;

    virtual void show(ContentKind content, AppModel& app) = 0;  ///< with the keyboard in it
    virtual void hide() = 0;                                    ///< nothing happens if it was never shown
};

/// What hangs from the status item.
class StatusBarContent {
public:
    virtual ~StatusBarContent() = default;

    /// The main view. The model must outlive it.
    virtual std::unique_ptr<HostedView> make(AppModel& app) = 0;
};

}  // namespace nettlecap
