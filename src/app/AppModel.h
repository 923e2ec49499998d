#pragma once

#include "app/AppPreferences.h"
#include "capture/ClipboardMonitor.h"
#include "platform/Platform.h"

namespace nettlecap {

/// Ties history, capture and settings together; one for the life of the program.
class AppModel {
public:
    /// Loads the history. The platform's ports must outlive the model.
    AppModel(const Platform& platform, AppPreferences preferences);

    void start();  ///< begins to capture; a second call does nothing

    /// Puts the item on the pasteboard and says in `statusMessage` what came of it.
    void copy(const ClipboardEntry& entry);
    void copy(const SavedSnippet& snippet);

    ClipboardStore& store() { return store_; }
    const Published<AppPreferences>& preferences() const { return preferences_; }
    const Published<bool>& isMonitoring() const { return isMonitoring_; }
    const Published<std::optional<std::string>>& statusMessage() const { return statusMessage_; }
    const std::optional<Uuid>& navigationEntryID() const { return navigationEntryID_; }

private:
    Published<AppPreferences> preferences_;
    Published<bool> isMonitoring_{true};
    Published<std::optional<std::string>> statusMessage_;
    std::optional<Uuid> navigationEntryID_;
    ClipboardStore store_;
    ClipboardMonitor monitor_;
    bool hasStarted_ = false;
};

}  // namespace nettlecap
