#include "app/AppPreferences.h"
#include "app/KeyCatalog.h"
#include "platform/fake/FakeUserDefaults.h"

#include <cstdlib>

// The preferences: whatever the blob holds, a complete record comes of it, which can be
// written and read again and shown.

namespace {

using namespace nettlecap;

void require(bool holds) {
    if (!holds) std::abort();
}

constexpr std::string_view key = "Nettlecap.preferences.v1";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes blob(std::string(reinterpret_cast<const char*>(data), size));
    FakeUserDefaults defaults;
    defaults.setData(key, blob);
    const AppPreferences preferences = AppPreferences::load(defaults);
    require(defaults.data(key) == blob);

    for (const ShortcutDefinition& shortcut :
         {preferences.previousShortcut, preferences.nextShortcut, preferences.openSearchShortcut,
          preferences.toggleFavoriteShortcut})
        require(displayText(shortcut).ends_with(KeyCatalog::label(shortcut.keyCode)));

    preferences.save(defaults);
    const auto written = defaults.data(key);
    const AppPreferences again = AppPreferences::load(defaults);
    require(again == preferences);
    again.save(defaults);
    require(defaults.data(key) == written);
    return 0;
}
