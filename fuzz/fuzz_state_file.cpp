#include "model/ClipboardStore.h"
#include "model/Text.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeIdentifiers.h"
#include "platform/fake/FakeTime.h"

#include <algorithm>
#include <cstdlib>
#include <set>

// The state file: whatever it holds, it is taken whole or refused, what was taken can be
// written and read again, and a store makes a sound history of it.

namespace {

using namespace nettlecap;

void require(bool holds) {
    if (!holds) std::abort();
}

struct Machine {
    FakeFileSystem files;
    FakeTime time;
    FakeIdentifiers identifiers;

    ClipboardStore::Ports ports() { return {.files = files, .clock = time, .identifiers = identifiers}; }
};

const Path stateFile = "/dados/history.json";

void requireRoundTrip(const PersistedState& state) {
    const auto again = HistoryDocument::decode(Bytes(HistoryDocument::encode(state)));
    require(static_cast<bool>(again) && *again == state);
}

void requireSound(const StoredEntries& entries) {
    require(std::ranges::is_sorted(entries, std::ranges::greater(),
                                   [](const StoredEntry& entry) { return entry->createdAt; }));
    std::set<std::string_view> fingerprints;
    for (const StoredEntry& entry : entries) require(fingerprints.insert(entry->fingerprint).second);
}

/// Changes everything there is, so that every file name and text of the document is used.
void useUp(ClipboardStore& store) {
    if (!store.entries()->empty()) store.toggleFavorite(*store.entries()->back());
    for (const StoredEntry& entry : StoredEntries(*store.entries())) {
        static_cast<void>(entry->maskedDescription());
        static_cast<void>(text::folded(entry->searchableText(true)));
        static_cast<void>(store.imageFile(*entry));
    }
    store.captureImage(Bytes("png"), std::nullopt, {0});
    store.clearNonFavorites();
    while (!store.entries()->empty()) store.remove(*store.entries()->front());
    while (!store.snippets()->empty()) store.removeSnippet(store.snippets()->front());
    require(!*store.persistenceError());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string document(reinterpret_cast<const char*>(data), size);
    const auto state = HistoryDocument::decode(Bytes(document));
    if (state) requireRoundTrip(*state);

    Machine machine;
    machine.files.put(stateFile, document);
    machine.files.put("/dados/alheio", "alheio");
    {
        ClipboardStore store(machine.ports(), "/dados", 10);
        require(state ? !*store.persistenceError() : store.entries()->empty());
        requireSound(*store.entries());
        store.persist();
    }
    const int writes = machine.files.writes();
    ClipboardStore store(machine.ports(), "/dados", 10);
    require(machine.files.writes() == writes);  // repaired for good
    requireSound(*store.entries());
    useUp(store);
    require(machine.files.contents("/dados/alheio").has_value());
    return 0;
}
