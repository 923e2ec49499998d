#include "app/AppModel.h"

#include <algorithm>

namespace nettlecap {

AppModel::AppModel(const Platform& platform, Windows windows, Services services)
    : defaults_(platform.defaults), state_{.preferences = Published(AppPreferences::load(platform.defaults))},
      store_({.files = platform.files, .clock = platform.clock, .identifiers = platform.identifiers},
             std::nullopt, state_.preferences->maxHistoryItems),
      services_(std::move(services)), windows_(std::move(windows)),
      monitor_({.pasteboard = platform.pasteboard,
                .scheduler = platform.scheduler,
                .clock = platform.clock,
                .identifiers = platform.identifiers,
                .files = platform.files,
                .images = platform.images,
                .background = platform.background,
                .workspace = platform.workspace,
                .events = platform.events},
               store_, [this] { state_.navigationEntryID.reset(); }),
      paste_(platform.keyboard), delivery_({.state = state_,
                                            .monitor = monitor_,
                                            .paste = paste_,
                                            .searchPanel = *windows_.searchPanel,
                                            .workspace = platform.workspace,
                                            .scheduler = platform.scheduler}),
      navigation_({.state = state_,
                   .store = store_,
                   .delivery = delivery_,
                   .paste = paste_,
                   .hud = *windows_.hud,
                   .hotKeys = platform.hotKeys,
                   .application = platform.application,
                   .files = platform.files,
                   .clock = platform.clock,
                   .scheduler = platform.scheduler,
                   .identifiers = platform.identifiers},
                  {.openSearch = [this] { openNettlecap(); },
                   .toggleFavorite = [this](const ClipboardEntry& entry) { toggleFavorite(entry); }}) {
    forwardChanges();
}

void AppModel::forwardChanges() {
    const auto tell = [this] { changed_.emit(); };
    changes_.push_back(state_.preferences.subscribe(tell));
    changes_.push_back(state_.isMonitoring.subscribe(tell));
    changes_.push_back(state_.statusMessage.subscribe(tell));
    changes_.push_back(state_.launchAtLoginRequiresApproval.subscribe(tell));
    changes_.push_back(store_.entries().subscribe(tell));
    changes_.push_back(store_.snippets().subscribe(tell));
    changes_.push_back(store_.persistenceError().subscribe(tell));
    changes_.push_back(store_.storageUsage().subscribe(tell));
    if (services_.updates) changes_.push_back(services_.updates->onChange(tell));
}

void AppModel::start() {
    if (hasStarted_) return;
    hasStarted_ = true;
    monitor_.setCaptureImages(state_.preferences->captureImages);
    monitor_.setEnabled(*state_.isMonitoring);
    monitor_.start();
    delivery_.trackApplications();
    navigation_.registerHotKeys();
    syncLaunchAtLogin(false);
    synchronizeUpdates();
}

void AppModel::updatePreferences(const std::function<void(AppPreferences&)>& edit) {
    const AppPreferences& preferences = *state_.preferences;
    const bool launchedAtLogin = preferences.launchAtLogin;
    state_.preferences.edit(edit);
    preferences.save(defaults_);
    monitor_.setCaptureImages(preferences.captureImages);
    store_.setMaxItems(preferences.maxHistoryItems);
    store_.trimIfNeeded();
    store_.persist();
    navigation_.registerHotKeys();
    if (preferences.launchAtLogin != launchedAtLogin) syncLaunchAtLogin(true);
}

void AppModel::setMonitoring(bool isOn) {
    monitor_.setEnabled(isOn);
    state_.isMonitoring = isOn;
    state_.statusMessage = isOn ? "Monitoramento ativado" : "Monitoramento pausado";
}

void AppModel::copy(const ClipboardEntry& entry, std::optional<bool> pasteImmediately) {
    delivery_.copy(entry, pasteImmediately);
}

void AppModel::copy(const SavedSnippet& snippet, std::optional<bool> pasteImmediately) {
    delivery_.copy(snippet, pasteImmediately);
}

void AppModel::toggleFavorite(const ClipboardEntry& entry) {
    const bool wasFavorite = entry.isFavorite;  // the store is going to replace it
    store_.toggleFavorite(entry);
    state_.statusMessage = wasFavorite ? "Removido dos favoritos" : "Adicionado aos favoritos";
}

void AppModel::setNavigationEntryID(const Uuid& id) { state_.navigationEntryID = id; }

void AppModel::purgeHistory() {
    const auto count =
        std::ranges::count_if(*store_.entries(), [](const StoredEntry& entry) { return !entry->isFavorite; });
    store_.clearNonFavorites();
    state_.navigationEntryID.reset();
    state_.statusMessage = (count == 1 ? "1 item removido" : std::to_string(count) + " itens removidos") +
                           "; favoritos e Salvos foram preservados";
}

void AppModel::openSettings() {
    state_.popoverShouldClose.emit();
    windows_.searchPanel->show(ContentKind::settings, *this);
}

void AppModel::openNettlecap() {
    state_.popoverShouldClose.emit();
    windows_.searchPanel->show(ContentKind::history, *this);
}

void AppModel::syncLaunchAtLogin(bool showStatus) {
    if (services_.loginItem) services_.loginItem->syncLaunchAtLogin(state_, showStatus);
}

void AppModel::synchronizeUpdates() const {
    if (services_.updates) services_.updates->synchronize();
}

void AppModel::checkForUpdates() const {
    if (services_.updates && services_.updates->canCheckForUpdates()) services_.updates->checkForUpdates();
}

void AppModel::openLoginItems() const {
    if (services_.loginItem) services_.loginItem->openSystemSettings();
}

}  // namespace nettlecap
