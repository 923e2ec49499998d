#include "model/HistoryRepair.h"

#include "model/ClipboardContentFingerprint.h"
#include "model/SensitiveContentDetector.h"
#include "model/SourceNames.h"
#include "model/Text.h"

#include <algorithm>
#include <unordered_map>

namespace nettlecap {

namespace {

template <class T>
bool replace(T& value, T by) {
    if (value == by) return false;
    value = std::move(by);
    return true;
}

bool isLegacyUnidentified(const std::optional<std::string>& source) {
    return source && std::ranges::find(sourceName::legacyUnidentified, std::string_view(*source)) !=
                         sourceName::legacyUnidentified.end();
}

}  // namespace

HistoryRepair::HistoryRepair(std::vector<ClipboardEntry> decoded) : entries(std::move(decoded)) {
    for (ClipboardEntry& entry : entries) repair(entry);
    std::ranges::stable_sort(entries, std::ranges::greater(), &ClipboardEntry::createdAt);
    dropDuplicates();
}

void HistoryRepair::repair(ClipboardEntry& entry) {
    if (isLegacyUnidentified(entry.sourceApplication)) {
        entry.sourceApplication = sourceName::otherDevice;
        changed = true;
    }
    if (entry.kind != ClipboardContentKind::text || !entry.text) return;
    if (const std::string content = text::normalized(*entry.text); !content.empty())
        changed |= replace(entry.fingerprint, ClipboardContentFingerprint::fingerprint(content, entry.kind));
    changed |= replace(entry.sensitiveKind, SensitiveContentDetector::classify(*entry.text));
}

void HistoryRepair::dropDuplicates() {
    std::vector<ClipboardEntry> kept;
    kept.reserve(entries.size());  // so that the fingerprints, which the table views, stay where they are
    std::unordered_map<std::string_view, std::size_t> places;
    for (ClipboardEntry& entry : entries) {
        const auto known = places.find(entry.fingerprint);
        if (known == places.end()) {
            kept.push_back(std::move(entry));
            places.emplace(kept.back().fingerprint, kept.size() - 1);
            continue;
        }
        ClipboardEntry& survivor = kept[known->second];
        survivor.isFavorite |= entry.isFavorite;
        if (entry.imageFilename != survivor.imageFilename) withoutUse.push_back(std::move(entry));
        changed = true;
    }
    entries = std::move(kept);
}

}  // namespace nettlecap
