#pragma once

#include "model/StoredEntry.h"
#include "platform/Time.h"

namespace nettlecap {

/// Prepares a history for being searched, a slice at a time, so that the first key does not
/// have to do it all. A huge text is left to that key: nobody may ever press it.
class SearchWarmUp {
public:
    using Fold = std::function<void(const StoredEntry&)>;

    static constexpr Seconds delay{0.25};  ///< what has just been shown comes first
    static constexpr std::size_t slice = 100;
    static constexpr std::size_t hugeText = 1 << 20;  ///< bytes

    SearchWarmUp(Scheduler& scheduler, Fold fold) : scheduler_(scheduler), fold_(std::move(fold)) {}

    void start(StoredEntries entries);
    void stop();

private:
    void foldSlice();

    Scheduler& scheduler_;
    Fold fold_;
    StoredEntries waiting_;  ///< last first
    std::uint64_t generation_ = 0;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
