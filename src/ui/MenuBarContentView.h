#pragma once

#include "ui/ClipboardEntryRow.h"
#include "ui/Confirmation.h"
#include "ui/EmptyState.h"
#include "ui/HistoryFilter.h"
#include "ui/KeyboardSearchField.h"
#include "ui/MainSection.h"
#include "ui/SearchWarmUp.h"
#include "ui/SelectableRows.h"
#include "ui/SnippetEditing.h"
#include "ui/SnippetFilter.h"
#include "ui/SnippetRow.h"

#include <QStringList>

namespace nettlecap {

/// The main view: the history or the saved messages, searched and walked through from the
/// search field. All it keeps is what is shown; every change of data goes through the model.
/// While it is not shown it looks at nothing, and catches up when it is.
class MenuBarContentView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the panel")
    Q_PROPERTY(QStringList sectionTitles READ sectionTitles CONSTANT)
    Q_PROPERTY(int section READ sectionIndex WRITE showSection NOTIFY sectionChanged)
    Q_PROPERTY(bool isHistory READ isHistory NOTIFY sectionChanged)
    Q_PROPERTY(nettlecap::KeyboardSearchField* searchField READ searchField CONSTANT)
    Q_PROPERTY(nettlecap::PasteSource* pasteSource READ pasteSource CONSTANT)
    Q_PROPERTY(nettlecap::RowList* historyRows READ historyRows CONSTANT)
    Q_PROPERTY(nettlecap::RowList* snippetRows READ snippetRows CONSTANT)
    Q_PROPERTY(int selectedHistoryRow READ selectedHistoryRow NOTIFY selectedHistoryRowChanged)
    Q_PROPERTY(int selectedSnippetRow READ selectedSnippetRow NOTIFY selectedSnippetRowChanged)
    Q_PROPERTY(nettlecap::EmptyState emptyState READ emptyState NOTIFY emptyStateChanged)
    Q_PROPERTY(nettlecap::Confirmation historyDeletion READ historyDeletion NOTIFY historyDeletionChanged)
    Q_PROPERTY(nettlecap::Confirmation historyClearing READ historyClearing NOTIFY historyClearingChanged)
    Q_PROPERTY(nettlecap::SnippetEditorView* snippetEditor READ snippetEditor NOTIFY snippetEditorChanged)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(QString persistenceError READ persistenceError NOTIFY persistenceErrorChanged)
    Q_PROPERTY(QString monitoringLabel READ monitoringLabel NOTIFY isMonitoringChanged)
    Q_PROPERTY(QString monitoringSymbol READ monitoringSymbol NOTIFY isMonitoringChanged)
    Q_PROPERTY(QString footerActionLabel READ footerActionLabel NOTIFY sectionChanged)
    Q_PROPERTY(QString footerActionSymbol READ footerActionSymbol NOTIFY sectionChanged)

public:
    struct Ports {
        Clock& clock;
        Scheduler& scheduler;
        Identifiers& identifiers;
        const ImageCodec& images;
        const TextMeasure& text;
        const Pasteboard& pasteboard;
        Task quit;  ///< ends the program
    };

    /// How often the rows tell their age anew.
    static constexpr Seconds ageInterval{60};

    /// The model and the ports must outlive the view.
    MenuBarContentView(AppModel& app, Ports ports);

    Q_INVOKABLE void setShown(bool isShown);            ///< it is to begin with
    Q_INVOKABLE void pointerRestsAt(QPointF position);  ///< where it is when the view appears
    Q_INVOKABLE void pointerLeft();                     ///< the whole view
    Q_INVOKABLE void showSection(int index);
    /// False: there is nothing to select.
    Q_INVOKABLE bool moveCurrentSelection(int offset);
    Q_INVOKABLE void selectRow(int index);  ///< of the list that is shown
    /// Pastes the selected item, or the top one if none is selected. False: there is none.
    Q_INVOKABLE bool pasteSelectedItem();
    /// Asks whether to delete. False: no row of the history is selected.
    Q_INVOKABLE bool requestSelectedHistoryDeletion();
    Q_INVOKABLE void confirmPendingHistoryDeletion();
    Q_INVOKABLE void cancelPendingHistoryDeletion();
    Q_INVOKABLE void confirmHistoryClearing();
    Q_INVOKABLE void cancelHistoryClearing();
    Q_INVOKABLE void createSnippet();  ///< opens the editor
    Q_INVOKABLE void dismissSnippetEditor();
    Q_INVOKABLE void toggleMonitoring();
    Q_INVOKABLE void performFooterAction();
    Q_INVOKABLE void openSettings();
    Q_INVOKABLE void quit() const;

    QStringList sectionTitles() const;
    int sectionIndex() const { return static_cast<int>(section_); }
    bool isHistory() const { return section_ == MainSection::history; }
    KeyboardSearchField* searchField() { return &searchField_; }
    PasteSource* pasteSource() { return &pasteSource_; }
    RowList* historyRows() { return &history_.list(); }
    RowList* snippetRows() { return &snippets_.list(); }
    int selectedHistoryRow() const { return history_.selectedRow(); }  ///< -1: none
    int selectedSnippetRow() const { return snippets_.selectedRow(); }
    const EmptyState& emptyState() const { return emptyState_; }
    Confirmation historyDeletion() const;
    Confirmation historyClearing() const;
    SnippetEditorView* snippetEditor() const { return snippetEditing_.editor(); }
    QString statusMessage() const;     ///< empty: none
    QString persistenceError() const;  ///< empty: none
    QString monitoringLabel() const;
    QString monitoringSymbol() const;
    QString footerActionLabel() const;
    QString footerActionSymbol() const;

    const StoredEntries& filteredEntries() const { return history_.records(); }
    const std::vector<SavedSnippet>& filteredSnippets() const { return snippets_.records(); }
    std::optional<Uuid> selectedHistoryEntryID() const { return history_.selectedID(); }
    std::optional<Uuid> selectedSnippetID() const { return snippets_.selectedID(); }
    const std::optional<SnippetEditorRequest>& snippetEditorRequest() const {
        return snippetEditing_.request();
    }
    std::string historyDeletionConfirmationMessage() const;  ///< empty: no deletion is pending

Q_SIGNALS:
    void sectionChanged();
    void selectedHistoryEntryChanged();  ///< another one: the list is to scroll to its row
    void selectedHistoryRowChanged();    ///< also when its place has changed
    void selectedSnippetRowChanged();
    void emptyStateChanged();
    void historyDeletionChanged();
    void historyClearingChanged();
    void snippetEditorChanged();
    void statusMessageChanged();
    void persistenceErrorChanged();
    void isMonitoringChanged();

private:
    std::unique_ptr<ClipboardEntryRow> makeHistoryRow(const RowKey& key, const StoredEntry& entry,
                                                      bool isSelected);
    std::unique_ptr<SnippetRow> makeSnippetRow(const SavedSnippet& snippet, bool isSelected);
    void show(MainSection section);
    void catchUp();
    void handleEntriesChange();
    void handleSnippetsChange();
    void handlePreferencesChange();
    void handleSearchTextChange();
    void listHistory();
    void listSnippets();
    void updateEmptyState();
    void refreshAges();
    void selectHistoryRow(const RowKey& key);
    void selectSnippetRow(const RowKey& key);
    bool pasteEntry();
    bool pasteSnippet();
    void setPendingHistoryDeletion(std::optional<ClipboardEntry> entry);
    void setShowClearConfirmation(bool shows);

    AppModel& app_;
    Ports ports_;
    MainSection section_ = MainSection::history;
    FoldedQuery query_;
    std::optional<ClipboardEntry> pendingHistoryDeletion_;
    bool showClearConfirmation_ = false;
    bool isShown_ = false;
    bool isProtecting_ = true;
    EmptyState emptyState_;
    HistoryFilter historyFilter_;
    SnippetFilter snippetFilter_;
    SearchWarmUp searchWarmUp_;
    KeyboardSearchField searchField_;
    PasteSource pasteSource_;
    SnippetEditing snippetEditing_;
    PointerTravel pointer_;
    SelectableRows<StoredEntry, ClipboardEntryRow> history_;
    SelectableRows<SavedSnippet, SnippetRow> snippets_;
    std::vector<Subscription> changes_;
    Subscription ageTimer_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
