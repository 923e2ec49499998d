#pragma once

#include "model/ShortcutDefinition.h"
#include "platform/UserDefaults.h"

namespace nettlecap {

/// The user's settings, changed only as a whole record.
struct AppPreferences {
    ShortcutDefinition previousShortcut{.keyCode = 18, .modifiers = modifier::command};
    ShortcutDefinition nextShortcut{.keyCode = 19, .modifiers = modifier::command};
    ShortcutDefinition openSearchShortcut{.keyCode = keyCode::v,
                                          .modifiers = modifier::command | modifier::shift};
    ShortcutDefinition toggleFavoriteShortcut{.keyCode = 3, .modifiers = modifier::option};
    bool autoPaste = false;  ///< a click pastes, not only copies
    bool pasteHistoryOnDoubleClick = true;
    bool captureImages = true;
    bool protectSensitiveContent = true;  ///< sensitive texts are masked wherever they are shown
    bool launchAtLogin = true;
    std::int64_t maxHistoryItems = 500;  ///< as stored, never clamped here

    /// What cannot be read, wholly or in any of its known keys, is all defaults.
    static AppPreferences load(const UserDefaults& defaults);
    void save(UserDefaults& defaults) const;

    bool operator==(const AppPreferences&) const = default;
};

}  // namespace nettlecap
