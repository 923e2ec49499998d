#pragma once

#include "platform/Values.h"
#include "ui/DeleteLater.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <unordered_map>
#include <vector>

namespace nettlecap {

/// A row's identity: the record's, and which of the records that share it. A damaged file
/// may hold one identity twice, and both are shown.
struct RowKey {
    Uuid id;
    std::size_t occurrence = 0;

    bool operator==(const RowKey&) const = default;
};

struct RowKeyHash {
    std::size_t operator()(const RowKey& key) const { return key.id.high ^ key.id.low ^ key.occurrence; }
};

/// Rows in order, as a list model with the one role "row". A row's object is made when it
/// is first looked at and lives as long as the row: the model tells only of rows that come,
/// move and go, and what changes within a row its object tells itself.
class RowList : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS

public:
    using MakeRow = std::function<std::unique_ptr<QObject>(const RowKey&)>;

    explicit RowList(MakeRow make, QObject* parent = nullptr);

    /// Tells the fewest removals, moves and insertions, or a reset where they would be many.
    void setRows(const std::vector<Uuid>& ids);

    const std::vector<RowKey>& keys() const { return keys_; }
    /// The object of the row if somebody has looked at it, else null.
    QObject* madeRow(const RowKey& key) const;
    QObject* row(std::size_t place) const;  ///< made if it has to be

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    /// The row is gone from the list, and its object soon will be.
    void rowDropped(QObject* row);

private:
    using Object = DeletedLater<QObject>;

    void apply(const std::vector<RowKey>& next);
    void removeRun(std::size_t first, std::size_t end);
    void drop(const RowKey& key);
    void moveRow(std::size_t from, std::size_t to);
    std::size_t position(const RowKey& key) const;

    MakeRow make_;
    std::vector<RowKey> keys_;
    mutable std::unordered_map<RowKey, Object, RowKeyHash> objects_;
};

}  // namespace nettlecap
