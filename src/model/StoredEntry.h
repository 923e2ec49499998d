#pragma once

#include "model/ClipboardEntry.h"

#include <vector>

namespace nettlecap {

/// An entry as the history holds it: never edited, only replaced. What is derived from an
/// entry lives and dies with it, so it is made once and is never stale. Main thread only.
class StoredEntry {
public:
    explicit StoredEntry(ClipboardEntry entry);

    const ClipboardEntry& operator*() const;
    const ClipboardEntry* operator->() const;

    std::string_view encoded() const;                                ///< its JSON object
    std::string_view folded(bool protectingSensitiveContent) const;  ///< its searchable text, folded
    bool isSameRecord(const StoredEntry& other) const { return data_ == other.data_; }

    friend bool operator==(const StoredEntry& a, const StoredEntry& b) {
        return a.isSameRecord(b) || *a == *b;
    }

private:
    struct Data;
    std::shared_ptr<const Data> data_;
};

using StoredEntries = std::vector<StoredEntry>;

}  // namespace nettlecap
