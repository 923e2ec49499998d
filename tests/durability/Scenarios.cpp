#include "durability/Scenarios.h"

#include <algorithm>
#include <fstream>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

void put(const Path& path, std::string_view contents) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << contents;
}

ClipboardEntry image(const Path& folder, std::uint64_t number, const std::string& name, double at) {
    const std::string png = "imagem " + name;
    put(folder / "Images" / (name + ".png"), png);
    return imageEntry(number, name + ".png", png, at);
}

/// Ten entries, so that one more evicts the picture A.
PersistedState ordinary(const Path& folder) {
    PersistedState state;
    state.entries = {image(folder, 1, "A", 1), textEntry(2, "b", 2), favorite(textEntry(3, "c", 3)),
                     image(folder, 4, "D", 4), favorite(image(folder, 5, "E", 5))};
    for (std::uint64_t n = 6; n <= 10; ++n)
        state.entries.push_back(textEntry(n, "texto " + std::to_string(n), static_cast<double>(n)));
    state.snippets = {snippetRecord(11, "Saudação", "Olá", 1)};
    return state;
}

void prepareNothing(const Path&) {}

void prepareOrdinary(const Path& folder) {
    put(folder / "history.json", HistoryDocument::encode(ordinary(folder)));
}

void prepareDuplicates(const Path& folder) {
    PersistedState state = ordinary(folder);
    state.entries.push_back(image(folder, 12, "A2", 0));
    state.entries.back().fingerprint = state.entries.front().fingerprint;
    state.entries[1].sourceApplication = "Origem não identificada";
    put(folder / "history.json", HistoryDocument::encode(state));
}

void prepareMany(const Path& folder) {
    PersistedState state = ordinary(folder);
    for (std::uint64_t n = 20; n < 24; ++n)
        state.entries.push_back(image(folder, n, "velha " + std::to_string(n), 0));
    put(folder / "history.json", HistoryDocument::encode(state));
}

void prepareFavorites(const Path& folder) {
    PersistedState state = ordinary(folder);
    for (ClipboardEntry& entry : state.entries) entry.isFavorite = true;
    put(folder / "history.json", HistoryDocument::encode(state));
}

void prepareDamaged(const Path& folder) { put(folder / "history.json", damagedDocument); }

void prepareDamagedAndKept(const Path& folder) {
    prepareOrdinary(folder);
    put(folder / "history.unreadable.json", damagedDocument);
}

/// After an ordinary start on what an ordinary run left.
Scenario ordinarily(std::string name, std::function<void(Program&)> act) {
    return {std::move(name), prepareOrdinary, [](Program& program) { program.start(); }, std::move(act)};
}

}  // namespace

ClipboardStore& Program::start(std::int64_t maxItems) {
    const ClipboardStore::Ports ports{.files = files, .clock = time, .identifiers = identifiers};
    return store.emplace(ports, folder, maxItems);
}

void Program::copy(const std::string& text, double at) {
    const std::string fingerprint = textFingerprint(text);
    if (store->promoteExistingEntry({.fingerprint = fingerprint,
                                     .sourceApplication = "Notas",
                                     .at = {at},
                                     .replacementText = text,
                                     .sensitiveKind = {}}))
        return;
    store->insertChronologically({.id = identifiers.next(),
                                  .kind = ClipboardContentKind::text,
                                  .text = text,
                                  .createdAt = {at},
                                  .sourceApplication = "Notas",
                                  .fingerprint = fingerprint});
    store->trimIfNeeded();
    store->persist();
}

ClipboardStoreMutation Program::copyImage(const std::string& png, double at) {
    return store->captureImage(Bytes(png), "Fotos", {at});
}

const ClipboardEntry& Program::entry(const std::string& textOrFilename) const {
    return **std::ranges::find_if(*store->entries(), [&](const StoredEntry& entry) {
        return entry->text == textOrFilename || entry->imageFilename == textOrFilename;
    });
}

void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }

std::vector<Scenario> scenarios() {
    const auto start = [](Program& program) { program.start(); };
    const auto startAndCopy = [](Program& program) { program.start().persist(); };
    const auto nothing = [](Program&) {};
    return {
        {"FirstStart", prepareNothing, nothing, start},
        {"FirstStartAndSave", prepareNothing, nothing, startAndCopy},
        {"LoadWithRepair", prepareDuplicates, nothing, start},
        ordinarily("CopyText", [](Program& program) { program.copy("novo", 20); }),
        ordinarily("CopyTextAgain", [](Program& program) { program.copy("b", 20); }),
        ordinarily("CopyImage", [](Program& program) { program.copyImage("imagem nova", 20); }),
        ordinarily("CopyImageAgain", [](Program& program) { program.copyImage("imagem A", 20); }),
        {"CopyImageWhereFavoritesFillTheLimit", prepareFavorites, start,
         [](Program& program) { program.copyImage("imagem nova", 20); }},
        ordinarily("ToggleFavorite",
                   [](Program& program) { program.store->toggleFavorite(program.entry("b")); }),
        ordinarily("RemoveText", [](Program& program) { program.store->remove(program.entry("b")); }),
        ordinarily("RemoveImage", [](Program& program) { program.store->remove(program.entry("D.png")); }),
        {"LowerTheLimit", prepareMany, [](Program& program) { program.start(20); },
         [](Program& program) {
             program.store->setMaxItems(10);
             program.store->trimIfNeeded();
             program.store->persist();
         }},
        ordinarily("Purge", [](Program& program) { program.store->clearNonFavorites(); }),
        ordinarily("AddSnippet", [](Program& program) { program.store->addSnippet("t", "conteúdo"); }),
        ordinarily("EditSnippet",
                   [](Program& program) {
                       program.store->updateSnippet(program.store->snippets()->front(), "t", "conteúdo");
                   }),
        ordinarily(
            "RemoveSnippet",
            [](Program& program) { program.store->removeSnippet(program.store->snippets()->front()); }),
        {"StartOnADamagedFile", prepareDamaged, nothing, start},
        {"SaveOverADamagedFile", prepareDamaged, start, [](Program& program) { program.copy("novo", 20); }},
        {"PurgeADamagedFile", prepareDamaged, start,
         [](Program& program) { program.store->clearNonFavorites(); }},
        {"PurgeTheCopyOfADamagedFile", prepareDamagedAndKept, start,
         [](Program& program) { program.store->clearNonFavorites(); }},
    };
}

}  // namespace nettlecap
