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

    std::string_view encoded() const;  ///< its JSON object
    bool isSameRecord(const StoredEntry& other) const { return data_ == other.data_; }

    friend bool operator==(const StoredEntry& a, const StoredEntry& b) {
        return a.isSameRecord(b) || *a == *b;
    }

    /// For what is kept by record and not by value.
    struct RecordHash {
        std::size_t operator()(const StoredEntry& entry) const {
            return std::hash<const void*>()(entry.data_.get());
        }
    };
    struct SameRecord {
        bool operator()(const StoredEntry& a, const StoredEntry& b) const { return a.isSameRecord(b); }
    };

private:
    struct Data;
    std::shared_ptr<const Data> data_;
};

using StoredEntries = std::vector<StoredEntry>;

}  // namespace nettlecap
