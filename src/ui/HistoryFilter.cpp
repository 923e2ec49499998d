#include "ui/HistoryFilter.h"

#include "model/Text.h"

#include <algorithm>
#include <utility>

namespace nettlecap {

void HistoryFilter::setEntries(StoredEntries entries) {
    favoritesFirst_ = std::move(entries);
    std::stable_partition(favoritesFirst_.begin(), favoritesFirst_.end(),
                          [](const StoredEntry& entry) { return entry->isFavorite; });
    handles_.assign(favoritesFirst_.size(), none);
    if (folded_.empty()) return;

    decltype(folded_) kept;
    kept.reserve(favoritesFirst_.size());
    for (std::size_t index = 0; index < favoritesFirst_.size(); ++index) {
        auto entry = folded_.extract(favoritesFirst_[index]);
        if (!entry) continue;
        handles_[index] = entry.mapped();
        kept.insert(std::move(entry));
    }
    for (const auto& [entry, handle] : folded_) texts_.remove(handle);
    folded_ = std::move(kept);
}

void HistoryFilter::fold(const StoredEntry& entry, bool protectingSensitiveContent) {
    setProtecting(protectingSensitiveContent);
    textOf(entry);
}

StoredEntries HistoryFilter::matching(const FoldedQuery& query, bool protectingSensitiveContent) {
    if (query.isEmpty()) return favoritesFirst_;
    setProtecting(protectingSensitiveContent);
    for (std::size_t index = 0; index < handles_.size(); ++index)
        if (handles_[index] == none) handles_[index] = textOf(favoritesFirst_[index]);
    const std::vector<bool> found = texts_.having(query);
    StoredEntries matching;
    for (std::size_t index = 0; index < handles_.size(); ++index)
        if (found[handles_[index]]) matching.push_back(favoritesFirst_[index]);
    return matching;
}

/// What is sensitive is searched for by other texts then.
void HistoryFilter::setProtecting(bool isProtecting) {
    if (std::exchange(isProtecting_, isProtecting) == isProtecting) return;
    std::erase_if(folded_, [&](const auto& text) {
        const bool changes = text.first->sensitiveKind.has_value();
        if (changes) texts_.remove(text.second);
        return changes;
    });
    handles_.assign(handles_.size(), none);
}

HistoryFilter::Handle HistoryFilter::textOf(const StoredEntry& entry) {
    const auto [place, isNew] = folded_.try_emplace(entry, none);
    if (isNew) place->second = texts_.add(text::folded(entry->searchableText(isProtecting_)));
    return place->second;
}

}  // namespace nettlecap
