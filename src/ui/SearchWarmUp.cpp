#include "ui/SearchWarmUp.h"

#include <algorithm>

namespace nettlecap {

void SearchWarmUp::start(StoredEntries entries) {
    stop();
    waiting_ = std::move(entries);
    std::reverse(waiting_.begin(), waiting_.end());
    if (waiting_.empty()) return;
    scheduler_.after(delay, guard_([this, generation = generation_] {
                         if (generation == generation_) foldSlice();
                     }));
}

void SearchWarmUp::stop() {
    ++generation_;
    waiting_.clear();
}

void SearchWarmUp::foldSlice() {
    for (std::size_t count = 0; count < slice && !waiting_.empty(); ++count) {
        const StoredEntry entry = std::move(waiting_.back());
        waiting_.pop_back();
        if (!entry->text || entry->text->size() < hugeText) fold_(entry);
    }
    if (waiting_.empty()) return;
    scheduler_.post(guard_([this, generation = generation_] {
        if (generation == generation_) foldSlice();
    }));
}

}  // namespace nettlecap
