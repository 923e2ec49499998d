#pragma once

#include "ui/ListKeyboardNavigation.h"
#include "ui/RowList.h"

#include <algorithm>

namespace nettlecap {

/// The records of a list in order, their rows, and which of them the keyboard selects. The
/// selection stays with its record, and waits for it while it is not listed.
///
/// A row (`setRecord`, `setKeyboardSelected`, `disappear`) is made when it is looked at or
/// selected.
template <class Record, class Row>
class SelectableRows {
public:
    using Records = std::vector<Record>;
    using MakeRow = std::function<std::unique_ptr<Row>(const RowKey&, const Record&, bool isSelected)>;
    using IdentityOf = const Uuid& (*)(const Record&);

    SelectableRows(IdentityOf identityOf, MakeRow make)
        : identityOf_(identityOf), make_(std::move(make)),
          list_([this](const RowKey& key) { return makeRow(key); }) {
        QObject::connect(&list_, &RowList::rowDropped, &list_, [](QObject* row) { asRow(row)->disappear(); });
    }

    ~SelectableRows() {
        forEachRow([](Row& row) { row.disappear(); });  // the objects live a little longer
    }
    SelectableRows(const SelectableRows&) = delete;
    SelectableRows& operator=(const SelectableRows&) = delete;

    void setRecords(Records records) {
        leaving_ = std::exchange(records_, std::move(records));
        std::vector<Uuid> ids;
        ids.reserve(records_.size());
        for (const Record& record : records_) ids.push_back(identityOf_(record));
        list_.setRows(ids);
        leaving_.clear();
        for (std::size_t index = 0; index < records_.size(); ++index)
            if (QObject* row = list_.madeRow(list_.keys()[index])) asRow(row)->setRecord(records_[index]);
    }

    bool select(const RowKey& key) {  ///< false: it is selected already
        if (selected_ == key) return false;
        // Made first, or it would be born selected and never hear of it.
        const auto index = indexOf(list_.keys(), key);
        QObject* row = index ? list_.row(*index) : nullptr;
        const auto before = std::exchange(selected_, key);
        if (QObject* other = before ? list_.madeRow(*before) : nullptr)
            asRow(other)->setKeyboardSelected(false);
        if (row) asRow(row)->setKeyboardSelected(true);
        return true;
    }
    void clearSelection() { selected_.reset(); }  ///< of a list without rows

    /// Where a step leads; none: there is nothing to select.
    std::optional<std::size_t> target(int offset) const {
        return ListKeyboardNavigation::targetIndex(selectedIndex(), records_.size(), offset);
    }
    std::optional<std::size_t> selectedIndex() const {
        return selected_ ? indexOf(list_.keys(), *selected_) : std::nullopt;
    }
    const RowKey& keyAt(std::size_t index) const { return list_.keys()[index]; }
    int selectedRow() const {  ///< -1: none
        const auto index = selectedIndex();
        return index ? static_cast<int>(*index) : -1;
    }
    std::optional<Uuid> selectedID() const { return selected_ ? std::optional(selected_->id) : std::nullopt; }

    void forEachRow(const std::function<void(Row&)>& action) const {
        for (const RowKey& key : list_.keys())
            if (QObject* row = list_.madeRow(key)) action(*asRow(row));
    }

    RowList& list() { return list_; }
    const Records& records() const { return records_; }

private:
    static Row* asRow(QObject* row) { return static_cast<Row*>(row); }
    static std::optional<std::size_t> indexOf(const std::vector<RowKey>& keys, const RowKey& key) {
        const auto place = std::find(keys.begin(), keys.end(), key);
        if (place == keys.end()) return std::nullopt;
        return static_cast<std::size_t>(place - keys.begin());
    }

    const Record* find(const Records& records, const RowKey& key) const {
        std::size_t occurrence = 0;
        for (const Record& record : records)
            if (identityOf_(record) == key.id && occurrence++ == key.occurrence) return &record;
        return nullptr;
    }
    std::unique_ptr<QObject> makeRow(const RowKey& key) {
        const Record* record = find(records_, key);
        if (!record) record = find(leaving_, key);  // asked for while the list is being changed
        return make_(key, *record, selected_ == key);
    }

    IdentityOf identityOf_;
    MakeRow make_;
    Records records_;
    Records leaving_;  ///< of the rows that are being taken out of the list
    std::optional<RowKey> selected_;
    RowList list_;
};

}  // namespace nettlecap
