#include "model/StoredEntry.h"

#include "model/HistoryDocument.h"
#include "model/Text.h"

namespace nettlecap {

struct StoredEntry::Data {
    ClipboardEntry entry;
    mutable std::optional<std::string> encoded;
    mutable std::optional<std::string> folded;
    mutable std::optional<std::string> foldedProtected;  ///< of sensitive entries only
};

StoredEntry::StoredEntry(ClipboardEntry entry)
    : data_(std::make_shared<Data>(Data{.entry = std::move(entry)})) {}

const ClipboardEntry& StoredEntry::operator*() const { return data_->entry; }

const ClipboardEntry* StoredEntry::operator->() const { return &data_->entry; }

std::string_view StoredEntry::encoded() const {
    if (!data_->encoded) data_->encoded = HistoryDocument::encode(data_->entry);
    return *data_->encoded;
}

std::string_view StoredEntry::folded(bool protectingSensitiveContent) const {
    const bool hides = protectingSensitiveContent && data_->entry.sensitiveKind;
    auto& text = hides ? data_->foldedProtected : data_->folded;
    if (!text) text = text::folded(data_->entry.searchableText(protectingSensitiveContent));
    return *text;
}

}  // namespace nettlecap
