#include "Beside.h"
#include "Grid.h"

#include "model/ClipboardContentFingerprint.h"
#include "model/SensitiveContentDetector.h"
#include "model/Text.h"

#include <unicode/regex.h>

#include <cstdlib>
#include <memory>

// What the history costs, each beside its floor: the least that any program would have to
// do for the same.

namespace nettlecap {
namespace {

/// Reads the file, parses it, and for every text makes one NFC check and one hash.
template <class Extra>
void readAndHash(const DiskHistory& disk, Extra extra) {
    const auto document = disk.files.read(disk.stateFile());
    const auto parsed = HistoryDocument::decode(*document);
    for (const ClipboardEntry& entry : parsed->entries) {
        if (!entry.text) continue;
        benchmark::DoNotOptimize(ClipboardContentFingerprint::fingerprint(text::normalized(*entry.text),
                                                                          ClipboardContentKind::text));
        extra(*entry.text);
    }
}

/// The expression for cards, compiled once.
class CardExpression {
public:
    bool isFoundIn(std::string_view text) {
        const auto input =
            icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
        matcher_->reset(input);
        const bool found = matcher_->find(status_) != 0;
        if (U_FAILURE(status_)) std::abort();
        return found;
    }

private:
    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> matcher_ =
        std::make_unique<icu::RegexMatcher>(R"((?<!\d)(?:\d[ -]?){12,18}\d(?!\d))", 0, status_);
};

/// Floor: that, and for every text one run of the card expression.
void load(benchmark::State& state) {
    DiskHistory disk(shapeOf(state));
    CardExpression card;
    const auto runCard = [&](std::string_view text) { benchmark::DoNotOptimize(card.isFoundIn(text)); };
    runBeside(
        state, [&] { readAndHash(disk, runCard); },
        [&] { benchmark::DoNotOptimize(disk.open().entries()->size()); });
}
BENCHMARK(load)->Apply(overEveryHistory);

/// Floor: that alone, for we run the card expression nowhere.
void loadBesideReadingAndHashing(benchmark::State& state) {
    DiskHistory disk(HistoryShape{});
    runBeside(
        state, [&] { readAndHash(disk, [](std::string_view) {}); },
        [&] { benchmark::DoNotOptimize(disk.open().entries()->size()); });
}
BENCHMARK(loadBesideReadingAndHashing)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// Floor: the same bytes, safely on the same disk.
void save(benchmark::State& state) {
    DiskHistory disk(HistoryShape{});
    ClipboardStore store = disk.open();
    store.persist();
    const std::string bytes = disk.document();
    runBeside(
        state, [&] { writeSafely(disk.folder.path(), bytes); }, [&] { store.persist(); });
}
BENCHMARK(save)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// The first 100 characters of these words.
void classify(benchmark::State& state, std::string_view word) {
    std::string content;
    while (text::characterCount(content) < 100) content += word;
    content = text::firstCharacters(content, 100);
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(SensitiveContentDetector::classify(content));
}
BENCHMARK_CAPTURE(classify, sentence, "a sala do cafe fica no fim do corredor ");
BENCHMARK_CAPTURE(classify, accents, "reunião às três, opção não é função ");
BENCHMARK_CAPTURE(classify, token, "aB3xQ9_k");
BENCHMARK_CAPTURE(classify, accentedToken, "aÇ3xQ9_ã");
BENCHMARK_CAPTURE(classify, numbers, "15/03 17:30 482 ");
BENCHMARK_CAPTURE(classify, shortGroups, "1234567 12345678 ");
BENCHMARK_CAPTURE(classify, longGroups, "123456789012345 ");
BENCHMARK_CAPTURE(classify, singleDigits, "1-2-3 4 ");
BENCHMARK_CAPTURE(classify, arabicDigits, "\u0661\u0662\u0663");
BENCHMARK_CAPTURE(classify, oneLongWord, "\u6F22\u5B57");
BENCHMARK_CAPTURE(classify, manyComponents, "pasta_1/arquivo-2.txt/");
BENCHMARK_CAPTURE(classify, path, "pasta_1.com-nome-longo/");
BENCHMARK_CAPTURE(classify, brokenPath, "Pasta_1.com+nome-longo/");
BENCHMARK_CAPTURE(classify, address, "https://exemplo.com.br/Pagina1?nome=valor&x=");
BENCHMARK_CAPTURE(classify, manyMails, "Ana.Silva2024@exemplo.com.br");
BENCHMARK_CAPTURE(classify, mail,
                  "Ana.Silva2024@exemplo.com.br.ana.silva.2024.exemplo.com.br.ana.silva."
                  "2024.exemplo.com.br.ana.silva.com.br");

/// What the first key in the search and the first save pay, once for each entry.
void foldOnce(benchmark::State& state) {
    StoredEntries entries;
    const PersistedState history = sampleHistory({});
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        entries.clear();
        for (const ClipboardEntry& entry : history.entries) entries.emplace_back(entry);
        state.ResumeTiming();
        for (const StoredEntry& stored : entries)
            benchmark::DoNotOptimize(text::folded(stored->searchableText(true)));
    }
}
BENCHMARK(foldOnce)->Iterations(10)->Unit(benchmark::kMillisecond);

void encodeOnce(benchmark::State& state) {
    StoredEntries entries;
    const PersistedState history = sampleHistory({});
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        entries.clear();
        for (const ClipboardEntry& entry : history.entries) entries.emplace_back(entry);
        state.ResumeTiming();
        for (const StoredEntry& stored : entries) benchmark::DoNotOptimize(stored.encoded().data());
    }
}
BENCHMARK(encodeOnce)->Iterations(10)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nettlecap
