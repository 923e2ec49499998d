#include "model/StoreFixture.h"

#include "model/SensitiveContentDetector.h"

namespace nettlecap {

ClipboardStore& StoreFixture::open(std::int64_t maxItems) {
    const ClipboardStore::Ports ports{.files = files, .clock = time, .identifiers = identifiers};
    return store.emplace(ports, folder, maxItems);
}

ClipboardStore& StoreFixture::open(const PersistedState& saved, std::int64_t maxItems) {
    putState(saved);
    return open(maxItems);
}

void StoreFixture::capture(std::string text, double at, std::optional<std::string> source) {
    const std::string fingerprint = textFingerprint(text);
    const auto kind = SensitiveContentDetector::classify(text);
    if (store->promoteExistingEntry({.fingerprint = fingerprint,
                                     .sourceApplication = source,
                                     .at = {at},
                                     .replacementText = text,
                                     .sensitiveKind = kind}))
        return;
    store->insertChronologically({.id = identifiers.next(),
                                  .kind = ClipboardContentKind::text,
                                  .text = std::move(text),
                                  .createdAt = {at},
                                  .sourceApplication = std::move(source),
                                  .fingerprint = fingerprint,
                                  .sensitiveKind = kind});
    store->trimIfNeeded();
    store->persist();
}

void StoreFixture::putState(const PersistedState& state) {
    files.put(stateFile, HistoryDocument::encode(state));
}

void StoreFixture::putImage(const std::string& filename, std::string png) {
    files.put(imagesFolder / filename, std::move(png));
}

PersistedState StoreFixture::saved() const {
    const auto state = HistoryDocument::decode(Bytes(files.contents(stateFile).value_or("")));
    EXPECT_TRUE(state);
    return state ? *state : PersistedState();
}

std::vector<std::string> StoreFixture::texts() const {
    std::vector<std::string> result;
    for (const StoredEntry& entry : *store->entries()) result.push_back(entry->text.value_or("absent"));
    return result;
}

}  // namespace nettlecap
