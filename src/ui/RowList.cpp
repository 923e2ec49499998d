#include "ui/RowList.h"

#include <QQmlEngine>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>

namespace nettlecap {

namespace {

using Keys = std::vector<RowKey>;
using KeySpan = std::span<const RowKey>;

constexpr std::size_t none = SIZE_MAX;

/// Where each of these keys stands: a hash table (open addressing) of their numbers.
class Places {
public:
    explicit Places(KeySpan keys) : Places(keys, keys.size()) {
        for (std::size_t place = 0; place < keys.size(); ++place) add(place);
    }
    /// None of the keys yet, of which there will be so many.
    Places(KeySpan keys, std::size_t count)
        : keys_(keys), slots_(std::bit_ceil(2 * count + 2), empty),
          shift_(64 - static_cast<std::size_t>(std::bit_width(slots_.size() - 1))) {}

    /// The place of an equal one that was added before, else this one.
    std::size_t add(std::size_t place) {
        std::uint32_t& slot = slots_[slotOf(keys_[place])];
        if (slot == empty) slot = static_cast<std::uint32_t>(place);
        return slot;
    }
    std::size_t of(const RowKey& key) const {
        const std::uint32_t slot = slots_[slotOf(key)];
        return slot == empty ? none : slot;
    }
    bool contain(const RowKey& key) const { return of(key) != none; }

private:
    static constexpr std::uint32_t empty = UINT32_MAX;
    static constexpr std::uint64_t goldenRatio = 0x9E37'79B9'7F4A'7C15U;  ///< its fraction, times 2^64

    /// Where the key is, or would be.
    std::size_t slotOf(const RowKey& key) const {
        std::size_t slot = (RowKeyHash()(key) * goldenRatio) >> shift_;
        while (slots_[slot] != empty && keys_[slots_[slot]] != key) slot = (slot + 1) & (slots_.size() - 1);
        return slot;
    }

    KeySpan keys_;
    std::vector<std::uint32_t> slots_;
    std::size_t shift_;
};

/// A view needs about as long for 2,500 changes as for laying itself out anew (10 ms);
/// one that sees only a dozen rows is better off much earlier.
constexpr std::size_t mostChangesToldSingly = 100;

Keys keysOf(const std::vector<Uuid>& ids) {
    Keys keys;
    keys.reserve(ids.size());
    for (const Uuid& id : ids) keys.push_back({.id = id});
    Places firsts(keys, keys.size());
    std::vector<std::size_t> repetitions;
    for (std::size_t place = 0; place < keys.size(); ++place) {
        const std::size_t first = firsts.add(place);
        if (first == place) continue;
        repetitions.resize(keys.size());
        keys[place].occurrence = ++repetitions[first];
    }
    return keys;
}

Keys without(KeySpan keys, const auto& isGone) {
    Keys kept;
    std::remove_copy_if(keys.begin(), keys.end(), std::back_inserter(kept), isGone);
    return kept;
}

/// Runs of neighbours for which `holds`.
std::size_t countRuns(KeySpan keys, const auto& holds) {
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
    std::vector<std::size_t> oldPlaces;
    oldPlaces.reserve(kept.size());
    for (const RowKey& key : kept) oldPlaces.push_back(before.of(key));
    if (std::is_sorted(oldPlaces.begin(), oldPlaces.end())) return {};

    std::vector<std::size_t> tails;  // of the rising subsequences of each length, the lowest last one
    std::vector<std::size_t> previous(kept.size(), none);
    const auto isBefore = [&](std::size_t other, std::size_t place) { return oldPlaces[other] < place; };
    for (std::size_t index = 0; index < kept.size(); ++index) {
        const std::size_t place = oldPlaces[index];
        const bool goesOn = tails.empty() || isBefore(tails.back(), place);  // as nearly all do
        const auto tail =
            goesOn ? tails.end() : std::lower_bound(tails.begin(), tails.end(), place, isBefore);
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

/// How many they have in common from the start on.
std::size_t commonStart(auto first, auto firstEnd, auto second, auto secondEnd) {
    return static_cast<std::size_t>(std::mismatch(first, firstEnd, second, secondEnd).first - first);
}

std::ptrdiff_t asOffset(std::size_t place) { return static_cast<std::ptrdiff_t>(place); }

int asRow(std::size_t place) { return static_cast<int>(place); }

}  // namespace

RowList::RowList(MakeRow make, QObject* parent) : QAbstractListModel(parent), make_(std::move(make)) {}

void RowList::setRows(const std::vector<Uuid>& ids) {
    const Keys next = keysOf(ids);
    if (next == keys_) return;
    apply(next);
}

void RowList::apply(const Keys& next) {
    // Mostly one row comes, goes or moves: what is the same at both ends is not looked at.
    const std::size_t front = commonStart(keys_.begin(), keys_.end(), next.begin(), next.end());
    const auto behindFront = [&](const Keys& keys) { return keys.crend() - asOffset(front); };
    const std::size_t back =
        commonStart(keys_.crbegin(), behindFront(keys_), next.crbegin(), behindFront(next));
    const Keys old(keys_.begin() + asOffset(front), keys_.end() - asOffset(back));
    const KeySpan now = KeySpan(next).subspan(front, next.size() - front - back);

    const Places wanted(now);
    const auto isGone = [&](const RowKey& key) { return !wanted.contain(key); };
    const Places before(old);
    const auto isNew = [&](const RowKey& key) { return !before.contain(key); };
    const Keys kept = without(now, isNew);
    const Keys movers = moversOf(kept, before);

    if (countRuns(old, isGone) + movers.size() + countRuns(now, isNew) > mostChangesToldSingly) {
        beginResetModel();
        keys_ = next;
        endResetModel();
        for (const RowKey& key : without(old, [&](const RowKey& key) { return !isGone(key); })) drop(key);
        return;
    }
    for (std::size_t end = front + old.size(); end > front;
         --end) {  // from the end, so that places stay true
        if (!isGone(keys_[end - 1])) continue;
        std::size_t first = end - 1;
        while (first > front && isGone(keys_[first - 1])) --first;
        removeRun(first, end);
        end = first + 1;
    }
    const Places order(movers.empty() ? KeySpan() : KeySpan(kept));
    for (const RowKey& mover : movers) {  // each goes behind its predecessor, which is in place already
        const std::size_t place = order.of(mover);
        moveRow(position(mover), place == 0 ? front : position(kept[place - 1]) + 1);
    }
    const std::size_t end = front + now.size();
    for (std::size_t first = front; first < end; ++first) {
        if (!isNew(next[first])) continue;
        std::size_t behind = first + 1;
        while (behind < end && isNew(next[behind])) ++behind;
        beginInsertRows({}, asRow(first), asRow(behind - 1));
        keys_.insert(keys_.begin() + asOffset(first), next.begin() + asOffset(first),
                     next.begin() + asOffset(behind));
        endInsertRows();
        first = behind - 1;
    }
}

void RowList::removeRun(std::size_t first, std::size_t end) {
    const auto begin = keys_.begin() + asOffset(first);
    const Keys gone(begin, keys_.begin() + asOffset(end));
    beginRemoveRows({}, asRow(first), asRow(end - 1));
    keys_.erase(begin, keys_.begin() + asOffset(end));
    endRemoveRows();
    for (const RowKey& key : gone) drop(key);
}

void RowList::drop(const RowKey& key) {
    if (objects_.empty()) return;
    const auto dropped = objects_.extract(key);
    if (dropped) Q_EMIT rowDropped(dropped.mapped().get());
}

void RowList::moveRow(std::size_t from, std::size_t to) {
    if (!beginMoveRows({}, asRow(from), asRow(from), {}, asRow(to))) return;  // it is there already
    const auto at = [&](std::size_t place) { return keys_.begin() + asOffset(place); };
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
