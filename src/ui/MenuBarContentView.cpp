#include "ui/MenuBarContentView.h"

#include "ui/ClipboardTextPreview.h"

#include <algorithm>

namespace nettlecap {

namespace {

constexpr std::size_t mostDescribed = 90;  ///< characters of an entry that a question names

const Uuid& identityOf(const StoredEntry& entry) { return entry->id; }
const Uuid& identityOf(const SavedSnippet& snippet) { return snippet.id; }

std::optional<std::size_t> indexOf(const StoredEntries& entries, const Uuid& id) {
    const auto place = std::find_if(entries.begin(), entries.end(),
                                    [&](const StoredEntry& entry) { return entry->id == id; });
    if (place == entries.end()) return std::nullopt;
    return static_cast<std::size_t>(place - entries.begin());
}

}  // namespace

MenuBarContentView::MenuBarContentView(AppModel& app, Ports ports)
    : app_(app), ports_(std::move(ports)),
      searchWarmUp_(ports_.scheduler,
                    [this](const StoredEntry& entry) { historyFilter_.fold(entry, isProtecting_); }),
      searchField_({.moveDown = [this] { return moveCurrentSelection(1); },
                    .moveUp = [this] { return moveCurrentSelection(-1); },
                    .moveLeft = [this] { show(MainSection::history); },
                    .moveRight = [this] { show(MainSection::snippets); },
                    .submit = [this] { return pasteSelectedItem(); },
                    .deleteSelected = [this] { return requestSelectedHistoryDeletion(); }}),
      pasteSource_(ports_.pasteboard),
      snippetEditing_(
          {.store = app.store(), .pasteboard = ports_.pasteboard, .identifiers = ports_.identifiers},
          [this] { Q_EMIT snippetEditorChanged(); }),
      history_(identityOf, [this](const RowKey& key, const StoredEntry& entry,
                                  bool isSelected) { return makeHistoryRow(key, entry, isSelected); }),
      snippets_(identityOf, [this](const RowKey&, const SavedSnippet& snippet, bool isSelected) {
          return makeSnippetRow(snippet, isSelected);
      }) {
    show(section_);
    setShown(true);
    connect(&searchField_, &KeyboardSearchField::textChanged, this,
            &MenuBarContentView::handleSearchTextChange);
    changes_.push_back(app_.store().entries().subscribe([this] { handleEntriesChange(); }));
    changes_.push_back(app_.store().snippets().subscribe([this] { handleSnippetsChange(); }));
    changes_.push_back(app_.preferences().subscribe([this] { handlePreferencesChange(); }));
    changes_.push_back(
        app_.store().persistenceError().subscribe([this] { Q_EMIT persistenceErrorChanged(); }));
    changes_.push_back(app_.statusMessage().subscribe([this] { Q_EMIT statusMessageChanged(); }));
    changes_.push_back(app_.isMonitoring().subscribe([this] { Q_EMIT isMonitoringChanged(); }));
}

std::unique_ptr<ClipboardEntryRow>
MenuBarContentView::makeHistoryRow(const RowKey& key, const StoredEntry& entry, bool isSelected) {
    return std::make_unique<ClipboardEntryRow>(
        ClipboardEntryRow::Collaborators{.app = app_,
                                         .clock = ports_.clock,
                                         .scheduler = ports_.scheduler,
                                         .identifiers = ports_.identifiers,
                                         .images = ports_.images,
                                         .text = ports_.text,
                                         .pointer = pointer_},
        entry,
        ClipboardEntryRow::Actions{.select = guard_([this, key] {
                                       selectHistoryRow(key);
                                       app_.setNavigationEntryID(key.id);
                                   }),
                                   .requestDelete = guard_([this](const ClipboardEntry& doomed) {
                                       setPendingHistoryDeletion(doomed);
                                   })},
        isSelected);
}

std::unique_ptr<SnippetRow> MenuBarContentView::makeSnippetRow(const SavedSnippet& snippet, bool isSelected) {
    return std::make_unique<SnippetRow>(
        SnippetRow::Collaborators{
            .app = app_, .scheduler = ports_.scheduler, .identifiers = ports_.identifiers},
        snippet, guard_([this](const SavedSnippet& edited) { snippetEditing_.open(edited); }), isSelected);
}

// What is shown, and when it is looked at.

void MenuBarContentView::setShown(bool isShown) {
    if (std::exchange(isShown_, isShown) == isShown) return;
    if (isShown) {
        catchUp();
        searchWarmUp_.start(*app_.store().entries());
        ageTimer_ = ports_.scheduler.every(ageInterval, [this] { refreshAges(); });
    } else {
        ageTimer_.reset();
        searchWarmUp_.stop();
        history_.forEachRow([](ClipboardEntryRow& row) { row.disappear(); });
        snippets_.forEachRow([](SnippetRow& row) { row.disappear(); });
    }
}

void MenuBarContentView::catchUp() {
    handlePreferencesChange();
    handleEntriesChange();
    handleSnippetsChange();
}

void MenuBarContentView::handleEntriesChange() {
    if (!isShown_) return;
    historyFilter_.setEntries(*app_.store().entries());
    listHistory();
    refreshAges();  // or an older row would still say "agora" below a new one
}

void MenuBarContentView::handleSnippetsChange() {
    if (!isShown_) return;
    snippetFilter_.setSnippets(*app_.store().snippets());
    listSnippets();
}

void MenuBarContentView::handlePreferencesChange() {
    const bool isProtecting = app_.preferences()->protectSensitiveContent;
    if (!isShown_ || std::exchange(isProtecting_, isProtecting) == isProtecting) return;
    if (!query_.isEmpty()) listHistory();
    history_.forEachRow([](ClipboardEntryRow& row) { row.refreshProtection(); });
    if (pendingHistoryDeletion_) Q_EMIT historyDeletionChanged();
}

void MenuBarContentView::handleSearchTextChange() {
    FoldedQuery query(searchField_.text().toStdString());
    if (query == query_) return;
    query_ = std::move(query);
    listHistory();
    listSnippets();
}

void MenuBarContentView::listHistory() {
    history_.setRecords(historyFilter_.matching(query_, isProtecting_));
    Q_EMIT selectedHistoryRowChanged();
    updateEmptyState();
}

void MenuBarContentView::listSnippets() {
    snippets_.setRecords(snippetFilter_.matching(query_));
    Q_EMIT selectedSnippetRowChanged();
    updateEmptyState();
}

void MenuBarContentView::updateEmptyState() {
    const bool isHistory = this->isHistory();
    EmptyState state;
    if (isHistory ? filteredEntries().empty() : filteredSnippets().empty()) {
        if (isHistory ? app_.store().entries()->empty() : app_.store().snippets()->empty())
            state = isHistory ? EmptyState::noHistory() : EmptyState::noSnippets();
        else
            state = EmptyState::nothingFound();
    }
    if (state == emptyState_) return;
    emptyState_ = std::move(state);
    Q_EMIT emptyStateChanged();
}

void MenuBarContentView::refreshAges() {
    history_.forEachRow([](ClipboardEntryRow& row) { row.refreshAge(); });
}

void MenuBarContentView::pointerRestsAt(QPointF position) { pointer_.restsAt(position); }

void MenuBarContentView::pointerLeft() { pointer_.leaves(); }

// Sections and selections.

void MenuBarContentView::showSection(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= mainSectionTitles.size()) return;
    show(static_cast<MainSection>(index));
}

void MenuBarContentView::show(MainSection section) {
    const bool isOther = std::exchange(section_, section) != section;
    searchField_.setPlaceholder("Buscar no " + qtText(text::lowercased(titleOf(section))));
    if (!isOther) return;
    Q_EMIT sectionChanged();
    updateEmptyState();
}

bool MenuBarContentView::moveCurrentSelection(int offset) {
    const auto target = isHistory() ? history_.target(offset) : snippets_.target(offset);
    if (!target) return false;
    selectRow(static_cast<int>(*target));
    return true;
}

void MenuBarContentView::selectRow(int index) {
    const RowList& rows = *(isHistory() ? historyRows() : snippetRows());
    if (index < 0 || index >= rows.rowCount()) return;
    const RowKey key = rows.keys()[static_cast<std::size_t>(index)];
    if (!isHistory()) return selectSnippetRow(key);
    selectHistoryRow(key);
    app_.setNavigationEntryID(key.id);
}

void MenuBarContentView::selectHistoryRow(const RowKey& key) {
    if (!history_.select(key)) return;
    Q_EMIT selectedHistoryRowChanged();
    Q_EMIT selectedHistoryEntryChanged();
}

void MenuBarContentView::selectSnippetRow(const RowKey& key) {
    if (snippets_.select(key)) Q_EMIT selectedSnippetRowChanged();
}

bool MenuBarContentView::pasteSelectedItem() { return isHistory() ? pasteEntry() : pasteSnippet(); }

bool MenuBarContentView::pasteEntry() {
    if (filteredEntries().empty()) return false;
    const std::size_t index = history_.selectedIndex().value_or(0);
    const StoredEntry entry = filteredEntries()[index];  // the pasting may change the list
    selectHistoryRow(history_.keyAt(index));
    app_.copy(*entry, true);
    return true;
}

bool MenuBarContentView::pasteSnippet() {
    if (filteredSnippets().empty()) return false;
    const std::size_t index = snippets_.selectedIndex().value_or(0);
    const SavedSnippet snippet = filteredSnippets()[index];
    selectSnippetRow(snippets_.keyAt(index));
    app_.copy(snippet, true);
    return true;
}

// What is destroyed only after a question.

bool MenuBarContentView::requestSelectedHistoryDeletion() {
    const auto index = isHistory() ? history_.selectedIndex() : std::nullopt;
    if (!index) return false;
    setPendingHistoryDeletion(*filteredEntries()[*index]);
    return true;
}

void MenuBarContentView::setPendingHistoryDeletion(std::optional<ClipboardEntry> entry) {
    if (entry == pendingHistoryDeletion_) return;
    pendingHistoryDeletion_ = std::move(entry);
    Q_EMIT historyDeletionChanged();
}

void MenuBarContentView::confirmPendingHistoryDeletion() {
    if (!pendingHistoryDeletion_) return;
    const ClipboardEntry entry = *pendingHistoryDeletion_;
    const auto index = indexOf(filteredEntries(), entry.id);
    app_.store().remove(entry);
    setPendingHistoryDeletion(std::nullopt);
    if (filteredEntries().empty()) {
        history_.clearSelection();
    } else if (index) {
        // The one that has moved up into its place, so that deleting can go on.
        selectHistoryRow(history_.keyAt(std::min(*index, filteredEntries().size() - 1)));
    }
}

void MenuBarContentView::cancelPendingHistoryDeletion() { setPendingHistoryDeletion(std::nullopt); }

std::string MenuBarContentView::historyDeletionConfirmationMessage() const {
    if (!pendingHistoryDeletion_) return {};
    const std::string description =
        text::limited(ClipboardTextPreview::summary(*pendingHistoryDeletion_, isProtecting_), mostDescribed);
    return "Tem certeza de que deseja excluir permanentemente “" + description + "” do histórico?";
}

Confirmation MenuBarContentView::historyDeletion() const {
    return {.isShown = pendingHistoryDeletion_.has_value(),
            .title = QStringLiteral("Excluir item do histórico?"),
            .message = qtText(historyDeletionConfirmationMessage()),
            .destructiveLabel = QStringLiteral("Excluir")};
}

void MenuBarContentView::setShowClearConfirmation(bool shows) {
    if (std::exchange(showClearConfirmation_, shows) != shows) Q_EMIT historyClearingChanged();
}

void MenuBarContentView::confirmHistoryClearing() {
    if (!showClearConfirmation_) return;
    setShowClearConfirmation(false);
    app_.store().clearNonFavorites();
}

void MenuBarContentView::cancelHistoryClearing() { setShowClearConfirmation(false); }

Confirmation MenuBarContentView::historyClearing() const {
    return {.isShown = showClearConfirmation_,
            .title = QStringLiteral("Limpar os itens não favoritados?"),
            .message = {},
            .destructiveLabel = QStringLiteral("Limpar histórico")};
}

// The editor, the header and the footer.

void MenuBarContentView::createSnippet() { snippetEditing_.open(std::nullopt); }

void MenuBarContentView::dismissSnippetEditor() { snippetEditing_.dismiss(); }

void MenuBarContentView::toggleMonitoring() { app_.setMonitoring(!*app_.isMonitoring()); }

void MenuBarContentView::performFooterAction() {
    if (isHistory())
        setShowClearConfirmation(true);
    else
        createSnippet();
}

void MenuBarContentView::openSettings() { app_.openSettings(); }

void MenuBarContentView::quit() const { ports_.quit(); }

QStringList MenuBarContentView::sectionTitles() const {
    QStringList titles;
    for (const std::string_view title : mainSectionTitles) titles << qtText(title);
    return titles;
}

QString MenuBarContentView::statusMessage() const { return qtText(app_.statusMessage()->value_or("")); }

QString MenuBarContentView::persistenceError() const {
    return qtText(app_.store().persistenceError()->value_or(""));
}

QString MenuBarContentView::monitoringLabel() const {
    return *app_.isMonitoring() ? QStringLiteral("Monitorando") : QStringLiteral("Pausado");
}

QString MenuBarContentView::monitoringSymbol() const {
    return *app_.isMonitoring() ? QStringLiteral("record.circle") : QStringLiteral("pause.circle");
}

QString MenuBarContentView::footerActionLabel() const {
    return isHistory() ? QStringLiteral("Limpar") : QStringLiteral("Adicionar");
}

QString MenuBarContentView::footerActionSymbol() const {
    return isHistory() ? QStringLiteral("trash") : QStringLiteral("plus");
}

}  // namespace nettlecap
