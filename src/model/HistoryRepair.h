#pragma once

#include "model/ClipboardEntry.h"

#include <vector>

namespace nettlecap {

/// Makes a history of what a state file held, by the rules of this version: sources,
/// fingerprints and sensitive kinds anew, newest first, one entry per fingerprint.
struct HistoryRepair {
    explicit HistoryRepair(std::vector<ClipboardEntry> decoded);

    std::vector<ClipboardEntry> entries;
    std::vector<ClipboardEntry> withoutUse;  ///< dropped duplicates whose image files nobody needs
    bool changed = false;                    ///< beyond their order

private:
    void repair(ClipboardEntry& entry);
    void dropDuplicates();
};

}  // namespace nettlecap
