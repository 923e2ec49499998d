#include "ui/HistoryFilter.h"

#include <algorithm>

namespace nettlecap {

void HistoryFilter::setEntries(StoredEntries entries) {
    favoritesFirst_ = std::move(entries);
    std::stable_partition(favoritesFirst_.begin(), favoritesFirst_.end(),
                          [](const StoredEntry& entry) { return entry->isFavorite; });
}

StoredEntries HistoryFilter::matching(const FoldedQuery& query, bool protectingSensitiveContent) const {
    if (query.isEmpty()) return favoritesFirst_;
    StoredEntries found;
    std::copy_if(
        favoritesFirst_.begin(), favoritesFirst_.end(), std::back_inserter(found),
        [&](const StoredEntry& entry) { return query.isIn(entry.folded(protectingSensitiveContent)); });
    return found;
}

}  // namespace nettlecap
