#include "model/StoredEntry.h"

#include "model/HistoryDocument.h"

namespace nettlecap {

struct StoredEntry::Data {
    ClipboardEntry entry;
    mutable std::optional<std::string> encoded;
};

StoredEntry::StoredEntry(ClipboardEntry entry)
    : data_(std::make_shared<Data>(Data{.entry = std::move(entry)})) {}

const ClipboardEntry& StoredEntry::operator*() const { return data_->entry; }

const ClipboardEntry* StoredEntry::operator->() const { return &data_->entry; }

std::string_view StoredEntry::encoded() const {
    if (!data_->encoded) data_->encoded = HistoryDocument::encode(data_->entry);
    return *data_->encoded;
}

}  // namespace nettlecap
