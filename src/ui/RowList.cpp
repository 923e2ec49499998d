#include "ui/RowList.h"

#include <QQmlEngine>

#include <algorithm>
#include <unordered_set>

namespace nettlecap {

namespace {

using Keys = std::vector<RowKey>;
using KeySet = std::unordered_set<RowKey, RowKeyHash>;
using Places = std::unordered_map<RowKey, std::size_t, RowKeyHash>;

/// A view needs about as long for 2,500 changes as for laying itself out anew (10 ms);
/// one that sees only a dozen rows is better off much earlier.
constexpr std::size_t mostChangesToldSingly = 100;

Keys keysOf(const std::vector<Uuid>& ids) {
    struct UuidHash {
        std::size_t operator()(const Uuid& id) const { return id.high ^ id.low; }
    };
    std::unordered_map<Uuid, std::size_t, UuidHash> seen;
    seen.reserve(ids.size());
    Keys keys;
    keys.reserve(ids.size());
    for (const Uuid& id : ids) keys.push_back({.id = id, .occurrence = seen[id]++});
    return keys;
}

Places placesOf(const Keys& keys) {
    Places places;
    places.reserve(keys.size());
    for (std::size_t place = 0; place < keys.size(); ++place) places.emplace(keys[place], place);
    return places;
}

Keys without(const Keys& keys, const auto& isGone) {
    Keys kept;
    std::remove_copy_if(keys.begin(), keys.end(), std::back_inserter(kept), isGone);
    return kept;
}

/// Runs of neighbours for which `holds`.
std::size_t countRuns(const Keys& keys, const auto& holds) {
    std::size_t runs = 0;
    bool within = false;
    for (const RowKey& key : keys) {
        const bool now = holds(key);
        if (now && !within) ++runs;
        within = now;
    }
    return runs;
}

/// Of `kept`, which are in their new order, those that can't stay where they were: all but
/// a longest subsequence whose old places rise.
Keys moversOf(const Keys& kept, const Places& before) {
    constexpr std::size_t none = SIZE_MAX;
    std::vector<std::size_t> tails;  // of the rising subsequences of each length, the lowest last one
    std::vector<std::size_t> previous(kept.size(), none);
    const auto oldPlace = [&](std::size_t index) { return before.at(kept[index]); };
    for (std::size_t index = 0; index < kept.size(); ++index) {
        const auto tail =
            std::lower_bound(tails.begin(), tails.end(), oldPlace(index),
                             [&](std::size_t other, std::size_t place) { return oldPlace(other) < place; });
        if (tail != tails.begin()) previous[index] = *std::prev(tail);
        if (tail == tails.end())
            tails.push_back(index);
        else
            *tail = index;
    }
    std::vector<bool> stays(kept.size());
    for (std::size_t index = tails.empty() ? none : tails.back(); index != none; index = previous[index])
        stays[index] = true;
    Keys movers;
    for (std::size_t index = 0; index < kept.size(); ++index)
        if (!stays[index]) movers.push_back(kept[index]);
    return movers;
}

int asRow(std::size_t place) { return static_cast<int>(place); }

}  // namespace

RowList::RowList(MakeRow make, QObject* parent) : QAbstractListModel(parent), make_(std::move(make)) {}

void RowList::setRows(const std::vector<Uuid>& ids) {
    const Keys next = keysOf(ids);
    if (next == keys_) return;
    apply(next);
}

void RowList::apply(const Keys& next) {
    const KeySet wanted(next.begin(), next.end());
    const auto isGone = [&](const RowKey& key) { return !wanted.contains(key); };
    const Places before = placesOf(keys_);
    const auto isNew = [&](const RowKey& key) { return !before.contains(key); };
    const Keys kept = without(next, isNew);
    const Keys movers = moversOf(kept, before);

    if (countRuns(keys_, isGone) + movers.size() + countRuns(next, isNew) > mostChangesToldSingly) {
        const Keys gone = without(keys_, [&](const RowKey& key) { return !isGone(key); });
        beginResetModel();
        keys_ = next;
        endResetModel();
        for (const RowKey& key : gone) drop(key);
        return;
    }
    for (std::size_t end = keys_.size(); end > 0; --end) {  // from the end, so that places stay true
        if (!isGone(keys_[end - 1])) continue;
        std::size_t first = end - 1;
        while (first > 0 && isGone(keys_[first - 1])) --first;
        removeRun(first, end);
        end = first + 1;
    }
    const Places order = placesOf(kept);
    for (const RowKey& mover : movers) {  // each goes behind its predecessor, which is in place already
        const std::size_t place = order.at(mover);
        moveRow(position(mover), place == 0 ? 0 : position(kept[place - 1]) + 1);
    }
    for (std::size_t first = 0; first < next.size(); ++first) {
        if (!isNew(next[first])) continue;
        std::size_t end = first + 1;
        while (end < next.size() && isNew(next[end])) ++end;
        beginInsertRows({}, asRow(first), asRow(end - 1));
        const auto at = [](auto& keys, std::size_t place) {
            return keys.begin() + static_cast<Keys::difference_type>(place);
        };
        keys_.insert(at(keys_, first), at(next, first), at(next, end));
        endInsertRows();
        first = end - 1;
    }
}

void RowList::removeRun(std::size_t first, std::size_t end) {
    const auto begin = keys_.begin();
    const Keys gone(begin + static_cast<Keys::difference_type>(first),
                    begin + static_cast<Keys::difference_type>(end));
    beginRemoveRows({}, asRow(first), asRow(end - 1));
    keys_.erase(begin + static_cast<Keys::difference_type>(first),
                begin + static_cast<Keys::difference_type>(end));
    endRemoveRows();
    for (const RowKey& key : gone) drop(key);
}

void RowList::drop(const RowKey& key) {
    const auto dropped = objects_.extract(key);
    if (dropped) Q_EMIT rowDropped(dropped.mapped().get());
}

void RowList::moveRow(std::size_t from, std::size_t to) {
    if (!beginMoveRows({}, asRow(from), asRow(from), {}, asRow(to))) return;  // it is there already
    const auto at = [&](std::size_t place) {
        return keys_.begin() + static_cast<Keys::difference_type>(place);
    };
    if (from < to)
        std::rotate(at(from), at(from + 1), at(to));
    else
        std::rotate(at(to), at(from), at(from + 1));
    endMoveRows();
}

std::size_t RowList::position(const RowKey& key) const {
    return static_cast<std::size_t>(std::find(keys_.begin(), keys_.end(), key) - keys_.begin());
}

QObject* RowList::madeRow(const RowKey& key) const {
    const auto object = objects_.find(key);
    return object == objects_.end() ? nullptr : object->second.get();
}

int RowList::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : asRow(keys_.size()); }

QVariant RowList::data(const QModelIndex& index, int role) const {
    if (role != Qt::UserRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    return QVariant::fromValue(row(static_cast<std::size_t>(index.row())));
}

QObject* RowList::row(std::size_t place) const {
    const RowKey& key = keys_[place];
    Object& object = objects_[key];
    if (!object) {
        object.reset(make_(key).release());
        QQmlEngine::setObjectOwnership(object.get(), QQmlEngine::CppOwnership);
    }
    return object.get();
}

QHash<int, QByteArray> RowList::roleNames() const { return {{Qt::UserRole, "row"}}; }

}  // namespace nettlecap
