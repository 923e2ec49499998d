#pragma once

#include "ui/ClipboardEntryRow.h"
#include "ui/RowList.h"

#include <array>

namespace nettlecap {

/// The history as a panel shows it: favourites first, then newest first, with a selection
/// that the keyboard moves. Lives while its panel is shown; nothing ticks after that.
class MenuBarContentView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the panel")
    Q_PROPERTY(nettlecap::RowList* rows READ rows CONSTANT)
    Q_PROPERTY(bool isHistoryEmpty READ isHistoryEmpty NOTIFY isHistoryEmptyChanged)
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectedRowChanged)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(QString persistenceError READ persistenceError NOTIFY persistenceErrorChanged)

public:
    struct Ports {
        Clock& clock;
        Scheduler& scheduler;
    };

    /// How often the rows tell their age anew.
    static constexpr Seconds ageInterval{60};

    /// The model and the ports must outlive the view.
    MenuBarContentView(AppModel& app, Ports ports);

    /// False: there is nothing to select.
    Q_INVOKABLE bool moveCurrentSelection(int offset);
    /// Hands the selected entry to the model, or the top one if none is selected. False:
    /// the list is empty.
    Q_INVOKABLE bool pasteSelectedItem();

    RowList* rows() { return &rows_; }
    const StoredEntries& filteredEntries() const { return filteredEntries_; }
    bool isHistoryEmpty() const { return filteredEntries_.empty(); }
    int selectedRow() const;           ///< -1: none
    QString statusMessage() const;     ///< empty: none
    QString persistenceError() const;  ///< empty: none

Q_SIGNALS:
    void isHistoryEmptyChanged();
    void selectedRowChanged();
    void statusMessageChanged();
    void persistenceErrorChanged();

private:
    std::unique_ptr<QObject> makeRow(const RowKey& key);
    void updateEntries();
    void refreshAges();
    void select(const RowKey& key);
    std::optional<std::size_t> selectedIndex() const;
    void forEachMadeRow(const std::function<void(ClipboardEntryRow&)>& action) const;

    AppModel& app_;
    Ports ports_;
    StoredEntries filteredEntries_;
    StoredEntries leavingEntries_;  ///< those of the rows that are being taken out of the list
    std::optional<RowKey> selectedHistoryEntry_;
    RowList rows_;
    std::array<Subscription, 4> changes_;
    Subscription ageTimer_;
};

}  // namespace nettlecap
