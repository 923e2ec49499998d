#include "app/AppModel.h"

namespace nettlecap {

namespace {

constexpr auto copied = "Copiado — use ⌘V para colar";

}  // namespace

AppModel::AppModel(const Platform& platform, AppPreferences preferences)
    : preferences_(preferences),
      store_({.files = platform.files, .clock = platform.clock, .identifiers = platform.identifiers},
             std::nullopt, preferences.maxHistoryItems),
      monitor_({.pasteboard = platform.pasteboard,
                .scheduler = platform.scheduler,
                .clock = platform.clock,
                .identifiers = platform.identifiers,
                .files = platform.files,
                .images = platform.images,
                .background = platform.background,
                .workspace = platform.workspace,
                .events = platform.events},
               store_, [this] { navigationEntryID_.reset(); }) {}

void AppModel::start() {
    if (hasStarted_) return;
    hasStarted_ = true;
    monitor_.setCaptureImages(preferences_->captureImages);
    monitor_.setEnabled(*isMonitoring_);
    monitor_.start();
}

void AppModel::copy(const ClipboardEntry& entry) {
    if (!monitor_.putOnPasteboard(entry)) {
        statusMessage_ = "Não foi possível recuperar este item";
        return;
    }
    navigationEntryID_ = entry.id;
    statusMessage_ = copied;
}

void AppModel::copy(const SavedSnippet& snippet) {
    if (!monitor_.putOnPasteboard(snippet)) {
        statusMessage_ = "Não foi possível copiar a mensagem salva";
        return;
    }
    navigationEntryID_.reset();
    statusMessage_ = copied;
}

}  // namespace nettlecap
