#pragma once

#include "app/AppFakes.h"
#include "app/AppModel.h"
#include "platform/fake/FakePlatform.h"

namespace nettlecap {

/// A model on a system in memory, with entries of the test's making.
class HistoryOnFakes {
public:
    explicit HistoryOnFakes(const AppPreferences& preferences = {})
        : app(with(preferences),
              {.hud = std::make_unique<FakeNavigationHUD>(windows),
               .searchPanel = std::make_unique<FakeSearchPanel>(windows)},
              {}) {}

    /// Copied `age` ago.
    ClipboardEntry add(std::string text, Seconds age = Seconds{0}) {
        return add(ClipboardEntry{.id = fake.identifiers.next(),
                                  .text = text,
                                  .createdAt = ago(age),
                                  .sourceApplication = "Notas",
                                  .fingerprint = "text:" + text});
    }
    ClipboardEntry addImage(const std::string& filename, Seconds age = Seconds{0}) {
        return add(ClipboardEntry{.id = fake.identifiers.next(),
                                  .kind = ClipboardContentKind::image,
                                  .imageFilename = filename,
                                  .createdAt = ago(age),
                                  .sourceApplication = "Fotos",
                                  .fingerprint = "image:" + filename});
    }
    ClipboardEntry addSensitive(std::string text, SensitiveContentKind kind) {
        return add(ClipboardEntry{.id = fake.identifiers.next(),
                                  .text = text,
                                  .createdAt = ago(Seconds{0}),
                                  .sourceApplication = "Notas",
                                  .fingerprint = "text:" + text,
                                  .sensitiveKind = kind});
    }
    ClipboardEntry add(ClipboardEntry entry) {
        app.store().insertChronologically(entry);
        return entry;
    }
    Date ago(Seconds age) const { return {fake.time.now().secondsSince2001 - age.count()}; }

    FakePlatform fake;
    SeenWindows windows;
    AppModel app;

private:
    Platform with(const AppPreferences& preferences) {
        preferences.save(fake.defaults);
        return fake.platform();
    }
};

}  // namespace nettlecap
