#pragma once

#include "app/AppFakes.h"
#include "app/AppModel.h"
#include "platform/fake/FakePlatform.h"

namespace nettlecap {

/// A model on a system in memory, with the services that the settings reach.
class SettingsOnFakes {
public:
    explicit SettingsOnFakes(const AppPreferences& preferences = {})
        : app(with(preferences),
              {.hud = std::make_unique<FakeNavigationHUD>(windows),
               .searchPanel = std::make_unique<FakeSearchPanel>(windows)},
              {.updates = std::make_unique<FakeUpdates>(services),
               .loginItem = std::make_unique<FakeLoginItemSync>(services)}) {}

    ClipboardEntry add(const std::string& text) {
        return add(ClipboardEntry{.id = fake.identifiers.next(),
                                  .text = text,
                                  .createdAt = fake.time.now(),
                                  .fingerprint = "text:" + text});
    }
    ClipboardEntry addImage(const std::string& filename) {
        return add(ClipboardEntry{.id = fake.identifiers.next(),
                                  .kind = ClipboardContentKind::image,
                                  .imageFilename = filename,
                                  .createdAt = fake.time.now(),
                                  .fingerprint = "image:" + filename});
    }
    ClipboardEntry add(const ClipboardEntry& entry) {
        app.store().insertChronologically(entry);
        app.store().persist();
        return entry;
    }
    AppPreferences stored() const { return AppPreferences::load(fake.defaults); }

    FakePlatform fake;
    SeenWindows windows;
    SeenServices services;
    AppModel app;

private:
    Platform with(const AppPreferences& preferences) {
        preferences.save(fake.defaults);
        return fake.platform();
    }
};

}  // namespace nettlecap
