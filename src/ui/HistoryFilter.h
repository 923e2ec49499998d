#pragma once

#include "model/StoredEntry.h"
#include "ui/FoldedQuery.h"

namespace nettlecap {

/// Which entries are listed, and in which order: favourites first, then newest first.
class HistoryFilter {
public:
    /// As the store has them: newest first.
    void setEntries(StoredEntries entries);

    StoredEntries matching(const FoldedQuery& query, bool protectingSensitiveContent) const;

private:
    StoredEntries favoritesFirst_;
};

}  // namespace nettlecap
