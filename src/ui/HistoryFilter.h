#pragma once

#include "model/StoredEntry.h"
#include "ui/FoldedTexts.h"

#include <unordered_map>

namespace nettlecap {

/// Which entries are listed, and in which order: favourites first, then newest first. An entry's
/// searchable text is folded once, at the first search or before, and kept while it is listed.
class HistoryFilter {
public:
    /// As the store has them: newest first.
    void setEntries(StoredEntries entries);

    /// Ahead of the first search, which then has less to do.
    void fold(const StoredEntry& entry, bool protectingSensitiveContent);

    StoredEntries matching(const FoldedQuery& query, bool protectingSensitiveContent);

private:
    using Handle = FoldedTexts::Handle;
    static constexpr Handle none = UINT32_MAX;

    void setProtecting(bool isProtecting);
    Handle textOf(const StoredEntry& entry);

    StoredEntries favoritesFirst_;
    std::vector<Handle> handles_;  ///< theirs; none: not looked up yet
    FoldedTexts texts_;
    std::unordered_map<StoredEntry, Handle, StoredEntry::RecordHash, StoredEntry::SameRecord> folded_;
    bool isProtecting_ = true;
};

}  // namespace nettlecap
