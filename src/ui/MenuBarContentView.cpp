#include "ui/MenuBarContentView.h"

#include "ui/ListKeyboardNavigation.h"

#include <algorithm>

namespace nettlecap {

namespace {

QString shown(const std::optional<std::string>& text) {
    return text ? QString::fromStdString(*text) : QString();
}

/// The store keeps its list by date, newest first, so only the favourites have to move.
StoredEntries favoritesFirst(StoredEntries entries) {
    std::stable_partition(entries.begin(), entries.end(),
                          [](const StoredEntry& entry) { return entry->isFavorite; });
    return entries;
}

const StoredEntry* find(const StoredEntries& entries, const RowKey& key) {
    std::size_t occurrence = 0;
    for (const StoredEntry& entry : entries)
        if (entry->id == key.id && occurrence++ == key.occurrence) return &entry;
    return nullptr;
}

}  // namespace

MenuBarContentView::MenuBarContentView(AppModel& app, Ports ports)
    : app_(app), ports_(ports), rows_([this](const RowKey& key) { return makeRow(key); }) {
    updateEntries();
    changes_[0] = app_.store().entries().subscribe([this] { updateEntries(); });
    changes_[1] = app_.store().persistenceError().subscribe([this] { Q_EMIT persistenceErrorChanged(); });
    changes_[2] = app_.statusMessage().subscribe([this] { Q_EMIT statusMessageChanged(); });
    changes_[3] = app_.preferences().subscribe(
        [this] { forEachMadeRow([](ClipboardEntryRow& row) { row.refreshProtection(); }); });
    ageTimer_ = ports_.scheduler.every(ageInterval, [this] { refreshAges(); });
}

std::unique_ptr<QObject> MenuBarContentView::makeRow(const RowKey& key) {
    const StoredEntry* entry = find(filteredEntries_, key);
    if (!entry) entry = find(leavingEntries_, key);  // asked for while the list is being changed
    auto row = std::make_unique<ClipboardEntryRow>(
        ClipboardEntryRow::Collaborators{.app = app_, .clock = ports_.clock}, *entry,
        [this, key] { select(key); });
    row->setKeyboardSelected(selectedHistoryEntry_ == key);
    return row;
}

void MenuBarContentView::updateEntries() {
    const bool wasEmpty = filteredEntries_.empty();
    leavingEntries_ = std::exchange(filteredEntries_, favoritesFirst(*app_.store().entries()));
    std::vector<Uuid> ids;
    ids.reserve(filteredEntries_.size());
    for (const StoredEntry& entry : filteredEntries_) ids.push_back(entry->id);
    rows_.setRows(ids);
    leavingEntries_.clear();

    for (std::size_t index = 0; index < filteredEntries_.size(); ++index)
        if (auto* row = qobject_cast<ClipboardEntryRow*>(rows_.madeRow(rows_.keys()[index])))
            row->setEntry(filteredEntries_[index]);
    refreshAges();  // or an older row would still say "agora" below a new one
    Q_EMIT selectedRowChanged();
    if (wasEmpty != filteredEntries_.empty()) Q_EMIT isHistoryEmptyChanged();
}

void MenuBarContentView::refreshAges() {
    forEachMadeRow([](ClipboardEntryRow& row) { row.refreshAge(); });
}

bool MenuBarContentView::moveCurrentSelection(int offset) {
    const auto target = ListKeyboardNavigation::targetIndex(selectedIndex(), filteredEntries_.size(), offset);
    if (!target) return false;
    select(rows_.keys()[*target]);
    return true;
}

bool MenuBarContentView::pasteSelectedItem() {
    if (filteredEntries_.empty()) return false;
    const std::size_t index = selectedIndex().value_or(0);
    select(rows_.keys()[index]);
    const StoredEntry entry = filteredEntries_[index];
    app_.copy(*entry);
    return true;
}

void MenuBarContentView::select(const RowKey& key) {
    if (selectedHistoryEntry_ == key) return;
    const auto before = std::exchange(selectedHistoryEntry_, key);
    const auto tell = [this](const RowKey& changed, bool selected) {
        if (auto* row = qobject_cast<ClipboardEntryRow*>(rows_.madeRow(changed)))
            row->setKeyboardSelected(selected);
    };
    if (before) tell(*before, false);
    tell(key, true);
    Q_EMIT selectedRowChanged();
}

std::optional<std::size_t> MenuBarContentView::selectedIndex() const {
    if (!selectedHistoryEntry_) return std::nullopt;
    const auto& keys = rows_.keys();
    const auto place = std::find(keys.begin(), keys.end(), *selectedHistoryEntry_);
    if (place == keys.end()) return std::nullopt;
    return static_cast<std::size_t>(place - keys.begin());
}

void MenuBarContentView::forEachMadeRow(const std::function<void(ClipboardEntryRow&)>& action) const {
    for (const RowKey& key : rows_.keys())
        if (auto* row = qobject_cast<ClipboardEntryRow*>(rows_.madeRow(key))) action(*row);
}

int MenuBarContentView::selectedRow() const {
    const auto index = selectedIndex();
    return index ? static_cast<int>(*index) : -1;
}

QString MenuBarContentView::statusMessage() const { return shown(*app_.statusMessage()); }

QString MenuBarContentView::persistenceError() const { return shown(*app_.store().persistenceError()); }

}  // namespace nettlecap
